#include "registry/creg/CregChecker.h"

#include <algorithm>
#include <set>

#include "registry/creg/CregReader.h"
#include "registry/creg/CregText.h"
#include "registry/creg/CregView.h"
#include "registry/hive/HiveNames.h"

namespace brenvik {

using namespace cregfmt;

namespace {

class CregCheck final : public CregVisitor {
public:
    CregCheck(CregView& view, HiveFindings& findings) : view_(view), findings_(findings), covered_(view.table().size() / slot::size + 1), keyed_(view.file().size()) {}

    void run() {
        fileHeader();
        tableHeader();
        walkCreg(view_, *this);
        freeSlots();
        tiling();
        for (std::size_t i = 0; i < view_.blocks().size(); ++i) block(i);
    }

    void enter(const CregSlot& slot, const std::optional<CregRecord>& record) override {
        const std::uint64_t place = placeOf(slot.at);
        const bool root = open_.empty();
        if (slot.parent != (root ? none : open_.back().at)) findings_.fault(place + slot::Parent, "Der Schlüssel verweist nicht auf den Schlüssel, unter dem er steht.");
        if (root && slot.next != none) findings_.fault(place + slot::Next, "Neben dem obersten Schlüssel steht ein weiterer.");
        cover(slot.at, slot::size);
        if (!root) open_.back().names.emplace_back().name = record ? cregName(record->name) : std::string();
        open_.push_back({slot.at, {}});
        if (record) content(slot, *record, root);
    }
    void leave() override {
        if (secondOfSameName(open_.back().names) != noTwin) findings_.fault(placeOf(open_.back().at), "Zwei Unterschlüssel haben denselben Namen.");
        open_.pop_back();
    }

private:
    struct Open {
        std::uint32_t at;
        std::vector<HiveValue> names;   // without data
    };
    static std::uint64_t placeOf(std::uint32_t slot) { return cregfmt::headerSize + std::uint64_t{slot}; }
    const std::uint8_t* bytes() const { return view_.file().data(); }

    void content(const CregSlot& slot, const CregRecord& record, bool root) {
        keyed_[record.offset] = true;
        if (!root && nameHash(record.name) != slot.hash)
            findings_.note(placeOf(slot.at) + slot::Hash, "Die Prüfzahl des Schlüsselnamens stimmt nicht; dieser Schlüssel und was unter ihm steht werden nicht geschrieben.");
        if (std::any_of(record.name.begin(), record.name.end(), [](std::uint8_t c) { return c >= 0x80; })) findings_.note(record.offset, "Der Schlüsselname hat Zeichen außerhalb von ASCII.");
        std::size_t end = 0;
        std::vector<HiveValue> names;
        for (const CregValue& value : view_.values(record, &end)) names.emplace_back().name = cregName(value.name);
        if (record.used != record::headerSize + end) findings_.fault(record.offset + record::Used, "Die benutzte Größe des Datensatzes stimmt nicht.");
        if (secondOfSameName(names) != noTwin) findings_.fault(record.offset, "Zwei Werte des Schlüssels haben denselben Namen.");
    }

    void fileHeader() {
        const ByteSpan head = view_.file().first(cregfmt::headerSize);
        const std::uint16_t flags = get16(bytes() + header::Flags), major = get16(bytes() + header::Major);
        if (get32(bytes() + header::Version) != version) findings_.fault(header::Version, "Die Versionsnummer ist unbekannt.");
        if (get16(bytes() + header::Minor) != 0 || (major != 1 && major != 0x80)) findings_.fault(header::Minor, "Zwei Felder des Dateikopfs haben unbekannte Werte.");
        if ((flags & ~knownHeaderFlags) != 0) findings_.fault(header::Flags, "Der Dateikopf hat unbekannte Kennzeichen.");
        if ((flags & checksumValid) != 0 && sumOf(head) != 0) findings_.fault(header::Checksum, "Die Prüfsumme des Dateikopfs stimmt nicht.");
        if (get32(bytes() + header::Reserved) != 0 || get32(bytes() + header::Reserved + 4) != 0) findings_.fault(header::Reserved, "Reservierte Bytes des Dateikopfs sind nicht leer.");
        if (view_.end() != view_.file().size()) findings_.fault(view_.end(), "Die Datei endet nicht mit dem letzten Block.");
    }

