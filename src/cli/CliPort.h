#pragma once
// The command line's side of the port to the user: every message goes to stderr, Yes/No is No unless --yes was given,
// Retry/Cancel is Cancel, choices of files, folders and colours are cancelled.
#include "frame/UserPort.h"
#include "lists/ListWindows.h"
#include "tipengine/WindowRequests.h"

namespace brenvik {

class CliPort : public UserPort {
public:
    // bootName: what a new entry of the boot menu is to be called; empty: the entry is overwritten.
    // keep: what was changed again since a change stays when that is taken back.
    explicit CliPort(bool yes, std::string bootName = {}, bool keep = false) : yes_(yes), keep_(keep), bootName_(std::move(bootName)) {}
    Answer messageBox(const MessageBox& request) override;
    std::optional<std::string> chooseFile(const FileChoice&) override { return std::nullopt; }
    std::optional<std::string> chooseFolder(std::string_view, std::string_view) override { return std::nullopt; }
    std::optional<Rgb> chooseColour(Rgb) override { return std::nullopt; }
    void showWindow(WindowRequest& request) override;
    void setClipboard(std::string_view) override {}
    DateTime now() override;
    void sleepMs(int) override {}
    void letEventsRun() override {}
    void playSound(const std::string&) override {}
    void waitPointer(bool) override {}
    bool startProgram(const std::string&, const std::vector<std::string>&) override { return false; }
    bool openAddress(const std::string&) override { return false; }
    void showHelp(const std::string&, int) override {}

private:
    void answer(DatentypRequest& question);
    void answer(BootINIRequest& question);
    void answer(UndoConflictsRequest& question);
    void sayAnswer() const;
    bool yes_, keep_;
    std::string bootName_;
};

}  // namespace brenvik
