#include "tipengine/kinds/AuswahlBox.h"

#include "frame/text/Conversions.h"

namespace brenvik {

AuswahlBoxKind::AuswahlBoxKind()
    : OneOfSeveral({.number = art::AuswahlBox, .sourceName = "auswahl", .traceName = "Auswahlboxen", .counter = &Context::intPanelAuswahl, .captionList = true,
                    .offers = true}) {}

void AuswahlBoxKind::build(KindHost& host, std::int16_t i) const {
    Panel& panel = addPanel(host, i);
    panel.label = host.tip.entry(i).Wertname;
    panel.selection = Split(host.tip.entry(i).Anzeigetext, "#");
    host.readEntry(i, panel.status);
    const std::string value = lowerCase(host.tip.value(i).strAktuellerWert);
    if (value.empty()) return;
    for (std::size_t k = 0; k < panel.selection.size(); ++k)
        if (lowerCase(panel.selection[k]).find(value) != std::string::npos) {
            panel.chosen = static_cast<int>(k);
            break;
        }
}

void AuswahlBoxKind::unload(Context& ctx) const { unloadPanels(ctx, *this); }

std::optional<std::string> AuswahlBoxKind::valueText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const { return shownText(tip, panel, entry); }

void AuswahlBoxKind::checkSource(const SourceCheck& check) const {
    const SourceRow& row = check.row;
    check.allowTypes({typ::Sz, typ::ExpandSz, typ::Binary, typ::Dword});
    check.needName();
    check.unused("WertEin", row.WertEin);
    check.unused("WertAus", row.WertAus);
    const auto values = check.captions();
    if (values.size() < 2) return check.complain("Anzeigetext", "Die Art auswahl braucht mindestens zwei Texte in Anzeigetext.");
    for (std::size_t i = 0; i < values.size(); ++i) {
        check.checkFits("Anzeigetext", values[i]);
        if (values[i].empty()) check.complain("Anzeigetext", "Ein Text der Auswahl ist leer.");
        for (std::size_t j = 0; j < i; ++j)
            if (lowerCase(values[j]).find(lowerCase(values[i])) != std::string::npos && !values[i].empty())
                check.complain("Anzeigetext",
                               "Der Text \"" + values[i] + "\" steckt im früheren Text \"" + values[j] + "\" und würde nie gewählt; der kürzere steht vorn.");
    }
    if (row.Werteliste && !row.INITipp && pieces(row.Werteliste) != values)
        check.complain("Werteliste", "Gespeichert wird der Text der Auswahl selbst; eine andere Werteliste gilt nicht.");
    check.defaultOneOf(values);
}

}  // namespace brenvik
