#pragma once
// What the user does in a panel goes to the panel's kind; panel is the place in frmBVK_Prog.panels.
#include "tipengine/kinds/KindHost.h"
#include "tipengine/tip/TipPart.h"

namespace brenvik {

class PanelInput : private TipPart {
public:
    PanelInput(CurrentTip& tip, KindHost& host) : TipPart(tip), host_(host) {}

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

    // The same as text, for the command line: what the panel of an entry shows ("on"/"off" for boxes; empty if it has none),
    // and setting the entry, by its number from 1, from such a text. Answers an empty text, or in German why it cannot be.
    std::string shownText(std::int16_t entry) const;
    std::string setEntryFromText(std::int32_t number, const std::string& text);

private:
    Panel* listening(std::size_t place);                 // none while the engine itself fills or draws panels

    KindHost& host_;
};

}  // namespace brenvik
