#include "tipengine/TipEngine.h"

#include <algorithm>
#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/Reports.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "registry/machine/Hibernation.h"
#include "tipengine/Messages.h"
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

constexpr const char* SymbolGroesse = "HKCU\\Control Panel\\Desktop\\WindowMetrics\\Shell Icon Size";
constexpr std::uint32_t AbbruchWennHaengt = 2, WartezeitMs = 10000, SymboleNeu = 42;

}  // namespace

TippMaschine::TippMaschine(Context& context, WindowObserver& observer, ChangeRecorder& recorder)
    : ctx_(context), recorder_(recorder), tip_(context), files_(tip_), reader_(tip_, files_, recorder), writer_(tip_, files_, recorder), ini_(tip_, files_, writer_),
      screen_(tip_, files_, reader_, observer, *this), input_(tip_, screen_), menu_(tip_, recorder), tree_(tip_, screen_, observer, *this),
      collector_(tip_, screen_, tree_, writer_, recorder) {}

void TippMaschine::inspectTipp(std::int32_t number) {
    if (tree_.readTippNumber(number)) screen_.look();
}

bool TippMaschine::DatenSichern(Verbleib verbleib) {
    if (!ctx_.blnGeaendert) return true;
    bool settled = false;
    if (ctx_.blnSchreibrecht) {
        const bool save = ctx_.port.ask(strBVKTexte(57));
        ctx_.klick();
        if (save) {
            reportAndGoOn(ctx_, "DatenSichern", [&] { settled = collector_.DatenRead() && (ctx_.aktuellerTipp.INITipp ? SaveINITipp(false) : RegWerteSchreiben()); });
            ctx_.blnGeaendert = !settled;
            return settled;
        }
    }
    ctx_.blnGeaendert = false;
    if (verbleib == Verbleib::BleibtStehen) screen_.reloadTipp();
    return true;
}

Aenderung TippMaschine::plannedSave(std::string& refusal) {
    if (!ctx_.aktuellerTipp.INITipp) return writer_.changeOf(writer_.planWrites(refusal), Aenderung::Art::Speichern);
    Aenderung change = tip_.newChange(Aenderung::Art::IniDatei);
    if (const auto own = ini_.sectionEntry()) kindOf(tip_.entry(*own)).planFile(screen_, *own, change, refusal);
    if (refusal.empty()) ini_.planIniFiles(false, change, refusal, [](const std::string&) { return true; });
    return change;
}

