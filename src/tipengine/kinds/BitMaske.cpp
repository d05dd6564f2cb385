#include "tipengine/kinds/BitMaske.h"

#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/text/Conversions.h"
#include "tipengine/Messages.h"

namespace brenvik {
namespace {
constexpr std::size_t DwordBits = 32, MostBits = 512;
}

// Its panels are not counted down: they go with all others.
BitMaskeKind::BitMaskeKind()
    : Kind({.number = art::BitMaske, .sourceName = "bitmaske", .traceName = "BIT-Maske", .counter = &Context::intPanelBit, .captionList = true}) {}

void BitMaskeKind::build(KindHost& host, std::int16_t i) const {
    const TipEntry& e = host.tip.entry(i);
    Panel& panel = addPanel(host, i);
    panel.label = e.Beschriftung;
    auto captions = Split(e.Anzeigetext, "#");
    const std::size_t limit = e.Datentyp == 4 ? DwordBits : MostBits;
    const bool tooMany = captions.size() > limit;
    if (tooMany) captions.resize(limit);
    host.readEntry(i, panel.status);

    std::vector<bool> bits(captions.size(), false);
    const std::string value = host.tip.value(i).strAktuellerWert;
    if (e.Datentyp == 4) {
        const std::uint32_t mask = value.empty() ? 0 : static_cast<std::uint32_t>(static_cast<std::int64_t>(toDbl(value)));
        for (std::size_t j = 0; j < bits.size(); ++j) bits[j] = (mask >> j & 1u) != 0;
    } else {
        const auto bytes = Split(value, " ");
        for (std::size_t j = 0; j < bits.size() && j / 8 < bytes.size(); ++j) {
            const auto byte = static_cast<unsigned>(Val(Hex2Dec(bytes[j / 8])));
            bits[j] = (byte >> (j % 8) & 1u) != 0;
        }
    }
    for (std::size_t j = 0; j < captions.size(); ++j) panel.schalter.push_back({captions[j], bits[j], false, {}});
    panel.unfinished = false;
    if (tooMany) throw NumberedError(errnum::Overflow, "Mehr Kästchen als der Wert Bits hat");
}

void BitMaskeKind::flip(KindHost& host, Panel& panel, std::size_t box, bool on) const {
    panel.schalter[box].ticked = on;
    host.touched(panel, panel.entries.front());
}

// The boxes over the text of the value as it was.
std::optional<std::string> BitMaskeKind::valueText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const {
    std::string text = tip.value(entry).strAnzeigeWert;
    const auto box = [&](std::size_t j) { return panel.schalter[j].ticked; };
    if (tip.entry(entry).Datentyp == 4) {
        std::uint32_t mask = text.empty() ? 0 : static_cast<std::uint32_t>(static_cast<std::int64_t>(Val(text)));
        for (std::size_t j = 0; j < panel.schalter.size(); ++j) mask = box(j) ? mask | 1u << j : mask & ~(1u << j);
        return numberText(mask);
    }
    auto bytes = Split(text, " ");
    std::erase(bytes, std::string());
    for (std::size_t j = 0; j < panel.schalter.size(); j += 8) {
        const std::size_t k = j / 8;
        if (k >= bytes.size()) bytes.resize(k + 1, "00");
        auto byte = static_cast<unsigned>(Val(Hex2Dec(bytes[k])));
        for (std::size_t b = 0; b < 8 && j + b < panel.schalter.size(); ++b) byte = box(j + b) ? byte | 1u << b : byte & ~(1u << b);
        bytes[k] = Dec2Hex(tip.context(), static_cast<std::int32_t>(byte & 0xFF));
    }
    text.clear();
    for (const std::string& byte : bytes) text += byte + " ";
    return text;
}

std::string BitMaskeKind::registryText(const TipEntry&, std::string text) const { return text; }   // it is the registry's own

std::string BitMaskeKind::shownText(const CurrentTip&, const Panel& panel, std::int16_t) const {
    std::string bits;
    for (const SwitchField& box : panel.schalter) bits += box.ticked ? '1' : '0';
    return bits;
}

std::string BitMaskeKind::setText(KindHost& host, Panel& panel, std::int16_t, const std::string& text) const {
    if (text.size() != panel.schalter.size() || text.find_first_not_of("01") != std::string::npos)
        return fmt::format(messages::NoTickBoxes, text, panel.schalter.size());
    for (std::size_t k = 0; k < text.size(); ++k) flip(host, panel, k, text[k] == '1');
    return {};
}

void BitMaskeKind::checkSource(const SourceCheck& check) const {
    const SourceRow& row = check.row;
    check.allowTypes({typ::Binary, typ::Dword});
    check.needName();
    check.unused("WertEin", row.WertEin);
    check.unused("WertAus", row.WertAus);
    const auto boxes = check.captions();
    if (boxes.empty() || boxes.size() > DwordBits) check.complain("Anzeigetext", "Die Art bitmaske braucht 1 bis 32 Texte in Anzeigetext, den ersten für Bit 0.");
    if (check.hasDefault()) check.checkFits("Standardwert", *row.Standardwert);
}

}  // namespace brenvik
