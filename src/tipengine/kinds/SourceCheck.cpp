#include "tipengine/kinds/SourceCheck.h"

#include <algorithm>

#include "frame/text/Conversions.h"
#include "registry/ValueOperations.h"
#include "tipengine/kinds/ValueForms.h"

namespace brenvik {

std::string typeName(std::int64_t typ) {
    const auto type = std::find_if(SourceTypes.begin(), SourceTypes.end(), [&](const SourceName& name) { return name.nummer == typ; });
    return type == SourceTypes.end() ? std::to_string(typ) : type->text;
}

std::vector<std::string> pieces(const OptText& text, const char* separator) { return Split(text.value_or(""), separator); }

void SourceCheck::need(const char* column, const OptText& text) const {
    if (text.value_or("").empty()) complain(column, "Die Art " + kind_ + " braucht " + column + ".");
}

void SourceCheck::needName() const {
    if (!row.Wertname) complain("Wertname", "Der Wertname fehlt; der unbenannte Wert hat den leeren Namen \"\".");
}

// On INI Tips Werteliste is the folder.
void SourceCheck::unused(const char* column, const OptText& text) const {
    if (text) complain(column, "Die Art " + kind_ + " benutzt " + column + " nicht.");
}

void SourceCheck::allowTypes(const std::set<std::int64_t>& types) const {
    if (!row.INITipp && types.count(row.Datentyp) == 0) complain("Datentyp", "Der Datentyp " + typeName(row.Datentyp) + " paßt nicht zur Art " + kind_ + ".");
}

void SourceCheck::checkFits(const char* column, const std::string& text) const {
    if (text != DelKey && !row.INITipp && !fitsType(row.Datentyp, text)) complain(column, "\"" + text + "\" ist kein Wert vom Typ " + typeName(row.Datentyp) + ".");
}

bool SourceCheck::hasDefault() const {
    if (!row.Standardwert) return false;
    if (row.Standardwert->empty()) complain("Standardwert", "Ein leerer Standardwert bewirkt nichts; ohne Standard bleibt das Feld weg.");
    return !row.Standardwert->empty() && *row.Standardwert != DelKey;
}

void SourceCheck::defaultOneOf(const std::vector<std::string>& values) const {
    if (!hasDefault()) return;
    const auto same = [&](const std::string& v) { return lowerCase(v) == lowerCase(*row.Standardwert); };
    if (std::none_of(values.begin(), values.end(), same)) complain("Standardwert", "Der Standardwert \"" + *row.Standardwert + "\" ist keiner der Werte des Tipps.");
}

}  // namespace brenvik
