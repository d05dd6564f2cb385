// One builder for each panel kind: fill the record with what stands in the registry or the file now.
#include <algorithm>
#include <cmath>

#include "frame/Konvertierung.h"
#include "frame/Texte.h"
#include "registry/ValueOperations.h"
#include "registry/WertEingabe.h"
#include "tipengine/Farbwert.h"
#include "tipengine/Meldungen.h"
#include "tipengine/TippMaschine.h"

namespace brenvik {
namespace {

constexpr std::size_t MaxOptionen = 6;

}  // namespace

void TippMaschine::buildCheckBox(std::int16_t i) {
    const TippEintrag& e = eintrag(i);
    Panel& panel = addPanel(art::CheckBox, ++ctx_.intPanelCheckBox, i);
    panel.label = e.Beschriftung.empty() ? e.Wertname : e.Beschriftung;
    panel.chkBeschriftung = e.Anzeigetext.empty() ? std::string("Aktivieren") : e.Anzeigetext;
    readEntry(i, panel.status);
    const std::string value = wert(i).strAktuellerWert;
    if (value.empty()) return;
    const std::string upper = upperCase(value);
    if (value == "0" || value == "00" || upper == "NO") panel.angehakt = false;
    if (value == "1" || value == "01" || upper == "YES") panel.angehakt = true;
    if (upper == upperCase(eintrag(i).WertAus)) panel.angehakt = false;
    if (upper == upperCase(eintrag(i).WertEin)) panel.angehakt = true;
}

void TippMaschine::buildTextWerte(std::int16_t i) {
    Panel& panel = addPanel(art::TextWerte, ++ctx_.intPanelText, i);
    panel.label = eintrag(i).Beschriftung;
    readEntry(i, panel.status);
    panel.mehrzeilig = eintrag(i).Datentyp == 7;
    Arbeitswert& w = wert(i);
    if (panel.mehrzeilig && w.roh && !w.strAktuellerWert.empty() && eingabeForm(*w.roh) != Wertform::Zeilen) w.sperre = meldung::ZeilenSperre;
    panel.text = wert(i).strAktuellerWert;
    if (panel.mehrzeilig) std::replace(panel.text.begin(), panel.text.end(), '\0', '\n');
}

void TippMaschine::buildZahlenWerte(std::int16_t i) {
    Panel& panel = addPanel(art::ZahlenWerte, ++ctx_.intPanelZahl, i);
    panel.label = Trim(eintrag(i).Wertname + " " + eintrag(i).Anzeigetext);
    readEntry(i, panel.status);
    TippEintrag& e = eintrag(i);
    Arbeitswert& w = wert(i);
    if (w.strAnzeigeWert.empty()) w.strAktuellerWert = w.strAnzeigeWert = e.WertAus;
    // What is no number stays visible as it stands, marked, and is not touched by saving.
    panel.zahlText = w.strAnzeigeWert;
    panel.zahlUngueltig = true;
    panel.Min = toLng(e.WertAus);
    panel.Max = toLng(e.WertEin);
    panel.Value = panel.Min;
    const bool scaled = !e.Werteliste.empty() && !ctx_.aktuellerTipp.INITipp;
    const double divisor = scaled ? toDbl(e.Werteliste) : 1;
    if (divisor == 0) throw NumberedError(errnum::DivisionByZero, "Division durch Null");
    panel.unfertig = false;   // whatever the value is, a number can be set
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
    panel.zahlText = numberText(value);
    panel.zahlUngueltig = false;
}

void TippMaschine::buildAuswahlBox(std::int16_t i) {
    Panel& panel = addPanel(art::AuswahlBox, ++ctx_.intPanelAuswahl, i);
    panel.label = eintrag(i).Wertname;
    panel.auswahl = Split(eintrag(i).Anzeigetext, "#");
    readEntry(i, panel.status);
    const std::string value = lowerCase(wert(i).strAktuellerWert);
    if (value.empty()) return;
    for (std::size_t k = 0; k < panel.auswahl.size(); ++k)
        if (lowerCase(panel.auswahl[k]).find(value) != std::string::npos) {
            panel.gewaehlt = static_cast<int>(k);
            break;
        }
}

void TippMaschine::buildOptionsAuswahl(std::int16_t i) {
    Panel& panel = addPanel(art::OptionsAuswahl, ++ctx_.intPanelOption, i);
    const TippEintrag& e = eintrag(i);
    panel.label = e.Beschriftung;
    panel.auswahl = Split(e.Anzeigetext, "#");
    if (panel.auswahl.size() > MaxOptionen) panel.auswahl.resize(MaxOptionen);
    const auto values = ctx_.aktuellerTipp.INITipp ? std::vector<std::string>{} : Split(e.Werteliste, "#");
    for (std::size_t j = 0; j < panel.auswahl.size(); ++j) {
        const double option = j < values.size() ? Val(values[j]) : static_cast<double>(j);
        panel.dblOptionsWert.push_back(option);
        wert(i).dblOptionsWerte[j] = option;
    }
    readEntry(i, panel.status);
    const std::string value = wert(i).strAktuellerWert;
    for (std::size_t j = 0; j < panel.dblOptionsWert.size(); ++j)
        if (value == numberText(panel.dblOptionsWert[j])) {
            panel.gewaehlt = static_cast<int>(j);
            break;
        }
}

// Kinds 6, 7 and 8 read their entries without a label; one status line then speaks for all of them.
void TippMaschine::readSilently(Panel& panel) {
    if (ctx_.aktuellerTipp.INITipp) return readIniSilently(panel);
    std::size_t found = 0, shown = 0;
    bool writable = false;
    for (std::int16_t i : panel.eintraege) {
        ReadRecTipp(i, nullptr);
        writable = writable || !wert(i).nurLesen;
        if (!wert(i).gefunden) continue;
        ++found;
        if (!wert(i).ignoriert) ++shown;
    }
    if (found == 0) {
        RegWertNotFound(panel.eintraege.front(), &panel.status);
        panel.status.text = strBVKTexte(32);
        return;
    }
    if (shown == 0) {
        panel.status = {strBVKTexte(179), StatusFarbe::Gefunden};
        FB_KeySave(true);
        return;
    }
    statusOfFound(writable, panel.status);
    for (std::int16_t i : panel.eintraege) wert(i).blnWertGelesen = wert(i).gefunden && !wert(i).ignoriert;
    if (shown < panel.eintraege.size()) panel.status = {strBVKTexte(31), StatusFarbe::Gefunden};
    allowDelete(panel.eintraege.front(), ctx_.einstellungen.LöschenAktiv && ctx_.blnSchreibrecht);
}

void TippMaschine::readIniSilently(Panel& panel) {
    bool found = false, any = false;
    for (std::int16_t i : panel.eintraege) {
        StatusZeile line;
        ReadINITipp(i, &line, found);
        if (!any || !found) panel.status = line;
        any = any || wert(i).blnWertGelesen;
        if (!found) return;   // a file that is not there is asked for once
    }
    allowDelete(panel.eintraege.front(), any && ctx_.einstellungen.LöschenAktiv);
}

namespace {

std::vector<std::int16_t> entriesOfKind(const Tipp& tipp, std::int16_t kind) {
    std::vector<std::int16_t> entries;
    for (std::size_t k = 1; k < tipp.Eintrag.size(); ++k)
        if (tipp.Eintrag[k].Ausgabeart == kind) entries.push_back(static_cast<std::int16_t>(k));
    return entries;
}

}  // namespace

// Kinds 6 and 7: one panel with a choice among the entries, the first one shown.
Panel& TippMaschine::buildChoicePanel(std::int16_t kind) {
    const auto entries = entriesOfKind(ctx_.aktuellerTipp, kind);
    Panel& panel = addPanel(kind, 0, entries.front());
    panel.eintraege = entries;
    for (std::int16_t i : entries) {
        const TippEintrag& e = eintrag(i);
        panel.auswahl.push_back(e.Anzeigetext.empty() ? e.Wertname : e.Anzeigetext);
    }
    panel.label = eintrag(entries.front()).Beschriftung;
    panel.gewaehlt = 0;
    readSilently(panel);
    return panel;
}

void TippMaschine::buildDrive() {
    Panel& panel = buildChoicePanel(art::Drive);
    const std::int16_t first = panel.eintraege.front();
    panel.text = wert(first).strAnzeigeWert;
    panel.cmdDriveSichtbar = !panel.text.empty();
    panel.dateiFilter = eintrag(first).Werteliste;
}

void TippMaschine::buildFarbe() {
    Panel& panel = buildChoicePanel(art::Farbe);
    const std::int16_t first = panel.eintraege.front();
    panel.farbe = colourText(wert(first).strAktuellerWert, eintrag(first).Datentyp);
}

void TippMaschine::buildListe(std::int16_t first) {
    ctx_.blnListeGeaendert = false;
    const auto entries = entriesOfKind(ctx_.aktuellerTipp, art::Liste);
    Panel& panel = addPanel(art::Liste, 0, first);
    panel.label = eintrag(first).Beschriftung;
    if (eintrag(first).Wertname.empty()) {   // the list is the content of the key
        ReadRecListe(eintrag(1).Werteliste, panel, &panel.status);
        return;
    }
    panel.eintraege = entries;
    readSilently(panel);
    for (std::int16_t i : entries) {
        Arbeitswert& w = wert(i);
        if (w.strAktuellerWert.empty()) w.strAktuellerWert = w.strAnzeigeWert = DelKey;
        panel.zeilen.push_back({eintrag(i).Anzeigetext, {}, lowerCase(w.strAktuellerWert) == "no", w.nurLesen});
    }
}

void TippMaschine::buildKontext() {
    Panel& panel = addPanel(art::Kontext, 0, 1);
    panel.label = eintrag(1).Beschriftung;
    captionsKontext();
    ReadRecKontext(eintrag(1).Werteliste, panel, &panel.status);
}

void TippMaschine::buildBitMaske(std::int16_t i) {
    Panel& panel = addPanel(art::BitMaske, ++ctx_.intPanelBit, i);
    const TippEintrag& e = eintrag(i);
    panel.label = e.Beschriftung;
    auto captions = Split(e.Anzeigetext, "#");
    const std::size_t limit = e.Datentyp == 4 ? 32 : 512;
    const bool tooMany = captions.size() > limit;
    if (tooMany) captions.resize(limit);
    readEntry(i, panel.status);

    std::vector<bool> bits(captions.size(), false);
    const std::string value = wert(i).strAktuellerWert;
    if (eintrag(i).Datentyp == 4) {
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
    panel.unfertig = false;
    if (tooMany) throw NumberedError(errnum::Overflow, "Mehr Kästchen als der Wert Bits hat");
}

}  // namespace brenvik
