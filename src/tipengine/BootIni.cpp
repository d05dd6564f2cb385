// The boot menu file: its section as a table of entries, the panel on the selected one, and writing it back.
#include <fmt/format.h>

#include <algorithm>

#include "frame/DateiSystem.h"
#include "frame/Konvertierung.h"
#include "frame/Profildatei.h"
#include "frame/Reports.h"
#include "frame/Texte.h"
#include "tipengine/BootSchalter.h"
#include "tipengine/Meldungen.h"
#include "tipengine/TippMaschine.h"

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
BootEintrag bootEntry(const std::string& line) {
    BootEintrag entry;
    entry.originalZeile = line;
    entry.Name = line;
    entry.Titel = meldung::FehlerhafterEintrag;
    const auto equals = line.find('=');
    if (equals == std::string::npos) return entry;
    entry.Name = line.substr(0, equals);
    if (equals + 1 >= line.size()) return entry;
    const auto slash = switchesBegin(line, equals);
    if (slash != std::string::npos) entry.Schalter = line.substr(slash);
    std::string title = Trim(Replace(line.substr(equals + 1, slash == std::string::npos ? slash : slash - equals - 1), "\t", " "));
    entry.inAnfuehrung = title.size() >= 2 && title.front() == '"' && title.back() == '"';
    if (entry.inAnfuehrung)
        title = title.substr(1, title.size() - 2);
    else   // without quotes the character in front of the switches is taken for the blank that belongs there
        title = line.substr(equals + 1, slash == std::string::npos ? slash : slash > equals + 1 ? slash - equals - 2 : 0);
    entry.titelRoh = title;
    entry.Titel = SQLString(title);
    entry.blnDisk = entry.Name.find("disk") != std::string::npos;
    return entry;
}

// Whether the table was made from these lines.
bool isAsRead(const std::vector<std::string>& lines, const std::vector<BootEintrag>& table) {
    return !table.empty() && std::equal(lines.begin(), lines.end(), table.begin() + 1, table.end(),
                                        [](const std::string& line, const BootEintrag& entry) { return entry.originalZeile == line; });
}

// The line of an entry that was edited.
std::string bootLine(const BootEintrag& entry) {
    const std::string& line = entry.originalZeile;
    const std::string quote = entry.inAnfuehrung ? "\"" : "";
    std::string start = entry.Name + "=" + quote + entry.titelRoh + quote;
    // A title that stays does so to the byte, however it stands in the line.
    if (const auto equals = line.find('='); equals != std::string::npos && bootEntry(line).titelRoh == entry.titelRoh)
        start = RTrim(line.substr(0, switchesBegin(line, equals)));
    return start + (entry.Schalter.empty() ? "" : " " + entry.Schalter);
}

// A title ends at its quote, a switch at a blank or at the next "/": what is new in an entry may not hold them. Answers an
// empty text, or in German why the entry cannot stand in the file.
std::string refusalOf(const BootEintrag& before, const BootEintrag& entry, const std::vector<ChosenSwitch>& chosen) {
    const bool newTitle = entry.originalZeile.empty() || entry.titelRoh != before.titelRoh;
    if (newTitle && (Trim(entry.titelRoh).empty() || entry.titelRoh.find('"') != std::string::npos))
        return fmt::format(meldung::BootName, entry.titelRoh);
    for (const ChosenSwitch& s : chosen) {
        const std::string value = Trim(s.value);
        if (s.on && switchTakesValue(s.name) && value.find_first_of(" \t/\"") != std::string::npos && switchIn(before.Schalter, s.name) != value)
            return fmt::format(meldung::BootSchalterwert, value, s.name);
    }
    try {
        Profildatei().setSectionLines("boot", {bootLine(entry)});
        return {};
    } catch (const NumberedError& error) {
        return error.what() + std::string(meldung::NichtsGeaendert);
    }
}

}  // namespace

void TippMaschine::BootINIAuslesen(std::int16_t i) {
    reportAndGoOn(ctx_, "BootINIAuslesen", [&] {
        Panel& panel = addPanel(art::BootINI, 0, i);
        panel.label = strBVKTexte(220);
        std::string path;
        bool found = false;
        DateiCheck(i, path, found);
        FB_KeyDel(false);
        FB_RegFile(false);
        FB_KeyInfo(false);
        ctx_.blnSchreibrecht = true;
        wert(i).blnWertGelesen = found;
        if (!found) {
            fileMissing(path, &panel.status);
            return;
        }
        FB_KeySave(true);
        panel.status = {"[Datei " + path + " vorhanden]", StatusFarbe::Gefunden};
        ctx_.udtBootEintraege.assign(1, {});
        for (const std::string& line : loadProfildatei(iniFile(i)).sectionLines(eintrag(i).Schlüssel)) {
            ctx_.udtBootEintraege.push_back(bootEntry(line));
            panel.auswahl.push_back(ctx_.udtBootEintraege.back().Titel);
        }
        for (const std::string& offered : Split(eintrag(i).Anzeigetext, "#")) {
            const std::string name = switchName(offered);
            panel.schalter.push_back({name, false, switchTakesValue(name), {}});
        }
        if (panel.auswahl.empty()) return;
        panel.gewaehlt = 0;
        ctx_.intBootEintrag = 1;
        BootINIParamAusW(panel);
    });
}

