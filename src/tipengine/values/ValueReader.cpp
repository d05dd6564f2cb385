#include "tipengine/values/ValueReader.h"

#include <algorithm>
#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/Reports.h"
#include "frame/files/ProfileFile.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {

void ValueReader::readEntry(std::int16_t i, StatusZeile& status) {
    bool found = false;
    if (ctx_.aktuellerTipp.INITipp)
        ReadINITipp(i, &status, found);
    else
        ReadRecTipp(i, &status);
}

// Kinds 6, 7 and 8 read their entries without a label; one status line then speaks for all of them.
void ValueReader::readSilently(Panel& panel) {
    if (ctx_.aktuellerTipp.INITipp) return readIniSilently(panel);
    std::size_t found = 0, shown = 0;
    bool writable = false;
    for (std::int16_t i : panel.eintraege) {
        ReadRecTipp(i, nullptr);
        writable = writable || !wert(i).nurLesen;
        if (!wert(i).gefunden) continue;
        ++found;
        if (!wert(i).ignoriert) ++shown;
    }
    if (found == 0) {
        RegWertNotFound(panel.eintraege.front(), &panel.status);
        panel.status.text = strBVKTexte(32);
        return;
    }
    if (shown == 0) {
        panel.status = {strBVKTexte(179), StatusFarbe::Gefunden};
        fenster().FB_KeySave(true);
        return;
    }
    statusOfFound(writable, panel.status);
    for (std::int16_t i : panel.eintraege) wert(i).blnWertGelesen = wert(i).gefunden && !wert(i).ignoriert;
    if (shown < panel.eintraege.size()) panel.status = {strBVKTexte(31), StatusFarbe::Gefunden};
    allowDelete(panel.eintraege.front(), ctx_.einstellungen.LöschenAktiv && ctx_.blnSchreibrecht);
}

void ValueReader::readIniSilently(Panel& panel) {
    bool found = false, any = false;
    for (std::int16_t i : panel.eintraege) {
        StatusZeile line;
        ReadINITipp(i, &line, found);
        if (!any || !found) panel.status = line;
        any = any || wert(i).blnWertGelesen;
        if (!found) return;   // a file that is not there is asked for once
    }
    allowDelete(panel.eintraege.front(), any && ctx_.einstellungen.LöschenAktiv);
}

void ValueReader::ReadRecTipp(std::int16_t i, StatusZeile* label) {
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
    fenster().FB_KeySave(true);
}

// Answers whether the value was taken away to adapt its type and should be read once more.
bool ValueReader::readRecTippOnce(std::int16_t i, StatusZeile* label, bool mayRepeat) {
    Arbeitswert& w = wert(i);
    ctx_.trace.write("*** ReadRecTipp: START ***");
    tip_.replaceSid(i);
    const TippEintrag& e = eintrag(i);
    if (ctx_.trace.debug()) {
        ctx_.trace.write("Registrypfad: " + e.Hauptschlüssel + "\\" + e.Schlüssel + "\\" + e.Wertname);
        ctx_.trace.write("RechnerName: " + ctx_.strRechnername);
    }
    w.gefunden = w.ignoriert = w.nurLesen = false;
    w.roh.reset();
    BVKRegistry& reg = tip_.valueOf(i);
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
        const bool adapted = !blnDatenTypAbbruch_ && blnDatenTypAnpassen_ && adaptType(i);
        if (!adapted) {
            w.strAktuellerWert.clear();
            w.strAnzeigeWert.clear();
            w.ignoriert = true;
            if (label != nullptr) {
                *label = {tip_.lookOnly ? fmt::format(meldung::AndererDatentyp, DatenTypText(ctx_, type)) : strBVKTexte(179),
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
        fenster().FB_KeySave(true);
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
bool ValueReader::readOnlyNow(std::int16_t i) const { return ctx_.istNT() && !tip_.mayWrite(i); }

// Status and commands of what was found.
void ValueReader::statusOfFound(bool writable, StatusZeile& label) {
    label = {strBVKTexte(writable ? 20 : 18), StatusFarbe::Gefunden};
    ctx_.blnSchreibrecht = writable;
    fenster().FB_KeySave(writable);
    fenster().FB_Default(writable);
    fenster().FB_RegFile(true);
    ctx_.blnEinWertGelesen = true;
}

void ValueReader::allowDelete(std::int16_t i, bool on) {
    fenster().FB_KeyDel(on);
    loeschSperre_ = on ? std::int16_t{0} : i;
}

std::string ValueReader::deleteBlocker() const {
    const std::int16_t i = loeschSperre_ > 0 && loeschSperre_ <= letzterEintrag() ? loeschSperre_ : std::int16_t{1};
    if (letzterEintrag() < i) return {};
    const std::string& name = eintrag(i).Wertname;
    return fmt::format(meldung::Eintragszeile, i, name.empty() ? name : " (" + name + ")", tip_.statusOf(i).text);
}

void ValueReader::RegWertNotFound(std::int16_t i, StatusZeile* label) {
    ctx_.trace.write("Wert nicht vorhanden");
    Arbeitswert& w = wert(i);
    w.strAktuellerWert.clear();
    w.strAnzeigeWert.clear();
    if (label == nullptr) return;
    ctx_.blnSchreibrecht = true;
    *label = {strBVKTexte(21), StatusFarbe::Fehlt};
    w.blnWertGelesen = false;
    fenster().FB_RegFile(false);
    allowDelete(i, false);
    fenster().FB_KeySave(true);
}

void ValueReader::ReadINITipp(std::int16_t i, StatusZeile* label, bool& found) {
    reportAndGoOn(ctx_, "ReadINITipp", [&] {
        Arbeitswert& w = wert(i);
        std::string path;
        w.gefunden = w.ignoriert = false;
        files_.DateiCheck(i, path, found);
        if (found) {
            const Profildatei content = TipFiles::load(files_.file(i));
            const auto value = content.value(eintrag(i).Schlüssel, eintrag(i).Wertname);
            w.gefunden = value.has_value();
            w.strAnzeigeWert = w.strAktuellerWert = value.value_or(std::string());
            if (kindOf(eintrag(i)).typed && content.value(eintrag(i).Schlüssel, eintrag(i).Wertname, 0) != value) w.sperre = meldung::IniSperre;
            if (label != nullptr) {
                fenster().FB_KeySave(true);
                const bool there = !w.strAktuellerWert.empty();
                *label = {"[Wert in " + path + (there ? " vorhanden]" : " nicht vorhanden]"), there ? StatusFarbe::Gefunden : StatusFarbe::Fehlt};
                allowDelete(i, there && ctx_.einstellungen.LöschenAktiv);
                w.blnWertGelesen = there;
            }
        } else {
            w.blnWertGelesen = false;
            files_.missing(path, label);
        }
        fenster().FB_RegFile(false);
        fenster().FB_KeyInfo(false);
        ctx_.blnSchreibrecht = true;
    });
}

}  // namespace brenvik
