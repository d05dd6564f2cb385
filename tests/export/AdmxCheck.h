#pragma once
// Policy templates against the structure that their format's documentation demands: what is wrong with a pair of files.
#include <algorithm>
#include <cctype>
#include <map>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace brenvik::test {

struct XmlElement {
    std::string name, text;   // text: what stands directly inside
    std::map<std::string, std::string> attributes;
    std::vector<XmlElement> children;

    std::string at(const std::string& attribute) const { return attributes.count(attribute) ? attributes.at(attribute) : std::string(); }
    const XmlElement* child(const std::string& wanted) const {
        const auto found = std::find_if(children.begin(), children.end(), [&](const XmlElement& each) { return each.name == wanted; });
        return found == children.end() ? nullptr : &*found;
    }
};

// As much of XML as templates use; throws at what is not well formed.
class XmlReader {
public:
    explicit XmlReader(std::string_view text) : rest_(text) {}
    XmlElement document() {
        expect("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n");
        while (accept("<!--")) {
            if (until("--").find('<') != std::string::npos) fail("comment");
            expect("-->\n");
        }
        XmlElement root = element();
        if (rest_ != "\n") fail("something behind the root");
        return root;
    }

private:
    [[noreturn]] void fail(const std::string& what) const { throw std::runtime_error(what + " at: " + std::string(rest_.substr(0, 60))); }
    bool accept(std::string_view text) {
        const bool there = rest_.substr(0, text.size()) == text;
        if (there) rest_.remove_prefix(text.size());
        return there;
    }
    void expect(std::string_view text) {
        if (!accept(text)) fail("expected " + std::string(text));
    }
    std::string until(std::string_view marks) {   // one of these characters
        const std::size_t end = rest_.find_first_of(marks);
        if (end == std::string_view::npos) fail("no end");
        std::string text(rest_.substr(0, end));
        rest_.remove_prefix(end);
        return text;
    }
    std::string plain(std::string text) const {
        for (std::size_t at = 0; (at = text.find('&', at)) != std::string::npos; ++at) {
            static const std::map<std::string, std::string> known{{"&amp;", "&"}, {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}};
            const auto entity = known.find(text.substr(at, text.find(';', at) + 1 - at));
            if (entity == known.end()) fail("entity");
            text.replace(at, entity->first.size(), entity->second);
        }
        return text;
    }
    XmlElement element() {
        XmlElement e;
        expect("<");
        e.name = until(" />");
        while (accept(" ") && rest_.substr(0, 2) != "/>") {
            const std::string attribute = until("=");
            expect("=\"");
            if (!e.attributes.emplace(attribute, plain(until("\"<"))).second) fail(attribute + " twice");
            expect("\"");
        }
        if (accept("/>")) return e;
        expect(">");
        for (;;) {
            e.text += plain(until("<"));
            if (accept("</" + e.name + ">")) return e;
            e.children.push_back(element());
        }
    }
    std::string_view rest_;
};

// What an element may hold, named with its parent. Attributes are "name:kind", optional ones end in "?"; content is the
// order of its children, each followed by a blank; text is free, or nothing but blanks. Only what our templates use.
struct XmlRule {
    const char *element, *attributes, *content;
    bool text = false;
};

inline const XmlRule AdmxRules[] = {
    {"/policyDefinitions", "xmlns:schema revision:version schemaVersion:version", "policyNamespaces resources (supportedOn )?(categories )?(policies )?"},
    {"policyDefinitions/policyNamespaces", "", "target (using )*"},
    {"policyNamespaces/target", "prefix:id namespace:uri", ""},
    {"policyDefinitions/resources", "minRequiredRevision:version", ""},
    {"policyDefinitions/supportedOn", "", "(products )?(definitions )?"},
    {"supportedOn/definitions", "", "(definition )+"},
    {"definitions/definition", "name:id displayName:string", ""},
    {"policyDefinitions/categories", "", "(category )*"},
    {"categories/category", "name:id displayName:string explainText:string?", "(parentCategory )?"},
    {"category/parentCategory", "ref:id", ""},
    {"policyDefinitions/policies", "", "(policy )*"},
    {"policies/policy", "name:id class:class displayName:string explainText:string? presentation:presentation? key:key valueName:value?",
     "parentCategory supportedOn (enabledValue )?(disabledValue )?(elements )?"},
    {"policy/parentCategory", "ref:id", ""},
    {"policy/supportedOn", "ref:id", ""},
    {"policy/enabledValue", "", "(delete |decimal |string )"},
    {"policy/disabledValue", "", "(delete |decimal |string )"},
    {"enabledValue/delete", "", ""},
    {"disabledValue/delete", "", ""},
    {"enabledValue/decimal", "value:number", ""},
    {"disabledValue/decimal", "value:number", ""},
    {"enabledValue/string", "", "", true},
    {"disabledValue/string", "", "", true},
    {"policy/elements", "", "(text |decimal |multiText )+"},
    {"elements/text", "id:id valueName:value required:bool? maxLength:number? expandable:bool?", ""},
    {"elements/multiText", "id:id valueName:value required:bool? maxLength:number? maxStrings:number?", ""},
    {"elements/decimal", "id:id valueName:value required:bool? minValue:number? maxValue:number? storeAsText:bool?", ""},
    {"/policyDefinitionResources", "xmlns:schema revision:version schemaVersion:version", "displayName description resources "},
    {"policyDefinitionResources/displayName", "", "", true},
    {"policyDefinitionResources/description", "", "", true},
    {"policyDefinitionResources/resources", "", "(stringTable )?(presentationTable )?"},
    {"resources/stringTable", "", "(string )+"},
    {"stringTable/string", "id:id", "", true},
    {"resources/presentationTable", "", "(presentation )+"},
    {"presentationTable/presentation", "id:id", "(text |textBox |decimalTextBox |multiTextBox )*"},
    {"presentation/text", "", "", true},
    {"presentation/decimalTextBox", "refId:id defaultValue:number?", "", true},
    {"presentation/multiTextBox", "refId:id", ""},
    {"presentation/textBox", "refId:id", "label (defaultValue )?"},
    {"textBox/label", "", "", true},
    {"textBox/defaultValue", "", "", true},
};

