#include "tipengine/kinds/Drive.h"

#include <algorithm>

#include "tipengine/Messages.h"
#include "tipengine/tip/FileChoice.h"

namespace brenvik {

DriveKind::DriveKind()
    : EntryChoice({.number = art::Drive, .sourceName = "datei", .traceName = "Laufwerksauswahl", .part = TemplatePart::Text, .fieldLabel = "Pfad:", .typed = true,
                   .forSeveral = true}) {}

void DriveKind::build(KindHost& host, std::int16_t) const {
    Panel& panel = buildChoice(host);
    showEntry(host.tip, panel, panel.entries.front());
}

void DriveKind::showEntry(const CurrentTip& tip, Panel& panel, std::int16_t entry) const {
    panel.text = tip.value(entry).strAnzeigeWert;
    panel.cmdDriveSichtbar = !panel.text.empty();
    panel.fileFilter = tip.entry(entry).Werteliste;
}

void DriveKind::typeText(KindHost& host, Panel& panel, const std::string& text) const {
    if (panel.chosen < 0 || panel.text == text) return;
    panel.text = text;
    host.tip.value(chosenEntry(panel)).strAnzeigeWert = text;
    host.touched(panel, chosenEntry(panel));
}

void DriveKind::browse(KindHost& host, Panel& panel) const {
    if (panel.chosen < 0) return;
    Context& ctx = host.tip.context();
    const std::size_t place = host.tip.placeOf(panel);
    const std::string start = choiceStart(ctx, panel.text);
    const auto choice = panel.fileFilter.empty() ? ctx.port.chooseFolder(messages::ChooseFolder, start)
                                                  : ctx.port.chooseFile({start, panel.fileFilter, {}, false});
    auto& panels = host.tip.window().panels;   // others may stand there by now
    if (choice && place < panels.size() && &kindOf(panels[place]) == this) typeText(host, panels[place], chosenPath(ctx, *choice));
}

std::string DriveKind::setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const {
    choose(host, panel, rowOf(panel, entry));
    typeText(host, panel, text);
    return {};
}

void DriveKind::checkSource(const SourceCheck& check) const {
    const SourceRow& row = check.row;
    check.allowTypes({typ::Sz, typ::ExpandSz});
    check.needName();
    check.need("Anzeigetext", row.Anzeigetext);
    if (row.INITipp || !row.Werteliste) return;
    const auto parts = pieces(row.Werteliste, "|");
    const bool odd = parts.size() % 2 != 0 || parts.empty();
    if (odd || std::any_of(parts.begin(), parts.end(), [](const std::string& p) { return p.empty(); }))
        check.complain("Werteliste", "Ein Dateifilter hat die Form \"Name|*.ext\", auch mehrmals hintereinander.");
}

}  // namespace brenvik
