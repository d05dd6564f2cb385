#include "tipengine/values/ValueWriter.h"

#include <algorithm>
#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/Reports.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "registry/Upcase.h"
#include "registry/ValueOperations.h"
#include "registry/text/ValueText.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/Kind.h"
#include "tipengine/values/KeyImage.h"

namespace brenvik {

// The panel's state becomes strAnzeigeWert of its entries. Entries that were found and not touched keep what was read.
void ValueWriter::collectPanel(const Panel& panel) {
    if (panel.unfinished) return;
    for (const std::int16_t i : panel.entries) {
        if (!wert(i).touched && (wert(i).roh || wert(i).gefunden)) continue;
        if (auto text = kindOf(panel).valueText(tip_, panel, i)) wert(i).strAnzeigeWert = std::move(*text);
    }
}

GatheredValue ValueWriter::collectedValue(std::int16_t i) const {
    const WorkingValue& w = wert(i);
    GatheredValue value;
    value.text = w.strAnzeigeWert;
    value.gefunden = w.roh.has_value();
    value.touched = w.touched;
    if (!w.touched && w.roh) {
        value.wert = w.roh;
    } else if (w.strAnzeigeWert == DelKey) {
        value.geloescht = true;
    } else if (!w.strAnzeigeWert.empty()) {
        try {
            value.wert = valueToWrite(i);
        } catch (const NumberedError& error) {
            value.unfit = error.what();
        }
    }
    return value;
}

std::vector<GatheredValue> ValueWriter::collectedValues() const {
    std::vector<GatheredValue> values(1);
    for (std::int16_t i = 1; i <= lastEntry(); ++i) {
        values.push_back(collectedValue(speakerOf(i)));
        values.back().text = wert(i).strAnzeigeWert;
        // Values that nobody touched keep the form they were read in; what their panel shows is told by the panel.
        const Panel* panel = tip_.panelOfEntry(i);
        if (panel == nullptr || wert(i).touched || panel->numberInvalid) continue;
        if (auto text = kindOf(*panel).valueText(tip_, *panel, i)) values.back().text = std::move(*text);
    }
    return values;
}

// The value as the registry takes it. Throws NumberedError or RegError with the refusal as its text.
RawValue ValueWriter::valueToWrite(std::int16_t i) const {
    const TipEntry& e = eintrag(i);
    std::string text = kindOf(e).registryText(e, wert(i).strAnzeigeWert);
    if (e.Datentyp == 7) {
        std::replace(text.begin(), text.end(), '\0', '\n');
        std::erase(text, '\r');
        try {
            return valueFromInput(text, regtype::MultiSz, ValueForm::Lines);
        } catch (const RegError& error) {
            throw RegError(error.number, error.what() + std::string(messages::NothingChanged));
        }
    }
    try {
        return fromText(text, static_cast<std::uint32_t>(e.Datentyp));
    } catch (const RegError& error) {
        throw RegError(error.number, fmt::format(messages::ValueUnfit, text, DatenTypText(ctx_, e.Datentyp)));
    }
}

// Whether two entries name one value.
bool ValueWriter::sameValue(std::int16_t i, std::int16_t j) const {
    const TipEntry &a = eintrag(i), &b = eintrag(j);
    if (ctx_.aktuellerTipp.INITipp) return equalText(files_.path(i), files_.path(j)) && equalText(a.Schlüssel, b.Schlüssel) && equalText(a.Wertname, b.Wertname);
    const auto key = [&](std::int16_t entry) {   // a doubled or closing backslash means the same key
        std::string path;
        for (const std::string& part : Split(tip_.keyPath(entry), "\\"))
            if (!part.empty()) path += part + "\\";
        return path;
    };
    return sameName(a.Wertname, b.Wertname) && sameName(key(i), key(j));
}

// The entry that tells what becomes of the value: of several that name it, one that was set goes before those that were not.
std::int16_t ValueWriter::speakerOf(std::int16_t i) const {
    if (wert(i).touched) return i;
    for (std::int16_t k = lastEntry(); k >= 1; --k)
        if (wert(k).touched && sameValue(k, i)) return k;
    return i;
}

// What is to be done for each entry, before anything is done. A value that cannot be written refuses the whole save.
std::vector<PlannedValue> ValueWriter::planWrites(std::string& refusal) {
    std::vector<PlannedValue> plan;
    const bool anySet = std::any_of(ctx_.values.begin(), ctx_.values.end(), [](const WorkingValue& w) { return w.touched; });
    for (std::int16_t i = 1; i <= lastEntry() && refusal.empty(); ++i) {
        if (speakerOf(i) != i) continue;
        const WorkingValue& w = wert(i);
        PlannedValue p{i, tip_.valuePath(i), {}, {}, PlannedValue::Tat::Writing, false};
        p.alt = tip_.valueOf(i).ReadRaw();
        if (!w.touched && p.alt != w.roh) continue;   // made, changed or deleted by somebody else since it was read: not ours to turn back
        const bool writable = tip_.mayWrite(i);
        if (!writable && !w.touched && (w.roh || anySet)) continue;   // nor may it stop the others
        GatheredValue value = collectedValue(i);
        refusal = value.unfit;
        if (!value.geloescht && !value.wert && refusal.empty()) continue;
        if (value.geloescht) p.tat = PlannedValue::Tat::Loeschen;
        p.neu = std::move(value.wert);
        const auto twin = std::find_if(plan.begin(), plan.end(), [&](const PlannedValue& other) { return sameValue(other.eintrag, i); });
        if (twin != plan.end()) {   // one value is written once, as its last entry has it
            if (refusal.empty() && w.touched && twin->neu != p.neu) refusal = fmt::format(messages::TwoSettings, twin->eintrag, i, p.path);
            *twin = std::move(p);
            continue;
        }
        if (value.geloescht && !p.alt) continue;
        if (!writable && refusal.empty()) refusal = fmt::format(messages::OnlyReadable, p.path);
        plan.push_back(std::move(p));
    }
    return plan;
}

// What a save would write, as a record of the change.
Change ValueWriter::changeOf(const std::vector<PlannedValue>& plan, Change::Art art) const {
    Change change = tip_.newChange(art);
    for (const PlannedValue& p : plan) change.values.push_back(tip_.changeOfValue(p.eintrag, p.alt, p.neu));
    return change;
}

void ValueWriter::writePlanned(std::vector<PlannedValue>& plan, Change& change) {
    RunningChange running(recorder_, change);
    for (std::size_t k = 0; k < plan.size(); ++k) {
        PlannedValue& p = plan[k];
        BVKRegistry& reg = tip_.valueOf(p.eintrag);
        if (p.tat == PlannedValue::Tat::Loeschen)
            reg.DeleteValue();
        else
            reg.WriteRaw(*p.neu);
        p.written = true;
        running.written(k);
    }
}

void ValueWriter::deleteValues(Change& change) {
    wert(1).strAnzeigeWert = strBVKTexte(60);
    change = tip_.newChange(Change::Art::Loeschen);
    for (std::int16_t i = 1; i <= lastEntry(); ++i) {
        bool known = false;
        for (std::int16_t k = 1; k < i && !known; ++k) known = sameValue(k, i);
        if (auto raw = known ? std::nullopt : tip_.valueOf(i).ReadRaw()) change.values.push_back(tip_.changeOfValue(i, std::move(raw), std::nullopt));
    }
    RunningChange running(recorder_, change);
    for (std::size_t k = 0; k < change.values.size(); ++k) {
        selectValue(ctx_.objBVKReg, change.values[k]);
        if (!ctx_.objBVKReg.CheckAccess(KEY_ALL_ACCESS_MASK)) continue;   // stays, and the rebuilt Tip shows it
        ctx_.objBVKReg.DeleteValue();
        running.written(k);
    }
}

void ValueWriter::deleteTickedKeys() {
    for (const Panel& panel : windows().panels) {
        for (const ListLine& row : panel.lines) {
            if (!row.ticked || row.text.empty()) continue;   // an empty name would mean the Tip's own key
            std::string path = tip_.keyPath(1) + "\\" + row.text;
            Change change = tip_.newChange(kindOf(panel).menu ? Change::Art::ContextMenu : Change::Art::Key);
            change.key = keyImages(ctx_.objBVKReg, ctx_.strRechnername, path);
            for (KeyImage& image : change.key) image.geloescht = true;   // what of it, the registry tells
            RunningChange running(recorder_, change);
            DelUnterKey(ctx_, path, true, ctx_.strRechnername);
            // HKCR shows two places as one, and deleting there reaches the upper one only.
            if (change.key.size() < 2) continue;
            for (const KeyImage& image : change.key) {
                std::string real = image.path;
                ctx_.objBVKReg.SetPath(ctx_.strRechnername, real + "\\");
                if (ctx_.objBVKReg.Exists(KEY_QUERY_VALUE_MASK)) DelUnterKey(ctx_, real, true, ctx_.strRechnername);
            }
        }
    }
}

}  // namespace brenvik
