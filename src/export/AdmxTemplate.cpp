#include "export/AdmxTemplate.h"

#include <cmath>
#include <fmt/format.h>
#include <optional>
#include <set>

#include "export/LineText.h"
#include "frame/program/Product.h"
#include "frame/text/Characters.h"
#include "frame/text/Conversions.h"
#include "registry/RegPath.h"
#include "registry/ValueOperations.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {

constexpr double LargestNumber = 4294967295.0;
constexpr std::size_t LongestString = 255;      // of a state's value, a key or a name
constexpr const char* Root = "Brenvik";
constexpr const char* Suitable = "Windows";
constexpr const char* Schema = "http://schemas.microsoft.com/GroupPolicy/2006/07/PolicyDefinitions";

bool isNoXml(char32_t c) { return (c & characters::BadByte) != 0 || (c >= 0xD800 && c <= 0xDFFF) || c == 0xFFFE || c == 0xFFFF; }

// Whether XML gives the text back as it was; it has no place for most control characters, and makes blanks of the others.
bool xmlHolds(std::string_view text) {
    if (hasControls(text)) return false;
    for (std::size_t at = 0; at < text.size();)
        if (isNoXml(characters::next(text, at))) return false;
    return true;
}

// For element content and attributes in double quotes. In texts for people a blank stands for each character that XML lacks.
std::string xml(std::string_view text) {
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t c = characters::next(text, at);
        switch (c) {
            case U'&': out += "&amp;"; break;
            case U'<': out += "&lt;"; break;
            case U'>': out += "&gt;"; break;
            case U'"': out += "&quot;"; break;
            case U'\n': out += '\n'; break;
            default:
                characters::append(out, isControl(c) || isNoXml(c) ? U' ' : c);
        }
    }
    return out;
}

// A name that begins so is a command in Registry.pol, where policies end up.
constexpr std::string_view Command = "**";

bool fitsTemplate(const std::string& key, const std::string& name) {
    return xmlHolds(key) && xmlHolds(name) && textLength(key) <= LongestString && textLength(name) <= LongestString &&
           name.find('\\') == std::string::npos && !name.starts_with(Command);
}

std::optional<std::string> unsignedNumber(const std::string& text) {
    try {
        double number = toDbl(text);
        if (number < 0) number += LargestNumber + 1;
        if (number < 0 || number > LargestNumber || number != std::floor(number)) return std::nullopt;
        return numberText(number);
    } catch (const NumberedError&) {
        return std::nullopt;
    }
}

// <delete/>, <decimal/> or <string/>; none: a policy cannot hold the value.
std::optional<std::string> state(const std::string& text, std::int32_t type) {
    if (text == DelKey) return "<delete />";
    if (type == static_cast<std::int32_t>(regtype::Dword)) {
        const auto number = unsignedNumber(text);
        return number ? std::optional("<decimal value=\"" + *number + "\" />") : std::nullopt;
    }
    if (type != static_cast<std::int32_t>(regtype::Sz) || textLength(text) > LongestString || !xmlHolds(text)) return std::nullopt;
    return "<string>" + xml(text) + "</string>";
}

// What stands inside a policy behind supportedOn, and what its presentation shows.
struct Contents {
    std::string states, element, presentation;
    bool ok() const { return !states.empty() || !element.empty(); }
};

Contents twoStates(const TipListValue& value) {
    const bool hide = kindOf(value.PanelArt).ticksHide;    // the engine writes this text for a ticked row
    const auto on = state(hide ? "no" : value.WertEin, value.Datentyp), off = state(hide ? DelKey : value.WertAus, value.Datentyp);
    if (!on || !off) return {};
    return {"      <enabledValue>" + *on + "</enabledValue>\n      <disabledValue>" + *off + "</disabledValue>\n", {}, {}};
}

std::string elementOf(const char* kind, const std::string& id, const TipListValue& value, const std::string& more) {
    return fmt::format("<{} id=\"{}\" valueName=\"{}\"{} />", kind, id, xml(value.Wertname), more);
}

std::string numberField(const std::string& id, const std::string& label, const std::string& standard) {
    return fmt::format("<decimalTextBox refId=\"{}\"{}>{}</decimalTextBox>", id, standard.empty() ? "" : " defaultValue=\"" + standard + "\"", xml(label));
}

