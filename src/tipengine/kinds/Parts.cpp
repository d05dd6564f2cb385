#include "tipengine/kinds/Parts.h"

#include <algorithm>
#include <fmt/format.h>

#include "frame/text/Conversions.h"
#include "registry/ValueOperations.h"
#include "tipengine/Messages.h"

namespace brenvik {

void DynModAdd(Hauptfenster& window, std::int16_t kind, std::int16_t index) {
    Panel panel;
    panel.Ausgabeart = kind;
    panel.index = index;
    window.panels.push_back(std::move(panel));
}

void DynModDel(Hauptfenster& window, std::int16_t kind, std::int16_t index) {
    std::erase_if(window.panels, [&](const Panel& panel) { return panel.Ausgabeart == kind && panel.index == index; });
}

void unloadPanels(Context& ctx, const Traits& kind, void (*each)(Hauptfenster&, std::int16_t, std::int16_t)) {
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
        panel.zeilen.push_back({name, {}, false});
        if (ctx.trace.debug()) ctx.trace.write("Werte: " + name);
    }
}

void fillKeyRows(KindHost& host, Panel& panel, const std::string& unterWert) {
    Context& ctx = host.tip.context();
    for (ListenZeile& row : panel.zeilen) {
        ctx.objBVKReg.SetPath(ctx.strRechnername, host.tip.keyPath(1) + "\\" + row.text + "\\" + unterWert);
        const auto raw = ctx.objBVKReg.ReadRaw();
        if (!raw) continue;
        try {
            row.unterText = toText(*raw);
        } catch (const RegError&) {
            row.unterText = bytesText(raw->bytes);   // one value that is damaged must not cost the list
        }
    }
}

std::string rowTexts(const Panel& panel) {
    std::string rows;
    for (const ListenZeile& row : panel.zeilen) rows += (rows.empty() ? "" : "\n") + row.text;
    return rows;
}

// --- one of several texts ---

void OneOfSeveral::choose(KindHost& host, Panel& panel, int item) const {
    panel.gewaehlt = item;
    host.touched(panel, panel.eintraege.front());
}

std::string OneOfSeveral::shownText(const CurrentTip&, const Panel& panel, std::int16_t) const {
    return panel.gewaehlt < 0 ? std::string() : panel.auswahl.at(static_cast<std::size_t>(panel.gewaehlt));
}

std::string OneOfSeveral::setText(KindHost& host, Panel& panel, std::int16_t, const std::string& text) const {
    const auto hit = std::find(panel.auswahl.begin(), panel.auswahl.end(), text);
    int item = hit == panel.auswahl.end() ? -1 : static_cast<int>(hit - panel.auswahl.begin());
    for (std::size_t k = 0; item < 0 && k < panel.dblOptionsWert.size(); ++k)
        if (numberText(panel.dblOptionsWert[k]) == text) item = static_cast<int>(k);
    if (item < 0) return fmt::format(meldung::NichtInListe, text, joined(panel.auswahl));
    choose(host, panel, item);
    return {};
}

// --- a choice among the entries ---

Panel& EntryChoice::buildChoice(KindHost& host) const {
    const CurrentTip& tip = host.tip;
    const auto entries = entriesOfKind(tip.record(), number);
    Panel& panel = addPanel(host, entries.front());
    panel.eintraege = entries;
    for (std::int16_t i : entries) {
        const TippEintrag& e = tip.entry(i);
        panel.auswahl.push_back(e.Anzeigetext.empty() ? e.Wertname : e.Anzeigetext);
    }
    panel.label = tip.entry(entries.front()).Beschriftung;
    panel.gewaehlt = 0;
    host.readSilently(panel);
    return panel;
}

// Another entry is looked at, nothing is changed.
void EntryChoice::choose(KindHost& host, Panel& panel, int item) const {
    panel.gewaehlt = item;
    showEntry(host.tip, panel, panel.eintraege.at(panel.eintraege.size() > 1 ? static_cast<std::size_t>(item) : 0));
    showLocks(host.tip, panel);
    host.redraw(panel);
}

}  // namespace brenvik