class AdmxCheck {
public:
    // What is wrong, in no particular order; nothing: all is as it should be.
    static std::vector<std::string> faultsOf(const std::string& admx, const std::string& adml) {
        AdmxCheck check;
        try {
            const XmlElement definitions = XmlReader(admx).document(), resources = XmlReader(adml).document();
            check.element("", definitions);
            check.element("", resources);
            if (check.faults_.empty()) check.references(definitions, resources);
        } catch (const std::runtime_error& error) {
            check.faults_.emplace_back(error.what());
        }
        return check.faults_;
    }

private:
    using Names = std::set<std::string>;

    void complain(const std::string& what) { faults_.push_back(what); }

    static bool fits(const std::string& kind, const std::string& text) {
        static const std::map<std::string, std::string> patterns{
            {"id", "[A-Za-z_][A-Za-z0-9_]*"}, {"version", "[0-9]{1,5}\\.[0-9]{1,5}"}, {"number", "0|[1-9][0-9]{0,9}"}, {"bool", "true|false"},
            {"class", "User|Machine|Both"}, {"string", "\\$\\(string\\.[A-Za-z0-9_]+\\)"}, {"presentation", "\\$\\(presentation\\.[A-Za-z0-9_]+\\)"},
            {"key", "[^\\\\][^\\r\\n]{0,253}[^\\\\]"}, {"value", "[^\\\\\\r\\n]{1,255}"}, {"uri", "[A-Za-z][A-Za-z0-9.:/]*"},
            {"schema", "http://schemas\\.microsoft\\.com/GroupPolicy/2006/07/PolicyDefinitions"}};
        return std::regex_match(text, std::regex(patterns.at(kind))) && (kind != "number" || std::stoull(text) <= 4294967295u);
    }

    void element(const std::string& parent, const XmlElement& e) {
        const std::string place = parent + "/" + e.name;
        const auto rule = std::find_if(std::begin(AdmxRules), std::end(AdmxRules), [&](const XmlRule& each) { return place == each.element; });
        if (rule == std::end(AdmxRules)) return complain("element that has no place here: " + place);
        Names known;
        const std::string attributes = rule->attributes;
        static const std::regex one("(\\w+):(\\w+)(\\?)?");
        for (std::sregex_iterator it(attributes.begin(), attributes.end(), one), end; it != end; ++it) {
            const std::string name = (*it)[1];
            known.insert(name);
            if (e.attributes.count(name) == 0 ? !(*it)[3].matched : !fits((*it)[2], e.at(name))) complain(place + " " + name + "=" + e.at(name));
        }
        for (const auto& [name, value] : e.attributes)
            if (known.count(name) == 0) complain("attribute that has no place here: " + place + " " + name);
        std::string content;   // a long row of one name says no more than a short one
        for (std::size_t k = 0; k < e.children.size(); ++k)
            if (k < 3 || e.children[k].name != e.children[k - 3].name) content += e.children[k].name + " ";
        if (!std::regex_match(content, std::regex(rule->content))) complain(place + " holds " + content);
        if (!rule->text && e.text.find_first_not_of(" \n") != std::string::npos) complain(place + " holds text");
        for (const XmlElement& child : e.children) element(e.name, child);
    }

    static std::vector<XmlElement> childrenOf(const XmlElement& e, const std::string& name) {
        const XmlElement* child = e.child(name);
        return child == nullptr ? std::vector<XmlElement>() : child->children;
    }

