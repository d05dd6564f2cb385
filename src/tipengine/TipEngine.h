#pragma once
// The tip engine: from a Tip record to panels, from registry values to panel states and back. Both the window and the
// command line drive it. The work is done by its parts; here stand the commands that lead from one to the next.
#include "tipengine/TipTree.h"
#include "tipengine/kinds/Kontext.h"
#include "tipengine/tip/PanelInput.h"
#include "tipengine/tip/TipCollector.h"
#include "tipengine/tip/TipScreen.h"
#include "tipengine/values/IniWriter.h"
#include "tipengine/values/ValueReader.h"
#include "tipengine/values/ValueWriter.h"

namespace brenvik {

class TipEngine final : private Settler {
public:
    TipEngine(Context& context, WindowObserver& observer, ChangeRecorder& recorder);
    TipEngine(const TipEngine&) = delete;
    TipEngine& operator=(const TipEngine&) = delete;

    Context& context() { return ctx_; }
    TipTree& tree() { return tree_; }
    PanelInput& input() { return input_; }

    // --- The Tip on screen ---
    void FrameStartEinstellungen() { screen_.FrameStartEinstellungen(); }
    void TippsEntladen() { screen_.TippsEntladen(); }
    void reloadTip() { screen_.reloadTip(); }          // if a Tip is shown
    // Builds the panels of aktuellerTipp for a look: asks nothing, changes nothing, whatever system it is meant for.
    void inspectTip(std::int32_t number);
    bool mayBeShown() const { return screen_.mayBeShown(); }
    bool rowsAreKeys(const Panel& panel) const { return screen_.rowsAreKeys(panel); }
    StatusLine statusOf(std::int16_t entry) const { return tip_.statusOf(entry); }
    std::string shownText(std::int16_t entry) const { return input_.shownText(entry); }
    std::string setEntryFromText(std::int32_t number, const std::string& text) { return input_.setEntryFromText(number, text); }
    std::string deleteBlocker() const { return reader_.deleteBlocker(); }

    // --- Saving ---
    bool DatenRead() { return collector_.DatenRead(); }
    [[nodiscard]] bool DatenSichern(Whereabouts whereabouts = Whereabouts::StaysAsItIs) override;
    bool RegWerteSchreiben(Change::Art art = Change::Art::Speichern);   // false: refused or failed
    bool RegWerteLoeschen();                             // false: declined or failed
    bool SaveINITipp(bool loeschen);                     // false: refused or failed
    bool Default_Einstellungen();                        // false: declined, refused or failed
    // What saving would write now, decided as a save decides it, without writing: values with what stands there and what
    // is to come, files with their new bytes. refusal tells why a save would be refused.
    Change plannedSave(std::string& refusal);
    void BroadCast();

    // --- Taking values along (export, lists); nothing is written but by writeTogether ---
    bool collectForExport() { return collector_.collectForExport(); }
    std::vector<GatheredValue> collectedValues() const { return writer_.collectedValues(); }
    std::optional<Tipp> lookUpTip(std::int32_t number) { return collector_.lookUpTip(number); }
    std::string writeTogether(std::vector<Change>& changes) { return collector_.writeTogether(changes); }

    // --- Commands; the clicked control's own caption decides what the click means ---
    void clickRegSave(const std::string& ownCaption);
    void clickDefault(const std::string& ownCaption);
    void clickRegDel();
    // The fields of frmBVK_Bearbeiten as it opens, for a new entry or the selected row. Its speichern asks and writes.
    BearbeitenRequest bearbeitenRequest(bool neu) { return menu_.request(neu); }

    // Called when lists change what may be done.
    void FB_RegListe(bool on) { ctx_.frmBVK_Prog.FB_RegListe(on); }
    void FB_ADMListe(bool on) { ctx_.frmBVK_Prog.FB_ADMListe(on); }

private:
    void tellPartialWrite(const std::vector<PlannedValue>& plan);
    void afterChange();
    void openBearbeiten(bool blnBearbeitenNeu);

    Context& ctx_;
    ChangeRecorder& recorder_;
    CurrentTip tip_;
    TipFiles files_;
    ValueReader reader_;
    ValueWriter writer_;
    IniWriter ini_;
    TipScreen screen_;
    PanelInput input_;
    MenuEntries menu_;
    TipTree tree_;
    TipCollector collector_;
};

}  // namespace brenvik
