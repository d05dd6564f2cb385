#include "registry/hive/HiveChecker.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "registry/hive/HiveNames.h"
#include "registry/hive/HiveView.h"

namespace brenvik {

using namespace hivefmt;

namespace {

std::uint64_t place(std::uint32_t offset) { return std::uint64_t{headerSize} + offset; }

class Check final : public HiveVisitor {
public:
    Check(HiveView& hiveView, HiveFindings& hiveFindings) : view_(hiveView), findings_(hiveFindings) {}

    void enter(const HiveKeyRecord& record) override {
        const auto nameSize = static_cast<std::uint32_t>(2 * record.name.units());
        if (!open_.empty()) {
            Greatest& parent = open_.back().found;
            parent.keyName = std::max(parent.keyName, nameSize);
            parent.className = std::max(parent.className, static_cast<std::uint32_t>(record.className.size()));
            if ((record.flags & nk::HiveEntry) != 0) findings_.fault(place(record.offset) + 4 + nk::Flags, "Nur der oberste Schlüssel darf als solcher gekennzeichnet sein.");
        }
        open_.push_back({record, {}, {}});
        packed(record.name, place(record.offset));
        security(record);
        if (record.subKeyCount != 0) lists(record.subKeyList);
    }

    void value(const HiveValueRecord& record) override {
        Open& key = open_.back();
        key.found.valueName = std::max(key.found.valueName, static_cast<std::uint32_t>(2 * record.name.units()));
        key.found.data = std::max(key.found.data, record.size);
        key.names.push_back({textOf(record.name), {}});
        packed(record.name, place(record.offset));
        Bytes bytes;
        view_.data(record, bytes);
        const std::uint32_t minor = view_.cells().minorVersion();
        if (record.isInline) return;
        if (record.size <= 4) {
            findings_.note(place(record.offset) + 4 + vk::DataSize, "So kurze Daten stehen sonst im Wert selbst.");
        } else if (minor >= firstMinorWithBigData && record.size > bigSegment && !hasSignature(view_.cells().cell(record.data), "db")) {
            findings_.fault(place(record.offset) + 4 + vk::DataSize, "Große Daten sind nicht in Teile zerlegt.");
        }
    }

    void leave() override {
        const Open& key = open_.back();
        const std::uint32_t at = key.record.offset;
        if (secondOfSameName(key.names) != noTwin) findings_.fault(place(at), twinMessage);
        const std::uint8_t* const c = view_.cells().cell(at).data();
        greatest(at, nk::MaxName, get16(c + nk::MaxName), key.found.keyName);
        greatest(at, nk::MaxClass, get32(c + nk::MaxClass), key.found.className);
        greatest(at, nk::MaxValueName, get32(c + nk::MaxValueName), key.found.valueName);
        greatest(at, nk::MaxData, get32(c + nk::MaxData), key.found.data);
        open_.pop_back();
    }

    void finish() {
        ring();
        HiveCells cells = view_.cells();
        cells.listAllocated();
        for (const std::uint32_t at : cells.allocated()) {
            if (!view_.claimed(at) && ring_.count(at) == 0 && references_.count(at) == 0) findings_.note(place(at), "Auf diese belegte Zelle verweist nichts.");
        }
    }

private:
    struct Greatest {
        std::uint32_t keyName = 0, className = 0, valueName = 0, data = 0;
    };
    struct Open {
        HiveKeyRecord record;
        Greatest found;
        std::vector<HiveValue> names;
    };

    void greatest(std::uint32_t offset, std::size_t field, std::uint32_t told, std::uint32_t found) {
        if (told < found) findings_.fault(place(offset) + 4 + field, "Die größte Länge ist zu klein angegeben.");
        if (told > found) findings_.note(place(offset) + 4 + field, "Die größte Länge ist zu groß angegeben.");
    }

    void packed(const StoredName& name, std::uint64_t at) {
        if (name.latin1 || name.bytes.empty()) return;
        for (std::size_t i = 0; i < name.units(); ++i) {
            if (name.unit(i) > 0xFF) return;
        }
        findings_.note(at, "Der Name ließe sich mit einem Byte je Zeichen schreiben.");
    }

    void lists(std::uint32_t offset) {
        const ByteSpan cell = view_.cells().cell(offset);
        if (!hasSignature(cell, "ri")) {
            leaf(cell, offset);
            return;
        }
        const std::size_t lists = std::min<std::size_t>(get16(cell.data() + list::Count), (cell.size() - list::Entries) / 4);
        for (std::size_t i = 0; i < lists; ++i) {
            const std::uint32_t at = get32(cell.data() + list::Entries + 4 * i);
            leaf(view_.cells().cell(at), at);
        }
    }

