#pragma once
// The road from a program that may run to its working window: every stage in its order, with the pauses and the progress
// that belong to it. A stage that fails is reported under "Form_Load", and the next one follows.
#include <functional>
#include <string>

namespace brenvik {

struct FrameContext;
class Program;

// The steps that belong to areas above the engine. Each area sets its own before the sequence runs; what nobody set is
// left out.
struct LoadSteps {
    using Logon = std::function<void(const std::string& machineName, const std::string& account, const std::string& passwort)>;
    std::function<bool()> startPassword;        // asks for the start password if it is on; false: the program ends without a word
    std::function<void()> LoadFHListe;          // favourites and history
    std::function<void()> listFolderNew;      // later: their folders were chosen anew in the options, or they are to go on
    std::function<void()> LoadRegBackupListe;   // catalogue of the backups
    Logon Account_Connect;                   // logs on to another machine
};

// The start window's bar; without a window there is nothing to show.
class StartDisplay {
public:
    virtual ~StartDisplay() = default;
    virtual void Update(int /*percent*/) {}     // the text beside it is strStartInfo
};

// What the sequence does with the windows themselves.
class StartWindow : public StartDisplay {
public:
    virtual void showInfo() = 0;                // frmBVK_Info, in the middle of where the main window will stand
    virtual void closeInfo() = 0;
    virtual void loadWindowSettings() = 0;      // place, splitters and bands
    virtual void setCaption() = 0;
    virtual void selectTab(int tab) = 0;        // as a click on it would, but nothing is read
    virtual void showMain() = 0;
    virtual void NavBar() = 0;
};

inline constexpr int shortPauseMs = 50;         // so that the bar is seen

// A stage begins: its text from strBVKTexte goes to strStartInfo and to the trace.
void level(FrameContext& ctx, int text);

// False: the program ends now; the user knows why.
bool runLoadSequence(Program& program, StartWindow& windows, const LoadSteps& steps);

}  // namespace brenvik
