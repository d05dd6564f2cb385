#include "cli/tips/TipOutput.h"

#include <fmt/format.h>

#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>

#include "cli/registry/RegistryOutput.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik::cli {
namespace {

using nlohmann::ordered_json;

// Lines and the parts of a REG_MULTI_SZ value beside each other, all else as it is.
std::string beside(std::string text) {
    std::replace_if(text.begin(), text.end(), [](char c) { return c == '\n' || c == '\0'; }, '|');
    std::erase(text, '\r');
    return text;
}

class Liste {
public:
    Liste(Program& program, bool json, bool values) : program_(program), json_(json), values_(values) {}

    int print() {
        const ordered_json root = node(0, 0);
        if (json_) std::cout << jsonText(root["children"]) << "\n";
        return 0;
    }

private:
    ordered_json node(int index, int depth) {
        const TreeNode n = program_.context().frmBVK_Prog.tvBVKDB.at(static_cast<std::size_t>(index));
        ordered_json out{{"text", n.text}};
        if (n.art == TreeNode::Art::Tipp) {
            const std::int32_t number = n.nummer;
            out["number"] = number;
            if (!json_) std::cout << std::string(static_cast<std::size_t>(depth - 1) * 2, ' ') << fmt::format("{:>5}  {}\n", number, oneLine(n.text));
            if (values_) printValues(number, depth);
            return out;
        }
        if (depth > 0 && !json_) std::cout << std::string(static_cast<std::size_t>(depth - 1) * 2, ' ') << oneLine(n.text) << "\n";
        out["children"] = ordered_json::array();
        for (int child : displayOrder(program_.context().frmBVK_Prog, index)) out["children"].push_back(node(child, depth + 1));
        return out;
    }

    void printValues(std::int32_t number, int depth) {
        TipEngine& engine = program_.engine();
        engine.inspectTip(number);
        const std::string indent(static_cast<std::size_t>(depth) * 2 + 5, ' ');
        const auto last = static_cast<std::int16_t>(program_.context().aktuellerTipp.lastEntry());
        for (std::int16_t i = 1; i <= last; ++i) {
            const TipEntry& entry = program_.context().aktuellerTipp.Eintrag[static_cast<std::size_t>(i)];
            const std::string name = entry.Wertname.empty() ? std::string("(Standard)") : entry.Wertname;
            std::cout << indent << oneLine(name) << ": " << oneLine(beside(engine.shownText(i))) << "  " << oneLine(engine.statusOf(i).text) << "\n";
        }
    }

    Program& program_;
    bool json_, values_;
};

// Where the display text is a list of choices, the value's name stands for the entry.
std::string captionOf(const TipEntry& e) {
    if (!e.Beschriftung.empty()) return e.Beschriftung;
    return kindOf(e).captionList || e.Anzeigetext.empty() ? e.Wertname : e.Anzeigetext;
}

// The rows of a list of keys: each with its text, in context menus with its command too.
ordered_json rowsJson(TipEngine& engine, const Panel& panel) {
    ordered_json rows = ordered_json::array();
    for (const ListLine& row : panel.lines) {
        ordered_json out{{"name", row.text}, {"text", row.subText}};
        if (kindOf(panel).menu) {
            BearbeitenRequest entry = engine.bearbeitenRequest(true);
            entry.txtKeyName = row.text;
            entry.commandRead(entry);
            out["command"] = entry.txtBefehl;
        }
        rows.push_back(std::move(out));
    }
    return rows;
}

// What the panel of an entry can be set to; empty where that is no list.
std::vector<std::string> choicesOf(Program& program, std::int16_t entry) {
    for (const Panel& panel : program.context().frmBVK_Prog.panels)
        if (kindOf(panel).offers && panel.entries.front() == entry)
            return panel.selection;
    return {};
}

constexpr const char* Unread = "[Registry Wert nicht lesbar]";
bool isUnread(const ordered_json& entry) { return entry["status"] == "" || entry["status"] == Unread; }

ordered_json entryJson(Program& program, std::int16_t i) {
    Context& ctx = program.context();
    const TipEntry& e = ctx.aktuellerTipp.Eintrag[static_cast<std::size_t>(i)];
    const WorkingValue& w = ctx.values[static_cast<std::size_t>(i)];
    ordered_json out{{"entry", i},
                     {"kind", e.Ausgabeart},
                     {"root", e.Hauptschlüssel},
                     {"key", e.Schlüssel},
                     {"name", e.Wertname},
                     {"type", DatenTypText(ctx, e.Datentyp)},
                     {"caption", captionOf(e)},
                     {"current", beside(w.strAktuellerWert)},
                     {"shown", beside(program.engine().shownText(i))},
                     {"found", ctx.aktuellerTipp.INITipp ? w.blnWertGelesen : w.gefunden},
                     {"status", program.engine().statusOf(i).text}};
    // What is shown of a value that could not be read says nothing of it.
    if (isUnread(out)) out["current"] = out["shown"] = "", out["found"] = nullptr, out["status"] = Unread;
    if (const Panel* panel = keyListOf(program); panel != nullptr && i == 1) out["rows"] = rowsJson(program.engine(), *panel);
    if (const auto choices = choicesOf(program, i); !choices.empty()) out["choices"] = choices;
    return out;
}

}  // namespace