    Names namesOf(const std::vector<XmlElement>& elements, const char* attribute) {
        Names names;
        for (const XmlElement& e : elements)
            if (!names.insert(e.at(attribute)).second) complain(e.name + " twice: " + e.at(attribute));
        return names;
    }

    // What the attributes of all elements refer to, as in "$(string.Name)".
    static void referred(const XmlElement& e, const std::string& table, Names& names) {
        const std::string begin = "$(" + table + ".";
        for (const auto& [name, value] : e.attributes)
            if (value.rfind(begin, 0) == 0) names.insert(value.substr(begin.size(), value.size() - begin.size() - 1));
        for (const XmlElement& child : e.children) referred(child, table, names);
    }

    void sameNames(const char* what, const Names& wanted, const Names& there) {
        for (const std::string& name : wanted)
            if (there.count(name) == 0) complain(std::string(what) + " missing: " + name);
        for (const std::string& name : there)
            if (wanted.count(name) == 0) complain(std::string(what) + " that nobody uses: " + name);
    }

    void references(const XmlElement& definitions, const XmlElement& resources) {
        const auto strings = childrenOf(*resources.child("resources"), "stringTable"), presentations = childrenOf(*resources.child("resources"), "presentationTable");
        Names usedStrings, usedPresentations;
        referred(definitions, "string", usedStrings);
        referred(definitions, "presentation", usedPresentations);
        sameNames("string", usedStrings, namesOf(strings, "id"));
        sameNames("presentation", usedPresentations, namesOf(presentations, "id"));

        const auto categories = childrenOf(definitions, "categories"), policies = childrenOf(definitions, "policies");
        const Names categoryNames = namesOf(categories, "name"), systems = namesOf(childrenOf(*definitions.child("supportedOn"), "definitions"), "name");
        namesOf(policies, "name");
        Names above;   // a category may only lie below one that comes before it, so that none lies below itself
        for (const XmlElement& category : categories) {
            if (const XmlElement* parent = category.child("parentCategory"); parent != nullptr && above.count(parent->at("ref")) == 0) complain("category: " + parent->at("ref"));
            above.insert(category.at("name"));
        }
        for (const XmlElement& each : policies) {
            if (categoryNames.count(each.child("parentCategory")->at("ref")) == 0) complain(each.at("name") + " category: " + each.child("parentCategory")->at("ref"));
            if (systems.count(each.child("supportedOn")->at("ref")) == 0) complain(each.at("name") + " supportedOn: " + each.child("supportedOn")->at("ref"));
            policy(each, presentations);
        }
    }

    void policy(const XmlElement& e, const std::vector<XmlElement>& presentations) {
        const std::string name = e.at("name"), shown = e.at("presentation");
        const bool states = e.child("enabledValue") != nullptr && e.child("disabledValue") != nullptr, elements = e.child("elements") != nullptr;
        if (e.at("key").rfind("HK", 0) == 0) complain(name + " has a root in its key");
        if (states == elements || states != (e.attributes.count("valueName") > 0) || elements != !shown.empty()) complain(name + " is neither of two states nor of elements");
        if (!elements || shown.empty()) return;
        const auto dialog = std::find_if(presentations.begin(), presentations.end(), [&](const XmlElement& each) { return "$(presentation." + each.at("id") + ")" == shown; });
        if (dialog == presentations.end()) return complain(name + " has no " + shown);
        std::map<std::string, const XmlElement*> fields;
        for (const XmlElement& field : dialog->children)
            if (!field.at("refId").empty() && !fields.emplace(field.at("refId"), &field).second) complain(name + " field twice: " + field.at("refId"));
        const auto inside = childrenOf(e, "elements");
        namesOf(inside, "id");
        static const std::map<std::string, std::string> kinds{{"text", "textBox"}, {"multiText", "multiTextBox"}, {"decimal", "decimalTextBox"}};
        for (const XmlElement& each : inside) {
            const auto field = fields.find(each.at("id"));
            if (field == fields.end() || field->second->name != kinds.at(each.name)) {
                complain(name + " has no field of its kind for " + each.at("id"));
                continue;
            }
            range(each, *field->second);
            fields.erase(field);
        }
        for (const auto& [id, field] : fields) complain(name + " has a field of nothing: " + id);
    }

    void range(const XmlElement& e, const XmlElement& field) {
        if (e.name != "decimal") return;
        const auto number = [](const std::string& text, unsigned long long missing) { return text.empty() ? missing : std::stoull(text); };
        const auto least = number(e.at("minValue"), 0), most = number(e.at("maxValue"), 9999), standard = number(field.at("defaultValue"), 1);
        if (least > most || standard < least || standard > most) complain(e.at("id") + " begins outside its range");
    }

    std::vector<std::string> faults_;
};

}  // namespace brenvik::test