    void tableHeader() {
        const std::uint8_t* const p = view_.table().data();
        const std::uint32_t flags = get32(p + table::Flags);
        if (view_.table().size() % table::page != 0) findings_.fault(placeOf(table::Size), "Die Größe der Schlüsseltabelle ist kein Vielfaches von 4096.");
        if (get32(p + table::Root) != table::root) findings_.fault(placeOf(table::Root), "Der oberste Schlüssel steht nicht am Anfang der Schlüsseltabelle.");
        if ((flags & ~knownTableFlags) != 0) findings_.fault(placeOf(table::Flags), "Die Schlüsseltabelle hat unbekannte Kennzeichen.");
        if ((flags & checksumValid) != 0 && sumOf(view_.table()) != 0) findings_.fault(placeOf(table::Checksum), "Die Prüfsumme der Schlüsseltabelle stimmt nicht.");
    }

    // Slots of the grid have their number as the place where their size is noted.
    static std::size_t numberOf(std::uint32_t at) {
        return at < table::firstPage ? (at - table::headerSize) / slot::size
                                     : (table::firstPage - table::headerSize) / slot::size + (at - table::firstPage) / table::page * (table::page / slot::size) + at % table::page / slot::size;
    }
    void cover(std::uint32_t at, std::uint32_t size) {
        std::uint32_t& covered = covered_[numberOf(at)];
        if (covered != 0) findings_.fault(placeOf(at), "Ein Platz der Schlüsseltabelle ist mehrfach vergeben.");
        covered = size;
    }

    void freeSlots() {
        const std::uint8_t* const p = view_.table().data();
        for (std::uint32_t at = get32(p + table::FirstFree); at != none; at = get32(p + at + slot::NextFree)) {
            if (!view_.isSlot(at)) return findings_.fault(placeOf(at), "Die Liste der freien Plätze führt aus der Schlüsseltabelle.");
            if (covered_[numberOf(at)] != 0) return findings_.fault(placeOf(at), "Ein freier Platz der Schlüsseltabelle ist schon vergeben.");
            const std::uint32_t size = get32(p + at + slot::FreeSize);
            if (get32(p + at) != slot::isFree) findings_.fault(placeOf(at), "Ein freier Platz der Schlüsseltabelle ist nicht als frei gekennzeichnet.");
            if (size != slot::size && std::uint64_t{at} + size != view_.table().size()) findings_.fault(placeOf(at) + slot::FreeSize, "Die Größe eines freien Platzes stimmt nicht.");
            cover(at, std::max(size, slot::size));
        }
    }

    void tiling() {
        const auto end = static_cast<std::uint32_t>(view_.table().size());
        std::uint32_t at = table::headerSize;
        while (at < end && end - at >= slot::size) {
            const std::uint32_t size = covered_[numberOf(at)];
            if (size == 0) return findings_.fault(placeOf(at), "Ein Platz der Schlüsseltabelle ist weder vergeben noch frei.");
            if (size > end - at) return;   // told by its size
            for (std::uint32_t next = slotAtOrBehind(at + slot::size); next < at + size; next = slotAtOrBehind(next + slot::size))
                if (view_.isSlot(next) && covered_[numberOf(next)] != 0) return findings_.fault(placeOf(next), "Ein Platz der Schlüsseltabelle ist mehrfach vergeben.");
            at = slotAtOrBehind(at + size);
        }
    }

