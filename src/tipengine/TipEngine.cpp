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
class WaitCursor {
public:
    explicit WaitCursor(UserPort& port) : port_(port) { port_.waitPointer(true); }
    ~WaitCursor() { off(); }
    void off() {
        if (on_) port_.waitPointer(false);
        on_ = false;
    }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    UserPort& port_;
    bool on_ = true;
};

constexpr const char* IconSize = "HKCU\\Control Panel\\Desktop\\WindowMetrics\\Shell Icon Size";
constexpr std::uint32_t AbortIfItHangs = 2, WaitMs = 10000, IconsNew = 42;

}  // namespace

TipEngine::TipEngine(Context& context, WindowObserver& observer, ChangeRecorder& recorder)
    : ctx_(context), recorder_(recorder), tip_(context), files_(tip_), reader_(tip_, files_, recorder), writer_(tip_, files_, recorder), ini_(tip_, files_, writer_),
      screen_(tip_, files_, reader_, observer, *this), input_(tip_, screen_), menu_(tip_, recorder), tree_(tip_, screen_, observer, *this),
      collector_(tip_, screen_, tree_, writer_, recorder) {}

void TipEngine::inspectTip(std::int32_t number) {
    if (tree_.readTipNumber(number)) screen_.look();
}

bool TipEngine::DatenSichern(Whereabouts whereabouts) {
    if (!ctx_.blnGeaendert) return true;
    bool settled = false;
    if (ctx_.blnSchreibrecht) {
        const bool save = ctx_.port.ask(strBVKTexte(57));
        ctx_.click();
        if (save) {
            reportAndGoOn(ctx_, "DatenSichern", [&] { settled = collector_.DatenRead() && (ctx_.aktuellerTipp.INITipp ? SaveINITipp(false) : RegWerteSchreiben()); });
            ctx_.blnGeaendert = !settled;
            return settled;
        }
    }
    ctx_.blnGeaendert = false;
    if (whereabouts == Whereabouts::StaysAsItIs) screen_.reloadTip();
    return true;
}

Change TipEngine::plannedSave(std::string& refusal) {
    if (!ctx_.aktuellerTipp.INITipp) return writer_.changeOf(writer_.planWrites(refusal), Change::Art::Speichern);
    Change change = tip_.newChange(Change::Art::IniDatei);
    if (const auto own = ini_.sectionEntry()) kindOf(tip_.entry(*own)).planFile(screen_, *own, change, refusal);
    if (refusal.empty()) ini_.planIniFiles(false, change, refusal, [](const std::string&) { return true; });
    return change;
}

bool TipEngine::RegWerteSchreiben(Change::Art art) {
    WaitCursor pointer(ctx_.port);
    ctx_.port.letEventsRun();
    std::vector<PlannedValue> plan;
    Change change;
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
        const std::vector<WorkingValue> before = ctx_.values;
        reportAndGoOn(ctx_, "RegWerteSchreiben", [&] { tellPartialWrite(plan); });
        if (recorder_.offerTakeBack(change)) {
            ctx_.values = before;
            reportAndGoOn(ctx_, "RegWerteSchreiben", [&] { screen_.showWhatIsThere(); });
        }
        return false;
    }
    pointer.off();
    ctx_.port.tell(strBVKTexte(58));
    ctx_.click();
    if (ctx_.aktuellerTipp.Neustart == 1) ctx_.blnNeustartNoetig = true;
    afterChange();
    return true;
}

// A save that stopped half way: the user hears what stands now, and the working values know it too.
void TipEngine::tellPartialWrite(const std::vector<PlannedValue>& plan) {
    std::string done, open;
    std::size_t count = 0;
    for (const PlannedValue& p : plan) {
        (p.written ? done : open) += p.path + "\r\n";
        if (!p.written) continue;
        ++count;
        WorkingValue& w = tip_.value(p.eintrag);
        w.roh = p.neu;
        w.gefunden = p.neu.has_value();
        w.ignored = w.ignored && !w.touched;
        w.strAktuellerWert = w.strAnzeigeWert;
        w.touched = false;
    }
    screen_.showWhatIsThere();
    if (count > 0)
        ctx_.port.tell(fmt::format(messages::PartlySaved, count, plan.size(), done, open), box::Exclamation);
}

bool TipEngine::RegWerteLoeschen() {
    if (tip_.last() < 1) return false;
    const Kind& kind = kindOf(tip_.entry(1));
    const bool yes = ctx_.port.ask(strBVKTexte(kind.ticks ? 162 : 59));
    ctx_.click();
    if (yes) {
        Change change;
        try {
            if (kind.rowsAreKeys(tip_.entry(1).Wertname))
                writer_.deleteTickedKeys();
            else
                writer_.deleteValues(change);
        } catch (const NumberedError& error) {
            RegFehlermeldungen(ctx_, error.number, error.what());
            recorder_.offerTakeBack(change);
            if (change.values.empty())
                screen_.reloadTip();   // keys: the list shows those that are left
            else
                reportAndGoOn(ctx_, "RegWerteLoeschen", [&] { screen_.showWhatIsThere(); });
            return false;
        }
    }
    afterChange();
    return yes;
}

