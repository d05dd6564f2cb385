#pragma once
// The tree of groups and Tips: building it, its tabs, and the way from a node to the Tip that is shown.
#include <filesystem>
#include <unordered_map>

#include "tipengine/tip/Settler.h"
#include "tipengine/tip/TipPart.h"
#include "tipengine/tip/TipScreen.h"

namespace brenvik {

class TipTree : private TipPart {
public:
    TipTree(CurrentTip& tip, TipScreen& screen, WindowObserver& observer, Settler& settler)
        : TipPart(tip), screen_(screen), observer_(observer), settler_(settler) {}

    void TreeEinlesen();
    bool TreeViewAbfrage(bool neuladen);                 // false: a change was to be saved and could not be; all stays as it is
    bool TreeViewAuswahl();
    void selectTab(int tab);                             // click on a tab of tbsTree
    void selectNode(int node);                           // click on a node of tvBVKDB, or a key released there
    bool showTipByHeading(const std::string& heading);  // selects the node with that text and shows the Tip
    bool showTipByNumber(std::int32_t number);          // that very Tip, also where others have its heading
    bool TippOeffnen(const std::string& heading);        // a search hit; where the tab hides it, tab 1 is selected first
    bool showNode(int node);                             // selects it as the program does, not the user; false as above
    bool readTipNumber(std::int32_t number);            // into aktuellerTipp

    void mnuandereDBLoad();                              // asks for a database; one that does not fit is reported, and the present one stays
    void mnuBVKDBLoad();                                 // back to the one beside the program

private:
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
    bool readTipAt(int ordinal, const std::string& text);

    TipScreen& screen_;
    WindowObserver& observer_;
    Settler& settler_;
    std::optional<std::int32_t> meantNumber_;         // while a Tip is shown by number; else its heading decides
    std::unordered_map<std::int32_t, std::vector<std::size_t>> tipsByIndex_;   // Index -> places in udtTippListe
};

// The children of a node in the order they are shown: sorted without case where the node is Sorted.
std::vector<int> displayOrder(const MainWindow& windows, int node);

}  // namespace brenvik
