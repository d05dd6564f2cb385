#pragma once
// A hive file read in place: records point into the file's bytes, nothing is copied but what is asked for. Every reference is
// checked before it is followed. What is wrong goes to the findings; when salvaging it is then left out.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "registry/hive/HiveCells.h"
#include "registry/store/RawValue.h"

namespace brenvik {

struct HiveKeyRecord {
    std::uint32_t offset = 0, parent = 0, security = 0;
    std::uint32_t subKeyCount = 0, subKeyList = 0, valueCount = 0, valueList = 0;
    std::uint32_t accessBits = 0, predefinedHandle = 0;   // a predefined key has a handle instead of values
    std::uint16_t flags = 0, userFlags = 0;
    std::uint64_t lastWrite = 0;
    hivefmt::StoredName name;
    hivefmt::ByteSpan className;   // UTF-16
};

struct HiveValueRecord {
    std::uint32_t offset = 0, type = 0, size = 0, data = 0;
    bool isInline = false;
    hivefmt::StoredName name;
};

std::string textOf(const hivefmt::StoredName& name);   // generalised UTF-8

class HiveView {
public:
    // The file must outlive the view. Throws HiveError if it is no hive at all, or, when strict, at the first fault.
    HiveView(hivefmt::ByteSpan file, HiveFindings& findings);

    std::optional<HiveKeyRecord> root();
    std::optional<HiveKeyRecord> key(std::uint32_t offset);
    std::vector<std::uint32_t> subKeys(const HiveKeyRecord& key);                    // offsets, in the file's order
    std::vector<HiveValueRecord> values(const HiveKeyRecord& key);
    bool data(const HiveValueRecord& value, Bytes& out);                             // false: not to be read
    hivefmt::ByteSpan descriptor(const HiveKeyRecord& key);                          // empty: none
    std::optional<HiveKeyRecord> find(std::string_view path);                        // "A\B", without case

    // From here on every cell may be used once only (security cells apart): finds loops and cells shared by mistake.
    void claimCells();
    bool claimed(std::uint32_t offset) const { return claimed_.has(offset); }   // of an offset inside the bins
    const HiveCells& cells() const { return cells_; }
    HiveFindings& findings() { return findings_; }

private:
    hivefmt::ByteSpan take(std::uint32_t offset, std::size_t least, const char* message);
    void leaf(hivefmt::ByteSpan cell, std::uint32_t offset, std::vector<std::uint32_t>& out);
    void readClass(HiveKeyRecord& record, std::uint32_t offset, std::size_t size);
    std::optional<HiveValueRecord> value(std::uint32_t offset);
    bool bigData(hivefmt::ByteSpan cell, const HiveValueRecord& value, Bytes& out);
    std::uint64_t place(std::uint32_t offset) const { return std::uint64_t{hivefmt::headerSize} + offset; }
    HiveFindings& findings_;
    HiveCells cells_;
    CellBits claimed_;
    std::uint64_t sharedBudget_;   // bytes that salvaging may read from data cells used twice
};

// Depth first through the whole hive, with the checks of names, order, parents and depth. Claims the cells of the view.
class HiveVisitor {
public:
    virtual ~HiveVisitor() = default;
    virtual void enter(const HiveKeyRecord& key) = 0;
    virtual void value(const HiveValueRecord& value) = 0;   // of the key entered last and not left
    virtual void leave() = 0;
};
void walkHive(HiveView& view, HiveVisitor& visitor);

}  // namespace brenvik