bool TipEngine::SaveINITipp(bool loeschen) {
    bool saved = false;
    if (loeschen && !ctx_.port.ask(messages::DeleteEntry)) return false;
    reportAndGoOn(ctx_, "SaveINITipp", [&] {
        std::string refusal;
        Change trial = tip_.newChange(Change::Art::IniDatei), change = trial;
        ini_.planIniFiles(loeschen, trial, refusal, [](const std::string&) { return true; });   // before such a file is written
        if (!refusal.empty()) return ctx_.port.tell(refusal, box::Exclamation);
        const auto own = ini_.sectionEntry();
        const std::string first = !trial.dateien.empty() ? trial.dateien.front().datei : own ? files_.file(*own).string() : std::string();
        if (!ctx_.blnLokal && !first.empty() && !mayBeWritten(ctx_.port, first)) return;   // all are of one machine
        if (own && !kindOf(tip_.entry(*own)).saveFile(screen_, recorder_, *own)) return;
        ini_.planIniFiles(loeschen, change, refusal, [&](const std::string& path) { return ctx_.port.ask(messages::FileNew1 + path + messages::FileNew2); });
        if (!refusal.empty()) return ctx_.port.tell(refusal, box::Exclamation);
        if (!change.dateien.empty()) {
            RunningChange running(recorder_, change);
            for (FileImage& picture : change.dateien)
                if (!(picture.written = files_.write(picture.datei, picture.neu)))
                    return ctx_.port.tell(messages::IniWriteProtected, box::Exclamation);
        }
        saved = true;
    });
    ctx_.bootInput.reset();   // refused or failed: given up
    if (!saved) return false;
    ctx_.blnGeaendert = false;
    screen_.TippsEntladen();
    screen_.DBTippsAusgeben();
    return true;
}

// Other programs hear of the change, and the Tip is built anew from what is there now.
void TipEngine::afterChange() {
    BroadCast();
    ctx_.blnGeaendert = false;
    screen_.TippsEntladen();
    screen_.DBTippsAusgeben();
}

bool TipEngine::Default_Einstellungen() {
    const auto& entries = ctx_.aktuellerTipp.Eintrag;
    if (ctx_.blnTippGeladen && std::all_of(entries.begin(), entries.end(), [](const TipEntry& e) { return e.Standardwert.empty(); })) {
        ctx_.port.tell(messages::NoDefault, box::Information);
        return false;
    }
    if (!ctx_.port.ask(messages::DefaultQuestion)) return false;
    for (std::int16_t i = 1; i < static_cast<std::int16_t>(ctx_.values.size()); ++i) {
        tip_.value(i).strAnzeigeWert = tip_.entry(i).Standardwert;
        tip_.value(i).touched = true;
    }
    if (!ctx_.blnTippGeladen) return false;
    ctx_.bootInput.reset();
    const bool saved = ctx_.aktuellerTipp.INITipp ? SaveINITipp(false) : RegWerteSchreiben(Change::Art::Standard);
    if (!saved) screen_.reloadTip();
    return saved;
}

void TipEngine::BroadCast() {
    reportAndGoOn(ctx_, "BroadCast", [&] {
        ctx_.platform.sendSettingChange(0, AbortIfItHangs, WaitMs);
        if (ctx_.aktuellerTipp.Neustart != 2) return;
        ctx_.trace.write("--- Lade Desktop neu");
        ctx_.objBVKReg.SetPath(ctx_.strLokalerRechner, IconSize);
        const auto before = ctx_.objBVKReg.ReadRaw();   // goes back byte for byte
        const std::string size = ReadRegistryKey(ctx_, IconSize, "32");
        if (SaveRegistryKey(ctx_, IconSize, numberText(std::int64_t{toLng(size)} + 1), 1))
            ctx_.platform.sendSettingChange(IconsNew, AbortIfItHangs, WaitMs);
        ctx_.objBVKReg.SetPath(ctx_.strLokalerRechner, IconSize);
        if (before)
            ctx_.objBVKReg.WriteRaw(*before);
        else
            ctx_.objBVKReg.DeleteValue();
    });
}

// What was typed elsewhere in the Tip is settled first: the Tip is read anew when the window closes.
void TipEngine::openBearbeiten(bool blnBearbeitenNeu) {
    const int selected = menu_.list() != nullptr ? menu_.list()->chosenRow : -1;
    if (!DatenSichern()) return;
    if (Panel* panel = menu_.list(); panel != nullptr && selected < static_cast<int>(panel->lines.size())) panel->chosenRow = selected;
    BearbeitenRequest dialog = menu_.request(blnBearbeitenNeu);
    ctx_.port.showWindow(dialog);
    screen_.reloadTip();
}

void TipEngine::clickRegSave(const std::string& ownCaption) {
    ctx_.click();
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

void TipEngine::clickDefault(const std::string& ownCaption) {
    ctx_.click();
    if (ownCaption != strBVKButtons(7)) {
        openBearbeiten(false);
        return;
    }
    Default_Einstellungen();
}

void TipEngine::clickRegDel() {
    ctx_.click();
    if (ctx_.aktuellerTipp.INITipp)
        SaveINITipp(true);
    else
        RegWerteLoeschen();
}

}  // namespace brenvik
