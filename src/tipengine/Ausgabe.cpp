// From the Tip record to panels: the frame of the output. The panels themselves are built by their kinds.
#include <algorithm>
#include <array>

#include "frame/Konvertierung.h"
#include "frame/Reports.h"
#include "frame/Texte.h"
#include "tipengine/Meldungen.h"
#include "tipengine/TippMaschine.h"
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

}  // namespace

TippMaschine::TippMaschine(Context& context, WindowObserver& observer, ChangeRecorder& recorder)
    : KindHost(tip_, files_), ctx_(context), observer_(observer), recorder_(recorder), tip_(context), files_(tip_), menu_(tip_, recorder) {}

void TippMaschine::FB_KeySave(bool on) { fenster().KeySave = on; }
void TippMaschine::FB_KeyDel(bool on) { fenster().KeyDel = on; }
void TippMaschine::FB_Default(bool on) { fenster().Default = on; }
void TippMaschine::FB_RegFile(bool on) { fenster().RegFile = on; }
void TippMaschine::FB_ADMFile(bool on) { fenster().ADMFile = on; }
void TippMaschine::FB_KeyInfo(bool on) { fenster().KeyInfo = on; }
void TippMaschine::FB_RegListe(bool on) { fenster().RegListe = on; }
void TippMaschine::FB_ADMListe(bool on) { fenster().ADMListe = on; }

void TippMaschine::captionsNormal() {
    Hauptfenster& f = fenster();
    f.cmdRegSave = strBVKButtons(4);
    f.cmdDefault = strBVKButtons(7);
    f.mnuRegSave = strBVKButtons(28);
    f.mnuDefault = strBVKButtons(29);
    f.tipRegSave = strBVKTips(11);
    f.tipDefault = strBVKTips(14);
    f.tipRegDel = strBVKTips(12);
}

void TippMaschine::captionsForEntries() {
    Hauptfenster& f = fenster();
    f.cmdRegSave = f.mnuRegSave = strBVKButtons(26);
    f.cmdDefault = f.mnuDefault = strBVKButtons(27);
    f.tipRegSave = strBVKTips(15);
    f.tipRegDel = strBVKTips(16);
    f.tipDefault = strBVKTips(17);
}

void TippMaschine::FrameStartEinstellungen() {
    ProcTrace trace(ctx_.trace, "FrameStartEinstellungen");
    FB_KeySave(false);
    FB_KeyDel(false);
    FB_Default(false);
    FB_RegFile(false);
    FB_ADMFile(false);
    FB_KeyInfo(false);
    FB_RegListe(false);
    FB_ADMListe(false);
    fenster().tbrHistory = false;
    captionsNormal();
    fenster().mnuRegSave = "Wert s&peichern...";   // until the first Tip
    observer_.windowChanged();
}

void TippMaschine::prepareOutput() {
    Hauptfenster& f = fenster();
    f.txtInfo.clear();
    FB_Default(false);
    f.panels.clear();
    FB_KeySave(false);
    FB_KeyDel(false);     // what the Tip before allowed is not allowed for this one
    FB_RegFile(false);
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
    loeschSperre_ = 0;
    FB_KeyInfo(true);
}

namespace {

struct System {
    bool flag;
    const char* name;
    std::int16_t system;
};

std::array<System, 6> systemsOf(const Tipp& tipp) {
    return {{{tipp.Win95, " 95", 1}, {tipp.Win98, " 98", 2}, {tipp.WinME, " ME", 5}, {tipp.WinNT, " NT", 3}, {tipp.Win2000, " 2000", 4}, {tipp.WinXP, " XP", 6}}};
}

}  // namespace

bool TippMaschine::isRemote() const { return !ctx_.strRechnername.empty() && ctx_.strRechnername != ctx_.strLokalerRechner; }

bool TippMaschine::meantForThisSystem() const {
    const auto systems = systemsOf(ctx_.aktuellerTipp);
    return std::any_of(systems.begin(), systems.end(), [&](const System& s) { return s.flag && s.system == ctx_.intBS; });
}

bool TippMaschine::mayBeShown() const { return isRemote() || meantForThisSystem() || !ctx_.einstellungen.BSSystemAktiv; }

// Says for which systems the Tip is meant; false if it must not be shown on this one.
bool TippMaschine::showSuitability() {
    Hauptfenster& f = fenster();
    const Tipp& tipp = ctx_.aktuellerTipp;
    const bool blnGeeignet = meantForThisSystem();
    std::string suits = strBVKTexte(7);
    for (const auto& s : systemsOf(tipp))
        if (s.flag) suits += s.name;
    f.sbrBVK[1] = suits;
    FB_ADMFile(tipp.ADMExport);

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

void TippMaschine::DBTippsAusgeben() {
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
    FB_KeyInfo(true);
    if (buildEntries()) return finishOutput();
    observer_.panelsChanged();
    observer_.windowChanged();
}

// False: a scaling by nothing ended the build; the panels so far stay.
bool TippMaschine::buildEntries() {
    takeSystemsKeys();
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

void TippMaschine::finishPanel(Panel& panel) {
    for (const std::int16_t i : panel.eintraege) {   // of one half built nothing may be saved
        Arbeitswert& w = wert(i);
        if (panel.unfertig && !w.roh && !w.gefunden) w.strAktuellerWert = w.strAnzeigeWert = {};
    }
    kindOf(panel).showLocks(tip_, panel);
}

void TippMaschine::finishOutput() {
    ctx_.trace.write("Tipp-Ausgabe fertig");
    observer_.panelsChanged();
    observer_.windowChanged();
    ctx_.port.letEventsRun();
}

void TippMaschine::reloadTipp() {
    if (!ctx_.blnTippGeladen) return;
    TippsEntladen();
    DBTippsAusgeben();
}

void TippMaschine::readEntry(std::int16_t i, StatusZeile& status) {
    bool found = false;
    if (ctx_.aktuellerTipp.INITipp)
        ReadINITipp(i, &status, found);
    else
        ReadRecTipp(i, &status);
}

// Before the first panel is built, since one panel may be for several entries. In an INI Tip the column names the file.
void TippMaschine::takeSystemsKeys() {
    if (!ctx_.istNT() || ctx_.aktuellerTipp.INITipp) return;
    for (TippEintrag& entry : ctx_.aktuellerTipp.Eintrag)
        if (!entry.SchlüsselNT.empty()) entry.Schlüssel = entry.SchlüsselNT;
}

void TippMaschine::buildEntry(std::int16_t i) {
    const TippEintrag& e = eintrag(i);
    if (!e.Standardwert.empty()) FB_Default(true);

    const Kind& kind = kindOf(e);
    if (kind.number != 0) ctx_.trace.write(kind.traceName);
    for (std::int16_t k = 1; k < i; ++k)   // one panel for the whole Tip is built at its first entry
        if (kind.onePanel() && &kindOf(eintrag(k)) == &kind) return;
    const std::size_t panels = fenster().panels.size();
    kind.build(*this, i);
    if (fenster().panels.size() > panels) fenster().panels.back().unfertig = false;
}

void TippMaschine::inspectTipp(std::int32_t number) {
    if (!readTippNumber(number)) return;
    tip_.lookOnly = true;
    prepareOutput();
    buildEntries();
    tip_.lookOnly = false;
    ctx_.blnGeaendert = false;
}

}  // namespace brenvik
