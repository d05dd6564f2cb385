#include "registry/creg/CregView.h"

#include <algorithm>

namespace brenvik {

using namespace cregfmt;

CregView::CregView(ByteSpan file, HiveFindings& findings) : file_(file), findings_(findings) {
    if (!isCreg(file) || file.size() < cregfmt::headerSize + table::headerSize || !hasSignature(file.subspan(cregfmt::headerSize), "RGKN"))
        throw HiveError(0, "Die Datei ist keine Registrydatei von Windows 95, 98 oder ME.");
    const std::uint32_t size = get32(file.data() + cregfmt::headerSize + table::Size);
    if (size < table::page || size > file.size() - cregfmt::headerSize) throw HiveError(cregfmt::headerSize + table::Size, "Die Größe der Schlüsseltabelle stimmt nicht.");
    table_ = file.subspan(cregfmt::headerSize, size);
    if (get32(file.data() + header::FirstBlock) != cregfmt::headerSize + size)
        findings_.fault(header::FirstBlock, "Der erste Block schließt nicht an die Schlüsseltabelle an.");
    readBlocks();
}

void CregView::readBlocks() {
    std::size_t at = cregfmt::headerSize + table_.size();
    const std::size_t count = get16(file_.data() + header::Blocks);
    for (std::size_t i = 0; i < count; ++i) {
        const ByteSpan rest = file_.subspan(at);
        if (rest.size() < block::headerSize || !hasSignature(rest, "RGDB")) {
            findings_.fault(at, "Hier fehlt ein Block.");
            break;
        }
        CregBlock found{static_cast<std::uint32_t>(at), get32(rest.data() + block::Size), 0, {}};
        if (found.size < block::headerSize || found.size > rest.size()) {
            findings_.fault(at + block::Size, "Die Größe des Blocks stimmt nicht.");
            break;
        }
        readRecords(found);
        at += found.size;
        blocks_.push_back(std::move(found));
    }
    end_ = at;
}

void CregView::readRecords(CregBlock& block) {
    const std::uint32_t end = block.offset + block.size;
    std::uint32_t at = block.offset + block::headerSize;
    for (; end - at >= record::headerSize;) {
        const std::uint32_t size = get32(file_.data() + at);
        if (size < record::headerSize || size > end - at) {
            findings_.fault(at, "Die Größe des Datensatzes stimmt nicht.");
            break;
        }
        block.records.emplace_back(get16(file_.data() + at + record::Id), at);
        at += size;
    }
    block.stray = end - at;
    std::sort(block.records.begin(), block.records.end());
    for (std::size_t i = 1; i < block.records.size(); ++i) {
        const auto& [id, offset] = block.records[i];
        if (id != noRecord && id == block.records[i - 1].first) findings_.fault(offset + record::Id, "Zwei Datensätze des Blocks haben dieselbe Nummer.");
    }
}

CregSlot CregView::slot(std::uint32_t at) const {
    const std::uint8_t* const p = table_.data() + at;
    return {at, get32(p + slot::State), get32(p + slot::Hash), get32(p + slot::Parent), get32(p + slot::Child), get32(p + slot::Next), get16(p + slot::Id), get16(p + slot::Block)};
}

CregRecord CregView::recordAt(std::uint32_t offset) const {
    const std::uint8_t* const p = file_.data() + offset;
    CregRecord found{offset, get32(p), get32(p + record::Used), get16(p + record::Id), get16(p + record::Block), {}, {}, 0};
    if (found.isFree()) return found;
    const std::size_t room = found.size - record::headerSize, name = get16(p + record::NameSize);
    found.valueCount = get16(p + record::Values);
    if (name > room) {
        findings_.fault(offset + record::NameSize, "Der Schlüsselname ragt über den Datensatz hinaus.");
        found.valueCount = 0;
    }
    const ByteSpan content = file_.subspan(offset + record::headerSize, room);
    found.name = content.first(std::min(name, room));
    found.values = content.subspan(found.name.size());
    return found;
}

std::optional<CregRecord> CregView::record(const CregSlot& slot) const {
    if (slot.block >= blocks_.size() || slot.id == noRecord) return std::nullopt;
    const auto& records = blocks_[slot.block].records;
    const auto at = std::lower_bound(records.begin(), records.end(), std::pair<std::uint16_t, std::uint32_t>(slot.id, 0));
    return at != records.end() && at->first == slot.id ? std::optional(recordAt(at->second)) : std::nullopt;
}

std::vector<CregValue> CregView::values(const CregRecord& record, std::size_t* end) {
    std::vector<CregValue> found;
    ByteSpan rest = record.values;
    for (std::uint32_t i = 0; i < record.valueCount; ++i) {
        const std::size_t name = rest.size() < value::headerSize ? 0 : get16(rest.data() + value::NameSize);
        const std::size_t data = rest.size() < value::headerSize ? 0 : get16(rest.data() + value::DataSize);
        const std::size_t whole = value::headerSize + name + data;
        if (rest.size() < whole) {
            findings_.fault(static_cast<std::uint64_t>(rest.data() - file_.data()), "Ein Wert ragt über den Datensatz seines Schlüssels hinaus.");
            break;
        }
        found.push_back({get32(rest.data()), rest.subspan(value::headerSize, name), rest.subspan(value::headerSize + name, data), rest.first(whole)});
        rest = rest.subspan(whole);
    }
    if (end != nullptr) *end = record.name.size() + record.values.size() - rest.size();
    return found;
}

namespace {

class Walk {
public:
    Walk(CregView& view, CregVisitor& visitor) : view_(view), visitor_(visitor), met_(view.table().size()), taken_(view.file().size()) {}

