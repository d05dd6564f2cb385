#pragma once
// A checked view of bytes: every read outside of it is a failure of the file, never of the program.
#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace brenvik::jet {

// Something in the file is not as the format has it. The text is for the report (German).
class Damaged : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Slice {
    const std::uint8_t* data = nullptr;
    std::size_t size = 0;

    const std::uint8_t* at(std::size_t offset, std::size_t count) const {
        if (offset > size || count > size - offset) throw Damaged("eine Angabe zeigt aus ihrer Seite hinaus");
        return data + offset;
    }
    unsigned u8(std::size_t offset) const { return *at(offset, 1); }
    unsigned u16(std::size_t offset) const {
        const auto* p = at(offset, 2);
        return p[0] | static_cast<unsigned>(p[1]) << 8;
    }
    std::uint32_t u32(std::size_t offset) const {
        const auto* p = at(offset, 4);
        return p[0] | static_cast<std::uint32_t>(p[1]) << 8 | static_cast<std::uint32_t>(p[2]) << 16 |
               static_cast<std::uint32_t>(p[3]) << 24;
    }
    std::uint64_t u64(std::size_t offset) const { return u32(offset) | static_cast<std::uint64_t>(u32(offset + 4)) << 32; }
    Slice part(std::size_t offset, std::size_t count) const { return {at(offset, count), count}; }
    Slice from(std::size_t offset) const { return {at(offset, 0), size - offset}; }
};

}  // namespace brenvik::jet
