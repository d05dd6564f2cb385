// Reading what the registry holds into the working values, with the status texts and command states that go with it.
#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/Konvertierung.h"
#include "frame/Reports.h"
#include "frame/Texte.h"
#include "registry/ValueOperations.h"
#include "tipengine/Meldungen.h"
#include "tipengine/TippMaschine.h"

namespace brenvik {
namespace {
constexpr std::string_view SidMarke = "[SID]";
}

std::string TippMaschine::keyPath(std::int16_t i) const {
    return NetzRegPfad(ctx_, eintrag(i).Hauptschlüssel) + "\\" + eintrag(i).Schlüssel;
}

std::string TippMaschine::valuePath(std::int16_t i) const { return keyPath(i) + "\\" + eintrag(i).Wertname; }

BVKRegistry& TippMaschine::valueOf(std::int16_t i) const {
    ctx_.objBVKReg.SetValuePath(ctx_.strRechnername, keyPath(i), eintrag(i).Wertname);
    return ctx_.objBVKReg;
}

WertAenderung TippMaschine::changeOfValue(std::int16_t i, std::optional<RawValue> alt, std::optional<RawValue> neu) const {
    const std::string& name = eintrag(i).Wertname;
    WertAenderung change{ctx_.strRechnername, valuePath(i), eintrag(i).TippIndex, std::move(alt), std::move(neu), false};
    if (name.find('\\') != std::string::npos) {
        change.path = keyPath(i);
        change.name = name;
    }
    return change;
}

void TippMaschine::replaceSid(std::int16_t i) {
    std::string& key = eintrag(i).Schlüssel;
    if (const auto place = key.find(SidMarke); place != std::string::npos) key.replace(place, SidMarke.size(), ctx_.strProfilSID);
}

void TippMaschine::ReadRecTipp(std::int16_t i, StatusZeile* label) {
    const bool read = reportAndGoOn(ctx_, "ReadRecTipp", [&] {
        if (readRecTippOnce(i, label, true)) readRecTippOnce(i, label, false);
    });
    Arbeitswert& w = wert(i);
    if (read || !w.roh) return;
    // It is there in a form that its type does not allow: no panel may stand for it as if it were absent.
    w.gefunden = w.ignoriert = true;
    w.strAktuellerWert.clear();
    w.strAnzeigeWert.clear();
    if (label != nullptr) *label = {strBVKTexte(179), StatusFarbe::Gefunden};
    FB_KeySave(true);
}

// Answers whether the value was taken away to adapt its type and should be read once more.
bool TippMaschine::readRecTippOnce(std::int16_t i, StatusZeile* label, bool mayRepeat) {
    Arbeitswert& w = wert(i);
    ctx_.trace.write("*** ReadRecTipp: START ***");
    replaceSid(i);
    const TippEintrag& e = eintrag(i);
    if (ctx_.trace.debug()) {
        ctx_.trace.write("Registrypfad: " + e.Hauptschlüssel + "\\" + e.Schlüssel + "\\" + e.Wertname);
        ctx_.trace.write("RechnerName: " + ctx_.strRechnername);
    }
    w.gefunden = w.ignoriert = w.nurLesen = false;
    w.roh.reset();
    BVKRegistry& reg = valueOf(i);
    if (!reg.Exists(KEY_QUERY_VALUE_MASK)) {
        RegWertNotFound(i, label);
        if (label == nullptr) w.nurLesen = readOnlyNow(i);   // one of several: it must not break the save of the others
        ctx_.trace.write("*** ReadRecTipp: ENDE ***");
        return false;
    }
    // The unnamed value of a key that is there reads as an empty string where it is absent.
    w.roh = reg.ReadRaw();
    const auto type = static_cast<std::int32_t>(w.roh ? w.roh->type : regtype::Sz);
    w.strAktuellerWert = w.roh ? toText(*w.roh) : std::string();
    if (ctx_.trace.debug()) ctx_.trace.write("Wert aus der Registry: " + traceValue(e.Wertname, w.strAktuellerWert));
    if (w.strAktuellerWert.empty() && e.Wertname.empty()) {
        RegWertNotFound(i, label);
        ctx_.trace.write("*** ReadRecTipp: ENDE ***");
        return false;
    }
    w.gefunden = true;
    if (!DatenTypOK(type, i)) {
        const bool adapted = !ctx_.blnDatenTypAbbruch && ctx_.blnDatenTypAnpassen && adaptType(i);
        if (!adapted) {
            w.strAktuellerWert.clear();
            w.strAnzeigeWert.clear();
            w.ignoriert = true;
            if (label != nullptr) {
                *label = {modus_ == Modus::NurAnsehen ? fmt::format(meldung::AndererDatentyp, DatenTypText(ctx_, type)) : strBVKTexte(179),
                          StatusFarbe::Gefunden};
            }
        }
        return adapted && mayRepeat;
    }
    if (!CheckDatenWert(i)) {
        w.strAktuellerWert.clear();
        w.strAnzeigeWert.clear();
        w.ignoriert = true;
        if (label != nullptr) *label = {strBVKTexte(179), StatusFarbe::Gefunden};
        FB_KeySave(true);
        return false;
    }
    if (ctx_.trace.debug()) ctx_.trace.write("Wert umgerechnet: " + traceValue(e.Wertname, w.strAktuellerWert));
    w.nurLesen = readOnlyNow(i);
    if (label != nullptr) {
        statusOfFound(!w.nurLesen, *label);
        w.blnWertGelesen = true;
    }
    allowDelete(i, ctx_.einstellungen.LöschenAktiv && ctx_.blnSchreibrecht);
    ctx_.trace.write("*** ReadRecTipp: ENDE ***");
    return false;
}

// Windows 95, 98 and ME know no rights to a key.
bool TippMaschine::readOnlyNow(std::int16_t i) const { return ctx_.istNT() && !mayWrite(i); }

// Status and commands of what was found.
void TippMaschine::statusOfFound(bool writable, StatusZeile& label) {
    label = {strBVKTexte(writable ? 20 : 18), StatusFarbe::Gefunden};
    ctx_.blnSchreibrecht = writable;
    FB_KeySave(writable);
    FB_Default(writable);
    FB_RegFile(true);
    ctx_.blnEinWertGelesen = true;
}

void TippMaschine::allowDelete(std::int16_t i, bool on) {
    FB_KeyDel(on);
    loeschSperre_ = on ? std::int16_t{0} : i;
}

std::string TippMaschine::deleteBlocker() {
    const std::int16_t i = loeschSperre_ > 0 && loeschSperre_ <= letzterEintrag() ? loeschSperre_ : std::int16_t{1};
    if (letzterEintrag() < i) return {};
    const std::string& name = eintrag(i).Wertname;
    return fmt::format(meldung::Eintragszeile, i, name.empty() ? name : " (" + name + ")", statusOf(i).text);
}

void TippMaschine::RegWertNotFound(std::int16_t i, StatusZeile* label) {
    ctx_.trace.write("Wert nicht vorhanden");
    Arbeitswert& w = wert(i);
    w.strAktuellerWert.clear();
    w.strAnzeigeWert.clear();
    if (label == nullptr) return;
    ctx_.blnSchreibrecht = true;
    *label = {strBVKTexte(21), StatusFarbe::Fehlt};
    w.blnWertGelesen = false;
    FB_RegFile(false);
    allowDelete(i, false);
    FB_KeySave(true);
}

void TippMaschine::fillRows(const std::string& unterWert, Panel& panel) {
    for (ListenZeile& row : panel.zeilen) {
        ctx_.objBVKReg.SetPath(ctx_.strRechnername, keyPath(1) + "\\" + row.text + "\\" + unterWert);
        const auto raw = ctx_.objBVKReg.ReadRaw();
        if (!raw) continue;
        try {
            row.unterText = toText(*raw);
        } catch (const RegError&) {
            row.unterText = bytesText(raw->bytes);   // one value that is damaged must not cost the list
        }
    }
}

void TippMaschine::ReadRecListe(const std::string& unterWert, Panel& panel, StatusZeile* label) {
    reportAndGoOn(ctx_, "ReadRecListe", [&] {
        replaceSid(1);
        ctx_.objBVKReg.SetPath(ctx_.strRechnername, keyPath(1) + "\\");
        for (const std::string& name : ctx_.objBVKReg.EnumSubKeys()) {
            panel.zeilen.push_back({name, {}, false});
            if (ctx_.trace.debug()) ctx_.trace.write("Werte: " + name);
        }
        fillRows(unterWert, panel);
        FB_KeyDel(true);
        FB_KeySave(true);
        FB_RegFile(true);
        ctx_.blnSchreibrecht = true;
        if (label == nullptr) return;
        *label = {strBVKTexte(20), StatusFarbe::Gefunden};
        wert(1).blnWertGelesen = wert(1).gefunden = true;   // what the line says, whatever stands there
    });
}

void TippMaschine::ReadRecKontext(const std::string& unterWert, Panel& panel, StatusZeile* label) {
    reportAndGoOn(ctx_, "ReadRecKontext", [&] {
        replaceSid(1);
        ctx_.objBVKReg.SetPath(ctx_.strRechnername, keyPath(1) + "\\");
        const bool found = ctx_.objBVKReg.Exists(KEY_QUERY_VALUE_MASK);
        if (found)
            for (const std::string& name : ctx_.objBVKReg.EnumSubKeys()) {
                panel.zeilen.push_back({name, {}, false});
                if (ctx_.trace.debug()) ctx_.trace.write("Werte: " + name);
            }
        else
            ctx_.trace.write("Wert nicht vorhanden");
        fillRows(unterWert, panel);
        const bool rows = !panel.zeilen.empty();
        FB_KeyDel(rows);
        FB_Default(rows);
        FB_KeySave(rows);
        ctx_.blnSchreibrecht = true;
        if (label == nullptr) return;
        *label = found ? StatusZeile{strBVKTexte(20), StatusFarbe::Gefunden} : StatusZeile{strBVKTexte(21), StatusFarbe::Fehlt};
        FB_RegFile(rows);
        wert(1).blnWertGelesen = true;
        wert(1).gefunden = found;
    });
}

}  // namespace brenvik