bool TippMaschine::RegWerteSchreiben(Aenderung::Art art) {
    Wartezeiger pointer(ctx_.port);
    ctx_.port.letEventsRun();
    std::vector<GeplanterWert> plan;
    Aenderung change;
    try {
        std::string refusal;
        plan = writer_.planWrites(refusal);
        if (!refusal.empty()) {
            pointer.off();
            ctx_.port.tell(refusal, box::Exclamation);
            return false;
        }
        change = writer_.changeOf(plan, art);
        writer_.writePlanned(plan, change);
    } catch (const NumberedError& error) {
        pointer.off();
        RegFehlermeldungen(ctx_, error.number, error.what());
        const std::vector<Arbeitswert> before = ctx_.werte;
        reportAndGoOn(ctx_, "RegWerteSchreiben", [&] { tellPartialWrite(plan); });
        if (recorder_.offerTakeBack(change)) {
            ctx_.werte = before;
            reportAndGoOn(ctx_, "RegWerteSchreiben", [&] { screen_.showWhatIsThere(); });
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

// A save that stopped half way: the user hears what stands now, and the working values know it too.
void TippMaschine::tellPartialWrite(const std::vector<GeplanterWert>& plan) {
    std::string done, open;
    std::size_t count = 0;
    for (const GeplanterWert& p : plan) {
        (p.geschrieben ? done : open) += p.path + "\r\n";
        if (!p.geschrieben) continue;
        ++count;
        Arbeitswert& w = tip_.value(p.eintrag);
        w.roh = p.neu;
        w.gefunden = p.neu.has_value();
        w.ignoriert = w.ignoriert && !w.beruehrt;
        w.strAktuellerWert = w.strAnzeigeWert;
        w.beruehrt = false;
    }
    screen_.showWhatIsThere();
    if (count > 0)
        ctx_.port.tell(fmt::format(meldung::TeilweiseGespeichert, count, plan.size(), done, open), box::Exclamation);
}

bool TippMaschine::RegWerteLoeschen() {
    if (tip_.last() < 1) return false;
    const Kind& kind = kindOf(tip_.entry(1));
    const bool yes = ctx_.port.ask(strBVKTexte(kind.ticks ? 162 : 59));
    ctx_.klick();
    if (yes) {
        Aenderung change;
        try {
            if (kind.rowsAreKeys(tip_.entry(1).Wertname))
                writer_.deleteTickedKeys();
            else
                writer_.deleteValues(change);
        } catch (const NumberedError& error) {
            RegFehlermeldungen(ctx_, error.number, error.what());
            recorder_.offerTakeBack(change);
            if (change.werte.empty())
                screen_.reloadTipp();   // keys: the list shows those that are left
            else
                reportAndGoOn(ctx_, "RegWerteLoeschen", [&] { screen_.showWhatIsThere(); });
            return false;
        }
    }
    afterChange();
    return yes;
}

bool TippMaschine::SaveINITipp(bool loeschen) {
    bool saved = false;
    if (loeschen && !ctx_.port.ask(meldung::EintragLoeschen)) return false;
    reportAndGoOn(ctx_, "SaveINITipp", [&] {
        std::string refusal;
        Aenderung trial = tip_.newChange(Aenderung::Art::IniDatei), change = trial;
        ini_.planIniFiles(loeschen, trial, refusal, [](const std::string&) { return true; });   // before such a file is written
        if (!refusal.empty()) return ctx_.port.tell(refusal, box::Exclamation);
        const auto own = ini_.sectionEntry();
        const std::string first = !trial.dateien.empty() ? trial.dateien.front().datei : own ? files_.file(*own).string() : std::string();
        if (!ctx_.blnLokal && !first.empty() && !mayBeWritten(ctx_.port, first)) return;   // all are of one machine
        if (own && !kindOf(tip_.entry(*own)).saveFile(screen_, recorder_, *own)) return;
        ini_.planIniFiles(loeschen, change, refusal, [&](const std::string& path) { return ctx_.port.ask(meldung::DateiNeu1 + path + meldung::DateiNeu2); });
        if (!refusal.empty()) return ctx_.port.tell(refusal, box::Exclamation);
        if (!change.dateien.empty()) {
            LaufendeAenderung running(recorder_, change);
            for (DateiBild& bild : change.dateien)
                if (!(bild.geschrieben = files_.write(bild.datei, bild.neu)))
                    return ctx_.port.tell(meldung::IniSchreibgeschuetzt, box::Exclamation);
        }
        saved = true;
    });
    ctx_.bootEingabe.reset();   // refused or failed: given up
    if (!saved) return false;
    ctx_.blnGeaendert = false;
    screen_.TippsEntladen();
    screen_.DBTippsAusgeben();
    return true;
}

// Other programs hear of the change, and the Tip is built anew from what is there now.
void TippMaschine::afterChange() {
    BroadCast();
    ctx_.blnGeaendert = false;
    screen_.TippsEntladen();
    screen_.DBTippsAusgeben();
}

bool TippMaschine::Default_Einstellungen() {
    const auto& entries = ctx_.aktuellerTipp.Eintrag;
    if (ctx_.blnTippGeladen && std::all_of(entries.begin(), entries.end(), [](const TippEintrag& e) { return e.Standardwert.empty(); })) {
        ctx_.port.tell(meldung::KeinStandard, box::Information);
        return false;
    }
    if (!ctx_.port.ask(meldung::StandardFrage)) return false;
    for (std::int16_t i = 1; i < static_cast<std::int16_t>(ctx_.werte.size()); ++i) {
        tip_.value(i).strAnzeigeWert = tip_.entry(i).Standardwert;
        tip_.value(i).beruehrt = true;
    }
    if (!ctx_.blnTippGeladen) return false;
    ctx_.bootEingabe.reset();
    const bool saved = ctx_.aktuellerTipp.INITipp ? SaveINITipp(false) : RegWerteSchreiben(Aenderung::Art::Standard);
    if (!saved) screen_.reloadTipp();
    return saved;
}

void TippMaschine::BroadCast() {
    reportAndGoOn(ctx_, "BroadCast", [&] {
        ctx_.platform.sendSettingChange(0, AbbruchWennHaengt, WartezeitMs);
        if (ctx_.aktuellerTipp.Neustart != 2) return;
        ctx_.trace.write("--- Lade Desktop neu");
        ctx_.objBVKReg.SetPath(ctx_.strLokalerRechner, SymbolGroesse);
        const auto before = ctx_.objBVKReg.ReadRaw();   // goes back byte for byte
        const std::string size = ReadRegistryKey(ctx_, SymbolGroesse, "32");
        if (SaveRegistryKey(ctx_, SymbolGroesse, numberText(std::int64_t{toLng(size)} + 1), 1))
            ctx_.platform.sendSettingChange(SymboleNeu, AbbruchWennHaengt, WartezeitMs);
        ctx_.objBVKReg.SetPath(ctx_.strLokalerRechner, SymbolGroesse);
        if (before)
            ctx_.objBVKReg.WriteRaw(*before);
        else
            ctx_.objBVKReg.DeleteValue();
    });
}

// What was typed elsewhere in the Tip is settled first: the Tip is read anew when the window closes.
void TippMaschine::openBearbeiten(bool blnBearbeitenNeu) {
    const int selected = menu_.list() != nullptr ? menu_.list()->gewaehlteZeile : -1;
    if (!DatenSichern()) return;
    if (Panel* panel = menu_.list(); panel != nullptr && selected < static_cast<int>(panel->zeilen.size())) panel->gewaehlteZeile = selected;
    BearbeitenAnfrage dialog = menu_.request(blnBearbeitenNeu);
    ctx_.port.showWindow(dialog);
    screen_.reloadTipp();
}

void TippMaschine::clickRegSave(const std::string& ownCaption) {
    ctx_.klick();
    if (ownCaption != strBVKButtons(4)) {
        openBearbeiten(true);
        return;
    }
    if (!collector_.DatenRead()) return;
    if (ctx_.aktuellerTipp.INITipp)
        SaveINITipp(false);
    else
        RegWerteSchreiben();
}

void TippMaschine::clickDefault(const std::string& ownCaption) {
    ctx_.klick();
    if (ownCaption != strBVKButtons(7)) {
        openBearbeiten(false);
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
