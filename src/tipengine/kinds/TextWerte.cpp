#include "tipengine/kinds/TextWerte.h"

#include <algorithm>
#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/text/Conversions.h"
#include "registry/ValueOperations.h"
#include "registry/text/ValueText.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/Parts.h"
#include "tipengine/kinds/ValueForms.h"

namespace brenvik {

TextWerteKind::TextWerteKind()
    : Kind({.number = art::TextWerte, .sourceName = "text", .traceName = "Textwerte", .counter = &Context::intPanelText, .part = TemplatePart::Text,
            .fieldLabel = "Text:", .typed = true}) {}

void TextWerteKind::build(KindHost& host, std::int16_t i) const {
    Panel& panel = addPanel(host, i);
    panel.label = host.tip.entry(i).Beschriftung;
    host.readEntry(i, panel.status);
    panel.multiLine = host.tip.entry(i).Datentyp == 7;
    WorkingValue& w = host.tip.value(i);
    if (panel.multiLine && w.roh && !w.strAktuellerWert.empty() && inputForm(*w.roh) != ValueForm::Lines) w.lock = messages::LinesLock;
    panel.text = w.strAktuellerWert;
    if (panel.multiLine) std::replace(panel.text.begin(), panel.text.end(), '\0', '\n');
}

void TextWerteKind::unload(Context& ctx) const { unloadPanels(ctx, *this); }

void TextWerteKind::typeText(KindHost& host, Panel& panel, const std::string& text) const {
    if (panel.text == text) return;
    panel.text = text;
    const std::int16_t entry = panel.entries.front();
    host.tip.value(entry).strAnzeigeWert = *valueText(host.tip, panel, entry);
    host.touched(panel, entry);
}

std::string TextWerteKind::ownForm(FrameContext& ctx, std::int32_t type, std::string text) const { return type == 4 ? Dec2Hex(ctx, toLng(text)) : text; }

std::string TextWerteKind::dwordForm(std::int32_t value) const { return Dec2Hex(value); }

std::optional<std::string> TextWerteKind::valueText(const CurrentTip&, const Panel& panel, std::int16_t) const {
    std::string text = panel.text;
    if (lowerCase(text) == DelKey) return DelKey;   // however it is spelt, nobody means it as a text
    if (panel.multiLine) std::replace(text.begin(), text.end(), '\n', '\0');
    return text;
}

std::string TextWerteKind::registryText(const TipEntry& e, std::string text) const {
    if (e.Datentyp != 4) return Kind::registryText(e, std::move(text));
    if (!isHexDword(text)) throw NumberedError(errnum::TypeMismatch, fmt::format(messages::NoHexNumber, text));
    return std::to_string(std::stoul(text, nullptr, 16));
}

std::string TextWerteKind::shownText(const CurrentTip&, const Panel& panel, std::int16_t) const { return panel.text; }

std::string TextWerteKind::setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const {
    host.tip.value(entry).touched = true;   // also when the text is what stands there already
    typeText(host, panel, text);
    return {};
}

void TextWerteKind::checkSource(const SourceCheck& check) const {
    const SourceRow& row = check.row;
    check.allowTypes({typ::Sz, typ::ExpandSz, typ::Binary, typ::Dword, typ::MultiSz});
    check.needName();
    check.unused("WertEin", row.WertEin);
    check.unused("WertAus", row.WertAus);
    if (!row.INITipp) check.unused("Werteliste", row.Werteliste);
    if (check.entries > 1) check.need("Beschriftung", row.Beschriftung);
    if (!check.hasDefault()) return;
    if (row.Datentyp != typ::Dword || row.INITipp) return check.checkFits("Standardwert", *row.Standardwert);
    if (!isHexDword(*row.Standardwert)) check.complain("Standardwert", "Ein Textfeld zeigt REG_DWORD hexadezimal: 1 bis 8 Ziffern 0 bis F.");
}

}  // namespace brenvik
