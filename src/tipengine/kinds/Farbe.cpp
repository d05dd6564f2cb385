#include "tipengine/kinds/Farbe.h"

#include <fmt/format.h>

#include "frame/text/Conversions.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/ValueForms.h"
#include "tipengine/values/ColourValue.h"

namespace brenvik {

FarbeKind::FarbeKind() : EntryChoice({.number = art::Farbe, .sourceName = "farbe", .traceName = "Farbauswahl", .forSeveral = true}) {}

void FarbeKind::build(KindHost& host, std::int16_t) const {
    Panel& panel = buildChoice(host);
    const std::int16_t first = panel.entries.front();
    panel.colour = colourText(host.tip.value(first).strAktuellerWert, host.tip.entry(first).Datentyp);
}

void FarbeKind::showEntry(const CurrentTip& tip, Panel& panel, std::int16_t entry) const {
    const WorkingValue& w = tip.value(entry);
    if (const auto colour = colourText(w.strAnzeigeWert, w.touched ? 1 : tip.entry(entry).Datentyp)) panel.colour = colour;
}

void FarbeKind::pickColour(KindHost& host, Panel& panel) const {
    if (panel.chosen < 0) return;
    const auto colour = host.tip.context().port.chooseColour(panel.colour.value_or(Rgb{}));
    if (!colour) return;
    const std::int16_t entry = chosenEntry(panel);
    WorkingValue& w = host.tip.value(entry);
    const std::string text = numberText(colour->red) + " " + numberText(colour->green) + " " + numberText(colour->blue);
    panel.colour = colour;
    // Binary colours are read in hexadecimal: there the same text can be another colour.
    const bool same = host.tip.entry(entry).Datentyp == 3 ? colourText(w.strAktuellerWert, 3) == colour : text == w.strAktuellerWert;
    if (same) {
        w.strAnzeigeWert = w.strAktuellerWert;
        w.touched = false;
        return host.redraw(panel);
    }
    w.strAnzeigeWert = text;
    host.touched(panel, entry);
}

std::string FarbeKind::registryText(const TipEntry& e, std::string text) const {
    if (e.Datentyp != 3) return text;
    std::string bytes;
    for (const std::string& piece : Split(text, " ")) bytes += (bytes.empty() ? "" : " ") + fmt::format("{:02X}", toLng(piece));
    return bytes;
}

std::string FarbeKind::setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const {
    const auto colour = Split(text, " ").size() == 3 ? colourText(text, 1) : std::nullopt;
    if (!colour) return fmt::format(messages::NoColour, text);
    choose(host, panel, rowOf(panel, entry));
    panel.colour = colour;
    host.tip.value(entry).strAnzeigeWert = text;
    host.touched(panel, entry);
    return {};
}

void FarbeKind::checkSource(const SourceCheck& check) const {
    check.allowTypes({typ::Sz});
    check.needName();
    check.need("Anzeigetext", check.row.Anzeigetext);
    if (check.hasDefault() && !isColour(*check.row.Standardwert)) check.complain("Standardwert", "Eine Farbe hat die Form \"58 110 165\".");
}

}  // namespace brenvik
