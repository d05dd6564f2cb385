// Collecting the panels, writing the values, the windows' default. Deleting stands in Loeschen.cpp.
#include <algorithm>
#include <fmt/format.h>

#include "frame/Konvertierung.h"
#include "frame/Reports.h"
#include "frame/Texte.h"
#include "registry/Upcase.h"
#include "registry/ValueOperations.h"
#include "registry/WertEingabe.h"
#include "tipengine/GeplanterWert.h"
#include "tipengine/Meldungen.h"
#include "tipengine/TippMaschine.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {

// The pointer never stays behind, whatever happens in between.
class Wartezeiger {
public:
    explicit Wartezeiger(UserPort& port) : port_(port) { port_.waitPointer(true); }
    ~Wartezeiger() { off(); }
    void off() {
        if (on_) port_.waitPointer(false);
        on_ = false;
    }
    Wartezeiger(const Wartezeiger&) = delete;
    Wartezeiger& operator=(const Wartezeiger&) = delete;

private:
    UserPort& port_;
    bool on_ = true;
};

}  // namespace

// --- collecting ---

// The panel's state becomes strAnzeigeWert of its entries. Entries that were found and not touched keep what was read.
void TippMaschine::collectPanel(const Panel& panel) {
    if (panel.unfertig) return;
    for (const std::int16_t i : panel.eintraege) {
        if (!wert(i).beruehrt && (wert(i).roh || wert(i).gefunden)) continue;
        if (auto text = kindOf(panel).valueText(tip_, panel, i)) wert(i).strAnzeigeWert = std::move(*text);
    }
}

bool TippMaschine::DatenRead() {
    bool ok = false;
    ctx_.bootEingabe.reset();
    reportAndGoOn(ctx_, "DatenRead", [&] {
        std::optional<BootEingabe> bootInput;
        for (Panel& panel : fenster().panels) {
            if (!kindOf(panel).mayCollect(*this, panel, bootInput)) return;
            if (panel.eintraege.empty()) continue;
            collectPanel(panel);
        }
        for (std::int16_t i = 1; i <= letzterEintrag(); ++i)
            if (upperCase(wert(i).strAktuellerWert) != upperCase(wert(i).strAnzeigeWert)) ctx_.blnGeaendert = true;
        ctx_.bootEingabe = std::move(bootInput);
        ok = true;
    });
    return ok;
}

bool TippMaschine::DatenSichern(Verbleib verbleib) {
    if (!ctx_.blnGeaendert) return true;
    bool settled = false;
    if (ctx_.blnSchreibrecht) {
        const bool save = ctx_.port.ask(strBVKTexte(57));
        ctx_.klick();
        if (save) {
            reportAndGoOn(ctx_, "DatenSichern", [&] { settled = DatenRead() && (ctx_.aktuellerTipp.INITipp ? SaveINITipp(false) : RegWerteSchreiben()); });
            ctx_.blnGeaendert = !settled;
            return settled;
        }
    }
    ctx_.blnGeaendert = false;
    if (verbleib == Verbleib::BleibtStehen) reloadTipp();
    return true;
}

// --- writing ---

// The value as the registry takes it. Throws NumberedError or RegError with the refusal as its text.
RawValue TippMaschine::valueToWrite(std::int16_t i) const {
    const TippEintrag& e = eintrag(i);
    std::string text = kindOf(e).registryText(e, wert(i).strAnzeigeWert);
    if (e.Datentyp == 7) {
        std::replace(text.begin(), text.end(), '\0', '\n');
        std::erase(text, '\r');
        try {
            return wertAusEingabe(text, regtype::MultiSz, Wertform::Zeilen);
        } catch (const RegError& error) {
            throw RegError(error.number, error.what() + std::string(meldung::NichtsGeaendert));
        }
    }
    try {
        return fromText(text, static_cast<std::uint32_t>(e.Datentyp));
    } catch (const RegError& error) {
        throw RegError(error.number, fmt::format(meldung::WertUnpassend, text, DatenTypText(ctx_, e.Datentyp)));
    }
}

// Whether two entries name one value.
bool TippMaschine::sameValue(std::int16_t i, std::int16_t j) const {
    const TippEintrag &a = eintrag(i), &b = eintrag(j);
    if (ctx_.aktuellerTipp.INITipp) return equalText(files_.path(i), files_.path(j)) && equalText(a.Schlüssel, b.Schlüssel) && equalText(a.Wertname, b.Wertname);
    const auto key = [&](std::int16_t entry) {   // a doubled or closing backslash means the same key
        std::string path;
        for (const std::string& part : Split(keyPath(entry), "\\"))
            if (!part.empty()) path += part + "\\";
        return path;
    };
    return sameName(a.Wertname, b.Wertname) && sameName(key(i), key(j));
}

// The entry that tells what becomes of the value: of several that name it, one that was set goes before those that were not.
std::int16_t TippMaschine::speakerOf(std::int16_t i) const {
    if (wert(i).beruehrt) return i;
    for (std::int16_t k = letzterEintrag(); k >= 1; --k)
        if (wert(k).beruehrt && sameValue(k, i)) return k;
    return i;
}

