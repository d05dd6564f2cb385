// tip list | show | set | default | delete | new | edit
#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "cli/Commands.h"
#include "cli/NumberOption.h"
#include "cli/ValueInput.h"
#include "cli/export/ExportTips.h"
#include "cli/registry/RegistryOutput.h"
#include "cli/tips/TipOutput.h"
#include "cli/tips/TipProbe.h"
#include "cli/tips/TipSystem.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik::cli {
namespace {

constexpr int TextNotSuitable = 133;

const std::map<std::string, int> Views{{"alle", 1}, {"abc", 2}, {"win95", 3}, {"win98", 4}, {"winme", 5},
                                           {"winnt", 6}, {"win2k", 7}, {"neu", 8}, {"winxp", 9}};

bool exists(Program& program, std::int32_t number) {
    for (const auto& tipp : program.context().udtTippListe)
        if (tipp.Index == number) return true;
    failed(fmt::format("Den Tipp {} gibt es nicht", number));
    return false;
}

// Shows the Tip as the window would; false, with the reason told, if it is not shown here.
bool open(Program& program, std::int32_t number) {
    if (!exists(program, number)) return false;
    const auto& f = program.context().frmBVK_Prog;
    if (!program.engine().tree().showTipByNumber(number) || f.panels.empty()) {
        failed(f.txtInfo);
        return false;
    }
    warnIfNotMeant(program.context(), number, program.context().aktuellerTipp);
    return true;
}

// Shows the Tip for a look that changes nothing; false, with the reason told, if it is not shown here.
bool inspect(Program& program, std::int32_t number) {
    if (!exists(program, number)) return false;
    program.engine().inspectTip(number);
    if (program.engine().mayBeShown() && !program.context().frmBVK_Prog.panels.empty()) return true;
    failed(strBVKTexte(TextNotSuitable));
    return false;
}

// What the commands were given.
struct Particulars {
    std::int32_t number = 0;
    std::string view = "alle", key;
    bool values = false, dryRun = false;
    std::vector<std::string> texts, rows;
    int descriptor = 0;
    std::vector<std::int32_t> entries;
    std::optional<std::string> text, command;
};

// The texts into the panels of the Tip on screen; why one of them cannot be, or nothing.
std::string fillPanels(TipEngine& engine, const Particulars& given) {
    std::string refusal;
    for (std::size_t k = 0; k < given.texts.size() && refusal.empty(); ++k)
        refusal = setEntry(engine, given.entries.empty() ? 1 : given.entries[k], given.texts[k]);
    return refusal;
}

// Saving passes empty texts over; what a boot menu holds is no text of an entry.
bool savesNothing(const Context& ctx, std::int32_t entry) {
    const auto place = static_cast<std::size_t>(entry);
    return ctx.values.at(place).strAnzeigeWert.empty() && !kindOf(ctx.aktuellerTipp.Eintrag.at(place)).section;
}

// Of every entry, since any of them may be what cannot be written.
std::string allStatuses(Program& program) {
    TipEngine& engine = program.engine();
    std::string text;
    const auto last = static_cast<std::int16_t>(program.context().aktuellerTipp.lastEntry());
    for (std::int16_t i = 1; i <= last; ++i) {
        const std::string& name = program.context().aktuellerTipp.Eintrag[static_cast<std::size_t>(i)].Wertname;
        text += last == 1 ? engine.statusOf(i).text : "\n" + fmt::format(messages::EntryLine, i, name.empty() ? name : " (" + name + ")", engine.statusOf(i).text);
    }
    return text;
}

int set(Program& program, Particulars given, bool json) {
    if (given.entries.empty() ? given.texts.size() != 1 : given.entries.size() != given.texts.size())
        return failed("Zu jedem --entry gehört genau ein TEXT", 2);
    TipEngine& engine = program.engine();
    fillFromInput(given.texts, given.descriptor);
    if (!inspect(program, given.number)) return 1;
    if (const std::string refusal = fillPanels(engine, given); !refusal.empty()) return failed(refusal);
    if (!given.dryRun) {   // what the Tip asks as it opens is asked only for texts that fit
        program.context().blnGeaendert = false;
        if (!open(program, given.number)) return 1;
        if (const std::string refusal = fillPanels(engine, given); !refusal.empty()) return failed(refusal);
    }
    if (!program.context().frmBVK_Prog.KeySave) return failed("Der Tipp kann nicht gespeichert werden: " + allStatuses(program));
    if (!engine.DatenRead()) return 1;
    for (const std::int32_t entry : given.entries.empty() ? std::vector<std::int32_t>{1} : given.entries)
        if (savesNothing(program.context(), entry)) return failed(emptyTextRefused(entry));
    if (given.dryRun) {
        warnIfNotMeant(program.context(), given.number, program.context().aktuellerTipp);
        return printPlan(program, json);
    }
    const bool saved = program.context().aktuellerTipp.INITipp ? engine.SaveINITipp(false) : engine.RegWerteSchreiben();
    return saved ? 0 : 1;
}

int setDefault(Program& program, std::int32_t number) {
    if (!open(program, number)) return 1;
    if (!program.context().frmBVK_Prog.Default || keyListOf(program) != nullptr)
        return failed("Der Tipp hat keinen Standardwert, oder er darf nicht geschrieben werden");
    return program.engine().Default_Einstellungen() ? 0 : 1;
}

int rowNamed(const Panel& panel, const std::string& name) {
    const auto row = std::find_if(panel.lines.begin(), panel.lines.end(), [&](const ListLine& r) { return equalText(r.text, name); });
    return row == panel.lines.end() ? -1 : static_cast<int>(row - panel.lines.begin());
}

int noRow(const std::string& name) { return failed(fmt::format("Den Eintrag \"{}\" gibt es nicht", name)); }

int remove(Program& program, const Particulars& given) {
    if (!open(program, given.number)) return 1;
    Context& ctx = program.context();
    TipEngine& engine = program.engine();
    if (kindOf(ctx.frmBVK_Prog.panels.front()).section) return failed("Einträge des Bootmenüs werden hier nicht gelöscht");
    if (!ctx.frmBVK_Prog.KeyDel && !ctx.einstellungen.LöschenAktiv) return failed("Das Löschen von Registrywerten ist in den Einstellungen nicht erlaubt");
    if (!ctx.frmBVK_Prog.KeyDel) return failed("Der Tipp kann nicht gelöscht werden. " + engine.deleteBlocker());
    const Panel* keys = keyListOf(program);
    if ((keys != nullptr) == given.rows.empty())
        return failed(keys != nullptr ? "Mit --row gehört der Name jeder Zeile dazu, die gelöscht werden soll" : "--row gibt es nur für Listen von Schlüsseln", 2);
    for (const std::string& name : given.rows) {
        const int row = rowNamed(*keys, name);
        if (row < 0) return noRow(name);
        engine.input().userTick(static_cast<std::size_t>(keys - ctx.frmBVK_Prog.panels.data()), row, true);
    }
    const bool done = ctx.aktuellerTipp.INITipp ? engine.SaveINITipp(true) : engine.RegWerteLoeschen();
    return done ? 0 : 1;
}

// An entry of a context menu. What is not given stays as it is, or empty where the entry is new.
int saveEntry(Program& program, const Particulars& given, bool neu) {
    if (!open(program, given.number)) return 1;
    const Panel* list = keyListOf(program);
    if (list == nullptr || !kindOf(*list).menu) return failed("Der Tipp ist kein Kontextmenü");
    const int row = neu ? -1 : rowNamed(*list, given.key);
    if (!neu && row < 0) return noRow(given.key);
    program.engine().input().userSelectRow(static_cast<std::size_t>(list - program.context().frmBVK_Prog.panels.data()), row);
    BearbeitenRequest entry = program.engine().bearbeitenRequest(neu);
    if (neu) entry.txtKeyName = given.key;
    entry.txtBeschreibung = given.text.value_or(entry.txtBeschreibung);
    entry.txtBefehl = given.command.value_or(entry.txtBefehl);
    if (Trim(entry.txtBefehl).empty()) return failed("Der Eintrag braucht einen Schlüsselnamen und einen Befehl");
    return entry.save(entry) ? 0 : 1;
}

}  // namespace

