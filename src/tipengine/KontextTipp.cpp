// Entries of a context menu: a key each, whose unnamed value is the text shown, with a key "Command" below it.
#include <fmt/format.h>

#include "frame/Konvertierung.h"
#include "frame/Reports.h"
#include "frame/Texte.h"
#include "tipengine/Dateiwahl.h"
#include "tipengine/Meldungen.h"
#include "tipengine/Schluesselbild.h"
#include "tipengine/TippMaschine.h"

namespace brenvik {
namespace {
constexpr std::int16_t RegSz = 1;

// The text as a string value. A text with variables in it keeps its type, and what was not changed stays as it is.
RawValue asString(const std::string& text, const std::optional<RawValue>& present) {
    if (present && present->type != regtype::Dword && toText(*present) == text) return *present;
    return fromText(text, present && present->type == regtype::ExpandSz ? regtype::ExpandSz : regtype::Sz);
}

constexpr char Programme[] = "Programme (*.EXE;*.COM.;*.BAT;*.CMD)|*.EXE;*.COM;*.BAT;*.CMD|";
}  // namespace

std::string TippMaschine::kontextKey() const { return letzterEintrag() >= 1 ? keyPath(1) : std::string(); }

BearbeitenAnfrage TippMaschine::bearbeitenAnfrage(bool neu) {
    BearbeitenAnfrage dialog;
    dialog.neu = neu;
    dialog.befehlLesen = [this](BearbeitenAnfrage& d) {
        if (d.txtKeyName.empty()) return;
        reportAndGoOn(ctx_, "KontextBefehlLesen", [&] {
            ctx_.objBVKReg.SetPath(ctx_.strRechnername, kontextKey() + "\\" + d.txtKeyName + "\\Command\\");
            if (ctx_.objBVKReg.Exists(KEY_QUERY_VALUE_MASK)) d.txtBefehl = ctx_.objBVKReg.ReadValue(true);
        });
    };
    dialog.speichern = [this](BearbeitenAnfrage& d) { return KontextSpeichern(d); };
    dialog.befehlSuchen = [this](BearbeitenAnfrage& d) {
        const auto file = ctx_.port.chooseFile({choiceStart(ctx_, {}), Programme + strBVKTexte(109) + "(*.*)|*.*", strBVKTexte(108), false});
        if (file) d.txtBefehl = chosenPath(ctx_, *file);
    };
    if (!dialog.neu)
        for (const Panel& panel : fenster().panels)
            if (panel.Ausgabeart == art::Kontext && panel.gewaehlteZeile >= 0) {
                const ListenZeile& row = panel.zeilen.at(static_cast<std::size_t>(panel.gewaehlteZeile));
                dialog.txtKeyName = row.text;
                dialog.txtBeschreibung = row.unterText;
                dialog.befehlLesen(dialog);
            }
    return dialog;
}

// What was typed elsewhere in the Tip is settled first: the Tip is read anew when the window closes.
void TippMaschine::openBearbeiten() {
    const auto list = [this]() -> Panel* {
        for (Panel& panel : fenster().panels)
            if (panel.Ausgabeart == art::Kontext) return &panel;
        return nullptr;
    };
    const int selected = list() != nullptr ? list()->gewaehlteZeile : -1;
    if (!DatenSichern()) return;
    if (Panel* panel = list(); panel != nullptr && selected < static_cast<int>(panel->zeilen.size())) panel->gewaehlteZeile = selected;
    BearbeitenAnfrage dialog = bearbeitenAnfrage(ctx_.blnBearbeitenNeu);
    ctx_.port.showWindow(dialog);
    reloadTipp();
}

bool TippMaschine::KontextSpeichern(BearbeitenAnfrage& d) {
    const std::string name = d.txtKeyName;
    if (name.empty() || d.txtBefehl.empty() || letzterEintrag() < 1) return false;
    if (Trim(name).empty() || name.find('\\') != std::string::npos) return ctx_.port.tell(meldung::SchluesselnameUngueltig, box::Exclamation), false;
    const std::string key = kontextKey() + "\\" + name;
    const Panel* list = nullptr;
    for (const Panel& panel : fenster().panels)
        if (panel.Ausgabeart == art::Kontext) list = &panel;
    const ListenZeile* selected = list != nullptr && list->gewaehlteZeile >= 0 ? &list->zeilen.at(static_cast<std::size_t>(list->gewaehlteZeile)) : nullptr;
    if (list == nullptr && !ctx_.port.ask(fmt::format(meldung::KontextFremderTipp, key), box::Exclamation)) return false;

    bool saved = false;
    reportAndGoOn(ctx_, "KontextSpeichern", [&] {
        BVKRegistry& reg = ctx_.objBVKReg;
        const auto at = [&](const std::string& path) -> BVKRegistry& {
            reg.SetPath(ctx_.strRechnername, path);
            return reg;
        };
        const bool exists = at(key + "\\").Exists(KEY_QUERY_VALUE_MASK);
        const bool sameEntry = !d.neu && selected != nullptr && equalText(selected->text, name);
        if (exists && !sameEntry && !ctx_.port.ask(fmt::format(meldung::KontextVorhanden, name))) return;

        Aenderung change = newChange(Aenderung::Art::Kontextmenue);
        if (exists) change.schluessel = schluesselBilder(ctx_.objBVKReg, ctx_.strRechnername, key);
        change.werte.push_back({ctx_.strRechnername, key + "\\", eintrag(1).TippIndex, at(key + "\\").ReadRaw(), std::nullopt, false});
        change.werte.push_back({ctx_.strRechnername, key + "\\Command\\", eintrag(1).TippIndex, at(key + "\\Command\\").ReadRaw(), std::nullopt, false});
        change.werte[1].neu = asString(d.txtBefehl, change.werte[1].alt);
        LaufendeAenderung running(recorder_, change);
        at(key + "\\").WriteValue("", 0);   // makes the key, leaves its values alone
        if (!d.txtBeschreibung.empty()) change.werte[0].neu = asString(d.txtBeschreibung, change.werte[0].alt);
        else if (selected != nullptr && !selected->unterText.empty()) change.werte[0].neu = fromText("", RegSz);
        else change.werte[0].neu = change.werte[0].alt;
        if (change.werte[0].neu) at(key + "\\").WriteRaw(*change.werte[0].neu);
        running.written(0);
        at(key + "\\Command\\").WriteRaw(*change.werte[1].neu);
        running.written(1);
        ctx_.port.tell(strBVKTexte(161));
        saved = true;
    });
    return saved;
}

}  // namespace brenvik
