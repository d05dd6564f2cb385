#pragma once
// One block of a registry file of the 9x family while it is changed: its records, its holes and their list.
#include <cstdint>
#include <optional>

#include "registry/creg/CregFormat.h"
#include "registry/store/RawValue.h"

namespace brenvik {

// What a record holds: the key's name and values as they lie in the file.
struct CregContent {
    Bytes bytes;
    std::uint16_t nameSize = 0, valueCount = 0;
    std::uint32_t used() const { return cregfmt::record::headerSize + static_cast<std::uint32_t>(bytes.size()); }
};

class CregBlockSpace {
public:
    explicit CregBlockSpace(cregfmt::ByteSpan block) : bytes_(block.begin(), block.end()) {}
    static CregBlockSpace fresh(std::uint16_t number, std::uint16_t flags, std::uint32_t content);   // with room for one of that size

    const Bytes& bytes() const { return bytes_; }
    std::uint16_t flags() const { return cregfmt::get16(bytes_.data() + cregfmt::block::Flags); }
    std::optional<std::uint16_t> freeId() const;

    // Each answers false where that way is closed, and then has changed nothing. add and rebuild take a new record, or the
    // new content of one that is there.
    bool overwrite(std::uint16_t id, const CregContent& content);   // in its own place
    bool add(std::uint16_t id, const CregContent& content);         // into a hole
    bool rebuild(std::uint16_t id, const CregContent& content);     // lays all records anew; the block may grow
    void remove(std::uint16_t id);
    void seal();                                                    // the checksum, if it counts

private:
    struct Hole {
        std::uint32_t at = 0, link = 0;   // link: where its offset stands
    };
    std::uint32_t get(std::uint32_t at) const { return cregfmt::get32(bytes_.data() + at); }
    std::uint32_t find(std::uint16_t id) const;   // 0: not there
    std::optional<Hole> holeFor(std::uint32_t size) const;
    bool release(std::uint32_t at);
    void write(std::uint32_t at, std::uint32_t size, std::uint16_t id, const CregContent& content);
    void layOut(std::optional<std::uint16_t> changed, const CregContent* content, std::uint32_t size);
    std::uint32_t compactSize(std::optional<std::uint16_t> without) const;
    void recount();
    Bytes bytes_;
};

}  // namespace brenvik
