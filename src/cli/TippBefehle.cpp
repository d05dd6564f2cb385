// tip list | show | set | default | delete
#include <fmt/format.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>

#include "cli/Befehle.h"
#include "cli/TippProbe.h"
#include "frame/Texte.h"
#include "registry/ValueOperations.h"

namespace brenvik::cli {
namespace {

using nlohmann::ordered_json;

constexpr int TextNichtGeeignet = 133;

const std::map<std::string, int> Ansichten{{"alle", 1}, {"abc", 2}, {"win95", 3}, {"win98", 4}, {"winme", 5},
                                           {"winnt", 6}, {"win2k", 7}, {"neu", 8}, {"winxp", 9}};

std::string oneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\0', '|');
    std::replace(text.begin(), text.end(), '\n', '|');
    std::erase(text, '\r');
    return text;
}

class Liste {
public:
    Liste(Programm& programm, bool json, bool values) : programm_(programm), json_(json), values_(values) {
        for (const auto& tipp : programm.context().udtTippListe) numbers_.emplace(tipp.Überschrift, tipp.Index);
    }

    int print() {
        const ordered_json root = node(0, 0);
        if (json_) std::cout << root["children"].dump(2) << "\n";
        return 0;
    }

private:
    ordered_json node(int index, int depth) {
        const TreeNode n = programm_.context().frmBVK_Prog.tvBVKDB.at(static_cast<std::size_t>(index));
        ordered_json out{{"text", n.text}};
        if (n.art == TreeNode::Art::Tipp) {
            const std::int32_t number = numbers_[n.text];
            out["number"] = number;
            if (!json_) std::cout << std::string(static_cast<std::size_t>(depth - 1) * 2, ' ') << fmt::format("{:>5}  {}\n", number, n.text);
            if (values_) printValues(number, depth);
            return out;
        }
        if (depth > 0 && !json_) std::cout << std::string(static_cast<std::size_t>(depth - 1) * 2, ' ') << n.text << "\n";
        out["children"] = ordered_json::array();
        for (int child : displayOrder(programm_.context().frmBVK_Prog, index)) out["children"].push_back(node(child, depth + 1));
        return out;
    }

    void printValues(std::int32_t number, int depth) {
        TippMaschine& maschine = programm_.maschine();
        maschine.inspectTipp(number);
        const std::string indent(static_cast<std::size_t>(depth) * 2 + 5, ' ');
        const auto last = static_cast<std::int16_t>(programm_.context().aktuellerTipp.letzterEintrag());
        for (std::int16_t i = 1; i <= last; ++i) {
            const TippEintrag& entry = programm_.context().aktuellerTipp.Eintrag[static_cast<std::size_t>(i)];
            const std::string name = entry.Wertname.empty() ? std::string("(Standard)") : entry.Wertname;
            std::cout << indent << name << ": " << oneLine(maschine.shownText(i)) << "  " << maschine.statusOf(i).text << "\n";
        }
    }

