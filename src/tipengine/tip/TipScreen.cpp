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
class OutputRun {
public:
    explicit OutputRun(Context& ctx) : ctx_(ctx) {
        ctx_.blnAusgabeLaeuft = true;
        ctx_.blnGeaendert = false;
    }
    ~OutputRun() {
        ctx_.blnAusgabeLaeuft = false;
        ctx_.blnGeaendert = false;
    }
    OutputRun(const OutputRun&) = delete;
    OutputRun& operator=(const OutputRun&) = delete;

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
    windows().FB_KeySave(false);
    windows().FB_KeyDel(false);
    windows().FB_Default(false);
    windows().FB_RegFile(false);
    windows().FB_ADMFile(false);
    windows().FB_KeyInfo(false);
    windows().FB_RegListe(false);
    windows().FB_ADMListe(false);
    windows().tbrHistory = false;
    captionsNormal();
    windows().mnuRegSave = "Wert s&peichern...";   // until the first Tip
    observer_.windowChanged();
}

void TipScreen::captionsNormal() {
    MainWindow& f = windows();
    f.cmdRegSave = strBVKButtons(4);
    f.cmdDefault = strBVKButtons(7);
    f.mnuRegSave = strBVKButtons(28);
    f.mnuDefault = strBVKButtons(29);
    f.tipRegSave = strBVKTips(11);
    f.tipDefault = strBVKTips(14);
    f.tipRegDel = strBVKTips(12);
}

void TipScreen::captionsForEntries() {
    MainWindow& f = windows();
    f.cmdRegSave = f.mnuRegSave = strBVKButtons(26);
    f.cmdDefault = f.mnuDefault = strBVKButtons(27);
    f.tipRegSave = strBVKTips(15);
    f.tipRegDel = strBVKTips(16);
    f.tipDefault = strBVKTips(17);
}

void TipScreen::prepareOutput() {
    MainWindow& f = windows();
    f.txtInfo.clear();
    windows().FB_Default(false);
    f.panels.clear();
    windows().FB_KeySave(false);
    windows().FB_KeyDel(false);     // what the Tip before allowed is not allowed for this one
    windows().FB_RegFile(false);
    captionsNormal();
    ctx_.blnSchreibrecht = true;
    for (const Kind* kind : allKinds())
        if (kind->counter != nullptr) ctx_.*kind->counter = -1;
    ctx_.blnEinWertGelesen = false;
    ctx_.values.assign(ctx_.aktuellerTipp.Eintrag.size(), {});
    ctx_.udtBootEintraege.clear();
    ctx_.intBootEintrag = 0;
    ctx_.bootInput.reset();
    for (std::int16_t i = 1; i <= lastEntry(); ++i) wert(i).DatentypModus = eintrag(i).TypAnpassen == 1 ? 0 : 1;
    reader_.begin();
    windows().FB_KeyInfo(true);
}

bool TipScreen::isRemote() const { return !ctx_.strRechnername.empty() && ctx_.strRechnername != ctx_.strLokalerRechner; }

bool TipScreen::meantForThisSystem() const {
    const auto systems = systemsOf(ctx_.aktuellerTipp);
    return std::any_of(systems.begin(), systems.end(), [&](const System& s) { return s.flag && s.system == ctx_.intBS; });
}

bool TipScreen::mayBeShown() const { return isRemote() || meantForThisSystem() || !ctx_.einstellungen.BSSystemAktiv; }

