#pragma once
// A user for tests: answers boxes and choices in the order the test laid down, and records everything that came.
// A box, choice or window nobody laid down fails the test, and so does an answer that nobody asked for; a lenient
// port answers such boxes with the safest button (Cancel, No, OK in this order) and refuses such choices.
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "frame/UserPort.h"

namespace brenvik::test {

class ScriptedPort final : public UserPort {
public:
    explicit ScriptedPort(bool lenientPort = false) : lenient(lenientPort) {}
    ~ScriptedPort() override;

    // --- the script ---
    ScriptedPort& expectBox(std::string textPart, Answer answer = Answer::OK);  // the next box must hold this text
    ScriptedPort& expectFile(std::optional<std::string> path);                  // nothing: cancelled
    ScriptedPort& expectFolder(std::optional<std::string> path);
    ScriptedPort& expectColour(std::optional<Rgb> colour);
    // What happens in a window of this name, every time it opens.
    ScriptedPort& onWindow(std::string name, std::function<void(WindowRequest&)> action);
    bool done() const;  // everything laid down has been asked for
    bool lenient;
    DateTime clock{2002, 11, 9, 12, 30, 0};
    bool programsStart = true;  // what startProgram and openAddress answer
    std::function<void()> onEvents;  // runs inside letEventsRun

    // --- the record ---
    std::vector<MessageBox> boxes;
    std::vector<FileChoice> fileChoices;
    std::vector<std::pair<std::string, std::string>> folderChoices;  // title, start
    std::vector<Rgb> colourChoices;
    std::vector<std::string> windows, clipboard, sounds, addresses;
    std::vector<std::pair<std::string, std::vector<std::string>>> programs;
    std::vector<std::pair<std::string, int>> helps;
    std::vector<int> sleeps;
    std::vector<bool> waitPointers;
    int eventRuns = 0;
    std::vector<std::string> complaints;  // what failed the test
    bool complainsToTest = true;          // off: complaints are only recorded
    bool waiting() const { return !waitPointers.empty() && waitPointers.back(); }
    std::string lastBox() const { return boxes.empty() ? std::string() : boxes.back().text; }

    Answer messageBox(const MessageBox& request) override;
    std::optional<std::string> chooseFile(const FileChoice& request) override;
    std::optional<std::string> chooseFolder(std::string_view title, std::string_view start) override;
    std::optional<Rgb> chooseColour(Rgb start) override;
    void showWindow(WindowRequest& request) override;
    void setClipboard(std::string_view text) override { clipboard.emplace_back(text); }
    DateTime now() override { return clock; }
    void sleepMs(int milliseconds) override { sleeps.push_back(milliseconds); }
    void letEventsRun() override;
    void playSound(const std::string& file) override { sounds.push_back(file); }
    void waitPointer(bool on) override { waitPointers.push_back(on); }
    bool startProgram(const std::string& program, const std::vector<std::string>& arguments) override;
    bool openAddress(const std::string& url) override;
    void showHelp(const std::string& file, int context) override { helps.emplace_back(file, context); }

private:
    struct ExpectedBox {
        std::string textPart;
        Answer answer;
    };
    void complain(const std::string& text);
    std::deque<ExpectedBox> expectedBoxes_;
    std::deque<std::optional<std::string>> files_, folders_;
    std::deque<std::optional<Rgb>> colours_;
    std::map<std::string, std::function<void(WindowRequest&)>, std::less<>> windows_;
};

}  // namespace brenvik::test
