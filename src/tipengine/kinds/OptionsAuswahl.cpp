#include "tipengine/kinds/OptionsAuswahl.h"

#include <algorithm>

#include "frame/text/Conversions.h"
#include "tipengine/kinds/ValueForms.h"

namespace brenvik {
namespace {
constexpr std::size_t MaxOptions = 6;
constexpr double Bit31 = 2147483648.0, Bit32 = 4294967296.0;
}  // namespace

OptionsAuswahlKind::OptionsAuswahlKind()
    : OneOfSeveral({.number = art::OptionsAuswahl, .sourceName = "optionen", .traceName = "Optionsauswahl", .counter = &Context::intPanelOption,
                    .captionList = true, .offers = true}) {}

void OptionsAuswahlKind::build(KindHost& host, std::int16_t i) const {
    const TipEntry& e = host.tip.entry(i);
    Panel& panel = addPanel(host, i);
    panel.label = e.Beschriftung;
    panel.selection = Split(e.Anzeigetext, "#");
    if (panel.selection.size() > MaxOptions) panel.selection.resize(MaxOptions);
    const auto values = host.tip.record().INITipp ? std::vector<std::string>{} : Split(e.Werteliste, "#");
    for (std::size_t j = 0; j < panel.selection.size(); ++j) {
        const double option = j < values.size() ? Val(values[j]) : static_cast<double>(j);
        panel.dblOptionsWert.push_back(option);
        host.tip.value(i).dblOptionsWerte[j] = option;
    }
    host.readEntry(i, panel.status);
    const std::string value = host.tip.value(i).strAktuellerWert;
    for (std::size_t j = 0; j < panel.dblOptionsWert.size(); ++j)
        if (value == numberText(panel.dblOptionsWert[j])) {
            panel.chosen = static_cast<int>(j);
            break;
        }
}

// Loads where the other kinds unload; what is left is cleared with all panels.
void OptionsAuswahlKind::unload(Context& ctx) const { unloadPanels(ctx, *this, DynModAdd); }

std::optional<std::string> OptionsAuswahlKind::valueText(const CurrentTip&, const Panel& panel, std::int16_t) const {
    if (panel.chosen < 0) return std::nullopt;
    double value = panel.dblOptionsWert.at(static_cast<std::size_t>(panel.chosen));
    if (value > Bit31) value -= Bit32;   // dwords are passed as signed numbers
    return numberText(value);
}

void OptionsAuswahlKind::checkSource(const SourceCheck& check) const {
    const SourceRow& row = check.row;
    check.allowTypes({typ::Sz, typ::ExpandSz, typ::Dword});
    check.needName();
    check.unused("WertEin", row.WertEin);
    check.unused("WertAus", row.WertAus);
    const auto texts = check.captions();
    if (texts.size() < 2 || texts.size() > MaxOptions) check.complain("Anzeigetext", "Die Art optionen braucht zwei bis sechs Texte in Anzeigetext.");
    std::vector<std::string> values;
    for (std::size_t i = 0; i < texts.size(); ++i) values.push_back(std::to_string(i));
    if (!row.INITipp && row.Werteliste) {
        values = pieces(row.Werteliste);
        if (values.size() != texts.size())
            check.complain("Werteliste", "Es sind " + std::to_string(texts.size()) + " Texte, aber " + std::to_string(values.size()) + " Werte.");
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto option = decimal(values[i]);
        if (!option || *option < 0 || *option > UINT32_MAX) check.complain("Werteliste", "Der Wert \"" + values[i] + "\" einer Option ist keine Zahl von 0 bis 4294967295.");
        if (std::count(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(i), values[i]) != 0) check.complain("Werteliste", "Der Wert \"" + values[i] + "\" steht doppelt.");
    }
    check.defaultOneOf(values);
}

}  // namespace brenvik
