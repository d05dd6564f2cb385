#pragma once
// The values of a list in the order of its Tips, raw: what every form but the told ones writes.
#include <optional>
#include <string>
#include <vector>

#include "export/ExportList.h"
#include "registry/RegPath.h"

namespace brenvik {

struct ExportValue {
    Root root = Root::CurrentUser;
    std::string key;
    ValueName name = ValueName::unnamed();
    std::optional<RawValue> wert;    // none: the value is to be deleted
    std::size_t source = 0;          // its place in TippListEintrag::Werte
    std::string pfad() const;        // "HKEY_CURRENT_USER\Key\Name", for messages
};

struct ExportTip {
    std::int16_t TippNr = 0;
    std::string Titel;
    std::vector<ExportValue> values;
};

struct ExportRecord {
    std::vector<ExportTip> tipps;            // of entries that are not deleted
    std::vector<std::string> obstacles;     // German: texts that are no value of their type; then nothing should be written
    std::size_t anzahl() const;               // of values
};

// A value has something to export if it stands in the registry, was set by the user, or is to be deleted.
ExportRecord exportValues(const TipList& liste);

// The types that lists as files know.
inline constexpr std::uint32_t ListTypes[] = {regtype::Sz, regtype::ExpandSz, regtype::Binary, regtype::Dword, regtype::MultiSz};
// Whether a list can hold a value of this type for a Tip with that data type; the two kinds of text pass for each other.
bool fitsTheType(std::uint32_t type, std::int32_t datentyp);

}  // namespace brenvik