    void leaf(ByteSpan cell, std::uint32_t offset) {
        const bool hashed = hasSignature(cell, "lh");
        if (!hashed && !hasSignature(cell, "lf")) return;
        if (hashed && view_.cells().minorVersion() < firstMinorWithHashes) findings_.fault(place(offset), "In dieser Version des Formats haben Listen keine Prüfzahlen der Namen.");
        const std::size_t entries = std::min<std::size_t>(get16(cell.data() + list::Count), (cell.size() - list::Entries) / 8);
        for (std::size_t i = 0; i < entries; ++i) {
            const std::uint8_t* const e = cell.data() + list::Entries + 8 * i;
            const ByteSpan key = view_.cells().cell(get32(e));
            if (key.size() < nk::Name || !hasSignature(key, "nk") || get16(key.data() + nk::NameSize) > key.size() - nk::Name) continue;
            const StoredName name{key.subspan(nk::Name, get16(key.data() + nk::NameSize)), (get16(key.data() + nk::Flags) & nk::Latin1Name) != 0};
            const std::uint64_t at = place(offset) + 4 + list::Entries + 8 * i + 4;
            if (hashed) {
                if (get32(e + 4) != nameHash(name)) findings_.fault(at, "Die Prüfzahl des Namens stimmt nicht.");
            } else if (const auto hint = nameHint(name); std::memcmp(e + 4, hint.data(), hint.size()) != 0) {
                findings_.fault(at, "Die ersten Zeichen des Namens stimmen nicht.");
            }
        }
    }

    void security(const HiveKeyRecord& record) {
        if (record.security == noCell) {
            findings_.fault(place(record.offset) + 4 + nk::Security, "Der Schlüssel hat keine Berechtigungen.");
        } else if (const ByteSpan descriptor = view_.descriptor(record); !descriptor.empty() && references_[record.security]++ == 0) {
            const std::string content(descriptor.begin(), descriptor.end());
            if (!descriptors_.insert(content).second) findings_.note(place(record.security), "Dieselben Berechtigungen stehen in zwei Zellen.");
        }
    }

    void ring() {
        if (references_.empty()) return;
        const std::uint32_t first = references_.begin()->first;
        for (std::uint32_t at = first; ring_.insert(at).second;) {
            const std::uint32_t next = get32(view_.cells().cell(at).data() + sk::Next);
            const ByteSpan cell = view_.cells().cell(next);
            if (cell.size() < sk::Descriptor || !hasSignature(cell, "sk")) {
                findings_.fault(place(at) + 4 + sk::Next, "Der Ring der Berechtigungen ist unterbrochen.");
                break;
            }
            if (get32(cell.data() + sk::Previous) != at) findings_.fault(place(next) + 4 + sk::Previous, "Der Ring der Berechtigungen führt nicht zurück.");
            at = next;
        }
        for (const auto& [at, count] : references_) {
            if (ring_.count(at) == 0) findings_.fault(place(at), "Diese Berechtigungen stehen nicht im Ring.");
        }
        std::set<std::uint32_t> all = ring_;
        for (const auto& reference : references_) all.insert(reference.first);
        for (const std::uint32_t at : all) {
            const auto found = references_.find(at);
            const std::uint32_t used = found == references_.end() ? 0 : found->second;
            if (get32(view_.cells().cell(at).data() + sk::References) != used) findings_.fault(place(at) + 4 + sk::References, "Die Zahl der Verweise auf die Berechtigungen stimmt nicht.");
        }
    }

    HiveView& view_;
    HiveFindings& findings_;
    std::vector<Open> open_;
    std::map<std::uint32_t, std::uint32_t> references_;   // by security cell
    std::set<std::uint32_t> ring_;
    std::set<std::string> descriptors_;
};

}  // namespace

std::vector<HiveFinding> checkHive(ByteSpan file) {
    HiveFindings findings(HiveMode::Salvage);
    try {
        HiveView view(file, findings);
        Check check(view, findings);
        walkHive(view, check);
        check.finish();
        const std::uint64_t end = std::uint64_t{headerSize} + view.cells().binsSize();
        if (file.size() >= end + binHeaderSize && std::memcmp(file.data() + end, "hbin", 4) == 0) {
            findings.note(end, "Hinter dem Ende der Daten steht ein weiterer Abschnitt.");
        }
    } catch (const HiveError& error) {
        return {{error.offset, true, error.what(), 0}};
    }
    return findings.list();
}

}  // namespace brenvik
