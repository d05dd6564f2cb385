#pragma once
// What an area of the window system needs to hook its windows and commands in; all of it outlives the windows.
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
};

}  // namespace brenvik