    Programm& programm_;
    bool json_, values_;
    std::map<std::string, std::int32_t> numbers_;
};

bool exists(Programm& programm, std::int32_t number) {
    for (const auto& tipp : programm.context().udtTippListe)
        if (tipp.Index == number) return true;
    std::cerr << "Den Tipp " << number << " gibt es nicht\n";
    return false;
}

std::vector<std::string> systems(const Tipp& t) {
    std::vector<std::string> names;
    const std::pair<bool, int> flags[] = {{t.Win95, 0}, {t.Win98, 1}, {t.WinME, 2}, {t.WinNT, 3}, {t.Win2000, 4}, {t.WinXP, 5}};
    for (const auto& [flag, index] : flags)
        if (flag) names.push_back(strBVKBS(index));
    return names;
}

// Where the display text is a list of choices, the value's name stands for the entry.
std::string captionOf(const TippEintrag& e) {
    if (!e.Beschriftung.empty()) return e.Beschriftung;
    const bool choices = e.Ausgabeart == art::AuswahlBox || e.Ausgabeart == art::OptionsAuswahl || e.Ausgabeart == art::BitMaske;
    return choices || e.Anzeigetext.empty() ? e.Wertname : e.Anzeigetext;
}

ordered_json entryJson(Programm& programm, std::int16_t i) {
    Context& ctx = programm.context();
    const TippEintrag& e = ctx.aktuellerTipp.Eintrag[static_cast<std::size_t>(i)];
    const Arbeitswert& w = ctx.werte[static_cast<std::size_t>(i)];
    return {{"entry", i},
            {"kind", e.Ausgabeart},
            {"root", e.Hauptschlüssel},
            {"key", e.Schlüssel},
            {"name", e.Wertname},
            {"type", DatenTypText(ctx, e.Datentyp)},
            {"caption", captionOf(e)},
            {"current", oneLine(w.strAktuellerWert)},
            {"shown", oneLine(programm.maschine().shownText(i))},
            {"found", ctx.aktuellerTipp.INITipp ? w.blnWertGelesen : w.gefunden},
            {"status", programm.maschine().statusOf(i).text}};
}

int show(Programm& programm, std::int32_t number, bool json) {
    if (!exists(programm, number)) return 1;
    programm.maschine().inspectTipp(number);
    const Tipp& tipp = programm.context().aktuellerTipp;
    ordered_json out{{"number", number},           {"heading", tipp.Überschrift}, {"description", tipp.Beschreibung},
                     {"systems", systems(tipp)},   {"restart", tipp.Neustart},    {"entries", ordered_json::array()}};
    for (std::int16_t i = 1; i <= static_cast<std::int16_t>(tipp.letzterEintrag()); ++i) out["entries"].push_back(entryJson(programm, i));
    if (json) {
        std::cout << out.dump(2, ' ', false, ordered_json::error_handler_t::replace) << "\n";
        return 0;
    }
    std::string names;
    for (const std::string& s : systems(tipp)) names += (names.empty() ? "" : ", ") + s;
    std::cout << tipp.Überschrift << "\n" << std::string(60, '-') << "\n" << tipp.Beschreibung << "\n\nGeeignet für: " << names << "\n";
    if (tipp.Neustart != 0) std::cout << (tipp.Neustart == 1 ? "Wirkt nach einem Neustart\n" : "Lädt den Desktop neu\n");
    for (const auto& e : out["entries"]) {
        const std::string root = e["root"], key = e["key"], name = e["name"], type = e["type"];
        const std::string place = tipp.INITipp ? fmt::format("{} [{}] {}", tipp.Eintrag[e["entry"].get<std::size_t>()].SchlüsselNT, key, name)
                                               : fmt::format("{}\\{}\\{}  ({})", root, key, name, type);
        std::cout << fmt::format("\n{}. {}\n   {}\n   Anzeige: {}\n   {}\n", e["entry"].get<int>(), e["caption"].get<std::string>(), place,
                                 e["shown"].get<std::string>(), e["status"].get<std::string>());
    }
    return 0;
}

// Shows the Tip as the window would; false, with the reason told, if it is not shown here.
bool open(Programm& programm, std::int32_t number) {
    if (!exists(programm, number)) return false;
    const auto& f = programm.context().frmBVK_Prog;
    if (programm.maschine().showTippByNumber(number) && !f.panels.empty()) return true;
    std::cerr << f.txtInfo << "\n";
    return false;
}

// Shows the Tip for a look that changes nothing; false, with the reason told, if it is not shown here.
bool inspect(Programm& programm, std::int32_t number) {
    if (!exists(programm, number)) return false;
    programm.maschine().inspectTipp(number);
    if (programm.maschine().mayBeShown() && !programm.context().frmBVK_Prog.panels.empty()) return true;
    std::cerr << strBVKTexte(TextNichtGeeignet) << "\n";
    return false;
}

int set(Programm& programm, std::int32_t number, const std::vector<std::string>& texts, const std::vector<int>& entries, bool dryRun, bool json) {
    if (entries.empty() ? texts.size() != 1 : entries.size() != texts.size()) {
        std::cerr << "Zu jedem --entry gehört genau ein TEXT\n";
        return 2;
    }
    if (dryRun ? !inspect(programm, number) : !open(programm, number)) return 1;
    TippMaschine& maschine = programm.maschine();
    for (std::size_t k = 0; k < texts.size(); ++k) {
        const auto entry = static_cast<std::int16_t>(entries.empty() ? 1 : entries[k]);
        if (const std::string refusal = maschine.setEntryFromText(entry, texts[k]); !refusal.empty()) {
            std::cerr << refusal << "\n";
            return 1;
        }
    }
    if (!programm.context().frmBVK_Prog.KeySave) {
        std::cerr << "Der Tipp kann nicht gespeichert werden: " << maschine.statusOf(1).text << "\n";
        return 1;
    }
    if (!maschine.DatenRead()) return 1;
    if (dryRun) return printPlan(programm, json);
    const bool saved = programm.context().aktuellerTipp.INITipp ? maschine.SaveINITipp(false) : maschine.RegWerteSchreiben();
    return saved ? 0 : 1;
}

int setDefault(Programm& programm, std::int32_t number) {
    if (!open(programm, number)) return 1;
    if (!programm.context().frmBVK_Prog.Default) {
        std::cerr << "Der Tipp hat keinen Standardwert, oder er darf nicht geschrieben werden\n";
        return 1;
    }
    return programm.maschine().Default_Einstellungen() ? 0 : 1;
}

int remove(Programm& programm, std::int32_t number) {
    if (!open(programm, number)) return 1;
    Context& ctx = programm.context();
    if (!ctx.frmBVK_Prog.KeyDel) {
        std::cerr << (ctx.einstellungen.LöschenAktiv ? "Es ist nichts da, was gelöscht werden kann\n"
                                                     : "Das Löschen von Registrywerten ist in den Einstellungen nicht erlaubt\n");
        return 1;
    }
    const TippEintrag& first = ctx.aktuellerTipp.Eintrag.at(1);
    if (first.Ausgabeart == art::Kontext || (first.Ausgabeart == art::Liste && first.Wertname.empty())) {
        std::cerr << "Welche Zeilen der Liste gelöscht werden, kann nur im Fenster angehakt werden\n";
        return 1;
    }
    const bool done = ctx.aktuellerTipp.INITipp ? programm.maschine().SaveINITipp(true) : programm.maschine().RegWerteLoeschen();
    return done ? 0 : 1;
}

}  // namespace

