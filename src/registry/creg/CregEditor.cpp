#include "registry/creg/CregEditor.h"

#include <algorithm>

#include "frame/Errors.h"

namespace brenvik {

using namespace cregfmt;

namespace {
constexpr std::size_t AnyBlock = static_cast<std::size_t>(-1);
}

CregEditor::CregEditor(const CregView& view)
    : header_(view.file().begin(), view.file().begin() + cregfmt::headerSize), table_(view.table().begin(), view.table().end()) {
    for (const CregBlock& block : view.blocks()) blocks_.push_back({CregBlockSpace(view.file().subspan(block.offset, block.size))});
}

void CregEditor::set(std::uint32_t at, std::uint32_t number) {
    put32(table_.data() + at, number);
    tableChanged_ = true;
}

CregEditor::RecordPlace CregEditor::placeOf(std::uint32_t slot) const { return {get16(table_.data() + slot + slot::Id), get16(table_.data() + slot + slot::Block)}; }

CregBlockSpace& CregEditor::change(std::size_t block) {
    blocks_[block].changed = true;
    return blocks_[block].space;
}

// A hole goes before a block laid out anew, and that before a new block.
CregEditor::RecordPlace CregEditor::elsewhere(const CregContent& content, std::size_t notIn) {
    for (const auto way : {&CregBlockSpace::add, &CregBlockSpace::rebuild}) {
        for (std::size_t i = 0; i < blocks_.size(); ++i) {
            const auto id = blocks_[i].space.freeId();
            if (i == notIn || !id || !(blocks_[i].space.*way)(*id, content)) continue;
            change(i);
            return {*id, static_cast<std::uint16_t>(i)};
        }
    }
    if (blocks_.size() >= noRecord) throw RegError(regerr::NoAssignment, "Die Registrydatei hat keinen Platz für einen weiteren Block.");
    const auto number = static_cast<std::uint16_t>(blocks_.size());
    const std::uint32_t summed = (blocks_.empty() ? get(table::Flags) : blocks_.back().space.flags()) & checksumValid;
    blocks_.push_back({CregBlockSpace::fresh(number, static_cast<std::uint16_t>(plainBlockFlags | summed), static_cast<std::uint32_t>(content.bytes.size())), true});
    blocks_.back().space.add(0, content);
    return {0, number};
}

namespace {

void requireRoom(const CregContent& content) {
    if (content.bytes.size() > record::mostContent)
        throw RegError(regerr::NoAssignment, "Ein Schlüssel kann bei Windows 95, 98 und ME zusammen mit seinen Werten höchstens 61388 Bytes haben. Es wurde nichts geschrieben.");
}

}  // namespace

void CregEditor::replace(std::uint32_t slot, const CregContent& content) {
    requireRoom(content);
    const RecordPlace old = placeOf(slot);
    CregBlockSpace& own = change(old.block);
    if (own.overwrite(old.id, content) || own.add(old.id, content) || own.rebuild(old.id, content)) return;
    const RecordPlace place = elsewhere(content, old.block);
    change(old.block).remove(old.id);
    set(slot + slot::Id, place.id | static_cast<std::uint32_t>(place.block) << 16);
}

std::uint32_t CregEditor::add(std::uint32_t parent, const CregContent& content) {
    requireRoom(content);
    const RecordPlace place = elsewhere(content, AnyBlock);
    const std::uint32_t slot = takeSlot();
    set(slot + slot::State, 0);
    set(slot + slot::Hash, nameHash(ByteSpan(content.bytes).first(content.nameSize)));
    set(slot + slot::Rubbish, none);
    set(slot + slot::Parent, parent);
    set(slot + slot::Child, none);
    set(slot + slot::Next, none);
    set(slot + slot::Id, place.id | static_cast<std::uint32_t>(place.block) << 16);
    const std::uint32_t before = lastChild(parent);
    set(before == none ? parent + slot::Child : before + slot::Next, slot);
    parentOfLast_ = parent;
    return last_ = slot;
}

std::uint32_t CregEditor::lastChild(std::uint32_t parent) {
    if (parent == parentOfLast_) return last_;
    std::uint32_t at = get(parent + slot::Child);
    while (at != none && get(at + slot::Next) != none) at = get(at + slot::Next);
    return at;
}

void CregEditor::remove(std::uint32_t slot) {
    parentOfLast_ = none;
    std::uint32_t link = get(slot + slot::Parent) + slot::Child;
    while (get(link) != slot) link = get(link) + slot::Next;
    set(link, get(slot + slot::Next));
    const RecordPlace place = placeOf(slot);
    change(place.block).remove(place.id);
    set(slot + slot::State, slot::isFree);
    set(slot + slot::FreeSize, slot::size);
    set(slot + slot::NextFree, get(table::FirstFree));
    set(table::FirstFree, slot);
}

std::uint32_t CregEditor::takeSlot() {
    if (get(table::FirstFree) == none) growTable();
    const std::uint32_t slot = get(table::FirstFree), end = slot + get(slot + slot::FreeSize), next = get(slot + slot::NextFree);
    const std::uint32_t behind = slotAtOrBehind(slot + slot::size);
    const bool more = get(slot + slot::FreeSize) > slot::size && behind < end && end - behind >= slot::size;
    set(table::FirstFree, more ? behind : next);
    if (more) {
        set(behind + slot::State, slot::isFree);
        set(behind + slot::FreeSize, end - behind);
        set(behind + slot::NextFree, next);
    }
    return slot;
}

void CregEditor::growTable() {
    const auto end = static_cast<std::uint32_t>(table_.size());
    const std::uint32_t behind = end < table::firstPage ? end - (end - table::headerSize) % slot::size : end;   // the first slot that the new bytes make whole
    table_.resize(end + table::page);
    set(table::Size, end + table::page);
    set(table::FirstFree, behind);
    set(behind + slot::State, slot::isFree);
    set(behind + slot::FreeSize, end + table::page - behind);
    set(behind + slot::NextFree, none);
    put32(header_.data() + header::FirstBlock, cregfmt::headerSize + end + table::page);
}

namespace {

void seal(Bytes& bytes, std::uint32_t flags, std::size_t checksum) {
    if ((flags & checksumValid) == 0) return;
    put32(bytes.data() + checksum, 0);
    put32(bytes.data() + checksum, 0 - sumOf(bytes));
}

}  // namespace

Bytes CregEditor::finish() {
    put16(header_.data() + header::Blocks, static_cast<std::uint32_t>(blocks_.size()));
    seal(header_, get16(header_.data() + header::Flags), header::Checksum);
    if (tableChanged_) seal(table_, get(table::Flags), table::Checksum);
    Bytes file = std::move(header_);
    file.insert(file.end(), table_.begin(), table_.end());
    for (Block& block : blocks_) {
        if (block.changed) block.space.seal();
        file.insert(file.end(), block.space.bytes().begin(), block.space.bytes().end());
    }
    return file;
}

}  // namespace brenvik