// Whether the value's key may be written or, where it is missing, the nearest one above it.
bool TippMaschine::mayWrite(std::int16_t i) const {
    const RegPath place = parseRegPath(keyPath(i) + "\\");
    ctx_.objBVKReg.SetPath(ctx_.strRechnername, keyPath(i) + "\\");
    RegStore& store = ctx_.objBVKReg.selectedStore();
    for (std::string key = place.key; !key.empty(); key.resize(key.find_last_of('\\') == std::string::npos ? 0 : key.find_last_of('\\')))
        if (store.keyExists(place.root, key)) return store.canOpen(place.root, key, KEY_ALL_ACCESS_MASK);
    return true;
}

// What is to be done for each entry, before anything is done. A value that cannot be written refuses the whole save.
std::vector<TippMaschine::GeplanterWert> TippMaschine::planWrites(std::string& refusal) {
    std::vector<GeplanterWert> plan;
    const bool anySet = std::any_of(ctx_.werte.begin(), ctx_.werte.end(), [](const Arbeitswert& w) { return w.beruehrt; });
    for (std::int16_t i = 1; i <= letzterEintrag() && refusal.empty(); ++i) {
        if (speakerOf(i) != i) continue;
        const Arbeitswert& w = wert(i);
        GeplanterWert p{i, valuePath(i), {}, {}, GeplanterWert::Tat::Schreiben, false};
        p.alt = valueOf(i).ReadRaw();
        if (!w.beruehrt && p.alt != w.roh) continue;   // made, changed or deleted by somebody else since it was read: not ours to turn back
        const bool writable = mayWrite(i);
        if (!writable && !w.beruehrt && (w.roh || anySet)) continue;   // nor may it stop the others
        GesammelterWert value = collectedValue(i);
        refusal = value.unpassend;
        if (!value.geloescht && !value.wert && refusal.empty()) continue;
        if (value.geloescht) p.tat = GeplanterWert::Tat::Loeschen;
        p.neu = std::move(value.wert);
        const auto twin = std::find_if(plan.begin(), plan.end(), [&](const GeplanterWert& other) { return sameValue(other.eintrag, i); });
        if (twin != plan.end()) {   // one value is written once, as its last entry has it
            if (refusal.empty() && w.beruehrt && twin->neu != p.neu) refusal = fmt::format(meldung::ZweiEinstellungen, twin->eintrag, i, p.path);
            *twin = std::move(p);
            continue;
        }
        if (value.geloescht && !p.alt) continue;
        if (!writable && refusal.empty()) refusal = fmt::format(meldung::NurLesbar, p.path);
        plan.push_back(std::move(p));
    }
    return plan;
}

void TippMaschine::writePlanned(std::vector<GeplanterWert>& plan, Aenderung& change) {
    LaufendeAenderung running(recorder_, change);
    for (std::size_t k = 0; k < plan.size(); ++k) {
        GeplanterWert& p = plan[k];
        BVKRegistry& reg = valueOf(p.eintrag);
        if (p.tat == GeplanterWert::Tat::Loeschen)
            reg.DeleteValue();
        else
            reg.WriteRaw(*p.neu);
        p.geschrieben = true;
        running.written(k);
    }
}

// A save that stopped half way: the user hears what stands now, and the working values know it too.
void TippMaschine::tellPartialWrite(const std::vector<GeplanterWert>& plan) {
    std::string done, open;
    std::size_t count = 0;
    for (const GeplanterWert& p : plan) {
        (p.geschrieben ? done : open) += p.path + "\r\n";
        if (!p.geschrieben) continue;
        ++count;
        Arbeitswert& w = wert(p.eintrag);
        w.roh = p.neu;
        w.gefunden = p.neu.has_value();
        w.ignoriert = w.ignoriert && !w.beruehrt;
        w.strAktuellerWert = w.strAnzeigeWert;
        w.beruehrt = false;
    }
    showWhatIsThere();
    if (count > 0)
        ctx_.port.tell(fmt::format(meldung::TeilweiseGespeichert, count, plan.size(), done, open), box::Exclamation);
}

// After a failure half way the panels stay as the user left them, but say which of the values are there now.
void TippMaschine::showWhatIsThere() {
    for (Panel& panel : fenster().panels)
        if (!rowsAreKeys(panel)) {
            panel.status = statusNow(panel);
            kindOf(panel).showLocks(tip_, panel);
        }
    observer_.panelsChanged();
}

// One line for all entries of a panel. A value that the panel does not show is there, but still not shown.
StatusZeile TippMaschine::statusNow(const Panel& panel) {
    std::size_t there = 0;
    bool writable = false;
    for (const std::int16_t i : panel.eintraege) {
        if (wert(i).ignoriert) return panel.status;
        if (!valueOf(i).ReadRaw()) continue;
        ++there;
        writable = writable || !readOnlyNow(i);
    }
    if (there == 0) return {strBVKTexte(kindOf(panel).forSeveral ? 32 : 21), StatusFarbe::Fehlt};
    if (there < panel.eintraege.size()) return {strBVKTexte(31), StatusFarbe::Gefunden};
    return {strBVKTexte(writable ? 20 : 18), StatusFarbe::Gefunden};
}

