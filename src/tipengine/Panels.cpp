// What the user does in a panel, and the loading and unloading of panels.
#include <algorithm>
#include <charconv>
#include <utility>

#include "frame/Konvertierung.h"
#include "frame/Reports.h"
#include "tipengine/Dateiwahl.h"
#include "tipengine/Farbwert.h"
#include "tipengine/Meldungen.h"
#include "tipengine/TippMaschine.h"

namespace brenvik {
namespace {

std::optional<std::int32_t> wholeNumber(const std::string& text) {
    std::int32_t number = 0;
    const auto end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    if (text.empty() || read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return number;
}

// The window draws a panel: what its controls report meanwhile comes from the drawing, not from the user.
void drawPanel(Context& ctx, WindowObserver& observer, std::size_t place) {
    const bool before = std::exchange(ctx.blnInitPanel, true);
    observer.panelChanged(place);
    ctx.blnInitPanel = before;
}

}  // namespace

Panel* TippMaschine::panelOf(std::size_t place, std::initializer_list<std::int16_t> kinds) {
    if (ctx_.blnAusgabeLaeuft || ctx_.blnInitPanel || place >= fenster().panels.size()) return nullptr;
    Panel& panel = fenster().panels[place];
    return std::find(kinds.begin(), kinds.end(), panel.Ausgabeart) == kinds.end() ? nullptr : &panel;
}

Panel* TippMaschine::panelOfEntry(std::int16_t entry) {
    for (Panel& panel : fenster().panels)
        if (std::find(panel.eintraege.begin(), panel.eintraege.end(), entry) != panel.eintraege.end()) return &panel;
    return nullptr;
}

bool TippMaschine::rowsAreKeys(const Panel& panel) const {
    return panel.Ausgabeart == art::Kontext || (panel.Ausgabeart == art::Liste && eintrag(panel.eintraege.front()).Wertname.empty());
}

void TippMaschine::touched(std::size_t panel, std::int16_t entry) {
    if (entry > 0) wert(entry).beruehrt = true;
    ctx_.blnGeaendert = true;
    showLocks(fenster().panels.at(panel));
    drawPanel(ctx_, observer_, panel);
}

void TippMaschine::userCheck(std::size_t place, bool on) {
    if (Panel* panel = panelOf(place, {art::CheckBox})) {
        panel->angehakt = on;
        touched(place, panel->eintraege.front());
    }
}

void TippMaschine::userText(std::size_t place, const std::string& text) {
    Panel* panel = panelOf(place, {art::TextWerte, art::Drive});
    if (panel == nullptr || (panel->Ausgabeart == art::Drive && panel->gewaehlt < 0)) return;
    if (panel->text == text) return;
    panel->text = text;
    const std::int16_t entry = panel->Ausgabeart == art::Drive ? panel->eintraege.at(static_cast<std::size_t>(panel->gewaehlt)) : panel->eintraege.front();
    wert(entry).strAnzeigeWert = text;
    if (panel->mehrzeilig) std::replace(wert(entry).strAnzeigeWert.begin(), wert(entry).strAnzeigeWert.end(), '\n', '\0');
    touched(place, entry);
}

void TippMaschine::userNumber(std::size_t place, std::int32_t value) {
    Panel* panel = panelOf(place, {art::ZahlenWerte});
    if (panel == nullptr || value < panel->Min || value > panel->Max) return;
    panel->Value = value;
    panel->zahlText = numberText(value);
    panel->zahlUngueltig = false;
    touched(place, panel->eintraege.front());
}

void TippMaschine::userNumberText(std::size_t place, const std::string& text) {
    Panel* panel = panelOf(place, {art::ZahlenWerte});
    if (panel == nullptr) return;
    panel->zahlText = text;
    const auto number = wholeNumber(Trim(text));
    panel->zahlUngueltig = !number || *number < panel->Min || *number > panel->Max;
    if (!panel->zahlUngueltig) panel->Value = *number;
    touched(place, panel->eintraege.front());
}

void TippMaschine::userChoose(std::size_t place, int item) {
    Panel* panel = panelOf(place, {art::AuswahlBox, art::OptionsAuswahl, art::Drive, art::Farbe, art::BootINI});
    if (panel == nullptr || item < 0 || item >= static_cast<int>(panel->auswahl.size())) return;
    if (panel->Ausgabeart == art::BootINI) {
        if (ctx_.blnGeaendert) {
            const std::size_t panels = fenster().panels.size();
            if (!DatenSichern()) return drawPanel(ctx_, observer_, place);   // back to the entry that holds the input
            if (fenster().panels.size() != panels || place >= fenster().panels.size()) return;
            panel = &fenster().panels[place];
            if (item >= static_cast<int>(panel->auswahl.size())) return;
        }
        panel->gewaehlt = item;
        ctx_.intBootEintrag = item + 1;
        reportAndGoOn(ctx_, "cboBootINI_Click", [&] { BootINIParamAusW(*panel); });
        drawPanel(ctx_, observer_, place);
        return;
    }
    panel->gewaehlt = item;
    const std::int16_t entry = panel->eintraege.at(panel->eintraege.size() > 1 ? static_cast<std::size_t>(item) : 0);
    switch (panel->Ausgabeart) {
        case art::Drive:   // another entry is looked at, nothing is changed
            panel->text = wert(entry).strAnzeigeWert;
            panel->cmdDriveSichtbar = !panel->text.empty();
            panel->dateiFilter = eintrag(entry).Werteliste;
            showLocks(*panel);
            drawPanel(ctx_, observer_, place);
            return;
        case art::Farbe:
            if (const auto colour = colourText(wert(entry).strAnzeigeWert, wert(entry).beruehrt ? 1 : eintrag(entry).Datentyp)) panel->farbe = colour;
            showLocks(*panel);
            drawPanel(ctx_, observer_, place);
            return;
        default: touched(place, entry);
    }
}

void TippMaschine::userBrowse(std::size_t place) {
    Panel* panel = panelOf(place, {art::Drive});
    if (panel == nullptr || panel->gewaehlt < 0) return;
    const std::string start = choiceStart(ctx_, panel->text);
    const auto choice = panel->dateiFilter.empty() ? ctx_.port.chooseFolder(meldung::VerzeichnisAuswaehlen, start)
                                                   : ctx_.port.chooseFile({start, panel->dateiFilter, {}, false});
    if (choice) userText(place, chosenPath(ctx_, *choice));
}

void TippMaschine::userColour(std::size_t place) {
    Panel* panel = panelOf(place, {art::Farbe});
    if (panel == nullptr || panel->gewaehlt < 0) return;
    const auto colour = ctx_.port.chooseColour(panel->farbe.value_or(Rgb{}));
    if (!colour) return;
    const std::int16_t entry = panel->eintraege.at(static_cast<std::size_t>(panel->gewaehlt));
    const std::string text = numberText(colour->red) + " " + numberText(colour->green) + " " + numberText(colour->blue);
    panel->farbe = colour;
    // Binary colours are read in hexadecimal: there the same text can be another colour.
    const std::string& present = wert(entry).strAktuellerWert;
    const bool same = eintrag(entry).Datentyp == 3 ? colourText(present, 3) == colour : text == present;
    if (same) {
        wert(entry).strAnzeigeWert = present;
        wert(entry).beruehrt = false;
        drawPanel(ctx_, observer_, place);
        return;
    }
    wert(entry).strAnzeigeWert = text;
    touched(place, entry);
}

void TippMaschine::userTick(std::size_t place, int row, bool on) {
    Panel* panel = panelOf(place, {art::Liste, art::Kontext});
    if (panel == nullptr || row < 0 || row >= static_cast<int>(panel->zeilen.size())) return;
    if (panel->zeilen[static_cast<std::size_t>(row)].nurLesen) return drawPanel(ctx_, observer_, place);
    panel->zeilen[static_cast<std::size_t>(row)].angehakt = on;
    // In lists of keys the ticks choose what a delete takes; only rows of values are a change.
    if (rowsAreKeys(*panel) || static_cast<std::size_t>(row) >= panel->eintraege.size()) {
        drawPanel(ctx_, observer_, place);
        return;
    }
    ctx_.blnListeGeaendert = true;
    touched(place, panel->eintraege[static_cast<std::size_t>(row)]);
}

void TippMaschine::userSelectRow(std::size_t place, int row) {
    if (Panel* panel = panelOf(place, {art::Liste, art::Kontext}); panel != nullptr && row < static_cast<int>(panel->zeilen.size()))
        panel->gewaehlteZeile = row;
}

void TippMaschine::userSwitch(std::size_t place, int box, bool on) {
    Panel* panel = panelOf(place, {art::BootINI, art::BitMaske});
    if (panel == nullptr || box < 0 || box >= static_cast<int>(panel->schalter.size())) return;
    panel->schalter[static_cast<std::size_t>(box)].angehakt = on;
    touched(place, panel->eintraege.front());
}

void TippMaschine::userSwitchText(std::size_t place, int box, const std::string& text) {
    Panel* panel = panelOf(place, {art::BootINI});
    if (panel == nullptr || box < 0 || box >= static_cast<int>(panel->schalter.size())) return;
    panel->schalter[static_cast<std::size_t>(box)].wert = text;
    touched(place, panel->eintraege.front());
}

void TippMaschine::userBootTitle(std::size_t place, const std::string& text) {
    Panel* panel = panelOf(place, {art::BootINI});
    if (panel == nullptr || !panel->txtBINIAktiv) return;
    panel->txtBINI = text;
    touched(place, panel->eintraege.front());
}

// --- loading and unloading ---

void TippMaschine::DynModAdd(std::int16_t kind, std::int16_t index) {
    Panel panel;
    panel.Ausgabeart = kind;
    panel.index = index;
    fenster().panels.push_back(std::move(panel));
}

void TippMaschine::DynModDel(std::int16_t kind, std::int16_t index) {
    std::erase_if(fenster().panels, [&](const Panel& panel) { return panel.Ausgabeart == kind && panel.index == index; });
}

// Element 0 is never unloaded, only hidden with the rest, so a counter ends at 0, or stays at -1.
void TippMaschine::unloadKind(std::int16_t kind, std::int16_t& counter) {
    for (; counter >= 1; --counter) {
        if (kind == art::OptionsAuswahl)
            DynModAdd(kind, counter);   // loads where the other kinds unload; the clean-up below takes it away again
        else
            DynModDel(kind, counter);
    }
}

void TippMaschine::TippsEntladen() {
    reportAndGoOn(ctx_, "TippsEntladen", [&] {
        for (std::int16_t i = 1; i <= letzterEintrag(); ++i) switch (eintrag(i).Ausgabeart) {
                case art::CheckBox: unloadKind(art::CheckBox, ctx_.intPanelCheckBox); break;
                case art::TextWerte: unloadKind(art::TextWerte, ctx_.intPanelText); break;
                case art::ZahlenWerte: unloadKind(art::ZahlenWerte, ctx_.intPanelZahl); break;
                case art::AuswahlBox: unloadKind(art::AuswahlBox, ctx_.intPanelAuswahl); break;
                case art::OptionsAuswahl: unloadKind(art::OptionsAuswahl, ctx_.intPanelOption); break;
                default: break;
            }
    });
    fenster().panels.clear();
    observer_.panelsChanged();
}

void TippMaschine::DatenAusgabeOff() {
    ProcTrace trace(ctx_.trace, "DatenAusgabeOff");
    fenster().fraSteuerung = false;
    FB_KeySave(false);
    FB_KeyDel(false);
    FB_RegFile(false);
    FB_KeyInfo(false);
    observer_.windowChanged();
}

}  // namespace brenvik
