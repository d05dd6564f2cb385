#include "tipengine/kinds/Parts.h"

#include <algorithm>
#include <fmt/format.h>

#include "frame/text/Conversions.h"
#include "registry/ValueOperations.h"
#include "tipengine/Messages.h"

namespace brenvik {

void DynModAdd(MainWindow& window, std::int16_t kind, std::int16_t index) {
    Panel panel;
    panel.Ausgabeart = kind;
    panel.index = index;
    window.panels.push_back(std::move(panel));
}

void DynModDel(MainWindow& window, std::int16_t kind, std::int16_t index) {
    std::erase_if(window.panels, [&](const Panel& panel) { return panel.Ausgabeart == kind && panel.index == index; });
}

void unloadPanels(Context& ctx, const Traits& kind, void (*each)(MainWindow&, std::int16_t, std::int16_t)) {
    for (std::int16_t& counter = ctx.*kind.counter; counter >= 1; --counter) each(ctx.frmBVK_Prog, kind.number, counter);
}

std::optional<bool> onOff(const std::string& text) {
    const std::string lower = lowerCase(text);
    if (lower == "on" || lower == "ein") return true;
    if (lower == "off" || lower == "aus") return false;
    return std::nullopt;
}

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) text += (text.empty() ? "\"" : ", \"") + part + "\"";
    return text;
}

std::vector<std::int16_t> entriesOfKind(const Tipp& tipp, std::int16_t kind) {
    std::vector<std::int16_t> entries;
    for (std::size_t k = 1; k < tipp.Eintrag.size(); ++k)
        if (tipp.Eintrag[k].Ausgabeart == kind) entries.push_back(static_cast<std::int16_t>(k));
    return entries;
}

void addKeyRows(KindHost& host, Panel& panel) {
    Context& ctx = host.tip.context();
    for (const std::string& name : ctx.objBVKReg.EnumSubKeys()) {
        panel.lines.push_back({name, {}, false});
        if (ctx.trace.debug()) ctx.trace.write("Werte: " + name);
    }
}

void fillKeyRows(KindHost& host, Panel& panel, const std::string& unterWert) {
    Context& ctx = host.tip.context();
    for (ListLine& row : panel.lines) {
        ctx.objBVKReg.SetPath(ctx.strRechnername, host.tip.keyPath(1) + "\\" + row.text + "\\" + unterWert);
        const auto raw = ctx.objBVKReg.ReadRaw();
        if (!raw) continue;
        try {
            row.subText = toText(*raw);
        } catch (const RegError&) {
            row.subText = bytesText(raw->bytes);   // one value that is damaged must not cost the list
        }
    }
}

std::string rowTexts(const Panel& panel) {
    std::string rows;
    for (const ListLine& row : panel.lines) rows += (rows.empty() ? "" : "\n") + row.text;
    return rows;
}

// --- one of several texts ---

void OneOfSeveral::choose(KindHost& host, Panel& panel, int item) const {
    panel.chosen = item;
    host.touched(panel, panel.entries.front());
}

std::string OneOfSeveral::shownText(const CurrentTip&, const Panel& panel, std::int16_t) const {
    return panel.chosen < 0 ? std::string() : panel.selection.at(static_cast<std::size_t>(panel.chosen));
}

std::string OneOfSeveral::setText(KindHost& host, Panel& panel, std::int16_t, const std::string& text) const {
    const auto hit = std::find(panel.selection.begin(), panel.selection.end(), text);
    int item = hit == panel.selection.end() ? -1 : static_cast<int>(hit - panel.selection.begin());
    for (std::size_t k = 0; item < 0 && k < panel.dblOptionsWert.size(); ++k)
        if (numberText(panel.dblOptionsWert[k]) == text) item = static_cast<int>(k);
    if (item < 0) return fmt::format(messages::NotInList, text, joined(panel.selection));
    choose(host, panel, item);
    return {};
}

// --- a choice among the entries ---

Panel& EntryChoice::buildChoice(KindHost& host) const {
    const CurrentTip& tip = host.tip;
    const auto entries = entriesOfKind(tip.record(), number);
    Panel& panel = addPanel(host, entries.front());
    panel.entries = entries;
    for (std::int16_t i : entries) {
        const TipEntry& e = tip.entry(i);
        panel.selection.push_back(e.Anzeigetext.empty() ? e.Wertname : e.Anzeigetext);
    }
    panel.label = tip.entry(entries.front()).Beschriftung;
    panel.chosen = 0;
    host.readSilently(panel);
    return panel;
}

// Another entry is looked at, nothing is changed.
void EntryChoice::choose(KindHost& host, Panel& panel, int item) const {
    panel.chosen = item;
    showEntry(host.tip, panel, panel.entries.at(panel.entries.size() > 1 ? static_cast<std::size_t>(item) : 0));
    showLocks(host.tip, panel);
    host.redraw(panel);
}

}  // namespace brenvik
