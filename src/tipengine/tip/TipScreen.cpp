#include "tipengine/tip/TipScreen.h"

#include <algorithm>
#include <array>
#include <utility>

#include "frame/Errors.h"
#include "frame/Reports.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {

// The run of the output: change events do not count while it lasts, and nothing counts as changed before or after.
class Ausgabelauf {
public:
    explicit Ausgabelauf(Context& ctx) : ctx_(ctx) {
        ctx_.blnAusgabeLaeuft = true;
        ctx_.blnGeaendert = false;
    }
    ~Ausgabelauf() {
        ctx_.blnAusgabeLaeuft = false;
        ctx_.blnGeaendert = false;
    }
    Ausgabelauf(const Ausgabelauf&) = delete;
    Ausgabelauf& operator=(const Ausgabelauf&) = delete;

private:
    Context& ctx_;
};

struct System {
    bool flag;
    const char* name;
    std::int16_t system;
};

std::array<System, 6> systemsOf(const Tipp& tipp) {
    return {{{tipp.Win95, " 95", 1}, {tipp.Win98, " 98", 2}, {tipp.WinME, " ME", 5}, {tipp.WinNT, " NT", 3}, {tipp.Win2000, " 2000", 4}, {tipp.WinXP, " XP", 6}}};
}

}  // namespace

void TipScreen::FrameStartEinstellungen() {
    ProcTrace trace(ctx_.trace, "FrameStartEinstellungen");
    fenster().FB_KeySave(false);
    fenster().FB_KeyDel(false);
    fenster().FB_Default(false);
    fenster().FB_RegFile(false);
    fenster().FB_ADMFile(false);
    fenster().FB_KeyInfo(false);
    fenster().FB_RegListe(false);
    fenster().FB_ADMListe(false);
    fenster().tbrHistory = false;
    captionsNormal();
    fenster().mnuRegSave = "Wert s&peichern...";   // until the first Tip
    observer_.windowChanged();
}

void TipScreen::captionsNormal() {
    Hauptfenster& f = fenster();
    f.cmdRegSave = strBVKButtons(4);
    f.cmdDefault = strBVKButtons(7);
    f.mnuRegSave = strBVKButtons(28);
    f.mnuDefault = strBVKButtons(29);
    f.tipRegSave = strBVKTips(11);
    f.tipDefault = strBVKTips(14);
    f.tipRegDel = strBVKTips(12);
}

void TipScreen::captionsForEntries() {
    Hauptfenster& f = fenster();
    f.cmdRegSave = f.mnuRegSave = strBVKButtons(26);
    f.cmdDefault = f.mnuDefault = strBVKButtons(27);
    f.tipRegSave = strBVKTips(15);
    f.tipRegDel = strBVKTips(16);
    f.tipDefault = strBVKTips(17);
}

void TipScreen::prepareOutput() {
    Hauptfenster& f = fenster();
    f.txtInfo.clear();
    fenster().FB_Default(false);
    f.panels.clear();
    fenster().FB_KeySave(false);
    fenster().FB_KeyDel(false);     // what the Tip before allowed is not allowed for this one
    fenster().FB_RegFile(false);
    captionsNormal();
    ctx_.blnSchreibrecht = true;
    for (const Kind* kind : allKinds())
        if (kind->counter != nullptr) ctx_.*kind->counter = -1;
    ctx_.blnEinWertGelesen = false;
    ctx_.werte.assign(ctx_.aktuellerTipp.Eintrag.size(), {});
    ctx_.udtBootEintraege.clear();
    ctx_.intBootEintrag = 0;
    ctx_.bootEingabe.reset();
    for (std::int16_t i = 1; i <= letzterEintrag(); ++i) wert(i).DatentypModus = eintrag(i).TypAnpassen == 1 ? 0 : 1;
    reader_.begin();
    fenster().FB_KeyInfo(true);
}

bool TipScreen::isRemote() const { return !ctx_.strRechnername.empty() && ctx_.strRechnername != ctx_.strLokalerRechner; }

bool TipScreen::meantForThisSystem() const {
    const auto systems = systemsOf(ctx_.aktuellerTipp);
    return std::any_of(systems.begin(), systems.end(), [&](const System& s) { return s.flag && s.system == ctx_.intBS; });
}

bool TipScreen::mayBeShown() const { return isRemote() || meantForThisSystem() || !ctx_.einstellungen.BSSystemAktiv; }

// Says for which systems the Tip is meant; false if it must not be shown on this one.
bool TipScreen::showSuitability() {
    Hauptfenster& f = fenster();
    const Tipp& tipp = ctx_.aktuellerTipp;
    const bool blnGeeignet = meantForThisSystem();
    std::string suits = strBVKTexte(7);
    for (const auto& s : systemsOf(tipp))
        if (s.flag) suits += s.name;
    f.sbrBVK[1] = suits;
    fenster().FB_ADMFile(tipp.ADMExport);

    f.txtInfoFarbe = f.fraInfoFarbe = blnGeeignet ? TextFarbe::ButtonText : TextFarbe::Rot;
    f.fraInfo = blnGeeignet ? std::string("Information") : std::string(strBVKTexte(9));
    if (isRemote()) {
        f.txtInfoFarbe = TextFarbe::ButtonText;
        f.fraInfoFarbe = TextFarbe::Rot;
        f.fraInfo = strBVKTexte(163);
    }
    f.txtInfo = tipp.Beschreibung;
    if (mayBeShown()) return true;

    f.txtInfo = strBVKTexte(133);
    f.fraSteuerung = false;
    ctx_.trace.write("Tipp nicht für BS geeignet, Ausgabe deaktiviert");
    return false;
}