void addTipCommands(CLI::App& app, Invocation& call) {
    auto* group = app.add_subcommand("tip", "Tipps ansehen und ändern");
    group->require_subcommand(1);
    const auto given = std::make_shared<Particulars>();
    const auto on = [&call](CLI::App* c, std::function<int(Program&)> work) {
        c->callback([&call, work] {
            call.needsDatabase = true;
            call.run = work;
        });
        return c;
    };
    const auto command = [&](const char* name, const char* text, std::function<int(Program&)> work) {
        auto* c = on(group->add_subcommand(name, text), std::move(work));
        c->add_option("NUMBER", given->number, "Nummer des Tipps")->transform(wholeNumber<std::int32_t>())->required();
        return c;
    };

    auto* list = on(group->add_subcommand("list", "Baum der Tipps ausgeben"),
                    [&call, given](Program& p) { return printTips(p, Views.at(given->view), call.json, given->values); });
    list->add_option("--view", given->view, "Ansicht: alle, abc, win95, win98, winme, winnt, win2k, winxp, neu")->check([](const std::string& text) {
        return Views.count(text) != 0 ? std::string() : "Unbekannte Ansicht: " + text;
    });
    list->add_flag("--values", given->values, "Mit den Werten, die jetzt in der Registry stehen");
    command("show", "Einen Tipp mit seinen Werten ausgeben",
            [&call, given](Program& p) { return exists(p, given->number) ? printTip(p, given->number, call.json) : 1; });

    auto* setter = command("set", "Werte eines Tipps setzen und speichern", [&call, given](Program& p) { return set(p, *given, call.json); });
    setter->add_option("--entry", given->entries, "Nummer des Eintrags; je TEXT einmal")->transform(wholeNumber<std::int32_t>())->allow_extra_args(false)->take_all();
    setter->add_option("TEXT", given->texts, std::string("Wert, wie ihn das Eingabefeld zeigt; on oder off für Kästchen; in Textfeldern löscht <delkey> den Wert, ein leerer Text wird nicht gespeichert") + FromInputHelp)->required();
    setter->add_option("--value-fd", given->descriptor, "Deskriptor, von dem der Wert \"-\" gelesen wird")->transform(wholeNumber<int>());
    setter->add_flag("--dry-run", given->dryRun, "Nur zeigen, was geschrieben würde, Wert für Wert; nichts schreiben");
    setter->add_option("--name", call.bootName, "Bootmenü: unter diesem Namen einen neuen Eintrag anlegen, statt ihn zu überschreiben");
    command("default", "Einen Tipp auf den Windows-Standard setzen", [given](Program& p) { return setDefault(p, given->number); });
    auto* eraser = command("delete", "Die Werte eines Tipps löschen", [given](Program& p) { return remove(p, *given); });
    eraser->add_option("--row", given->rows, "Zeile einer Liste von Schlüsseln; mehrfach möglich")->allow_extra_args(false)->take_all();

    for (const bool neu : {true, false}) {
        auto* entry = command(neu ? "new" : "edit", neu ? "Eintrag eines Kontextmenüs anlegen" : "Eintrag eines Kontextmenüs ändern",
                              [given, neu](Program& p) { return saveEntry(p, *given, neu); });
        entry->add_option("NAME", given->key, "Schlüsselname des Eintrags")->required();
        entry->add_option("--text", given->text, "Anzeigetext; ohne ihn zeigt das Menü den Schlüsselnamen");
        entry->add_option("--command", given->command, "Befehl, der ausgeführt wird")->required(neu);
    }
}

}  // namespace brenvik::cli