Contents textField(const std::string& id, const std::string& label, const TipListValue& value) {
    const std::string standard = value.Standardwert == DelKey || !xmlHolds(value.Standardwert) ? std::string() : value.Standardwert;
    switch (static_cast<std::uint32_t>(value.Datentyp)) {
        case regtype::Sz: case regtype::ExpandSz: {
            const bool expand = value.Datentyp == static_cast<std::int32_t>(regtype::ExpandSz);
            return {{}, elementOf("text", id, value, expand ? " expandable=\"true\"" : ""),
                    fmt::format("<textBox refId=\"{}\"><label>{}</label>{}</textBox>", id, xml(label),
                                standard.empty() ? "" : "<defaultValue>" + xml(standard) + "</defaultValue>")};
        }
        case regtype::MultiSz:
            return {{}, elementOf("multiText", id, value, ""), fmt::format("<text>{}</text><multiTextBox refId=\"{}\" />", xml(label), id)};
        case regtype::Dword:
            return {{}, elementOf("decimal", id, value, " minValue=\"0\" maxValue=\"" + numberText(LargestNumber) + "\""), numberField(id, label, {})};
        default: return {};
    }
}

Contents numberRange(const std::string& id, const std::string& label, const TipListValue& value) {
    const bool asText = value.Datentyp == static_cast<std::int32_t>(regtype::Sz);
    if (!asText && value.Datentyp != static_cast<std::int32_t>(regtype::Dword)) return {};
    const double factor = value.Werteliste.empty() ? 1 : toDbl(value.Werteliste);
    const double least = toDbl(value.WertAus) * factor, most = toDbl(value.WertEin) * factor;
    if (least < 0 || most < least || most > LargestNumber) return {};
    const auto standard = value.Standardwert == DelKey || value.Standardwert.empty() ? std::nullopt : unsignedNumber(value.Standardwert);
    const bool inRange = standard && toDbl(*standard) >= least && toDbl(*standard) <= most;
    const std::string unit = factor == 1 ? std::string() : fmt::format(" (mal {})", value.Werteliste);
    return {{}, elementOf("decimal", id, value, fmt::format(" minValue=\"{}\" maxValue=\"{}\"{}", numberText(least), numberText(most), asText ? " storeAsText=\"true\"" : "")),
            numberField(id, label + unit, inRange ? *standard : numberText(least))};
}

Contents contentsOf(const std::string& id, const std::string& label, const TipListValue& value) {
    switch (kindOf(value.PanelArt).part) {
        case TemplatePart::States: return twoStates(value);
        case TemplatePart::Text: return textField(id, label, value);
        case TemplatePart::Number: return numberRange(id, label, value);
        case TemplatePart::None: break;
    }
    return {};
}

class Writer {
public:
    explicit Writer(const std::vector<Gruppe>& gruppen) : gruppen_(gruppen) {
        text(Root, "Brenvik");
        text(Suitable, "Microsoft Windows");
    }

    void add(const TippListEintrag& entry) {
        for (std::size_t i = 0; i < entry.Values.size(); ++i) {
            const TipListValue& value = entry.Values[i];
            const std::string where = value.pfad();
            const auto root = rootByName(value.Hauptschluessel);
            const bool user = root == Root::CurrentUser;
            const std::string key = root ? parseRegPath(value.Hauptschluessel + "\\" + value.Unterschluessel + "\\").key : std::string();
            const std::string id = fmt::format("Tipp_{}_{}", entry.TippNr, i + 1);
            const bool unit = kindOf(value.PanelArt).part == TemplatePart::Number;   // there the text says only what is counted
            const std::string label = unit ? Trim(value.Wertname + " " + value.WertInfo) : value.WertInfo.empty() ? value.Wertname : value.WertInfo;
            Contents content;
            if (!user && root != Root::LocalMachine)
                leaveOut(where, "Richtlinien gibt es nur unter HKEY_CURRENT_USER und HKEY_LOCAL_MACHINE");
            else if (value.Wertname.empty() || key.empty())
                leaveOut(where, "ein Wert ohne Namen läßt sich nicht angeben");
            else if (!fitsTemplate(key, value.Wertname))
                leaveOut(where, "dieser Name läßt sich in einer Vorlage nicht angeben");
            else if (content = contentsOf(id, label, value); !content.ok())
                leaveOut(where, "diese Art von Wert kann eine Richtlinie nicht setzen");
            else
                policy(entry, value, id, label, key, user, content);
        }
    }

