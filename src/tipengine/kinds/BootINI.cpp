#include "tipengine/kinds/BootINI.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>

#include "frame/Reports.h"
#include "frame/files/FileSystem.h"
#include "frame/files/ProfileFile.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "tipengine/Messages.h"
#include "tipengine/WindowRequests.h"
#include "tipengine/kinds/Parts.h"
#include "tipengine/values/BootSwitches.h"

namespace brenvik {
namespace {

// Where the switches begin: at the first "/" behind the "=", but a title that stands in quotes may hold one.
std::size_t switchesBegin(const std::string& line, std::size_t equals) {
    const auto title = line.find_first_not_of(" \t", equals + 1);
    if (title != std::string::npos && line[title] == '"')
        for (auto quote = line.find('"', title + 1); quote != std::string::npos; quote = line.find('"', quote + 1)) {
            const auto behind = line.find_first_not_of(" \t", quote + 1);
            if (behind == std::string::npos || line[behind] == '/') return behind;
        }
    return line.find('/', equals);
}

// One line of the section. Bytes of Windows-1252 are one character each, and so are the marks that are looked for.
BootEntry bootEntry(const std::string& line) {
    BootEntry entry;
    entry.originalLine = line;
    entry.Name = line;
    entry.Titel = messages::FaultyEntry;
    const auto equals = line.find('=');
    if (equals == std::string::npos) return entry;
    entry.Name = line.substr(0, equals);
    if (equals + 1 >= line.size()) return entry;
    const auto slash = switchesBegin(line, equals);
    if (slash != std::string::npos) entry.Schalter = line.substr(slash);
    std::string title = Trim(Replace(line.substr(equals + 1, slash == std::string::npos ? slash : slash - equals - 1), "\t", " "));
    entry.inQuotes = title.size() >= 2 && title.front() == '"' && title.back() == '"';
    if (entry.inQuotes)
        title = title.substr(1, title.size() - 2);
    else   // without quotes the character in front of the switches is taken for the blank that belongs there
        title = line.substr(equals + 1, slash == std::string::npos ? slash : slash > equals + 1 ? slash - equals - 2 : 0);
    entry.rawTitle = title;
    entry.Titel = SQLString(title);
    entry.blnDisk = entry.Name.find("disk") != std::string::npos;
    return entry;
}

// Whether the table was made from these lines.
bool isAsRead(const std::vector<std::string>& lines, const std::vector<BootEntry>& table) {
    return !table.empty() && std::equal(lines.begin(), lines.end(), table.begin() + 1, table.end(),
                                        [](const std::string& line, const BootEntry& entry) { return entry.originalLine == line; });
}

// The line of an entry that was edited.
std::string bootLine(const BootEntry& entry) {
    const std::string& line = entry.originalLine;
    const std::string quote = entry.inQuotes ? "\"" : "";
    std::string start = entry.Name + "=" + quote + entry.rawTitle + quote;
    // A title that stays does so to the byte, however it stands in the line.
    if (const auto equals = line.find('='); equals != std::string::npos && bootEntry(line).rawTitle == entry.rawTitle)
        start = RTrim(line.substr(0, switchesBegin(line, equals)));
    return start + (entry.Schalter.empty() ? "" : " " + entry.Schalter);
}

// A title ends at its quote, a switch at a blank or at the next "/": what is new in an entry may not hold them. Answers an
// empty text, or in German why the entry cannot stand in the file.
std::string refusalOf(const BootEntry& before, const BootEntry& entry, const std::vector<ChosenSwitch>& chosen) {
    const bool newTitle = entry.originalLine.empty() || entry.rawTitle != before.rawTitle;
    if (newTitle && (Trim(entry.rawTitle).empty() || entry.rawTitle.find('"') != std::string::npos))
        return fmt::format(messages::BootName, entry.rawTitle);
    for (const ChosenSwitch& s : chosen) {
        const std::string value = Trim(s.value);
        if (s.on && switchTakesValue(s.name) && value.find_first_of(" \t/\"") != std::string::npos && switchIn(before.Schalter, s.name) != value)
            return fmt::format(messages::BootSwitchValue, value, s.name);
    }
    try {
        ProfileFile().setSectionLines("boot", {bootLine(entry)});
        return {};
    } catch (const NumberedError& error) {
        return error.what() + std::string(messages::NothingChanged);
    }
}

// The panel on the selected entry.
void BootINIParamAusW(Context& ctx, Panel& panel) {
    const BootEntry& entry = ctx.udtBootEintraege.at(static_cast<std::size_t>(ctx.intBootEintrag));
    panel.txtBINIAktiv = !entry.blnDisk;
    panel.txtBINI = entry.blnDisk ? entry.Schalter : entry.Titel;
    for (SwitchField& field : panel.schalter) {
        const auto value = switchIn(entry.Schalter, field.beschriftung);
        field.ticked = value.has_value();
        field.wert = value.value_or(std::string());
    }
}

// The selected entry as the panel has it, under its own name or as a new one.
BootEntry changedEntry(const BootEntry& selected, const Panel& panel, const std::vector<ChosenSwitch>& chosen, const std::string* newName) {
    BootEntry changed = selected;
    changed.Schalter = withSwitches(selected.Schalter, chosen);
    if (newName != nullptr) {
        changed.Titel = changed.rawTitle = *newName;
        changed.blnDisk = true;
        changed.inQuotes = true;
        changed.originalLine.clear();
    } else if (!selected.blnDisk && panel.txtBINI != selected.Titel) {
        changed.Titel = changed.rawTitle = panel.txtBINI;
    }
    return changed;
}

}  // namespace

BootINIKind::BootINIKind() : Kind({.number = art::BootINI, .sourceName = "bootini", .traceName = "BOOT.INI", .offers = true, .section = true}) {}

void BootINIKind::build(KindHost& host, std::int16_t i) const {
    reportAndGoOn(host.tip.context(), "BootINIAuslesen", [&] { BootINIAuslesen(host, addPanel(host, i), i); });
}

void BootINIKind::BootINIAuslesen(KindHost& host, Panel& panel, std::int16_t i) const {
    Context& ctx = host.tip.context();
    MainWindow& f = host.tip.window();
    panel.label = strBVKTexte(220);
    std::string path;
    bool found = false;
    host.files.DateiCheck(i, path, found);
    f.KeyDel = f.RegFile = f.KeyInfo = false;
    ctx.blnSchreibrecht = true;
    host.tip.value(i).blnWertGelesen = found;
    if (!found) return host.files.missing(path, &panel.status);
    f.KeySave = true;
    panel.status = {"[Datei " + path + " vorhanden]", StatusColour::Gefunden};
    ctx.udtBootEintraege.assign(1, {});
    for (const std::string& line : TipFiles::load(host.files.file(i)).sectionLines(host.tip.entry(i).Schlüssel)) {
        ctx.udtBootEintraege.push_back(bootEntry(line));
        panel.selection.push_back(ctx.udtBootEintraege.back().Titel);
    }
    for (const std::string& offered : Split(host.tip.entry(i).Anzeigetext, "#")) {
        const std::string name = switchName(offered);
        panel.schalter.push_back({name, false, switchTakesValue(name), {}});
    }
    if (panel.selection.empty()) return;
    panel.chosen = 0;
    ctx.intBootEintrag = 1;
    BootINIParamAusW(ctx, panel);
}

// Input belongs to the entry it was made for: it is settled before another one is shown.
void BootINIKind::choose(KindHost& host, Panel& panel, int item) const {
    Context& ctx = host.tip.context();
    const std::size_t place = host.tip.placeOf(panel);
    auto& panels = host.tip.window().panels;
    if (ctx.blnGeaendert) {
        const std::size_t before = panels.size();
        if (!host.settle()) return host.redraw(panels[place]);   // back to the entry that holds the input
        if (panels.size() != before || place >= panels.size()) return;
        if (item >= static_cast<int>(panels[place].selection.size())) return;
    }
    panels[place].chosen = item;
    ctx.intBootEintrag = item + 1;
    reportAndGoOn(ctx, "cboBootINI_Click", [&] { BootINIParamAusW(ctx, panels[place]); });
    host.redraw(panels[place]);
}

void BootINIKind::flip(KindHost& host, Panel& panel, std::size_t box, bool on) const {
    panel.schalter[box].ticked = on;
    host.touched(panel, panel.entries.front());
}

void BootINIKind::typeSwitch(KindHost& host, Panel& panel, std::size_t box, const std::string& text) const {
    panel.schalter[box].wert = text;
    host.touched(panel, panel.entries.front());
}

void BootINIKind::typeTitle(KindHost& host, Panel& panel, const std::string& text) const {
    if (!panel.txtBINIAktiv) return;
    panel.txtBINI = text;
    host.touched(panel, panel.entries.front());
}

// The panel's switches become those of the selected entry, or of a new one; false if the user cancelled or it cannot be.
bool BootINIKind::mayCollect(KindHost& host, const Panel& panel, std::optional<BootInput>& input) const {
    Context& ctx = host.tip.context();
    if (ctx.intBootEintrag < 1) return true;
    const auto& table = ctx.udtBootEintraege;
    const BootEntry& selected = table.at(static_cast<std::size_t>(ctx.intBootEintrag));
    BootINIRequest dialog;
    dialog.txtBootWert = selected.Titel;
    for (const BootEntry& entry : table) dialog.presentTitles.push_back(entry.Titel);
    ctx.port.showWindow(dialog);
    if (dialog.reply == BootINIRequest::Reply::Abort) return false;

    std::vector<ChosenSwitch> chosen;
    for (const SwitchField& field : panel.schalter) chosen.push_back({field.beschriftung, field.ticked, field.wert});
    const bool asNew = dialog.reply == BootINIRequest::Reply::Name && dialog.txtBootWert != selected.Titel;
    BootEntry changed = changedEntry(selected, panel, chosen, asNew ? &dialog.txtBootWert : nullptr);
    if (const std::string refusal = refusalOf(selected, changed, chosen); !refusal.empty()) {
        ctx.port.tell(refusal, box::Exclamation);
        return false;
    }
    if (asNew || host.tip.value(panel.entries.front()).touched)   // overwriting with what stands there leaves the line alone
        input = BootInput{asNew ? table.size() : static_cast<std::size_t>(ctx.intBootEintrag), std::move(changed)};
    return true;
}

// The file with what the table of entries and the input hold.
bool BootINIKind::planFile(KindHost& host, std::int16_t i, Change& change, std::string& refusal) const {
    const Context& ctx = host.tip.context();
    const std::string& name = host.tip.entry(i).Schlüssel;
    const auto file = host.files.file(i);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return false;
    ProfileFile content = TipFiles::load(file);
    if (!isAsRead(content.sectionLines(name), ctx.udtBootEintraege)) {
        refusal = fmt::format(messages::BootChangedMeanwhile, host.files.path(i));
        return false;
    }
    change.dateien.push_back({file.string(), content.bytes(), true, {}, false});
    std::vector<std::string> lines;
    for (std::size_t k = 1; k < ctx.udtBootEintraege.size(); ++k) lines.push_back(ctx.udtBootEintraege[k].originalLine);
    if (const auto& input = ctx.bootInput) {
        lines.resize(std::max(lines.size(), input->place));
        lines[input->place - 1] = bootLine(input->eintrag);
    }
    content.setSectionLines(name, lines);
    change.dateien.back().neu = content.bytes();
    return true;
}

bool BootINIKind::saveFile(KindHost& host, ChangeRecorder& recorder, std::int16_t i) const {
    UserPort& port = host.tip.context().port;
    Change change = host.tip.newChange(Change::Art::BootFile);
    std::string refusal;
    if (!planFile(host, i, change, refusal)) {
        if (!refusal.empty()) port.tell(refusal, box::Exclamation);
        return refusal.empty();
    }
    FileImage& picture = change.dateien.front();
    const std::filesystem::path file = picture.datei;
    const bool protectedFile = isReadOnly(file);
    if (protectedFile && !port.ask(fmt::format(messages::BootWriteProtection, host.files.path(i)))) return false;
    if (!host.files.backUp(i, picture.contents)) return false;
    RunningChange running(recorder, change);
    picture.written = host.files.write(file, picture.neu);
    if (protectedFile) setReadOnly(file, true);
    if (!picture.written) port.tell(messages::IniWriteProtected, box::Exclamation);
    return picture.written;
}

std::string BootINIKind::shownText(const CurrentTip& tip, const Panel& panel, std::int16_t) const {
    if (panel.chosen < 0) return {};
    const BootEntry& boot = tip.context().udtBootEintraege.at(static_cast<std::size_t>(panel.chosen) + 1);
    return Trim(boot.Titel + " " + boot.Schalter);
}

// "Title /SWITCH /NAME=value" into the panel: the entry by its title, the first one without it, and of the offered switches
// those it is to have. What the Tip does not offer is the entry's own and stays.
std::string BootINIKind::setText(KindHost& host, Panel& panel, std::int16_t, const std::string& text) const {
    const auto& entries = host.tip.context().udtBootEintraege;
    if (entries.size() <= 1) return fmt::format(messages::NoBootEntry, panel.status.text);
    std::size_t chosen = 1, title = 0;
    for (std::size_t k = 1; k < entries.size(); ++k)
        if (entries[k].Titel.size() > title && (text == entries[k].Titel || text.starts_with(entries[k].Titel + " "))) {
            chosen = k;
            title = entries[k].Titel.size();
        }
    const std::string switches = Trim(text.substr(title));
    if (chosen >= entries.size() || (!switches.empty() && switches[0] != '/')) return fmt::format(messages::NotInList, text, joined(panel.selection));
    std::vector<ChosenSwitch> none;
    for (const SwitchField& field : panel.schalter) none.push_back({field.beschriftung, false, {}});
    const std::string foreign = withSwitches(switches, none);
    if (!foreign.empty() && !equalText(foreign, withSwitches(entries[chosen].Schalter, none))) return fmt::format(messages::SwitchForeign, foreign);
    const std::size_t place = host.tip.placeOf(panel);
    const auto& panels = host.tip.window().panels;
    const auto here = [&](std::size_t j) -> Panel* {   // settling what was there may have built the Tip anew
        return place < panels.size() && j < panels[place].schalter.size() ? &host.tip.window().panels[place] : nullptr;
    };
    choose(host, panel, static_cast<int>(chosen) - 1);
    for (std::size_t j = 0; j < none.size(); ++j) {
        const auto value = switchIn(switches, none[j].name);
        if (Panel* now = here(j)) flip(host, *now, j, value.has_value());
        if (Panel* now = here(j); now != nullptr && switchTakesValue(none[j].name)) typeSwitch(host, *now, j, value.value_or(std::string()));
    }
    return {};
}

void BootINIKind::checkSource(const SourceCheck& check) const {
    if (!check.row.INITipp) check.complain("INITipp", "Ein Bootmenü-Tipp ist ein INI-Tipp.");
    if (check.entries > 1) check.complain("Ausgabeart", "Ein Bootmenü-Tipp hat nur einen Wert.");
    const auto switches = check.captions();
    if (switches.empty()) check.need("Anzeigetext", check.row.Anzeigetext);
    std::set<std::string> seen;
    for (const std::string& name : switches) {
        if (name.size() < 2 || name[0] != '/' || name.find(' ') != std::string::npos)
            check.complain("Anzeigetext", "\"" + name + "\" ist kein Schalter der Form \"/NAME\" oder \"/NAME=\".");
        if (!seen.insert(lowerCase(name)).second) check.complain("Anzeigetext", "Der Schalter \"" + name + "\" steht doppelt.");
    }
    if (check.row.Standardwert) check.complain("Standardwert", "Ein Bootmenü-Tipp hat keinen Standardwert.");
}

}  // namespace brenvik