void addTippBefehle(CLI::App& app, Aufruf& call) {
    auto* group = app.add_subcommand("tip", "Tipps ansehen und ändern");
    group->require_subcommand(1);
    auto number = std::make_shared<std::int32_t>(0);
    auto view = std::make_shared<std::string>("alle");
    auto values = std::make_shared<bool>(false);
    auto texts = std::make_shared<std::vector<std::string>>();
    auto entries = std::make_shared<std::vector<int>>();
    const auto command = [&](const char* name, const char* text) {
        auto* c = group->add_subcommand(name, text);
        c->add_option("NUMBER", *number, "Nummer des Tipps")->required();
        return c;
    };
    const auto on = [&call](CLI::App* c, std::function<int(Programm&)> work) {
        c->callback([&call, work] {
            call.needsDatabase = true;
            call.run = work;
        });
    };

    auto* list = group->add_subcommand("list", "Baum der Tipps ausgeben");
    list->add_option("--view", *view, "Ansicht: alle, abc, win95, win98, winme, winnt, win2k, winxp, neu")->check([](const std::string& text) {
        return Ansichten.count(text) != 0 ? std::string() : "Unbekannte Ansicht: " + text;
    });
    list->add_flag("--values", *values, "Mit den Werten, die jetzt in der Registry stehen");
    on(list, [&call, view, values](Programm& p) {
        p.maschine().selectTab(Ansichten.at(*view));
        return Liste(p, call.json, *values && !call.json).print();
    });
    on(command("show", "Einen Tipp mit seinen Werten ausgeben"), [&call, number](Programm& p) { return show(p, *number, call.json); });
    auto* setter = command("set", "Werte eines Tipps setzen und speichern");
    setter->add_option("--entry", *entries, "Nummer des Eintrags; je TEXT einmal")->allow_extra_args(false)->take_all();
    setter->add_option("TEXT", *texts, "Wert, wie ihn das Eingabefeld zeigt; on oder off für Kästchen")->required();
    auto dryRun = std::make_shared<bool>(false);
    setter->add_flag("--dry-run", *dryRun, "Nur zeigen, was geschrieben würde, Wert für Wert; nichts schreiben");
    on(setter, [&call, number, texts, entries, dryRun](Programm& p) { return set(p, *number, *texts, *entries, *dryRun, call.json); });
    on(command("default", "Einen Tipp auf den Windows-Standard setzen"), [number](Programm& p) { return setDefault(p, *number); });
    on(command("delete", "Die Werte eines Tipps löschen"), [number](Programm& p) { return remove(p, *number); });
}

}  // namespace brenvik::cli