// What a save would write, as a record of the change.
Aenderung TippMaschine::changeOf(const std::vector<GeplanterWert>& plan, Aenderung::Art art) const {
    Aenderung change = newChange(art);
    for (const GeplanterWert& p : plan) change.werte.push_back(changeOfValue(p.eintrag, p.alt, p.neu));
    return change;
}

Aenderung TippMaschine::plannedSave(std::string& refusal) {
    if (!ctx_.aktuellerTipp.INITipp) return changeOf(planWrites(refusal), Aenderung::Art::Speichern);
    Aenderung change = newChange(Aenderung::Art::IniDatei);
    if (const auto own = sectionEntry()) kindOf(eintrag(*own)).planFile(*this, *own, change, refusal);
    if (refusal.empty()) planIniFiles(false, change, refusal, [](const std::string&) { return true; });
    return change;
}

bool TippMaschine::RegWerteSchreiben(Aenderung::Art art) {
    Wartezeiger pointer(ctx_.port);
    ctx_.port.letEventsRun();
    std::vector<GeplanterWert> plan;
    Aenderung change;
    try {
        std::string refusal;
        plan = planWrites(refusal);
        if (!refusal.empty()) {
            pointer.off();
            ctx_.port.tell(refusal, box::Exclamation);
            return false;
        }
        change = changeOf(plan, art);
        writePlanned(plan, change);
    } catch (const NumberedError& error) {
        pointer.off();
        RegFehlermeldungen(ctx_, error.number, error.what());
        const std::vector<Arbeitswert> before = ctx_.werte;
        reportAndGoOn(ctx_, "RegWerteSchreiben", [&] { tellPartialWrite(plan); });
        if (recorder_.offerTakeBack(change)) {
            ctx_.werte = before;
            reportAndGoOn(ctx_, "RegWerteSchreiben", [&] { showWhatIsThere(); });
        }
        return false;
    }
    pointer.off();
    ctx_.port.tell(strBVKTexte(58));
    ctx_.klick();
    if (ctx_.aktuellerTipp.Neustart == 1) ctx_.blnNeustartNoetig = true;
    afterChange();
    return true;
}

// Other programs hear of the change, and the Tip is built anew from what is there now.
void TippMaschine::afterChange() {
    BroadCast();
    ctx_.blnGeaendert = false;
    TippsEntladen();
    DBTippsAusgeben();
}

bool TippMaschine::Default_Einstellungen() {
    const auto& entries = ctx_.aktuellerTipp.Eintrag;
    if (ctx_.blnTippGeladen && std::all_of(entries.begin(), entries.end(), [](const TippEintrag& e) { return e.Standardwert.empty(); })) {
        ctx_.port.tell(meldung::KeinStandard, box::Information);
        return false;
    }
    if (!ctx_.port.ask(meldung::StandardFrage)) return false;
    for (std::int16_t i = 1; i < static_cast<std::int16_t>(ctx_.werte.size()); ++i) {
        wert(i).strAnzeigeWert = eintrag(i).Standardwert;
        wert(i).beruehrt = true;
    }
    if (!ctx_.blnTippGeladen) return false;
    ctx_.bootEingabe.reset();
    const bool saved = ctx_.aktuellerTipp.INITipp ? SaveINITipp(false) : RegWerteSchreiben(Aenderung::Art::Standard);
    if (!saved) reloadTipp();
    return saved;
}

// --- commands ---

// What was typed elsewhere in the Tip is settled first: the Tip is read anew when the window closes.
void TippMaschine::openBearbeiten() {
    const int selected = menu_.list() != nullptr ? menu_.list()->gewaehlteZeile : -1;
    if (!DatenSichern()) return;
    if (Panel* panel = menu_.list(); panel != nullptr && selected < static_cast<int>(panel->zeilen.size())) panel->gewaehlteZeile = selected;
    BearbeitenAnfrage dialog = menu_.request(ctx_.blnBearbeitenNeu);
    ctx_.port.showWindow(dialog);
    reloadTipp();
}

void TippMaschine::clickRegSave(const std::string& ownCaption) {
    ctx_.klick();
    if (ownCaption != strBVKButtons(4)) {
        ctx_.blnBearbeitenNeu = true;
        openBearbeiten();
        return;
    }
    if (!DatenRead()) return;
    if (ctx_.aktuellerTipp.INITipp)
        SaveINITipp(false);
    else
        RegWerteSchreiben();
}

void TippMaschine::clickDefault(const std::string& ownCaption) {
    ctx_.klick();
    if (ownCaption != strBVKButtons(7)) {
        ctx_.blnBearbeitenNeu = false;
        openBearbeiten();
        return;
    }
    Default_Einstellungen();
}

void TippMaschine::clickRegDel() {
    ctx_.klick();
    if (ctx_.aktuellerTipp.INITipp)
        SaveINITipp(true);
    else
        RegWerteLoeschen();
}

}  // namespace brenvik
