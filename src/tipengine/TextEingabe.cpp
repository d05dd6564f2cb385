// Setting an entry from a text, for the command line: the text goes to the panel as the user would put it there.
#include <algorithm>
#include <fmt/format.h>

#include "frame/Konvertierung.h"
#include "tipengine/BootSchalter.h"
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

// "Title /SWITCH /NAME=value" into the panel of a boot menu: the entry by its title, the first one without it, and of the
// offered switches those it is to have. What the Tip does not offer is the entry's own and stays.
std::string setBootEntry(TippMaschine& engine, std::size_t place, const std::string& text) {
    const auto& entries = engine.context().udtBootEintraege;
    const Panel& panel = engine.context().frmBVK_Prog.panels.at(place);
    if (entries.size() <= 1) return fmt::format(meldung::KeinBooteintrag, panel.status.text);
    std::size_t chosen = 1, title = 0;
    for (std::size_t k = 1; k < entries.size(); ++k)
        if (entries[k].Titel.size() > title && (text == entries[k].Titel || text.starts_with(entries[k].Titel + " "))) {
            chosen = k;
            title = entries[k].Titel.size();
        }
    const std::string switches = Trim(text.substr(title));
    if (chosen >= entries.size() || (!switches.empty() && switches[0] != '/')) return fmt::format(meldung::NichtInListe, text, joined(panel.auswahl));
    std::vector<ChosenSwitch> none;
    for (const SchalterFeld& field : panel.schalter) none.push_back({field.beschriftung, false, {}});
    const std::string foreign = withSwitches(switches, none);
    if (!foreign.empty() && !equalText(foreign, withSwitches(entries[chosen].Schalter, none))) return fmt::format(meldung::SchalterFremd, foreign);
    engine.userChoose(place, static_cast<int>(chosen) - 1);
    for (std::size_t j = 0; j < none.size(); ++j) {
        const auto value = switchIn(switches, none[j].name);
        engine.userSwitch(place, static_cast<int>(j), value.has_value());
        if (switchTakesValue(none[j].name)) engine.userSwitchText(place, static_cast<int>(j), value.value_or(std::string()));
    }
    return {};
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
        case art::AuswahlBox: case art::OptionsAuswahl:
            return panel->gewaehlt < 0 ? std::string() : panel->auswahl.at(static_cast<std::size_t>(panel->gewaehlt));
        case art::BootINI: {
            if (panel->gewaehlt < 0) return {};
            const BootEintrag& boot = ctx_.udtBootEintraege.at(static_cast<std::size_t>(panel->gewaehlt) + 1);
            return Trim(boot.Titel + " " + boot.Schalter);
        }
        case art::Liste: case art::Kontext: {
            if (!rowsAreKeys(*panel) && place < panel->zeilen.size())
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

std::string TippMaschine::setEntryFromText(std::int32_t number, const std::string& text) {
    if (number < 1 || number > letzterEintrag()) return fmt::format(meldung::KeinEintrag, number);
    const auto entry = static_cast<std::int16_t>(number);
    Panel* panel = panelOfEntry(entry);
    if (panel == nullptr) return meldung::NichtSetzbar;
    if (panel->unfertig) return meldung::PanelUnfertig;
    const auto place = static_cast<std::size_t>(panel - fenster().panels.data());
    const auto row = static_cast<int>(std::find(panel->eintraege.begin(), panel->eintraege.end(), entry) - panel->eintraege.begin());
    switch (panel->Ausgabeart) {
        case art::CheckBox:
            if (const auto on = onOff(text)) return userCheck(place, *on), std::string();
            return fmt::format(meldung::NurEinAus, text);
        case art::Liste:
            if (rowsAreKeys(*panel)) return meldung::ZeilenSindSchluessel;
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
            const auto colour = Split(text, " ").size() == 3 ? colourText(text, 1) : std::nullopt;
            if (!colour) return fmt::format(meldung::KeineFarbe, text);
            userChoose(place, row);
            panel->farbe = colour;
            wert(entry).strAnzeigeWert = text;
            touched(place, entry);
            return {};
        }
        case art::BootINI: return setBootEntry(*this, place, text);
        case art::BitMaske:
            if (text.size() != panel->schalter.size() || text.find_first_not_of("01") != std::string::npos)
                return fmt::format(meldung::KeineKaestchen, text, panel->schalter.size());
            for (std::size_t k = 0; k < text.size(); ++k) userSwitch(place, static_cast<int>(k), text[k] == '1');
            return {};
        default: return meldung::ZeilenSindSchluessel;
    }
}

}  // namespace brenvik
