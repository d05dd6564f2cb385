#include "tipengine/kinds/CheckBox.h"

#include <fmt/format.h>

#include "frame/text/Conversions.h"
#include "registry/ValueOperations.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/Parts.h"

namespace brenvik {

CheckBoxKind::CheckBoxKind()
    : Kind({.number = art::CheckBox, .sourceName = "haken", .traceName = "Checkbox", .counter = &Context::intPanelCheckBox, .part = TemplatePart::States}) {}

void CheckBoxKind::build(KindHost& host, std::int16_t i) const {
    const TipEntry& e = host.tip.entry(i);
    Panel& panel = addPanel(host, i);
    panel.label = e.Beschriftung.empty() ? e.Wertname : e.Beschriftung;
    panel.chkBeschriftung = e.Anzeigetext.empty() ? std::string("Aktivieren") : e.Anzeigetext;
    host.readEntry(i, panel.status);
    const std::string value = host.tip.value(i).strAktuellerWert;
    if (value.empty()) return;
    const std::string upper = upperCase(value);
    if (value == "0" || value == "00" || upper == "NO") panel.ticked = false;
    if (value == "1" || value == "01" || upper == "YES") panel.ticked = true;
    if (upper == upperCase(e.WertAus)) panel.ticked = false;
    if (upper == upperCase(e.WertEin)) panel.ticked = true;
}

void CheckBoxKind::unload(Context& ctx) const { unloadPanels(ctx, *this); }

void CheckBoxKind::check(KindHost& host, Panel& panel, bool on) const {
    panel.ticked = on;
    host.touched(panel, panel.entries.front());
}

std::string CheckBoxKind::ownForm(FrameContext&, std::int32_t type, std::string text) const { return type == 1 ? lowerCase(text) : text; }

bool CheckBoxKind::isKnown(const ReadValue& value) const {
    if (value.type == 1) return value.shown == value.lower || value.shown == value.upper;
    return (value.type != 3 && value.type != 4) || value.compared == upperCase(value.lower) || value.compared == upperCase(value.upper);
}

std::optional<std::string> CheckBoxKind::valueText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const {
    return panel.ticked ? tip.entry(entry).WertEin : tip.entry(entry).WertAus;
}

std::string CheckBoxKind::registryText(const TipEntry&, std::string text) const { return text; }   // it is the registry's own

std::string CheckBoxKind::shownText(const CurrentTip&, const Panel& panel, std::int16_t) const { return panel.ticked ? "on" : "off"; }

std::string CheckBoxKind::setText(KindHost& host, Panel& panel, std::int16_t, const std::string& text) const {
    const auto on = onOff(text);
    if (!on) return fmt::format(messages::OnlyOnOff, text);
    check(host, panel, *on);
    return {};
}

// The program compares the value with the two texts.
void CheckBoxKind::checkSource(const SourceCheck& check) const {
    const SourceRow& row = check.row;
    check.allowTypes({typ::Sz, typ::ExpandSz, typ::Binary, typ::Dword});
    check.needName();
    if (!row.INITipp) check.unused("Werteliste", row.Werteliste);
    const std::string on = row.WertEin.value_or("1"), off = row.WertAus.value_or("0");
    check.checkFits("WertEin", on);
    check.checkFits("WertAus", off);
    if (lowerCase(on) == lowerCase(off)) check.complain("WertAus", "WertEin und WertAus lassen sich nicht unterscheiden.");
    check.defaultOneOf({on, off, off == DelKey ? "0" : off});
}

}  // namespace brenvik
