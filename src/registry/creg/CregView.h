#pragma once
// A registry file of the 9x family as its bytes: header, blocks and their records, slots. Bounded: no offset is followed that does
// not lie where it should, each slot and each record is met once. Faults that make the tree doubtful go to the findings.
#include <optional>
#include <vector>

#include "registry/creg/CregFormat.h"
#include "registry/hive/HiveFinding.h"

namespace brenvik {

struct CregRecord {
    std::uint32_t offset = 0, size = 0, used = 0;   // in the file
    std::uint16_t id = 0, block = 0;                // as it says itself
    cregfmt::ByteSpan name, values;                 // values: to the record's end
    std::uint16_t valueCount = 0;
    bool isFree() const { return id == cregfmt::noRecord; }
};

struct CregValue {
    std::uint32_t type = 0;
    cregfmt::ByteSpan name, data, whole;   // whole: as it lies in the file
};

struct CregBlock {
    std::uint32_t offset = 0, size = 0;
    std::uint32_t stray = 0;                                       // bytes at its end that are no record
    std::vector<std::pair<std::uint16_t, std::uint32_t>> records;  // id and offset in the file, by id; free ones last
};

struct CregSlot {
    std::uint32_t at = 0, state = 0, hash = 0, parent = 0, child = 0, next = 0;
    std::uint16_t id = 0, block = 0;
    bool hasRecord() const { return id != cregfmt::noRecord || block != cregfmt::noRecord; }
};

class CregView {
public:
    // Throws HiveError if the bytes are no such file at all.
    CregView(cregfmt::ByteSpan file, HiveFindings& findings);

    cregfmt::ByteSpan file() const { return file_; }
    cregfmt::ByteSpan table() const { return table_; }
    const std::vector<CregBlock>& blocks() const { return blocks_; }
    std::size_t end() const { return end_; }                              // of the last block
    HiveFindings& findings() { return findings_; }

    bool isSlot(std::uint32_t at) const { return at < table_.size() && table_.size() - at >= cregfmt::slot::size && cregfmt::isOnGrid(at); }
    CregSlot slot(std::uint32_t at) const;
    CregRecord recordAt(std::uint32_t offset) const;                      // of one that the blocks name
    std::optional<CregRecord> record(const CregSlot& slot) const;
    std::vector<CregValue> values(const CregRecord& record, std::size_t* end = nullptr);   // end: bytes of content that they and the name take

private:
    void readBlocks();
    void readRecords(CregBlock& block);
    cregfmt::ByteSpan file_, table_;
    HiveFindings& findings_;
    std::vector<CregBlock> blocks_;
    std::size_t end_ = 0;
};

class CregVisitor {
public:
    virtual ~CregVisitor() = default;
    virtual void enter(const CregSlot& slot, const std::optional<CregRecord>& record) = 0;   // only the root may have none
    virtual void leave() = 0;
};

// All keys, depth first, siblings in the file's order. A key whose record is missing or taken is left out with what is below it.
void walkCreg(CregView& view, CregVisitor& visitor);

}  // namespace brenvik