    AdmxTemplate finish(const std::string& version) {
        const std::string head = fmt::format("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!-- {} {} -->\n", product::Titel, withoutDashes(version));
        const auto table = [](const char* name, const std::string& body) {
            return body.empty() ? std::string() : fmt::format("    <{0}>\n{1}    </{0}>\n", name, body);
        };
        result_.admx = head +
            fmt::format("<policyDefinitions revision=\"1.0\" schemaVersion=\"1.0\" xmlns=\"{0}\">\n"
                        "  <policyNamespaces>\n    <target prefix=\"brenvik\" namespace=\"Brenvik.Policies.Tipps\" />\n  </policyNamespaces>\n"
                        "  <resources minRequiredRevision=\"1.0\" />\n"
                        "  <supportedOn>\n    <definitions>\n      <definition name=\"{1}\" displayName=\"$(string.{1})\" />\n    </definitions>\n  </supportedOn>\n"
                        "  <categories>\n    <category name=\"{2}\" displayName=\"$(string.{2})\" />\n{3}  </categories>\n  <policies>\n{4}  </policies>\n</policyDefinitions>\n",
                        Schema, Suitable, Root, categories_, policies_);
        result_.adml = head +
            fmt::format("<policyDefinitionResources revision=\"1.0\" schemaVersion=\"1.0\" xmlns=\"{}\">\n"
                        "  <displayName>Brenvik</displayName>\n  <description>Tipps aus Brenvik</description>\n  <resources>\n{}{}  </resources>\n"
                        "</policyDefinitionResources>\n",
                        Schema, table("stringTable", strings_), table("presentationTable", presentations_));
        return std::move(result_);
    }

private:
    void leaveOut(const std::string& where, const std::string& why) { result_.leftOut.push_back(where + ": " + why); }
    static std::string withoutDashes(std::string text) {   // two of them end a comment
        std::erase_if(text, [](char c) { return c == '-' || c == '<' || c == '>' || static_cast<unsigned char>(c) < ' '; });
        return text;
    }
    void text(const std::string& id, const std::string& content) { strings_ += fmt::format("      <string id=\"{}\">{}</string>\n", id, xml(content)); }

    std::string category(const std::string& baumpfad) {
        for (const Gruppe& group : gruppen_) {
            if (Val(baumpfad) != group.Nummer) continue;
            const std::string name = fmt::format("Gruppe_{}", group.Nummer);
            if (known_.insert(group.Nummer).second) {
                categories_ += fmt::format("    <category name=\"{0}\" displayName=\"$(string.{0})\">\n      <parentCategory ref=\"{1}\" />\n    </category>\n", name, Root);
                text(name, group.Name);
            }
            return name;
        }
        return Root;
    }

    void policy(const TippListEintrag& entry, const TipListValue& value, const std::string& id, const std::string& label, const std::string& key, bool user,
                const Contents& content) {
        const std::string parent = category(entry.Baumpfad);
        const bool shows = !content.presentation.empty();
        std::string name = entry.Titel;
        if (entry.Values.size() > 1) name += ": " + label + (kindOf(value.PanelArt).ticksHide ? " ausblenden" : "");
        text(id, name);
        text(id + "_Hilfe", entry.Beschreibung + "\n\n" + value.pfad());
        policies_ += fmt::format("    <policy name=\"{0}\" class=\"{1}\" displayName=\"$(string.{0})\" explainText=\"$(string.{0}_Hilfe)\"{2} key=\"{3}\"{4}>\n"
                                 "      <parentCategory ref=\"{5}\" />\n      <supportedOn ref=\"{6}\" />\n{7}{8}    </policy>\n",
                                 id, user ? "User" : "Machine", shows ? " presentation=\"$(presentation." + id + ")\"" : "", xml(key),
                                 shows ? "" : " valueName=\"" + xml(value.Wertname) + "\"", parent, Suitable, content.states,
                                 shows ? "      <elements>\n        " + content.element + "\n      </elements>\n" : "");
        if (shows) presentations_ += fmt::format("      <presentation id=\"{}\">{}</presentation>\n", id, content.presentation);
        ++result_.policies;
    }

    const std::vector<Gruppe>& gruppen_;
    std::set<std::int32_t> known_;
    std::string categories_, policies_, strings_, presentations_;
    AdmxTemplate result_;
};

}  // namespace

AdmxTemplate admxTemplate(const TipList& liste, const std::vector<Gruppe>& gruppen, const std::string& version) {
    Writer writer(gruppen);
    for (const TippListEintrag& entry : liste)
        if (!entry.Geloescht) writer.add(entry);
    return writer.finish(version);
}

}  // namespace brenvik
