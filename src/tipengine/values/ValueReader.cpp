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

void ValueReader::readEntry(std::int16_t i, StatusLine& status) {
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
    for (std::int16_t i : panel.entries) {
        ReadRecTipp(i, nullptr);
        writable = writable || !wert(i).readOnly;
        if (!wert(i).gefunden) continue;
        ++found;
        if (!wert(i).ignored) ++shown;
    }
    if (found == 0) {
        RegWertNotFound(panel.entries.front(), &panel.status);
        panel.status.text = strBVKTexte(32);
        return;
    }
    if (shown == 0) {
        panel.status = {strBVKTexte(179), StatusColour::Gefunden};
        windows().FB_KeySave(true);
        return;
    }
    statusOfFound(writable, panel.status);
    for (std::int16_t i : panel.entries) wert(i).blnWertGelesen = wert(i).gefunden && !wert(i).ignored;
    if (shown < panel.entries.size()) panel.status = {strBVKTexte(31), StatusColour::Gefunden};
    allowDelete(panel.entries.front(), ctx_.einstellungen.LöschenAktiv && ctx_.blnSchreibrecht);
}

void ValueReader::readIniSilently(Panel& panel) {
    bool found = false, any = false;
    for (std::int16_t i : panel.entries) {
        StatusLine line;
        ReadINITipp(i, &line, found);
        if (!any || !found) panel.status = line;
        any = any || wert(i).blnWertGelesen;
        if (!found) return;   // a file that is not there is asked for once
    }
    allowDelete(panel.entries.front(), any && ctx_.einstellungen.LöschenAktiv);
}

void ValueReader::ReadRecTipp(std::int16_t i, StatusLine* label) {
    const bool read = reportAndGoOn(ctx_, "ReadRecTipp", [&] {
        if (readRecTipOnce(i, label, true)) readRecTipOnce(i, label, false);
    });
    WorkingValue& w = wert(i);
    if (read || !w.roh) return;
    // It is there in a form that its type does not allow: no panel may stand for it as if it were absent.
    w.gefunden = w.ignored = true;
    w.strAktuellerWert.clear();
    w.strAnzeigeWert.clear();
    if (label != nullptr) *label = {strBVKTexte(179), StatusColour::Gefunden};
    windows().FB_KeySave(true);
}

// Answers whether the value was taken away to adapt its type and should be read once more.
bool ValueReader::readRecTipOnce(std::int16_t i, StatusLine* label, bool mayRepeat) {
    WorkingValue& w = wert(i);
    ctx_.trace.write("*** ReadRecTipp: START ***");
    tip_.replaceSid(i);
    const TipEntry& e = eintrag(i);
    if (ctx_.trace.debug()) {
        ctx_.trace.write("Registrypfad: " + e.Hauptschlüssel + "\\" + e.Schlüssel + "\\" + e.Wertname);
        ctx_.trace.write("RechnerName: " + ctx_.strRechnername);
    }
    w.gefunden = w.ignored = w.readOnly = false;
    w.roh.reset();
    BVKRegistry& reg = tip_.valueOf(i);
    if (!reg.Exists(KEY_QUERY_VALUE_MASK)) {
        RegWertNotFound(i, label);
        if (label == nullptr) w.readOnly = readOnlyNow(i);   // one of several: it must not break the save of the others
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
            w.ignored = true;
            if (label != nullptr) {
                *label = {tip_.lookOnly ? fmt::format(messages::OtherDataType, DatenTypText(ctx_, type)) : strBVKTexte(179),
                          StatusColour::Gefunden};
            }
        }
        return adapted && mayRepeat;
    }
    if (!CheckDatenWert(i)) {
        w.strAktuellerWert.clear();
        w.strAnzeigeWert.clear();
        w.ignored = true;
        if (label != nullptr) *label = {strBVKTexte(179), StatusColour::Gefunden};
        windows().FB_KeySave(true);
        return false;
    }
    if (ctx_.trace.debug()) ctx_.trace.write("Wert umgerechnet: " + traceValue(e.Wertname, w.strAktuellerWert));
    w.readOnly = readOnlyNow(i);
    if (label != nullptr) {
        statusOfFound(!w.readOnly, *label);
        w.blnWertGelesen = true;
    }
    allowDelete(i, ctx_.einstellungen.LöschenAktiv && ctx_.blnSchreibrecht);
    ctx_.trace.write("*** ReadRecTipp: ENDE ***");
    return false;
}

// Windows 95, 98 and ME know no rights to a key.
bool ValueReader::readOnlyNow(std::int16_t i) const { return ctx_.istNT() && !tip_.mayWrite(i); }

// Status and commands of what was found.
void ValueReader::statusOfFound(bool writable, StatusLine& label) {
    label = {strBVKTexte(writable ? 20 : 18), StatusColour::Gefunden};
    ctx_.blnSchreibrecht = writable;
    windows().FB_KeySave(writable);
    windows().FB_Default(writable);
    windows().FB_RegFile(true);
    ctx_.blnEinWertGelesen = true;
}

void ValueReader::allowDelete(std::int16_t i, bool on) {
    windows().FB_KeyDel(on);
    deleteBlocked_ = on ? std::int16_t{0} : i;
}

std::string ValueReader::deleteBlocker() const {
    const std::int16_t i = deleteBlocked_ > 0 && deleteBlocked_ <= lastEntry() ? deleteBlocked_ : std::int16_t{1};
    if (lastEntry() < i) return {};
    const std::string& name = eintrag(i).Wertname;
    return fmt::format(messages::EntryLine, i, name.empty() ? name : " (" + name + ")", tip_.statusOf(i).text);
}

void ValueReader::RegWertNotFound(std::int16_t i, StatusLine* label) {
    ctx_.trace.write("Wert nicht vorhanden");
    WorkingValue& w = wert(i);
    w.strAktuellerWert.clear();
    w.strAnzeigeWert.clear();
    if (label == nullptr) return;
    ctx_.blnSchreibrecht = true;
    *label = {strBVKTexte(21), StatusColour::Missing};
    w.blnWertGelesen = false;
    windows().FB_RegFile(false);
    allowDelete(i, false);
    windows().FB_KeySave(true);
}

void ValueReader::ReadINITipp(std::int16_t i, StatusLine* label, bool& found) {
    reportAndGoOn(ctx_, "ReadINITipp", [&] {
        WorkingValue& w = wert(i);
        std::string path;
        w.gefunden = w.ignored = false;
        files_.DateiCheck(i, path, found);
        if (found) {
            const ProfileFile content = TipFiles::load(files_.file(i));
            const auto value = content.value(eintrag(i).Schlüssel, eintrag(i).Wertname);
            w.gefunden = value.has_value();
            w.strAnzeigeWert = w.strAktuellerWert = value.value_or(std::string());
            if (kindOf(eintrag(i)).typed && content.value(eintrag(i).Schlüssel, eintrag(i).Wertname, 0) != value) w.lock = messages::IniLock;
            if (label != nullptr) {
                windows().FB_KeySave(true);
                const bool there = !w.strAktuellerWert.empty();
                *label = {"[Wert in " + path + (there ? " vorhanden]" : " nicht vorhanden]"), there ? StatusColour::Gefunden : StatusColour::Missing};
                allowDelete(i, there && ctx_.einstellungen.LöschenAktiv);
                w.blnWertGelesen = there;
            }
        } else {
            w.blnWertGelesen = false;
            files_.missing(path, label);
        }
        windows().FB_RegFile(false);
        windows().FB_KeyInfo(false);
        ctx_.blnSchreibrecht = true;
    });
}

}  // namespace brenvik
