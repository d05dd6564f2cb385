#pragma once
// The tip engine: from a Tip record to panels, from registry values to panel states and back. Both the window and the
// command line drive this class; what the user does arrives through the methods of the second section.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "tipengine/Aenderung.h"
#include "tipengine/Context.h"
#include "tipengine/Fensteranfragen.h"
#include "tipengine/kinds/KindHost.h"
#include "tipengine/kinds/Kontext.h"

namespace brenvik {

// An entry of the Tip on screen as the user sees it now.
struct GesammelterWert {
    std::string text;                // as its panel says it; "<delkey>" where the value is to go
    std::optional<RawValue> wert;    // what saving would write, raw where nobody touched it; none: nothing, or the value goes
    std::string unpassend;           // why the text is no value of the Tip's type; then there is no wert
    bool gefunden = false;           // stands in the registry
    bool beruehrt = false;           // set by the user
    bool geloescht = false;          // saving would delete the value
};

// What becomes of the Tip on screen after it was asked about.
enum class Verbleib { BleibtStehen, WirdErsetzt };

class TippMaschine : private KindHost {
public:
    TippMaschine(Context& context, WindowObserver& observer, ChangeRecorder& recorder);
    TippMaschine(const TippMaschine&) = delete;
    TippMaschine& operator=(const TippMaschine&) = delete;

    Context& context() { return ctx_; }

    // --- Tree ---
    void TreeEinlesen();
    bool TreeViewAbfrage(bool neuladen);                 // false: a change was to be saved and could not be; all stays as it is
    bool TreeViewAuswahl();
    void selectTab(int tab);                             // click on a tab of tbsTree
    void selectNode(int node);                           // click on a node of tvBVKDB, or a key released there
    bool showTippByHeading(const std::string& heading);  // selects the node with that text and shows the Tip
    bool showTippByNumber(std::int32_t number);          // that very Tip, also where others have its heading
    bool TippOeffnen(const std::string& heading);        // a search hit; where the tab hides it, tab 1 is selected first
    bool showNode(int node);                             // selects it as the program does, not the user; false as above

    // --- Database ---
    void mnuandereDBLoad();                              // asks for a file; one that does not fit is reported, and the present one stays
    void mnuBVKDBLoad();                                 // back to the one beside the program

    // --- Output and panels ---
    void FrameStartEinstellungen();
    void DBTippsAusgeben();
    void TippsEntladen();
    void DatenAusgabeOff();
    void reloadTipp();                                   // TippsEntladen and DBTippsAusgeben, if a Tip is shown

    // Builds the panels of aktuellerTipp for a look: asks nothing, changes nothing, whatever system it is meant for.
    void inspectTipp(std::int32_t number);
    bool mayBeShown() const;                             // whether DBTippsAusgeben would show aktuellerTipp on this system
    // What the panel of an entry shows, as text ("on"/"off" for boxes); empty if it has no panel.
    std::string shownText(std::int16_t entry);
    StatusZeile statusOf(std::int16_t entry);
    bool rowsAreKeys(const Panel& panel) const;          // kinds 8 and 10: ticks choose keys for deleting, no values
    std::string deleteBlocker();                         // while KeyDel is off: the entry that decided it, with its status

    // --- Saving ---
    bool DatenRead();
    // Every way out of the Tip on screen begins here. False: the user wanted to save, and it was refused or failed; then the
    // input stays a change, and the way must not be taken. What the user drops is gone at once: the Tip is read again, unless
    // the way puts something else in its place whatever happens.
    [[nodiscard]] bool DatenSichern(Verbleib verbleib = Verbleib::BleibtStehen);
    bool RegWerteSchreiben(Aenderung::Art art = Aenderung::Art::Speichern);   // false: refused or failed
    bool RegWerteLoeschen();                             // false: declined or failed
    bool SaveINITipp(bool loeschen);                     // false: refused or failed
    // What saving would write now, decided as a save decides it, without writing: values with what stands there and what
    // is to come, files with their new bytes. refusal tells why a save would be refused.
    Aenderung plannedSave(std::string& refusal);
    bool Default_Einstellungen();                        // false: declined, refused or failed
    bool WertDel(std::int16_t index);
    void BroadCast();

    // --- Taking values along (export, lists); nothing is written ---
    bool collectForExport();                             // false: a panel holds what cannot be, and the user was told
    std::vector<GesammelterWert> collectedValues();      // of all entries, [0] unused
    std::optional<Tipp> lookUpTipp(std::int32_t number); // read with its keys resolved; what is on screen stays as it is
    // Carries prepared changes of several Tips out, all of them or none; each is recorded on its own. Empty: done, else
    // why not, in German. The caller tells the result.
    std::string writeTogether(std::vector<Aenderung>& changes);

    // --- Commands; the clicked control's own caption decides what the click means ---
    void clickRegSave(const std::string& ownCaption);
    void clickDefault(const std::string& ownCaption);
    void clickRegDel();
    // The fields of frmBVK_Bearbeiten as it opens, for a new entry or the selected row. Its speichern asks and writes.
    BearbeitenAnfrage bearbeitenAnfrage(bool neu) { return menu_.request(neu); }

    // --- Events of the panels; panel is the place in frmBVK_Prog.panels ---
    void userCheck(std::size_t panel, bool on);                                // kind 1
    void userText(std::size_t panel, const std::string& text);                 // kinds 2 and 6
    void userNumber(std::size_t panel, std::int32_t value);                    // kind 3, slider and up-down
    void userNumberText(std::size_t panel, const std::string& text);           // kind 3, field
    void userChoose(std::size_t panel, int item);                              // kinds 4, 5, 6, 7, 9
    void userBrowse(std::size_t panel);                                        // kind 6, cmdDrive
    void userColour(std::size_t panel);                                        // kind 7, cmdFarbe
    void userTick(std::size_t panel, int row, bool on);                        // kinds 8 and 10
    void userSelectRow(std::size_t panel, int row);                            // kind 10
    void userSwitch(std::size_t panel, int box, bool on);                      // kinds 9 and 11
    void userSwitchText(std::size_t panel, int box, const std::string& text);  // kind 9
    void userBootTitle(std::size_t panel, const std::string& text);            // kind 9, txtBINI

