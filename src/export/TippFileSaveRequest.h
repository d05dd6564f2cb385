#pragma once
// The window that shows a list, removes entries from it and writes it out: what it shows, and what its buttons do. After
// each call the window shows the record again.
#include <functional>
#include <string>
#include <vector>

#include "frame/UserPort.h"

namespace brenvik {

struct TippFileSaveRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_TippFileSave"; }
    std::string caption, lblInfo;
    std::vector<std::string> lvRegList;                  // the items
    bool active = true;                                   // cmdSave, cmdDel and cmdDelAll can be used
    std::function<void()> cmdSave, cmdDelAll, cmdExit;
    std::function<void(std::size_t item)> cmdDel;        // the selected item
    std::function<void()> cmdListeSpeichern, cmdListeLaden;
};

}  // namespace brenvik
