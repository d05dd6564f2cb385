#pragma once
// What an area of the window system needs to hook its windows and commands in; all of it outlives the windows.
#include "tipengine/LoadSequence.h"
#include "tipengine/values/Recorders.h"

class QApplication;

namespace brenvik {

class Program;
class QtPort;
class frmBVK_Prog;

struct WindowParts {
    QApplication& application;
    QtPort& port;
    Program& program;
    frmBVK_Prog& windows;
    LoadSteps& laden;             // steps of the load sequence that an area does
    Recorders& recorders;  // who hears of changes
};

}  // namespace brenvik
