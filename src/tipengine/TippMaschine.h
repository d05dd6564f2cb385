#pragma once
// The tip engine: from a Tip record to panels, from registry values to panel states and back. Both the window and the
// command line drive this class; events of the user arrive through the methods at its end.
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tipengine/Aenderung.h"
#include "tipengine/Context.h"

namespace brenvik {

class TippMaschine {
public:
    TippMaschine(Context& context, WindowObserver& observer, ChangeRecorder& recorder);

    // Tree
    void TreeEinlesen();
    bool TreeTippDBRead(int nodeIndex, int gruppe, int filter);
    bool TreeViewAuswahl();
    void TreeViewAbfrage(bool neuladen);
    void selectTab(int tab);                    // click on a tab of tbsTree
    void selectNode(int node);                  // click on a node of tvBVKDB
    bool showTippByHeading(const std::string& heading);
    bool showTippByNumber(std::int32_t number);

    // Output and panels
    void FrameStartEinstellungen();
    void DBTippsAusgeben();
    void TippsEntladen();
    void DatenAusgabeOff();

    // Saving
    bool DatenRead();
    void DatenSichern();
    bool RegWerteSchreiben();                   // false if a write failed
    void RegWerteLoeschen();
    void SaveINITipp(bool loeschen);
    void Default_Einstellungen();

    // Commands: the caption decides what a click means, so each control passes its own.
    void clickRegSave(const std::string& ownCaption);
    void clickDefault(const std::string& ownCaption);
    void clickRegDel();

    // Events of the panels; panel is the place in frmBVK_Prog.panels.
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

    Context& context() { return ctx_; }

private:
    Context& ctx_;
    WindowObserver& observer_;
    ChangeRecorder& recorder_;
};

}  // namespace brenvik
