#pragma once
// The one door from the core to whoever sits in front of it. The window system, the command line and the
// tests each implement it; nothing below the shell opens a box by any other road. All texts are UTF-8.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

// Flag values as the platform's message box has them; one of each group, added up.
namespace box {
inline constexpr int OK = 0, OKCancel = 1, YesNoCancel = 3, YesNo = 4, RetryCancel = 5;
inline constexpr int Critical = 16, Question = 32, Exclamation = 48, Information = 64;
inline constexpr int DefaultNo = 0x100;   // the second button is the one that Return means
inline constexpr int Help = 0x4000;
}  // namespace box

enum class Answer { OK = 1, Cancel = 2, Retry = 4, Yes = 6, No = 7 };

struct MessageBox {
    std::string text;
    int flags = box::OK;
    std::string title = {};     // empty: the program's title
    std::string helpFile = {};  // only with box::Help
    int helpContext = 0;
};

struct FileChoice {
    std::string path;    // file name that stands in the dialog first
    std::string filter;  // "Name|*.ext;*.ex2|Name|*.*"
    std::string title;
    bool save = false;   // the dialog then asks before an existing file is replaced
};

struct DateTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;  // local time
    std::string dateText() const;  // "dd.mm.yyyy"
    std::string timeText() const;  // "hh:nn:ss"
};

struct Rgb {
    std::uint8_t red = 0, green = 0, blue = 0;
    bool operator==(const Rgb&) const = default;
};

// A modal window of the program, named as in the shell ("frmBVK_Datentyp"). The derived record carries what the
// window shows and takes back what the user chose; a caller reads its answer after showWindow returns.
struct WindowRequest {
    virtual ~WindowRequest() = default;
    virtual std::string_view windowName() const = 0;
};

class UserPort {
public:
    virtual ~UserPort() = default;
    virtual Answer messageBox(const MessageBox& request) = 0;
    virtual std::optional<std::string> chooseFile(const FileChoice& request) = 0;
    virtual std::optional<std::string> chooseFolder(std::string_view title, std::string_view start) = 0;
    virtual std::optional<Rgb> chooseColour(Rgb start) = 0;
    virtual void showWindow(WindowRequest& request) = 0;
    virtual void setClipboard(std::string_view text) = 0;
    virtual DateTime now() = 0;
    virtual void sleepMs(int milliseconds) = 0;
    virtual void letEventsRun() = 0;
    virtual void playSound(const std::string& file) = 0;
    virtual void waitPointer(bool on) = 0;
    virtual bool startProgram(const std::string& program, const std::vector<std::string>& arguments) = 0;  // does not wait
    virtual bool openAddress(const std::string& url) = 0;       // web page or mail
    virtual void showHelp(const std::string& file, int context) = 0;

    // The two boxes most callers need.
    void tell(std::string text, int flags = box::OK, std::string title = {}) { messageBox({std::move(text), flags, std::move(title)}); }
    bool ask(std::string text, int icon = box::Question, std::string title = {}) {
        return messageBox({std::move(text), box::YesNo + icon, std::move(title)}) == Answer::Yes;
    }
};

}  // namespace brenvik
