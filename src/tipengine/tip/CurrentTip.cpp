#include "tipengine/tip/CurrentTip.h"

#include <algorithm>

#include "registry/ValueOperations.h"

namespace brenvik {
namespace {
constexpr std::string_view SidMark = "[SID]";
}

Panel* CurrentTip::panelOfEntry(std::int16_t entry) const {
    for (Panel& panel : window().panels)
        if (std::find(panel.entries.begin(), panel.entries.end(), entry) != panel.entries.end()) return &panel;
    return nullptr;
}

std::string CurrentTip::keyPath(std::int16_t i) const { return NetzRegPfad(ctx_, entry(i).Hauptschlüssel) + "\\" + entry(i).Schlüssel; }

std::string CurrentTip::valuePath(std::int16_t i) const { return keyPath(i) + "\\" + entry(i).Wertname; }

BVKRegistry& CurrentTip::valueOf(std::int16_t i) const {
    ctx_.objBVKReg.SetValuePath(ctx_.strRechnername, keyPath(i), entry(i).Wertname);
    return ctx_.objBVKReg;
}

void CurrentTip::replaceSid(std::int16_t i) const {
    std::string& key = entry(i).Schlüssel;
    if (const auto place = key.find(SidMark); place != std::string::npos) key.replace(place, SidMark.size(), ctx_.strProfilSID);
}

// In an INI Tip the column names the file.
void CurrentTip::takeSystemsKeys() const {
    if (!ctx_.istNT() || ctx_.aktuellerTipp.INITipp) return;
    for (TipEntry& entry : ctx_.aktuellerTipp.Eintrag)
        if (!entry.SchlüsselNT.empty()) entry.Schlüssel = entry.SchlüsselNT;
}

bool CurrentTip::mayWrite(std::int16_t i) const {
    const RegPath place = parseRegPath(keyPath(i) + "\\");
    ctx_.objBVKReg.SetPath(ctx_.strRechnername, keyPath(i) + "\\");
    RegStore& store = ctx_.objBVKReg.selectedStore();
    for (std::string key = place.key; !key.empty(); key.resize(key.find_last_of('\\') == std::string::npos ? 0 : key.find_last_of('\\')))
        if (store.keyExists(place.root, key)) return store.canOpen(place.root, key, KEY_ALL_ACCESS_MASK);
    return true;
}

StatusLine CurrentTip::statusOf(std::int16_t entry) const {
    const Panel* panel = panelOfEntry(entry);
    return panel != nullptr ? panel->status : StatusLine{};
}

Change CurrentTip::newChange(Change::Art art) const {
    Change change;
    change.art = art;
    change.tipHeading = record().Überschrift;
    change.tippIndex = last() >= 1 ? entry(1).TippIndex : std::int16_t{0};
    change.onScreen = true;
    return change;
}

ValueChange CurrentTip::changeOfValue(std::int16_t i, std::optional<RawValue> alt, std::optional<RawValue> neu) const {
    const std::string& name = entry(i).Wertname;
    ValueChange change{ctx_.strRechnername, valuePath(i), entry(i).TippIndex, std::move(alt), std::move(neu), false};
    if (name.find('\\') != std::string::npos) {
        change.path = keyPath(i);
        change.name = name;
    }
    return change;
}

}  // namespace brenvik