// Says for which systems the Tip is meant; false if it must not be shown on this one.
bool TipScreen::showSuitability() {
    MainWindow& f = windows();
    const Tipp& tipp = ctx_.aktuellerTipp;
    const bool blnGeeignet = meantForThisSystem();
    std::string suits = strBVKTexte(7);
    for (const auto& s : systemsOf(tipp))
        if (s.flag) suits += s.name;
    f.sbrBVK[1] = suits;
    windows().FB_ADMFile(tipp.ADMExport);

    f.txtInfoFarbe = f.fraInfoFarbe = blnGeeignet ? TextColour::ButtonText : TextColour::Rot;
    f.fraInfo = blnGeeignet ? std::string("Information") : std::string(strBVKTexte(9));
    if (isRemote()) {
        f.txtInfoFarbe = TextColour::ButtonText;
        f.fraInfoFarbe = TextColour::Rot;
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
    const OutputRun run(ctx_);
    ctx_.port.letEventsRun();
    ctx_.trace.write("Tipp ausgeben");
    prepareOutput();
    windows().fraSteuerung = true;   // a file that was missing may be there by now
    windows().mnuBSFreigabe = ctx_.blnTippGeladen;   // also for a Tip that is not shown on this system
    if (!showSuitability()) {
        observer_.panelsChanged();
        observer_.windowChanged();
        ctx_.port.letEventsRun();
        return;
    }
    windows().FB_KeyInfo(true);
    if (buildEntries()) return finishOutput();
    observer_.panelsChanged();
    observer_.windowChanged();
}

// False: a scaling by nothing ended the build; the panels so far stay.
bool TipScreen::buildEntries() {
    tip_.takeSystemsKeys();
    for (std::int16_t i = 1; i <= lastEntry(); ++i) {
        bool divisionFault = false;
        const std::size_t panels = windows().panels.size();
        reportAndGoOn(ctx_, "DBTippsAusgeben", [&] {
            try {
                buildEntry(i);
            } catch (const NumberedError& error) {
                if (error.number != errnum::DivisionByZero) throw;
                divisionFault = true;
            }
        });
        if (windows().panels.size() > panels) finishPanel(windows().panels.back());
        if (!divisionFault) continue;
        ctx_.trace.write("--- Fehler: Der Teiler von Wert " + std::to_string(i) + " ist 0, Ausgabe abgebrochen");
        return false;
    }
    return true;
}

void TipScreen::buildEntry(std::int16_t i) {
    const TipEntry& e = eintrag(i);
    if (!e.Standardwert.empty()) windows().FB_Default(true);

    const Kind& kind = kindOf(e);
    if (kind.number != 0) ctx_.trace.write(kind.traceName);
    for (std::int16_t k = 1; k < i; ++k)   // one panel for the whole Tip is built at its first entry
        if (kind.onePanel() && &kindOf(eintrag(k)) == &kind) return;
    const std::size_t panels = windows().panels.size();
    kind.build(*this, i);
    if (windows().panels.size() > panels) windows().panels.back().unfinished = false;
}

void TipScreen::finishPanel(Panel& panel) {
    for (const std::int16_t i : panel.entries) {   // of one half built nothing may be saved
        WorkingValue& w = wert(i);
        if (panel.unfinished && !w.roh && !w.gefunden) w.strAktuellerWert = w.strAnzeigeWert = {};
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

void TipScreen::reloadTip() {
    if (!ctx_.blnTippGeladen) return;
    TippsEntladen();
    DBTippsAusgeben();
}

void TipScreen::TippsEntladen() {
    reportAndGoOn(ctx_, "TippsEntladen", [&] {
        for (std::int16_t i = 1; i <= lastEntry(); ++i) kindOf(eintrag(i)).unload(ctx_);
    });
    windows().panels.clear();
    observer_.panelsChanged();
}

void TipScreen::DatenAusgabeOff() {
    ProcTrace trace(ctx_.trace, "DatenAusgabeOff");
    windows().fraSteuerung = false;
    windows().FB_KeySave(false);
    windows().FB_KeyDel(false);
    windows().FB_RegFile(false);
    windows().FB_KeyInfo(false);
    observer_.windowChanged();
}

void TipScreen::touched(Panel& panel, std::int16_t entry) {
    if (entry > 0) wert(entry).touched = true;
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

bool TipScreen::rowsAreKeys(const Panel& panel) const { return kindOf(panel).rowsAreKeys(eintrag(panel.entries.front()).Wertname); }

// After a failure half way the panels stay as the user left them, but say which of the values are there now.
void TipScreen::showWhatIsThere() {
    for (Panel& panel : windows().panels)
        if (!rowsAreKeys(panel)) {
            panel.status = statusNow(panel);
            kindOf(panel).showLocks(tip_, panel);
        }
    observer_.panelsChanged();
}

// One line for all entries of a panel. A value that the panel does not show is there, but still not shown.
StatusLine TipScreen::statusNow(const Panel& panel) {
    std::size_t there = 0;
    bool writable = false;
    for (const std::int16_t i : panel.entries) {
        if (wert(i).ignored) return panel.status;
        if (!tip_.valueOf(i).ReadRaw()) continue;
        ++there;
        writable = writable || !reader_.readOnlyNow(i);
    }
    if (there == 0) return {strBVKTexte(kindOf(panel).forSeveral ? 32 : 21), StatusColour::Missing};
    if (there < panel.entries.size()) return {strBVKTexte(31), StatusColour::Gefunden};
    return {strBVKTexte(writable ? 20 : 18), StatusColour::Gefunden};
}

}  // namespace brenvik
