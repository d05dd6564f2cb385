// The registry's data type against the database's, and the display form of what was read.
#include <algorithm>
#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/Reports.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "tipengine/Messages.h"
#include "tipengine/WindowRequests.h"
#include "tipengine/kinds/Kind.h"
#include "tipengine/values/ValueReader.h"

namespace brenvik {

bool ValueReader::DatenTypOK(std::int32_t regType, std::int16_t i) {
    ProcTrace trace(ctx_.trace, "DatenTypOK");
    trace.p(regType).p(i);
    TipEntry& e = eintrag(i);
    WorkingValue& w = wert(i);
    trace.note("If " + std::to_string(regType) + " <> " + std::to_string(e.Datentyp));
    bool ok = true;
    const bool bothStrings = (regType == 1 && e.Datentyp == 2) || (regType == 2 && e.Datentyp == 1);
    if (regType != e.Datentyp && bothStrings) {
        if (ctx_.intBS == 1 || ctx_.intBS == 2) e.Datentyp = regType;
    } else if (regType != e.Datentyp) {
        ok = false;
        if (tip_.lookOnly) {
            blnDatenTypAbbruch_ = true;
            blnDatenTypAnpassen_ = false;
        } else if (w.DatentypModus != 1) {
            blnDatenTypAbbruch_ = false;
            blnDatenTypAnpassen_ = true;
            trace.note("Info: Datentyp wird automatisch angepasst");
        } else {
            DatentypRequest window;
            window.tipNumber = std::to_string(e.TippIndex);
            window.typeDatabase = DatenTypText(ctx_, e.Datentyp);
            window.typeRegistry = DatenTypText(ctx_, regType);
            window.contents = w.strAktuellerWert;
            ctx_.port.showWindow(window);
            blnDatenTypAbbruch_ = !window.weiter;
            blnDatenTypAnpassen_ = window.weiter;
        }
    }
    trace.r(ok);
    return ok;
}

// Takes the value of the other type away. Its raw content goes into a change record first.
bool ValueReader::adaptType(std::int16_t i) {
    WorkingValue& w = wert(i);
    if (w.typeHandled) return false;
    w.typeHandled = true;
    Change change = tip_.newChange(Change::Art::TypeAdapted);
    change.values.push_back(tip_.changeOfValue(i, w.roh, std::nullopt));
    RunningChange running(recorder_, change);
    if (!WertDel(i)) return false;
    running.written(0);
    return true;
}

bool ValueReader::WertDel(std::int16_t index) {
    ctx_.trace.write("Prozedur: WertDel -Ende-");   // stands here for the start line
    ctx_.trace.write("--- P: " + traceText(index));
    bool deleted = false;
    reportAndGoOn(ctx_, "WertDel", [&] {
        const std::string path = tip_.valuePath(index);
        ctx_.trace.write("--- Lösche Wert: " + path);
        if (tip_.valueOf(index).ReadRaw() && ctx_.objBVKReg.CheckAccess(KEY_ALL_ACCESS_MASK)) {
            ctx_.objBVKReg.DeleteValue();
            deleted = true;
        }
    });
    ctx_.trace.write("--- R: " + traceText(deleted));
    ctx_.trace.write("Prozedur: WertDel -Ende-");
    return deleted;
}

// Puts strAktuellerWert into display form; false if it is none of the values that the Tip knows.
bool ValueReader::CheckDatenWert(std::int16_t i) {
    const TipEntry& e = eintrag(i);
    WorkingValue& w = wert(i);
    std::string& value = w.strAktuellerWert;
    bool ok = true;
    const bool converted = reportAndGoOn(ctx_, "CheckDatenWert", [&] {
        const std::string lower = e.WertAus == DelKey ? std::string("0") : lowerCase(e.WertAus);
        const std::string upper = e.WertEin == DelKey ? std::string() : lowerCase(e.WertEin);
        if (ctx_.trace.debug()) ctx_.trace.write("--- MinWert: " + lower + " MaxWert: " + upper);
        const std::string compared = upperCase(value);   // before a dword loses its sign
        value = kindOf(e).displayForm(ctx_, e.Datentyp, value);
        ok = kindOf(e).isKnown({e.Datentyp, lower, upper, compared, value});
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
