#pragma once
// The program with its window: start check, load sequence, run, end.
#include <QApplication>
#include <memory>

#include "frame/platform/SingleInstance.h"
#include "shell/QtPort.h"
#include "shell/main/frmBVK_Prog.h"
#include "shell/program/ConnectExport.h"
#include "shell/program/ConnectLists.h"
#include "shell/program/EngineEvents.h"
#include "shell/program/WindowParts.h"
#include "tipengine/Program.h"

class QObject;

namespace brenvik {

struct WindowOptions {
    ProgramOptions program;
    std::string commandLineText;              // the program's own switches
    std::optional<std::string> passwort;    // for the account of /U:, from elsewhere than the command line; goes before /PW:
    std::filesystem::path screenshots;      // not empty: render the windows into this folder and end
};

// The engine wants its observer before there is a record to make the window from.
class ObserverRelay : public WindowObserver {
public:
    WindowObserver* target = nullptr;
    void treeChanged() override { if (target) target->treeChanged(); }
    void selectionChanged() override { if (target) target->selectionChanged(); }
    void panelsChanged() override { if (target) target->panelsChanged(); }
    void panelChanged(std::size_t place) override { if (target) target->panelChanged(place); }
    void windowChanged() override { if (target) target->windowChanged(); }
};

class WindowProgram {
public:
    // Opens home and store (also where they can only be read), makes the main window and hooks all areas in. Throws with a message for the user.
    WindowProgram(QApplication& application, const WindowOptions& options, QtPort& port, Platform& platform);
    WindowProgram(const WindowProgram&) = delete;
    WindowProgram& operator=(const WindowProgram&) = delete;

    // Start check and load sequence; false: the program ends. The main window is shown afterwards.
    bool start();
    int exitCode() const { return exitCode_; }      // of a start that failed

    Program& program() { return program_; }
    frmBVK_Prog& windows() { return windows_; }
    WindowParts& parts() { return parts_; }

private:
    bool anotherInstance();
    void listenForOthers();
    void unload();

    WindowOptions options_;
    QtPort& port_;
    ObserverRelay relay_;
    Recorders recorders_;
    Program program_;
    frmBVK_Prog windows_;
    EngineEvents events_;
    ExportLists exportLists_;
    Export export_;
    Listen listen_;
    LoadSteps laden_;
    WindowParts parts_;
    std::unique_ptr<host::SingleInstance> instance_;
    std::unique_ptr<QObject> notifier_;             // of instance_, so gone before it
    int exitCode_ = 0;
};

// Answers the exit code of the process.
int runWindowProgram(QApplication& application, WindowOptions options);

}  // namespace brenvik