void TippMaschine::BootINIParamAusW(Panel& panel) {
    const BootEintrag& entry = ctx_.udtBootEintraege.at(static_cast<std::size_t>(ctx_.intBootEintrag));
    panel.txtBINIAktiv = !entry.blnDisk;
    panel.txtBINI = entry.blnDisk ? entry.Schalter : entry.Titel;
    for (SchalterFeld& field : panel.schalter) {
        const auto value = switchIn(entry.Schalter, field.beschriftung);
        field.angehakt = value.has_value();
        field.wert = value.value_or(std::string());
    }
}

// The panel's switches become those of the selected entry, or of a new one; false if the user cancelled or it cannot be.
bool TippMaschine::collectBootEntry(const Panel& panel, std::optional<BootEingabe>& input) {
    if (ctx_.intBootEintrag < 1) return true;
    const auto& table = ctx_.udtBootEintraege;
    const BootEintrag& selected = table.at(static_cast<std::size_t>(ctx_.intBootEintrag));
    BootINIAnfrage dialog;
    dialog.txtBootWert = selected.Titel;
    for (const BootEintrag& entry : table) dialog.vorhandeneTitel.push_back(entry.Titel);
    ctx_.port.showWindow(dialog);
    if (dialog.antwort == BootINIAnfrage::Antwort::Abbruch) return false;

    std::vector<ChosenSwitch> chosen;
    for (const SchalterFeld& field : panel.schalter) chosen.push_back({field.beschriftung, field.angehakt, field.wert});
    BootEintrag changed = selected;
    changed.Schalter = withSwitches(selected.Schalter, chosen);
    const bool asNew = dialog.antwort == BootINIAnfrage::Antwort::Name && dialog.txtBootWert != selected.Titel;
    if (asNew) {
        changed.Titel = changed.titelRoh = dialog.txtBootWert;
        changed.blnDisk = true;
        changed.inAnfuehrung = true;
        changed.originalZeile.clear();
    } else if (!selected.blnDisk && panel.txtBINI != selected.Titel) {
        changed.Titel = changed.titelRoh = panel.txtBINI;
    }
    if (const std::string refusal = refusalOf(selected, changed, chosen); !refusal.empty()) {
        ctx_.port.tell(refusal, box::Exclamation);
        return false;
    }
    if (asNew || wert(panel.eintraege.front()).beruehrt)   // overwriting with what stands there leaves the line alone
        input = BootEingabe{asNew ? table.size() : static_cast<std::size_t>(ctx_.intBootEintrag), std::move(changed)};
    return true;
}

std::optional<std::int16_t> TippMaschine::bootFileEntry() const {
    for (const Panel& panel : ctx_.frmBVK_Prog.panels)
        if (panel.Ausgabeart == art::BootINI) return panel.eintraege.front();
    return std::nullopt;
}

// The file with what the table of entries and the input hold. False: there is none, or the save is refused.
bool TippMaschine::planBootFile(std::int16_t i, Aenderung& change, std::string& refusal) const {
    const auto file = iniFile(i);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return false;
    Profildatei content = loadProfildatei(file);
    if (!isAsRead(content.sectionLines(eintrag(i).Schlüssel), ctx_.udtBootEintraege)) {
        refusal = fmt::format(meldung::BootInzwischenGeaendert, iniPath(i));
        return false;
    }
    change.dateien.push_back({file.string(), content.bytes(), true, {}, false});
    std::vector<std::string> lines;
    for (std::size_t k = 1; k < ctx_.udtBootEintraege.size(); ++k) lines.push_back(ctx_.udtBootEintraege[k].originalZeile);
    if (const auto& input = ctx_.bootEingabe) {
        lines.resize(std::max(lines.size(), input->platz));
        lines[input->platz - 1] = bootLine(input->eintrag);
    }
    content.setSectionLines(eintrag(i).Schlüssel, lines);
    change.dateien.back().neu = content.bytes();
    return true;
}

bool TippMaschine::saveBootFile(std::int16_t i) {
    Aenderung change = newChange(Aenderung::Art::BootDatei);
    std::string refusal;
    if (!planBootFile(i, change, refusal)) {
        if (!refusal.empty()) ctx_.port.tell(refusal, box::Exclamation);
        return refusal.empty();
    }
    DateiBild& bild = change.dateien.front();
    const std::filesystem::path file = bild.datei;
    const bool protectedFile = isReadOnly(file);
    if (protectedFile && !ctx_.port.ask(fmt::format(meldung::BootSchreibschutz, iniPath(i)))) return false;
    if (!bootIniGesichert_.contains(file)) {
        try {
            const TargetFiles& files = ctx_.target().files();
            writeFileAtomic(ctx_.blnDateiSuchen ? files.find(iniPath(i) + ".bvk") : std::filesystem::path(file.string() + ".bvk"), bild.inhalt);
        } catch (const std::exception&) {
            ctx_.port.tell(fmt::format(meldung::BootSicherung, iniPath(i)), box::Critical);
            return false;
        }
        bootIniGesichert_.insert(file);
    }
    LaufendeAenderung running(recorder_, change);
    bild.geschrieben = writeProfildatei(file, bild.neu);
    if (protectedFile) setReadOnly(file, true);
    if (!bild.geschrieben) ctx_.port.tell(meldung::IniSchreibgeschuetzt, box::Exclamation);
    return bild.geschrieben;
}

}  // namespace brenvik
