#pragma once
// The door from the core to the user, as windows. All boxes are modal to whatever window of ours is in front.
#include <QHash>
#include <QMessageBox>
#include <QString>
#include <functional>

#include "frame/UserPort.h"

class QWidget;

namespace brenvik {

class QtPort : public UserPort {
public:
    using ShowWindow = std::function<void(QtPort&, QWidget* parent, WindowRequest&)>;
    using ShowHelp = std::function<void(const std::string& file, int context)>;

    QtPort();

    // Adds a window to the table of showWindow; the program's own dialogs are in it already.
    void registerWindow(const QString& windowName, ShowWindow show) { windows_.insert(windowName, std::move(show)); }
    void onHelp(ShowHelp help) { help_ = std::move(help); }
    void onNote(std::function<void(const std::string&)> note) { note_ = std::move(note); }   // lines for the trace

    Answer messageBox(const MessageBox& request) override;
    std::optional<std::string> chooseFile(const FileChoice& request) override;
    std::optional<std::string> chooseFolder(std::string_view title, std::string_view start) override;
    std::optional<Rgb> chooseColour(Rgb start) override;
    void showWindow(WindowRequest& request) override;
    void setClipboard(std::string_view text) override;
    DateTime now() override;
    void sleepMs(int milliseconds) override;
    void letEventsRun() override;
    void playSound(const std::string& file) override;
    void waitPointer(bool on) override;
    bool startProgram(const std::string& program, const std::vector<std::string>& arguments) override;
    bool openAddress(const std::string& url) override;
    void showHelp(const std::string& file, int context) override;

    static QWidget* frontWindow();
    static Answer restingAnswer(int flags);     // the one that does nothing: of a box that nobody answers

private:
    QHash<QString, ShowWindow> windows_;
    ShowHelp help_;
    std::function<void(const std::string&)> note_;
    std::optional<QString> player_;     // looked for once; empty: there is none
    bool waiting_ = false;
};

// "Name|*.a;*.b|Name|*.*" as the filters of Qt's file dialog.
QStringList qtFileFilters(std::string_view filter);

// Fills the table with the dialogs of this room.
void registerOwnWindows(QtPort& port);

}  // namespace brenvik
