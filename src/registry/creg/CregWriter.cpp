#include "registry/creg/CregWriter.h"

#include <algorithm>

#include "registry/Upcase.h"
#include "registry/creg/CregChecker.h"
#include "registry/creg/CregEditor.h"
#include "registry/creg/CregReader.h"

namespace brenvik {

using namespace cregfmt;

namespace {

void append(Bytes& bytes, ByteSpan more) { bytes.insert(bytes.end(), more.begin(), more.end()); }

void appendValue(Bytes& bytes, std::uint32_t type, std::uint32_t rubbish, ByteSpan name, ByteSpan data) {
    std::uint8_t head[value::headerSize];
    put32(head + value::Type, type);
    put32(head + value::Rubbish, rubbish);
    put16(head + value::NameSize, static_cast<std::uint32_t>(name.size()));
    put16(head + value::DataSize, static_cast<std::uint32_t>(data.size()));
    append(bytes, head);
    append(bytes, name);
    append(bytes, data);
}

// With the bytes of the name that is there already, if it keeps it.
void appendWanted(Bytes& bytes, const HiveValue& value, const CregCodepage& codepage, std::uint32_t rubbish = 0, const ByteSpan* name = nullptr) {
    try {
        const Bytes own = name == nullptr ? cregValueName(value.name, codepage) : Bytes(name->begin(), name->end());
        appendValue(bytes, value.data.type, rubbish, own, cregBytes(value.data, codepage));
    } catch (const RegError& error) {
        throw RegError(error.number, "Wert \"" + value.name + "\": " + error.what());
    }
}

// Where file and tree differ, in the order in which the file is changed: what is taken away makes room.
class CregDifference {
public:
    CregDifference(CregView& view, const CregCodepage& codepage) : view_(view), codepage_(codepage) {}

    void find(const HiveKey& wanted) { compare(view_.slot(table::root), wanted, false, true); }

    void apply(CregEditor& editor) const {
        for (const std::uint32_t slot : removed_) editor.remove(slot);
        for (const auto& [slot, content] : replaced_) editor.replace(slot, content);
        for (const auto& [parent, key] : added_) add(editor, parent, *key);
    }

private:
    void compare(const CregSlot& slot, const HiveKey& wanted, bool guarded, bool root) {
        const auto record = view_.record(slot);
        guarded = guarded || (!root && nameHash(record->name) != slot.hash);
        const std::size_t changes = removed_.size() + replaced_.size() + added_.size();
        if (root) {
            if (!sameValues(record, wanted)) throw RegError(regerr::NoAssignment, "Werte im obersten Schlüssel der Registrydatei können bei Windows 95, 98 und ME nicht geschrieben werden.");
        } else {
            CregContent content = changed(*record, wanted);
            ByteSpan before = view_.file().subspan(record->offset + record::headerSize, record->used - record::headerSize);
            if (!std::equal(before.begin(), before.end(), content.bytes.begin(), content.bytes.end())) replaced_.emplace_back(slot.at, std::move(content));
        }
        std::vector<const HiveKey*> there;
        for (std::uint32_t at = slot.child; at != none;) {
            const CregSlot child = view_.slot(at);
            const HiveKey* const match = wanted.find(cregName(view_.record(child)->name));
            match != nullptr ? compare(child, *match, guarded, false) : remove(child, guarded);
            there.push_back(match);
            at = child.next;
        }
        std::sort(there.begin(), there.end());
        for (const HiveKey& key : wanted.subKeys)
            if (!std::binary_search(there.begin(), there.end(), &key)) added_.emplace_back(slot.at, &key);
        if (guarded && removed_.size() + replaced_.size() + added_.size() != changes) refuseGuarded();
    }

    [[noreturn]] static void refuseGuarded() {
        throw RegError(regerr::NoAssignment, "Dieser Schlüssel oder einer darüber ist in der Registrydatei beschädigt (Prüfzahl des Namens). Dort wird nichts geschrieben.");
    }

    void remove(const CregSlot& slot, bool guarded) {
        if (guarded || nameHash(view_.record(slot)->name) != slot.hash) refuseGuarded();
        for (std::uint32_t at = slot.child; at != none;) {
            const CregSlot child = view_.slot(at);
            remove(child, false);
            at = child.next;
        }
        removed_.push_back(slot.at);
    }

    bool sameValues(const std::optional<CregRecord>& record, const HiveKey& wanted) {
        std::vector<HiveValue> there;
        if (record) {
            for (const CregValue& value : view_.values(*record)) there.push_back({cregName(value.name), cregValue(value.type, value.data)});
        }
        return there == wanted.values;
    }

