#pragma once
// What an area of the window system needs to hook its windows and commands in; all of it outlives the windows.
#include "tipengine/LoadSequence.h"
#include "tipengine/values/Recorders.h"

class QApplication;

namespace brenvik {

class Programm;
class QtPort;
class frmBVK_Prog;

struct Fensterteile {
    QApplication& application;
    QtPort& port;
    Programm& programm;
    frmBVK_Prog& fenster;
    Ladeschritte& laden;             // steps of the load sequence that an area does
    Aufzeichnungen& aufzeichnungen;  // who hears of changes
};

}  // namespace brenvik