    void block(std::size_t index) {
        const CregBlock& b = view_.blocks()[index];
        const std::uint8_t* const p = bytes() + b.offset;
        const std::uint16_t flags = get16(p + block::Flags);
        if (b.size % 4 != 0) findings_.fault(b.offset + block::Size, "Die Größe des Blocks ist kein Vielfaches von 4.");
        if (get16(p + block::Number) != index) findings_.fault(b.offset + block::Number, "Die Nummer des Blocks stimmt nicht.");
        if ((flags & ~knownBlockFlags) != 0) findings_.fault(b.offset + block::Flags, "Der Block hat unbekannte Kennzeichen.");
        if ((flags & checksumValid) != 0 && sumOf(view_.file().subspan(b.offset, b.size)) != 0) findings_.fault(b.offset + block::Checksum, "Die Prüfsumme des Blocks stimmt nicht.");
        if (b.stray != 0) findings_.fault(b.offset + b.size - b.stray, "Am Ende des Blocks stehen Bytes, die zu keinem Datensatz gehören.");
        const std::size_t used = usedRecords(index);
        freeRecords(b, used);
        std::uint16_t lowest = 0;
        while (lowest < used && b.records[lowest].first == lowest) ++lowest;
        if (get16(p + block::LowestFreeId) != lowest) findings_.fault(b.offset + block::LowestFreeId, "Die kleinste freie Nummer des Blocks stimmt nicht.");
        if (used == 0) return;
        const std::uint16_t highest = b.records[used - 1].first;
        if (highest >= block::mostRecords || highest > get16(p + block::HighestId)) findings_.fault(b.offset + block::HighestId, "Die größte Nummer des Blocks stimmt nicht.");
    }

    std::size_t usedRecords(std::size_t index) {
        const auto& records = view_.blocks()[index].records;
        std::size_t count = 0;
        for (; count < records.size() && records[count].first != noRecord; ++count) {
            const std::uint32_t at = records[count].second;
            if (get16(bytes() + at + record::Block) != index) findings_.fault(at + record::Block, "Die Blocknummer des Datensatzes stimmt nicht.");
            if (!keyed_[at]) findings_.fault(at, "Der Datensatz gehört zu keinem Schlüssel.");
        }
        return count;
    }

    void freeRecords(const CregBlock& b, std::size_t firstFree) {
        std::set<std::uint32_t> listed;
        std::uint64_t sum = 0;
        for (std::size_t i = firstFree; i < b.records.size(); ++i) {
            const std::uint32_t at = b.records[i].second, size = get32(bytes() + at);
            sum += size;
            if (get16(bytes() + at + record::Block) != noRecord || size < record::smallestFree) findings_.fault(at, "Ein freier Datensatz ist zu klein oder falsch gekennzeichnet.");
            listed.insert(at);
        }
        if (get32(bytes() + b.offset + block::FreeBytes) != sum) findings_.fault(b.offset + block::FreeBytes, "Die Zahl der freien Bytes des Blocks stimmt nicht.");
        std::uint32_t at = get32(bytes() + b.offset + block::FirstFree);
        while (at != none && at < b.size && listed.erase(b.offset + at) != 0) at = get32(bytes() + b.offset + at + record::Used);
        if (at != none || !listed.empty()) findings_.fault(b.offset + block::FirstFree, "Die Liste der freien Datensätze des Blocks stimmt nicht.");
    }

    CregView& view_;
    HiveFindings& findings_;
    std::vector<Open> open_;
    std::vector<std::uint32_t> covered_;   // bytes that begin at each slot, used or free
    std::vector<bool> keyed_;              // records that have a key, by their offsets
};

}  // namespace

std::vector<HiveFinding> checkCreg(ByteSpan file) {
    HiveFindings findings(HiveMode::Salvage);
    try {
        if (file.size() > MaxCregFile) throw HiveError(0, "Die Datei ist zu groß für eine Registrydatei von Windows 95, 98 oder ME.");
        CregView view(file, findings);
        CregCheck(view, findings).run();
    } catch (const HiveError& error) {
        return {{error.offset, true, error.what(), 0}};
    }
    std::vector<HiveFinding> found = findings.list();
    if (findings.count() > found.size()) found.push_back({0, true, "Es gibt mehr Befunde, als hier genannt werden.", 0});
    std::stable_sort(found.begin(), found.end(), [](const HiveFinding& l, const HiveFinding& r) { return l.fault > r.fault; });
    return found;
}

}  // namespace brenvik