std::string effectText(TipEffect effect) {
    switch (effect) {
        case TipEffect::AtOnce: return {};
        case TipEffect::DesktopReloaded: return "Lädt den Desktop neu";
        case TipEffect::NewLogon: return "Wirkt nach einer neuen Anmeldung";
        case TipEffect::LogonOrRestart: return "Wirkt nach einer neuen Anmeldung, spätestens nach einem Neustart";
    }
    return {};
}

const Panel* keyListOf(Program& program) {
    for (const Panel& panel : program.context().frmBVK_Prog.panels)
        if (program.engine().rowsAreKeys(panel)) return &panel;
    return nullptr;
}

int printTip(Program& program, std::int32_t number, bool json) {
    program.engine().inspectTip(number);
    const Tipp& tipp = program.context().aktuellerTipp;
    ordered_json out{{"number", number},           {"heading", tipp.Überschrift}, {"description", tipp.Beschreibung},
                     {"systems", systemsOf(tipp)},   {"restart", tipp.Neustart},    {"entries", ordered_json::array()}};
    for (std::int16_t i = 1; i <= static_cast<std::int16_t>(tipp.lastEntry()); ++i) out["entries"].push_back(entryJson(program, i));
    const int code = std::any_of(out["entries"].begin(), out["entries"].end(), isUnread) ? 1 : 0;
    if (json) {
        std::cout << jsonText(out) << "\n";
        return code;
    }
    std::string names;
    for (const std::string& s : systemsOf(tipp)) names += (names.empty() ? "" : ", ") + s;
    std::cout << oneLine(tipp.Überschrift) << "\n" << std::string(60, '-') << "\n" << tipp.Beschreibung << "\n\nGeeignet für: " << names << "\n";
    if (const std::string when = effectText(effectOf(tipp)); !when.empty()) std::cout << when << "\n";
    for (const auto& e : out["entries"]) {
        const std::string root = e["root"], key = e["key"], name = e["name"], type = e["type"];
        const std::string place = tipp.INITipp ? fmt::format("{} [{}] {}", tipp.Eintrag[e["entry"].get<std::size_t>()].SchlüsselNT, key, name)
                                               : fmt::format("{}\\{}\\{}  ({})", root, key, name, type);
        std::cout << fmt::format("\n{}. {}\n   {}\n", e["entry"].get<int>(), oneLine(e["caption"].get<std::string>()), oneLine(place));
        if (e.contains("rows"))
            for (const auto& row : e["rows"])
                std::cout << RTrim(fmt::format("   {}  \"{}\"  {}", oneLine(row["name"].get<std::string>()), oneLine(row["text"].get<std::string>()),
                                               oneLine(row.value("command", std::string()))))
                          << "\n";
        else
            std::cout << "   Anzeige: " << oneLine(e["shown"].get<std::string>()) << "\n";
        if (e.contains("choices")) {
            std::string choices;
            for (const auto& choice : e["choices"]) choices += (choices.empty() ? "" : " | ") + choice.get<std::string>();
            std::cout << "   Auswahl: " << oneLine(choices) << "\n";
        }
        std::cout << "   " << oneLine(e["status"].get<std::string>()) << "\n";
    }
    return code;
}

int printTips(Program& program, int view, bool json, bool values) {
    program.engine().tree().selectTab(view);
    return Liste(program, json, values && !json).print();
}

}  // namespace brenvik::cli
