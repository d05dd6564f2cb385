#include "tipengine/kinds/Kind.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/text/Conversions.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/AuswahlBox.h"
#include "tipengine/kinds/BitMaske.h"
#include "tipengine/kinds/BootINI.h"
#include "tipengine/kinds/CheckBox.h"
#include "tipengine/kinds/Drive.h"
#include "tipengine/kinds/Farbe.h"
#include "tipengine/kinds/Kontext.h"
#include "tipengine/kinds/Liste.h"
#include "tipengine/kinds/OptionsAuswahl.h"
#include "tipengine/kinds/TextWerte.h"
#include "tipengine/kinds/ZahlenWerte.h"

namespace brenvik {
namespace {

bool plainDecimal(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

// A number as the bytes of a binary value: whole 255s first, the rest last.
std::string numberAsBytes(std::int32_t number) {
    std::string bytes;
    for (; number >= 256; number -= 255) bytes += "FF ";
    return bytes + fmt::format("{:02X}", number);
}

}  // namespace

std::span<const Kind* const> allKinds() {
    static const CheckBoxKind checkBox;
    static const TextWerteKind textWerte;
    static const ZahlenWerteKind zahlenWerte;
    static const AuswahlBoxKind auswahlBox;
    static const OptionsAuswahlKind optionsAuswahl;
    static const DriveKind drive;
    static const FarbeKind colour;
    static const ListeKind liste;
    static const BootINIKind bootINI;
    static const KontextKind kontext;
    static const BitMaskeKind bitMaske;
    static const std::array<const Kind*, 11> kinds{&checkBox, &textWerte, &zahlenWerte, &auswahlBox, &optionsAuswahl, &drive,
                                                   &colour,    &liste,     &bootINI,     &kontext,    &bitMaske};
    return kinds;
}

const Kind& kindOf(std::int64_t Ausgabeart) {
    static const Kind none{Traits{}};
    const auto kinds = allKinds();
    return Ausgabeart >= 1 && Ausgabeart <= static_cast<std::int64_t>(kinds.size()) ? *kinds[static_cast<std::size_t>(Ausgabeart - 1)] : none;
}

void Kind::build(KindHost& host, std::int16_t i) const {
    throw NumberedError(errnum::InvalidCall, "Unbekannte Ausgabeart " + std::to_string(host.tip.entry(i).Ausgabeart));
}

Panel& Kind::addPanel(KindHost& host, std::int16_t entry) const {
    Panel panel;
    panel.Ausgabeart = number;
    panel.index = counter == nullptr ? std::int16_t{0} : ++(host.tip.context().*counter);
    panel.entries.push_back(entry);
    panel.unfinished = true;   // until its builder comes to an end
    auto& panels = host.tip.window().panels;
    panels.push_back(std::move(panel));
    return panels.back();
}

int Kind::rowOf(const Panel& panel, std::int16_t entry) {
    return static_cast<int>(std::find(panel.entries.begin(), panel.entries.end(), entry) - panel.entries.begin());
}

void Kind::showLocks(const CurrentTip& tip, Panel& panel) const {
    panel.readOnly = panel.unfinished;
    panel.hint = panel.unfinished ? messages::PanelUnfinished : "";
    if (!panel.unfinished && !rowsAreKeys(tip.entry(panel.entries.front()).Wertname)) lock(tip, panel);
}

void Kind::lock(const CurrentTip& tip, Panel& panel) const {
    const bool oneOfSeveral = panel.entries.size() > 1 && panel.chosen >= 0;
    const WorkingValue& w = tip.value(panel.entries.at(oneOfSeveral ? static_cast<std::size_t>(panel.chosen) : 0));
    panel.readOnly = w.readOnly || w.lock != nullptr;
    if (w.lock != nullptr) panel.hint = w.lock;
    else if (w.readOnly && oneOfSeveral) panel.hint = messages::ValueReadOnly;
    else if (typed && w.touched && w.gefunden && w.strAnzeigeWert.empty()) panel.hint = messages::EmptyField;
}

std::string Kind::displayForm(FrameContext& ctx, std::int32_t type, std::string text) const {
    text = ownForm(ctx, type, std::move(text));
    if (type == 4 && text.find('-') != std::string::npos && toLng(text) < 0) text = numberText(toLng(text) + 2147483648.0 + 2147483648.0);
    return text;
}

std::string Kind::dwordForm(std::int32_t value) const { return numberText(static_cast<std::uint32_t>(value)); }

std::string Kind::registryText(const TipEntry& e, std::string text) const {
    if (e.Datentyp != 3 || !plainDecimal(text)) return text;
    if (text.size() > 9 || std::stol(text) > 32767) throw NumberedError(errnum::Overflow, fmt::format(messages::NumberTooLarge, text));
    const auto value = static_cast<std::int32_t>(std::stol(text));
    return text > "1" ? numberAsBytes(value) : fmt::format("{:02X} 00 00 00", value);
}

std::string Kind::shownText(const CurrentTip& tip, const Panel&, std::int16_t entry) const { return tip.value(entry).strAnzeigeWert; }

std::string Kind::setText(KindHost&, Panel&, std::int16_t, const std::string&) const { return messages::LinesAreKeys; }

void Kind::checkSource(const SourceCheck& check) const {
    check.complain("Ausgabeart", "Die Art " + std::to_string(check.row.Ausgabeart) + " gibt es nicht.");
}

}  // namespace brenvik