    // Untouched values go back byte for byte; of others the rubbish that the file keeps with them.
    CregContent changed(const CregRecord& record, const HiveKey& wanted) {
        CregContent content;
        const std::vector<CregValue> values = view_.values(record);
        std::vector<std::string> names;
        for (const CregValue& value : values) names.push_back(cregName(value.name));
        if (cregName(record.name) == wanted.name) content.bytes.assign(record.name.begin(), record.name.end());
        else content.bytes = cregKeyName(wanted.name);
        content.nameSize = static_cast<std::uint16_t>(content.bytes.size());
        content.valueCount = static_cast<std::uint16_t>(wanted.values.size());
        for (std::size_t i = 0; i < wanted.values.size(); ++i) {
            const HiveValue& value = wanted.values[i];
            const std::size_t same = i < names.size() && names[i] == value.name ? i : indexOf(names, value.name);
            if (same == names.size()) {
                appendWanted(content.bytes, value, codepage_);
                continue;
            }
            const CregValue& old = values[same];
            const bool kept = names[same] == value.name;
            if (kept && cregValue(old.type, old.data) == value.data) {
                append(content.bytes, old.whole);
            } else {
                appendWanted(content.bytes, value, codepage_, get32(old.whole.data() + value::Rubbish), kept ? &old.name : nullptr);
            }
        }
        return content;
    }

    static std::size_t indexOf(const std::vector<std::string>& names, const std::string& name) {
        return static_cast<std::size_t>(std::find_if(names.begin(), names.end(), [&](const std::string& n) { return sameName(n, name); }) - names.begin());
    }

    void add(CregEditor& editor, std::uint32_t parent, const HiveKey& key) const {
        CregContent content{cregKeyName(key.name), static_cast<std::uint16_t>(key.name.size()), static_cast<std::uint16_t>(key.values.size())};
        for (const HiveValue& value : key.values) appendWanted(content.bytes, value, codepage_);
        const std::uint32_t slot = editor.add(parent, content);
        for (const HiveKey& subKey : key.subKeys) add(editor, slot, subKey);
    }

    CregView& view_;
    const CregCodepage& codepage_;
    std::vector<std::uint32_t> removed_;   // slots, sub keys first
    std::vector<std::pair<std::uint32_t, CregContent>> replaced_;
    std::vector<std::pair<std::uint32_t, const HiveKey*>> added_;
};

bool sameTree(const HiveKey& read, const HiveKey& wanted, const CregCodepage& codepage, bool root) {
    const auto sameValue = [&](const HiveValue& l, const HiveValue& r) {
        return l == r || (l.name == r.name && l.data.type == r.data.type && cregBytes(l.data, codepage) == cregBytes(r.data, codepage));
    };
    const auto sameKey = [&](const HiveKey& l, const HiveKey& r) { return sameTree(l, r, codepage, false); };
    return (root || read.name == wanted.name) && std::equal(read.values.begin(), read.values.end(), wanted.values.begin(), wanted.values.end(), sameValue) &&
           std::equal(read.subKeys.begin(), read.subKeys.end(), wanted.subKeys.begin(), wanted.subKeys.end(), sameKey);
}

}  // namespace

std::string whyNotWritten(ByteSpan file) {
    const std::vector<HiveFinding> findings = checkCreg(file);
    return findings.empty() || !findings.front().fault ? std::string() : findings.front().line();
}

Bytes writeCreg(ByteSpan file, const Hive& wanted, const CregCodepage& codepage, Hive* readBack) {
    if (const std::string why = whyNotWritten(file); !why.empty()) throw RegError(regerr::NoAccess, why);
    HiveFindings findings(HiveMode::Strict);
    CregView view(file, findings);
    CregDifference difference(view, codepage);
    difference.find(wanted.root);
    CregEditor editor(view);
    difference.apply(editor);
    Bytes result = editor.finish();
    if (result.size() > MaxCregFile) throw RegError(regerr::NoAssignment, "Die Registrydatei würde zu groß. Es wurde nichts geschrieben.");
    const std::string fault = whyNotWritten(result);
    Hive read;
    if (fault.empty()) read = readCreg(result).hive;
    if (!fault.empty() || !sameTree(read.root, wanted.root, codepage, true))
        throw RegError(regerr::NoAssignment, "Die geänderte Registrydatei besteht ihre Prüfung nicht und wird nicht geschrieben. " + fault);
    if (readBack != nullptr) *readBack = std::move(read);
    return result;
}

}  // namespace brenvik
