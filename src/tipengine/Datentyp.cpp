// The registry's data type against the database's, and the display form of what was read.
#include "frame/Konvertierung.h"
#include "frame/Reports.h"
#include "frame/Texte.h"
#include "registry/ValueOperations.h"
#include "tipengine/TippMaschine.h"

namespace brenvik {

bool TippMaschine::DatenTypOK(std::int32_t regType, std::int16_t i) {
    ProcTrace trace(ctx_.trace, "DatenTypOK");
    trace.p(regType).p(i);
    TippEintrag& e = eintrag(i);
    Arbeitswert& w = wert(i);
    trace.note("If " + std::to_string(regType) + " <> " + std::to_string(e.Datentyp));
    bool ok = true;
    const bool bothStrings = (regType == 1 && e.Datentyp == 2) || (regType == 2 && e.Datentyp == 1);
    if (regType != e.Datentyp && bothStrings) {
        if (ctx_.intBS == 1 || ctx_.intBS == 2) e.Datentyp = regType;
    } else if (regType != e.Datentyp) {
        ok = false;
        if (modus_ == Modus::NurAnsehen) {
            ctx_.blnDatenTypAbbruch = true;
            ctx_.blnDatenTypAnpassen = false;
        } else if (w.DatentypModus != 1) {
            ctx_.blnDatenTypAbbruch = false;
            ctx_.blnDatenTypAnpassen = true;
            trace.note("Info: Datentyp wird automatisch angepasst");
        } else {
            DatentypAnfrage window;
            window.tippNummer = std::to_string(e.TippIndex);
            window.typDatenbank = DatenTypText(ctx_, e.Datentyp);
            window.typRegistry = DatenTypText(ctx_, regType);
            window.inhalt = w.strAktuellerWert;
            ctx_.port.showWindow(window);
            ctx_.blnDatenTypAbbruch = !window.weiter;
            ctx_.blnDatenTypAnpassen = window.weiter;
        }
    }
    trace.r(ok);
    return ok;
}

// Takes the value of the other type away. Its raw content goes into a change record first.
bool TippMaschine::adaptType(std::int16_t i) {
    Arbeitswert& w = wert(i);
    if (w.typBehandelt) return false;
    w.typBehandelt = true;
    Aenderung change = newChange(Aenderung::Art::TypAngepasst);
    change.werte.push_back({ctx_.strRechnername, valuePath(i), eintrag(i).TippIndex, w.roh, std::nullopt, false});
    LaufendeAenderung running(recorder_, change);
    if (!WertDel(i)) return false;
    running.written(0);
    return true;
}

// Puts strAktuellerWert into display form; false if it is none of the values that the Tip knows.
bool TippMaschine::CheckDatenWert(std::int16_t i) {
    const TippEintrag& e = eintrag(i);
    Arbeitswert& w = wert(i);
    std::string& value = w.strAktuellerWert;
    bool ok = true;
    const bool converted = reportAndGoOn(ctx_, "CheckDatenWert", [&] {
        const std::string lower = e.WertAus == DelKey ? std::string("0") : lowerCase(e.WertAus);
        const std::string upper = e.WertEin == DelKey ? std::string() : lowerCase(e.WertEin);
        if (ctx_.trace.debug()) ctx_.trace.write("--- MinWert: " + lower + " MaxWert: " + upper);
        if (e.Ausgabeart == art::CheckBox && e.Datentyp == 1) {
            value = lowerCase(value);
            ok = value == lower || value == upper;
        } else if (e.Ausgabeart == art::CheckBox && (e.Datentyp == 3 || e.Datentyp == 4)) {
            const std::string compared = upperCase(value);
            ok = compared == upperCase(lower) || compared == upperCase(upper);
        } else if (e.Ausgabeart == art::TextWerte && e.Datentyp == 4) {
            value = Dec2Hex(ctx_, toLng(value));
        } else if (e.Ausgabeart == art::ZahlenWerte && e.Datentyp == 3) {
            std::int32_t sum = 0;
            for (const std::string& piece : Split(value, " ")) {
                sum += static_cast<std::int32_t>(Val(Hex2Dec(piece)));
                if (sum > 32767) throw NumberedError(errnum::Overflow, "Überlauf");
            }
            value = numberText(sum);
        }
        if (e.Datentyp == 4 && value.find('-') != std::string::npos && toLng(value) < 0)
            value = numberText(toLng(value) + 2147483648.0 + 2147483648.0);
    });
    // What cannot be converted must not stand in a panel as if it were the value.
    if (!converted) ok = false;
    w.strAnzeigeWert = value;
    if (ctx_.trace.debug()) {
        ctx_.trace.write("--- NRegWert: " + traceValue(e.Wertname, value));
        ctx_.trace.write("--- R: " + traceText(ok));
    }
    return ok;
}

}  // namespace brenvik
