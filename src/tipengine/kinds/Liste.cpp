#include "tipengine/kinds/Liste.h"

#include <algorithm>
#include <fmt/format.h>

#include "frame/Reports.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/Parts.h"

namespace brenvik {
namespace {
constexpr const char* Ticked = "no";
}

ListeKind::ListeKind()
    : Kind({.number = art::Liste, .sourceName = "liste", .traceName = "Listbox", .part = TemplatePart::States, .forSeveral = true, .ticks = true, .ticksHide = true,
            .listsFiles = true}) {}

void ListeKind::build(KindHost& host, std::int16_t first) const {
    const CurrentTip& tip = host.tip;
    tip.context().blnListeGeaendert = false;
    Panel& panel = addPanel(host, first);
    panel.label = tip.entry(first).Beschriftung;
    if (keys(tip, panel)) return ReadRecListe(host, panel);   // the list is the content of the key
    panel.entries = entriesOfKind(tip.record(), number);
    host.readSilently(panel);
    for (std::int16_t i : panel.entries) {
        WorkingValue& w = tip.value(i);
        if (w.strAktuellerWert.empty()) w.strAktuellerWert = w.strAnzeigeWert = DelKey;
        panel.lines.push_back({tip.entry(i).Anzeigetext, {}, lowerCase(w.strAktuellerWert) == Ticked, w.readOnly});
    }
}

void ListeKind::ReadRecListe(KindHost& host, Panel& panel) const {
    Context& ctx = host.tip.context();
    reportAndGoOn(ctx, "ReadRecListe", [&] {
        const std::string unterWert = host.tip.entry(1).Werteliste;
        host.tip.replaceSid(1);
        ctx.objBVKReg.SetPath(ctx.strRechnername, host.tip.keyPath(1) + "\\");
        addKeyRows(host, panel);
        fillKeyRows(host, panel, unterWert);
        MainWindow& f = host.tip.window();
        f.KeyDel = f.KeySave = f.RegFile = true;
        ctx.blnSchreibrecht = true;
        panel.status = {strBVKTexte(20), StatusColour::Gefunden};
        host.tip.value(1).blnWertGelesen = host.tip.value(1).gefunden = true;   // what the line says, whatever stands there
    });
}

void ListeKind::tick(KindHost& host, Panel& panel, std::size_t row, bool on) const {
    if (panel.lines[row].readOnly) return host.redraw(panel);
    panel.lines[row].ticked = on;
    // In lists of keys the ticks choose what a delete takes; only rows of values are a change.
    if (keys(host.tip, panel) || row >= panel.entries.size()) return host.redraw(panel);
    host.tip.context().blnListeGeaendert = true;
    host.touched(panel, panel.entries[row]);
}

void ListeKind::selectRow(Panel& panel, int row) const { panel.chosenRow = row; }

void ListeKind::lock(const CurrentTip&, Panel& panel) const {
    const auto locked = std::count_if(panel.lines.begin(), panel.lines.end(), [](const ListLine& row) { return row.readOnly; });
    panel.readOnly = locked > 0 && static_cast<std::size_t>(locked) == panel.lines.size();
    if (locked > 0 && !panel.readOnly) panel.hint = messages::LinesReadOnly;
}

std::optional<std::string> ListeKind::valueText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const {
    const auto row = static_cast<std::size_t>(rowOf(panel, entry));
    if (keys(tip, panel) || row >= panel.lines.size()) return std::nullopt;
    return panel.lines[row].ticked ? Ticked : DelKey;
}

std::string ListeKind::shownText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const {
    const auto row = static_cast<std::size_t>(rowOf(panel, entry));
    if (keys(tip, panel) || row >= panel.lines.size()) return rowTexts(panel);
    return panel.lines[row].ticked ? "on" : "off";
}

std::string ListeKind::setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const {
    if (keys(host.tip, panel)) return messages::LinesAreKeys;
    const auto on = onOff(text);
    if (!on) return fmt::format(messages::OnlyOnOff, text);
    if (const auto row = static_cast<std::size_t>(rowOf(panel, entry)); row < panel.lines.size()) tick(host, panel, row, *on);
    return {};
}

void ListeKind::checkSource(const SourceCheck& check) const {
    const SourceRow& row = check.row;
    check.allowTypes({typ::Sz});
    if (check.first && row.Wertname.value_or("").empty()) {
        if (check.entries > 1 && row.Werteliste != FileList) check.complain("Wertname", "Eine Liste von Schlüsseln hat nur einen Wert; sonst fehlt hier der Wertname.");
        return;
    }
    check.need("Wertname", row.Wertname);
    check.need("Anzeigetext", row.Anzeigetext);
    if (check.hasDefault() && lowerCase(*row.Standardwert) != Ticked) check.complain("Standardwert", "Der Standardwert einer Liste ist \"no\" oder \"<delkey>\".");
}

}  // namespace brenvik
