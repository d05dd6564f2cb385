#include "lists/TipValue.h"

#include "frame/text/Conversions.h"
#include "registry/RegPath.h"
#include "tipdb/LoadDB.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {
constexpr std::string_view SidMark = "[SID]";
}

const TipValue& TipValues::of(std::int32_t number) {
    const auto found = known_.find(number);
    return found != known_.end() ? found->second : known_.emplace(number, read(number)).first->second;
}

std::string TipValues::shown(std::int32_t number, const RawValue& value) {
    const TipValue& tipp = of(number);
    const std::string text = toText(value);
    try {
        return tipp.inStock && value.type == static_cast<std::uint32_t>(tipp.datentyp) ? kindOf(tipp.ausgabeart).displayForm(ctx_, tipp.datentyp, text) : text;
    } catch (const NumberedError&) {   // what no panel can show
        return text;
    }
}

TipValue TipValues::read(std::int32_t number) {
    TipValue tipp;
    tipp.tipp = number;
    if (!ctx_.objRS || number < 1) return tipp;
    ctx_.objRS->MoveFirst();
    ctx_.objRS->moveToNumber(spalte::Index, number);
    if (ctx_.objRS->atEOF()) return tipp;
    tipp.inStock = true;
    const auto text = [&](spalte::Spalte column) { return DBTextSuchen(ctx_, column, number); };
    const std::string root = text(spalte::Hauptschlüssel), list = text(spalte::Werteliste);
    std::string key = text(spalte::Schlüssel);
    tipp.wertname = text(spalte::Wertname);
    tipp.überschrift = text(spalte::Überschrift);
    tipp.datentyp = static_cast<std::int16_t>(Val(text(spalte::Datentyp)));
    tipp.ausgabeart = static_cast<std::int16_t>(Val(text(spalte::Ausgabeart)));
    if (const auto place = key.find(SidMark); place != std::string::npos) key.replace(place, SidMark.size(), ctx_.strProfilSID);
    tipp.path = root + "\\" + key + "\\" + tipp.wertname;
    if (tipp.überschrift.empty()) {   // a further value of a Tip has no heading of its own
        tipp.tipp = tipOfRow(number);
        if (tipp.tipp != number) tipp.überschrift = DBTextSuchen(ctx_, spalte::Überschrift, tipp.tipp);
    }
    tipp.usable = rootByName(root).has_value() && !key.empty() && list != FileList;
    return tipp;
}

std::int32_t TipValues::tipOfRow(std::int32_t number) {
    const auto row = ctx_.objDB.GetNewRS(ctx_, ctx_.objVerbindung.get(), "Select HauptIndex From RegDaten where Index=" + std::to_string(number));
    if (row->State() != RecordSet::IsOpen || row->atEOF()) return number;
    const auto head = row->numberOrZero<std::int32_t>(0);
    return head > 0 ? head : number;
}

}  // namespace brenvik
