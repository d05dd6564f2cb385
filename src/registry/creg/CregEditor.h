#pragma once
// Changes a registry file of the 9x family that the checker accepts, each time by the smallest change that does: in the record, into a
// hole of its block, the block laid out anew, another block, a new one. Keys are named by their slots, which stay. Throws
// RegError NoAssignment for what the file cannot take; then it is not to be used any more.
#include <vector>

#include "registry/creg/CregBlockSpace.h"
#include "registry/creg/CregView.h"

namespace brenvik {

class CregEditor {
public:
    explicit CregEditor(const CregView& view);

    void replace(std::uint32_t slot, const CregContent& content);
    std::uint32_t add(std::uint32_t parent, const CregContent& content);   // as its last sub key
    void remove(std::uint32_t slot);                                       // of a key without sub keys
    Bytes finish();

private:
    struct RecordPlace {
        std::uint16_t id = 0, block = 0;
    };
    std::uint32_t get(std::uint32_t at) const { return cregfmt::get32(table_.data() + at); }
    void set(std::uint32_t at, std::uint32_t number);
    RecordPlace placeOf(std::uint32_t slot) const;
    RecordPlace elsewhere(const CregContent& content, std::size_t notIn);
    CregBlockSpace& change(std::size_t block);
    std::uint32_t lastChild(std::uint32_t parent);
    std::uint32_t takeSlot();
    void growTable();

    Bytes header_, table_;
    struct Block {
        CregBlockSpace space;
        bool changed = false;
    };
    std::vector<Block> blocks_;
    bool tableChanged_ = false;
    std::uint32_t parentOfLast_ = cregfmt::none, last_ = cregfmt::none;   // of the key added last
};

}  // namespace brenvik
