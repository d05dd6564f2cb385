#include "tipengine/kinds/ZahlenWerte.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/text/Conversions.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/Parts.h"
#include "tipengine/kinds/ValueForms.h"

namespace brenvik {
namespace {

constexpr std::int64_t MaxBinaryNumber = 32767;

std::optional<std::int32_t> wholeNumber(const std::string& text) {
    std::int32_t number = 0;
    const auto end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    if (text.empty() || read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return number;
}

}  // namespace

ZahlenWerteKind::ZahlenWerteKind()
    : Kind({.number = art::ZahlenWerte, .sourceName = "zahl", .traceName = "Zahlenwerte", .counter = &Context::intPanelZahl, .part = TemplatePart::Number}) {}

void ZahlenWerteKind::build(KindHost& host, std::int16_t i) const {
    TipEntry& e = host.tip.entry(i);
    Panel& panel = addPanel(host, i);
    panel.label = Trim(e.Wertname + " " + e.Anzeigetext);
    host.readEntry(i, panel.status);
    WorkingValue& w = host.tip.value(i);
    if (w.strAnzeigeWert.empty()) w.strAktuellerWert = w.strAnzeigeWert = e.WertAus;
    // What is no number stays visible as it stands, marked, and is not touched by saving.
    panel.numberText = w.strAnzeigeWert;
    panel.numberInvalid = true;
    panel.Min = toLng(e.WertAus);
    panel.Max = toLng(e.WertEin);
    panel.Value = panel.Min;
    const bool scaled = !e.Werteliste.empty() && !host.tip.record().INITipp;
    const double divisor = scaled ? toDbl(e.Werteliste) : 1;
    if (divisor == 0) throw NumberedError(errnum::DivisionByZero, "Division durch Null");
    panel.unfinished = false;   // whatever the value is, a number can be set
    if (scaled) w.strAktuellerWert = w.strAnzeigeWert = numberText(toDbl(w.strAnzeigeWert) / divisor);
    std::int32_t value = toLng(w.strAnzeigeWert);
    if (value < panel.Min) {
        value = panel.Min;
        w.strAktuellerWert = w.strAnzeigeWert = numberText(value);
    }
    if (value > panel.Max) {   // the range grows instead of the value being cut
        panel.Max = value;
        e.WertEin = numberText(value);
    }
    panel.TickFrequency = std::max<std::int32_t>(1, toLng(numberText(panel.Max / 10.0)));
    panel.Value = value;
    panel.numberText = numberText(value);
    panel.numberInvalid = false;
}

void ZahlenWerteKind::unload(Context& ctx) const { unloadPanels(ctx, *this); }

void ZahlenWerteKind::setNumber(KindHost& host, Panel& panel, std::int32_t value) const {
    if (value < panel.Min || value > panel.Max) return;
    panel.Value = value;
    panel.numberText = numberText(value);
    panel.numberInvalid = false;
    host.touched(panel, panel.entries.front());
}

void ZahlenWerteKind::typeNumber(KindHost& host, Panel& panel, const std::string& text) const {
    panel.numberText = text;
    const auto value = wholeNumber(Trim(text));
    panel.numberInvalid = !value || *value < panel.Min || *value > panel.Max;
    if (!panel.numberInvalid) panel.Value = *value;
    host.touched(panel, panel.entries.front());
}

// A binary value is the sum of its bytes.
std::string ZahlenWerteKind::ownForm(FrameContext&, std::int32_t type, std::string text) const {
    if (type != 3) return text;
    std::int32_t sum = 0;
    for (const std::string& piece : Split(text, " ")) {
        sum += static_cast<std::int32_t>(Val(Hex2Dec(piece)));
        if (sum > MaxBinaryNumber) throw NumberedError(errnum::Overflow, "Überlauf");
    }
    return numberText(sum);
}

bool ZahlenWerteKind::mayCollect(KindHost& host, const Panel& panel, std::optional<BootInput>&) const {
    if (!panel.numberInvalid || !host.tip.value(panel.entries.front()).touched) return true;
    host.tip.context().port.tell(fmt::format(messages::NoNumberInField, panel.numberText, panel.Min, panel.Max), box::Exclamation);
    return false;
}

std::optional<std::string> ZahlenWerteKind::valueText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const {
    if (panel.numberInvalid) return std::nullopt;
    const std::string& divisor = tip.entry(entry).Werteliste;
    return divisor.empty() || tip.record().INITipp ? numberText(panel.Value) : numberText(panel.Value * toDbl(divisor));
}

std::string ZahlenWerteKind::shownText(const CurrentTip&, const Panel& panel, std::int16_t) const { return panel.numberText; }

std::string ZahlenWerteKind::setText(KindHost& host, Panel& panel, std::int16_t, const std::string& text) const {
    typeNumber(host, panel, text);
    return panel.numberInvalid ? fmt::format(messages::NoNumber, text, panel.Min, panel.Max) : std::string();
}

void ZahlenWerteKind::checkSource(const SourceCheck& check) const {
    const SourceRow& row = check.row;
    check.allowTypes({typ::Sz, typ::ExpandSz, typ::Binary, typ::Dword});
    check.needName();
    const auto low = decimal(row.WertAus.value_or("")), high = decimal(row.WertEin.value_or(""));
    if (!low || *low < INT32_MIN) return check.complain("WertAus", "Die Art zahl braucht in WertAus das Minimum als ganze Zahl.");
    if (!high || *high > INT32_MAX) return check.complain("WertEin", "Die Art zahl braucht in WertEin das Maximum als ganze Zahl.");
    if (*low >= *high) check.complain("WertAus", "Das Minimum " + std::to_string(*low) + " liegt nicht unter dem Maximum " + std::to_string(*high) + ".");
    double divisor = 1;
    if (row.Werteliste && !row.INITipp) {
        const auto factor = decimal(*row.Werteliste);
        if (!factor || *factor == 0) return check.complain("Werteliste", "Der Teiler \"" + *row.Werteliste + "\" ist keine ganze Zahl außer 0.");
        divisor = static_cast<double>(*factor);
    }
    const double one = static_cast<double>(*low) * divisor, other = static_cast<double>(*high) * divisor;
    const double smallest = std::min(one, other), largest = std::max(one, other);
    if (row.Datentyp == typ::Dword && !row.INITipp && smallest < 0) check.complain("WertAus", "REG_DWORD wird ohne Vorzeichen gelesen, der Bereich darf nicht unter 0 reichen.");
    if (row.Datentyp == typ::Binary && !row.INITipp && (smallest < 0 || largest > MaxBinaryNumber)) check.complain("WertEin", "Eine Zahl in REG_BINARY liegt zwischen 0 und 32767.");
    if (largest > UINT32_MAX || smallest < INT32_MIN) check.complain("WertEin", "Der Bereich paßt nicht in 32 Bit.");
    if (!check.hasDefault()) return;
    const auto standard = decimal(*row.Standardwert);
    if (!standard) return check.complain("Standardwert", "Der Standardwert \"" + *row.Standardwert + "\" ist keine ganze Zahl.");
    const auto value = static_cast<double>(*standard);
    if (value < smallest || value > largest) check.complain("Standardwert", "Der Standardwert " + *row.Standardwert + " liegt nicht im Bereich.");
}

}  // namespace brenvik
