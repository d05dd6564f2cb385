// Setting an entry from a text, for the command line: the text goes to the panel as the user would put it there.
#include <algorithm>
#include <fmt/format.h>

#include "frame/Konvertierung.h"
#include "tipengine/Farbwert.h"
#include "tipengine/Meldungen.h"
#include "tipengine/TippMaschine.h"

namespace brenvik {
namespace {

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

int placeIn(const std::vector<std::string>& list, const std::string& text) {
    for (std::size_t k = 0; k < list.size(); ++k)
        if (list[k] == text) return static_cast<int>(k);
    return -1;
}

}  // namespace

StatusZeile TippMaschine::statusOf(std::int16_t entry) {
    const Panel* panel = panelOfEntry(entry);
    return panel != nullptr ? panel->status : StatusZeile{};
}

std::string TippMaschine::shownText(std::int16_t entry) {
    const Panel* panel = panelOfEntry(entry);
    if (panel == nullptr) return {};
    const auto place = static_cast<std::size_t>(std::find(panel->eintraege.begin(), panel->eintraege.end(), entry) - panel->eintraege.begin());
    switch (panel->Ausgabeart) {
        case art::CheckBox: return panel->angehakt ? "on" : "off";
        case art::TextWerte: return panel->text;
        case art::ZahlenWerte: return panel->zahlText;
        case art::AuswahlBox: case art::OptionsAuswahl: case art::BootINI:
            return panel->gewaehlt < 0 ? std::string() : panel->auswahl.at(static_cast<std::size_t>(panel->gewaehlt));
        case art::Liste: case art::Kontext: {
            if (panel->Ausgabeart == art::Liste && place < panel->zeilen.size() && !eintrag(entry).Wertname.empty())
                return panel->zeilen[place].angehakt ? "on" : "off";
            std::string rows;
            for (const ListenZeile& row : panel->zeilen) rows += (rows.empty() ? "" : "\n") + row.text;
            return rows;
        }
        case art::BitMaske: {
            std::string bits;
            for (const SchalterFeld& box : panel->schalter) bits += box.angehakt ? '1' : '0';
            return bits;
        }
        default: return wert(entry).strAnzeigeWert;
    }
}

std::string TippMaschine::setEntryFromText(std::int16_t entry, const std::string& text) {
    Panel* panel = panelOfEntry(entry);
    if (panel == nullptr)
        return entry >= 1 && entry <= letzterEintrag() ? std::string(meldung::NichtSetzbar) : fmt::format(meldung::KeinEintrag, entry);
    const auto place = static_cast<std::size_t>(panel - fenster().panels.data());
    const auto row = static_cast<int>(std::find(panel->eintraege.begin(), panel->eintraege.end(), entry) - panel->eintraege.begin());
    switch (panel->Ausgabeart) {
        case art::CheckBox:
            if (const auto on = onOff(text)) return userCheck(place, *on), std::string();
            return fmt::format(meldung::NurEinAus, text);
        case art::Liste:
            if (const auto on = onOff(text)) return userTick(place, row, *on), std::string();
            return fmt::format(meldung::NurEinAus, text);
        case art::TextWerte:
            wert(entry).beruehrt = true;   // also when the text is what stands there already
            userText(place, text);
            return {};
        case art::ZahlenWerte:
            userNumberText(place, text);
            return panel->zahlUngueltig ? fmt::format(meldung::KeineZahl, text, panel->Min, panel->Max) : std::string();
        case art::AuswahlBox: case art::OptionsAuswahl: {
            int item = placeIn(panel->auswahl, text);
            for (std::size_t k = 0; item < 0 && k < panel->dblOptionsWert.size(); ++k)
                if (numberText(panel->dblOptionsWert[k]) == text) item = static_cast<int>(k);
            if (item < 0) return fmt::format(meldung::NichtInListe, text, joined(panel->auswahl));
            return userChoose(place, item), std::string();
        }
        case art::Drive:
            userChoose(place, row);
            userText(place, text);
            return {};
        case art::Farbe: {
            const auto colour = colourText(text, 1);
            if (!colour) return fmt::format(meldung::KeineFarbe, text);
            userChoose(place, row);
            panel->farbe = colour;
            wert(entry).strAnzeigeWert = text;
            touched(place, entry);
            return {};
        }
        case art::BitMaske:
            if (text.size() != panel->schalter.size() || text.find_first_not_of("01") != std::string::npos)
                return fmt::format(meldung::KeineKaestchen, text, panel->schalter.size());
            for (std::size_t k = 0; k < text.size(); ++k) userSwitch(place, static_cast<int>(k), text[k] == '1');
            return {};
        default: return std::string(meldung::NichtSetzbar);
    }
}

}  // namespace brenvik