    // Sets an entry, by its number from 1, from a text as the panel would hold it ("on"/"off" for boxes). Answers an empty
    // text, or in German why it cannot be.
    std::string setEntryFromText(std::int32_t number, const std::string& text);

    // Called when history or lists change what may be done.
    void FB_KeySave(bool on);
    void FB_KeyDel(bool on);
    void FB_Default(bool on);
    void FB_RegFile(bool on);
    void FB_ADMFile(bool on);
    void FB_KeyInfo(bool on);
    void FB_RegListe(bool on);
    void FB_ADMListe(bool on);

private:
    struct GeplanterWert;

    // Tree
    bool TreeTippDBRead(int nodeIndex, int gruppe, int filter);
    int addNode(int parent, TreeNode node);
    void buildGroups(int filter);
    void buildFlatList();
    void buildVersions();
    void statusBarGeneral();
    void showGroupOrNothing(const std::string& nodeText);
    void indexTips();
    void selectAgain(int node);
    void showOtherDatabase(const std::filesystem::path& file);
    bool readTippAt(int ordinal, const std::string& text);
    bool readTippNumber(std::int32_t number);

    // Output
    void prepareOutput();
    bool isRemote() const;
    bool meantForThisSystem() const;
    bool showSuitability();
    void takeSystemsKeys();
    bool buildEntries();
    void finishPanel(Panel& panel);
    void buildEntry(std::int16_t i);
    void readEntry(std::int16_t i, StatusZeile& status) override;
    void readSilently(Panel& panel) override;
    void readIniSilently(Panel& panel);
    void finishOutput();
    void captionsNormal();
    void captionsForEntries() override;

    // Panels
    Panel* listening(std::size_t place);                 // none while the engine itself fills or draws panels
    void touched(Panel& panel, std::int16_t entry) override;
    void redraw(Panel& panel) override;
    bool settle() override;

    // Reading
    void ReadRecTipp(std::int16_t i, StatusZeile* label);
    bool readRecTippOnce(std::int16_t i, StatusZeile* label, bool mayRepeat);
    void RegWertNotFound(std::int16_t i, StatusZeile* label);
    bool readOnlyNow(std::int16_t i) const;
    bool mayWrite(std::int16_t i) const;
    void statusOfFound(bool writable, StatusZeile& label);
    void allowDelete(std::int16_t i, bool on);
    void ReadINITipp(std::int16_t i, StatusZeile* label, bool& found);
    bool CheckDatenWert(std::int16_t i);
    bool DatenTypOK(std::int32_t regType, std::int16_t i);
    bool adaptType(std::int16_t i);

    // Saving
    void collectPanel(const Panel& panel);
    bool sameValue(std::int16_t i, std::int16_t j) const;
    std::int16_t speakerOf(std::int16_t i) const;
    std::vector<GeplanterWert> planWrites(std::string& refusal);
    RawValue valueToWrite(std::int16_t i) const;
    GesammelterWert collectedValue(std::int16_t i) const;
    void writePlanned(std::vector<GeplanterWert>& plan, Aenderung& change);
    void tellPartialWrite(const std::vector<GeplanterWert>& plan);
    void showWhatIsThere();
    StatusZeile statusNow(const Panel& panel);
    Aenderung changeOf(const std::vector<GeplanterWert>& plan, Aenderung::Art art) const;
    void afterChange();
    void deleteValues(Aenderung& change);
    void deleteTickedKeys();
    Aenderung newChange(Aenderung::Art art) const { return tip_.newChange(art); }

    // INI and boot files
    void planIniFiles(bool loeschen, Aenderung& change, std::string& refusal, const std::function<bool(const std::string& path)>& mayBeMade);
    std::optional<std::int16_t> sectionEntry() const;

    // Context menus
    void openBearbeiten();

    // Paths of the Tip on screen
    std::string keyPath(std::int16_t i) const { return tip_.keyPath(i); }
    std::string valuePath(std::int16_t i) const { return tip_.valuePath(i); }
    BVKRegistry& valueOf(std::int16_t i) const { return tip_.valueOf(i); }
    WertAenderung changeOfValue(std::int16_t i, std::optional<RawValue> alt, std::optional<RawValue> neu) const {
        return tip_.changeOfValue(i, std::move(alt), std::move(neu));
    }
    TippEintrag& eintrag(std::int16_t i) const { return tip_.entry(i); }
    Arbeitswert& wert(std::int16_t i) const { return tip_.value(i); }
    std::int16_t letzterEintrag() const { return tip_.last(); }
    Hauptfenster& fenster() { return ctx_.frmBVK_Prog; }

    Context& ctx_;
    WindowObserver& observer_;
    ChangeRecorder& recorder_;
    CurrentTip tip_;
    TipFiles files_;
    MenuEntries menu_;
    std::optional<std::int32_t> gemeinteNummer_;         // while a Tip is shown by number; else its heading decides
    std::int16_t loeschSperre_ = 0;                      // entry whose reading switched KeyDel off; 0: none
    std::unordered_map<std::int32_t, std::vector<std::size_t>> tippsByIndex_;   // Index -> places in udtTippListe
};

// The children of a node in the order they are shown: sorted without case where the node is Sorted.
std::vector<int> displayOrder(const Hauptfenster& fenster, int node);

}  // namespace brenvik
