#pragma once
// What the main window shows, as a plain record. The engine writes it and names what changed through WindowObserver;
// the shell draws it and decides nothing.
#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tipengine/Panel.h"

namespace brenvik {

enum class TextColour { ButtonText, Rot };

struct TreeNode {
    enum class Art { Root, Gruppe, Version, Tipp };
    std::string text;
    Art art = Art::Tipp;
    std::int16_t symbol = 0;
    int parent = -1;
    bool Sorted = false;            // the children are shown sorted by text, ignoring case, umlauts beside their base letter
    std::vector<int> kinder;        // in the order they were added; displayOrder sorts them
    std::int32_t nummer = 0;        // Index of the node's Tip; several Tips may share one text
};

struct MainWindow {
    // Enable pairs (FB_KeySave ... FB_ADMListe): one flag serves button, menu entry and toolbar button.
    bool KeySave = false, KeyDel = false, Default = false, RegFile = false, ADMFile = false, KeyInfo = false, RegListe = false,
         ADMListe = false;
    void FB_KeySave(bool on) { KeySave = on; }
    void FB_KeyDel(bool on) { KeyDel = on; }
    void FB_Default(bool on) { Default = on; }
    void FB_RegFile(bool on) { RegFile = on; }
    void FB_ADMFile(bool on) { ADMFile = on; }
    void FB_KeyInfo(bool on) { KeyInfo = on; }
    void FB_RegListe(bool on) { RegListe = on; }
    void FB_ADMListe(bool on) { ADMListe = on; }
    bool mnuBSFreigabe = false;
    bool tbrHistory = false;
    bool historyVisible = true, favouritesVisible = true;   // false: the list is switched off for this run
    bool blnNTFamilie = true;               // tbrNetz, tbrProfil and mnuRegedt32 are visible
    // Hidden entries of the menus by control name (a menu's own name: the whole menu), by the area that hides them: each
    // replaces its own and leaves those of the others alone.
    std::map<std::string, std::vector<std::string>, std::less<>> hidden;
    bool isHidden(std::string_view control) const {
        return std::any_of(hidden.begin(), hidden.end(), [&](const auto& area) { return std::find(area.second.begin(), area.second.end(), control) != area.second.end(); });
    }

    // Captions with a second state, and the tooltips that go with them.
    std::string cmdRegSave, cmdDefault, mnuRegSave, mnuDefault;
    std::string tipRegSave, tipDefault, tipRegDel;

    bool fraBVKLogo = true;         // shown while no Tip is
    bool fraEinstellungen = false;  // the panels
    bool fraSteuerung = false;      // the action row
    std::string lblDBTippU;         // heading above the panels

    bool txtInfoSichtbar = false;
    std::string txtInfo;
    TextColour txtInfoFarbe = TextColour::ButtonText;
    std::string fraInfo = "Informationen";
    TextColour fraInfoFarbe = TextColour::ButtonText;
    std::array<std::string, 3> sbrBVK;

    std::vector<Panel> panels;      // from top to bottom

    // tvBVKDB: node 0 is the root.
    std::vector<TreeNode> tvBVKDB;
    int selectedNode = 0;
    int tbsTree = 1;                // selected tab, 1 to 9
};

class WindowObserver {
public:
    virtual ~WindowObserver() = default;
    virtual void treeChanged() {}
    virtual void selectionChanged() {}          // selectedNode was set by the program
    virtual void panelsChanged() {}             // the list of panels is another one
    virtual void panelChanged(std::size_t) {}   // one panel's content, by its place in panels
    virtual void windowChanged() {}             // captions, enabling, texts
};

}  // namespace brenvik