void TipScreen::DBTippsAusgeben() {
    const Ausgabelauf run(ctx_);
    ctx_.port.letEventsRun();
    ctx_.trace.write("Tipp ausgeben");
    prepareOutput();
    fenster().fraSteuerung = true;   // a file that was missing may be there by now
    fenster().mnuBSFreigabe = ctx_.blnTippGeladen;   // also for a Tip that is not shown on this system
    if (!showSuitability()) {
        observer_.panelsChanged();
        observer_.windowChanged();
        ctx_.port.letEventsRun();
        return;
    }
    fenster().FB_KeyInfo(true);
    if (buildEntries()) return finishOutput();
    observer_.panelsChanged();
    observer_.windowChanged();
}

// False: a scaling by nothing ended the build; the panels so far stay.
bool TipScreen::buildEntries() {
    tip_.takeSystemsKeys();
    for (std::int16_t i = 1; i <= letzterEintrag(); ++i) {
        bool divisionFault = false;
        const std::size_t panels = fenster().panels.size();
        reportAndGoOn(ctx_, "DBTippsAusgeben", [&] {
            try {
                buildEntry(i);
            } catch (const NumberedError& error) {
                if (error.number != errnum::DivisionByZero) throw;
                divisionFault = true;
            }
        });
        if (fenster().panels.size() > panels) finishPanel(fenster().panels.back());
        if (!divisionFault) continue;
        ctx_.trace.write("--- Fehler: Der Teiler von Wert " + std::to_string(i) + " ist 0, Ausgabe abgebrochen");
        return false;
    }
    return true;
}

void TipScreen::buildEntry(std::int16_t i) {
    const TippEintrag& e = eintrag(i);
    if (!e.Standardwert.empty()) fenster().FB_Default(true);

    const Kind& kind = kindOf(e);
    if (kind.number != 0) ctx_.trace.write(kind.traceName);
    for (std::int16_t k = 1; k < i; ++k)   // one panel for the whole Tip is built at its first entry
        if (kind.onePanel() && &kindOf(eintrag(k)) == &kind) return;
    const std::size_t panels = fenster().panels.size();
    kind.build(*this, i);
    if (fenster().panels.size() > panels) fenster().panels.back().unfertig = false;
}

void TipScreen::finishPanel(Panel& panel) {
    for (const std::int16_t i : panel.eintraege) {   // of one half built nothing may be saved
        Arbeitswert& w = wert(i);
        if (panel.unfertig && !w.roh && !w.gefunden) w.strAktuellerWert = w.strAnzeigeWert = {};
    }
    kindOf(panel).showLocks(tip_, panel);
}

void TipScreen::finishOutput() {
    ctx_.trace.write("Tipp-Ausgabe fertig");
    observer_.panelsChanged();
    observer_.windowChanged();
    ctx_.port.letEventsRun();
}

void TipScreen::look() {
    tip_.lookOnly = true;
    prepareOutput();
    buildEntries();
    tip_.lookOnly = false;
    ctx_.blnGeaendert = false;
}

void TipScreen::reloadTipp() {
    if (!ctx_.blnTippGeladen) return;
    TippsEntladen();
    DBTippsAusgeben();
}

void TipScreen::TippsEntladen() {
    reportAndGoOn(ctx_, "TippsEntladen", [&] {
        for (std::int16_t i = 1; i <= letzterEintrag(); ++i) kindOf(eintrag(i)).unload(ctx_);
    });
    fenster().panels.clear();
    observer_.panelsChanged();
}

void TipScreen::DatenAusgabeOff() {
    ProcTrace trace(ctx_.trace, "DatenAusgabeOff");
    fenster().fraSteuerung = false;
    fenster().FB_KeySave(false);
    fenster().FB_KeyDel(false);
    fenster().FB_RegFile(false);
    fenster().FB_KeyInfo(false);
    observer_.windowChanged();
}

void TipScreen::touched(Panel& panel, std::int16_t entry) {
    if (entry > 0) wert(entry).beruehrt = true;
    ctx_.blnGeaendert = true;
    kindOf(panel).showLocks(tip_, panel);
    redraw(panel);
}

// The window draws a panel: what its controls report meanwhile comes from the drawing, not from the user.
void TipScreen::redraw(Panel& panel) {
    const bool before = std::exchange(ctx_.blnInitPanel, true);
    observer_.panelChanged(tip_.placeOf(panel));
    ctx_.blnInitPanel = before;
}

bool TipScreen::rowsAreKeys(const Panel& panel) const { return kindOf(panel).rowsAreKeys(eintrag(panel.eintraege.front()).Wertname); }

// After a failure half way the panels stay as the user left them, but say which of the values are there now.
void TipScreen::showWhatIsThere() {
    for (Panel& panel : fenster().panels)
        if (!rowsAreKeys(panel)) {
            panel.status = statusNow(panel);
            kindOf(panel).showLocks(tip_, panel);
        }
    observer_.panelsChanged();
}

// One line for all entries of a panel. A value that the panel does not show is there, but still not shown.
StatusZeile TipScreen::statusNow(const Panel& panel) {
    std::size_t there = 0;
    bool writable = false;
    for (const std::int16_t i : panel.eintraege) {
        if (wert(i).ignoriert) return panel.status;
        if (!tip_.valueOf(i).ReadRaw()) continue;
        ++there;
        writable = writable || !reader_.readOnlyNow(i);
    }
    if (there == 0) return {strBVKTexte(kindOf(panel).forSeveral ? 32 : 21), StatusFarbe::Fehlt};
    if (there < panel.eintraege.size()) return {strBVKTexte(31), StatusFarbe::Gefunden};
    return {strBVKTexte(writable ? 20 : 18), StatusFarbe::Gefunden};
}

}  // namespace brenvik