    void run() {
        const std::uint32_t root = get32(view_.table().data() + table::Root);
        if (!view_.isSlot(root)) return view_.findings().fault(cregfmt::headerSize + table::Root, "Der oberste Schlüssel liegt nicht in der Schlüsseltabelle.");
        enter(root, true);
        while (!next_.empty()) {
            const std::uint32_t at = next_.back();
            if (at == none) {
                next_.pop_back();
                visitor_.leave();
            } else if (!view_.isSlot(at) || met_[at]) {
                view_.findings().fault(cregfmt::headerSize + std::uint64_t{at}, "Ein Schlüssel liegt außerhalb der Schlüsseltabelle oder kommt zweimal vor.");
                next_.back() = none;
            } else {
                next_.back() = view_.slot(at).next;
                enter(at, false);
            }
        }
    }

private:
    void enter(std::uint32_t at, bool isRoot) {
        met_[at] = true;
        const CregSlot slot = view_.slot(at);
        const std::uint64_t place = cregfmt::headerSize + std::uint64_t{at};
        if (slot.state != 0) view_.findings().fault(place, "Ein Schlüssel ist als frei gekennzeichnet.");
        const auto record = view_.record(slot);
        const bool taken = record && taken_[record->offset];
        if ((!record && (!isRoot || slot.hasRecord())) || taken) {
            view_.findings().fault(place, taken ? "Der Datensatz dieses Schlüssels gehört schon zu einem anderen." : "Der Datensatz dieses Schlüssels fehlt.");
            if (!isRoot) return;
        }
        if (next_.size() >= deepest) return view_.findings().fault(place, "Die Schlüssel liegen mehr als 512 Ebenen tief.");
        visitor_.enter(slot, taken ? std::nullopt : record);
        next_.push_back(slot.child);
    }

    CregView& view_;
    CregVisitor& visitor_;
    std::vector<bool> met_, taken_;      // slots and records, by their offsets
    std::vector<std::uint32_t> next_;    // the slot that comes next on each level
};

}  // namespace

void walkCreg(CregView& view, CregVisitor& visitor) { Walk(view, visitor).run(); }

}  // namespace brenvik
