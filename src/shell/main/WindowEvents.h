#pragma once
// What the user does in the main window. The window knows only this interface; EngineEvents (its own file) hands
// everything on to the engine, tests write it down. Panels are named by their place in MainWindow::panels.
#include <cstddef>
#include <cstdint>
#include <string>

namespace brenvik {

class WindowEvents {
public:
    virtual ~WindowEvents() = default;

    virtual void click() = 0;                                      // the click sound, if it is on
    virtual bool beforeClose() = 0;                                // the window is about to close; false keeps it open
    virtual bool beforeLeaving() = 0;                              // a command is about to build the panels anew; false stops it
    virtual void selectTab(int tab) = 0;
    virtual void selectNode(int node) = 0;

    // ownCaption is the caption of the control that was clicked, with its "&".
    virtual void clickRegSave(const std::string& ownCaption) = 0;
    virtual void clickDefault(const std::string& ownCaption) = 0;
    virtual void clickRegDel() = 0;

    virtual void userCheck(std::size_t panel, bool on) = 0;
    virtual void userText(std::size_t panel, const std::string& text) = 0;
    virtual void userNumber(std::size_t panel, std::int32_t value) = 0;
    virtual void userNumberText(std::size_t panel, const std::string& text) = 0;
    virtual void userChoose(std::size_t panel, int item) = 0;
    virtual void userBrowse(std::size_t panel) = 0;
    virtual void userColour(std::size_t panel) = 0;
    virtual void userTick(std::size_t panel, int row, bool on) = 0;
    virtual void userSelectRow(std::size_t panel, int row) = 0;
    virtual void userSwitch(std::size_t panel, int box, bool on) = 0;
    virtual void userSwitchText(std::size_t panel, int box, const std::string& text) = 0;
    virtual void userBootTitle(std::size_t panel, const std::string& text) = 0;
};

}  // namespace brenvik
