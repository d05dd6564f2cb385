#include "support/ScriptedPort.h"

#include <gtest/gtest.h>

namespace brenvik::test {
namespace {

// The button that changes nothing.
Answer safest(int flags) {
    switch (flags & 0xF) {
        case box::YesNo: return Answer::No;
        case box::OKCancel: case box::YesNoCancel: case box::RetryCancel: return Answer::Cancel;
        default: return Answer::OK;
    }
}

bool offers(int flags, Answer answer) {
    switch (flags & 0xF) {
        case box::YesNo: return answer == Answer::Yes || answer == Answer::No;
        case box::YesNoCancel: return answer == Answer::Yes || answer == Answer::No || answer == Answer::Cancel;
        case box::OKCancel: return answer == Answer::OK || answer == Answer::Cancel;
        case box::RetryCancel: return answer == Answer::Retry || answer == Answer::Cancel;
        default: return answer == Answer::OK;
    }
}

template <class T> T take(std::deque<T>& queue) {
    T front = std::move(queue.front());
    queue.pop_front();
    return front;
}

}  // namespace

ScriptedPort::~ScriptedPort() {
    if (!done() && !::testing::Test::HasFatalFailure()) complain("laid down but never asked for: " + (expectedBoxes_.empty() ? "a choice" : "the box \"" + expectedBoxes_.front().textPart + "\""));
}

void ScriptedPort::complain(const std::string& text) {
    complaints.push_back(text);
    if (complainsToTest) ADD_FAILURE() << text;
}

ScriptedPort& ScriptedPort::expectBox(std::string textPart, Answer answer) {
    expectedBoxes_.push_back({std::move(textPart), answer});
    return *this;
}
ScriptedPort& ScriptedPort::expectFile(std::optional<std::string> path) { return files_.push_back(std::move(path)), *this; }
ScriptedPort& ScriptedPort::expectFolder(std::optional<std::string> path) { return folders_.push_back(std::move(path)), *this; }
ScriptedPort& ScriptedPort::expectColour(std::optional<Rgb> colour) { return colours_.push_back(colour), *this; }
ScriptedPort& ScriptedPort::onWindow(std::string name, std::function<void(WindowRequest&)> action) {
    windows_[std::move(name)] = std::move(action);
    return *this;
}

bool ScriptedPort::done() const { return expectedBoxes_.empty() && files_.empty() && folders_.empty() && colours_.empty(); }

Answer ScriptedPort::messageBox(const MessageBox& request) {
    boxes.push_back(request);
    if (expectedBoxes_.empty()) {
        if (!lenient) complain("unexpected box: " + request.text);
        return safest(request.flags);
    }
    const ExpectedBox expected = take(expectedBoxes_);
    if (request.text.find(expected.textPart) == std::string::npos)
        complain("box \"" + request.text + "\" came, but \"" + expected.textPart + "\" was laid down");
    else if (!offers(request.flags, expected.answer))
        complain("box \"" + request.text + "\" has no such button");
    return expected.answer;
}

std::optional<std::string> ScriptedPort::chooseFile(const FileChoice& request) {
    fileChoices.push_back(request);
    if (!files_.empty()) return take(files_);
    if (!lenient) complain("unexpected file choice: " + request.title);
    return std::nullopt;
}

std::optional<std::string> ScriptedPort::chooseFolder(std::string_view title, std::string_view start) {
    folderChoices.emplace_back(title, start);
    if (!folders_.empty()) return take(folders_);
    if (!lenient) complain("unexpected folder choice: " + std::string(title));
    return std::nullopt;
}

std::optional<Rgb> ScriptedPort::chooseColour(Rgb start) {
    colourChoices.push_back(start);
    if (!colours_.empty()) return take(colours_);
    if (!lenient) complain("unexpected colour choice");
    return std::nullopt;
}

void ScriptedPort::showWindow(WindowRequest& request) {
    windows.emplace_back(request.windowName());
    const auto action = windows_.find(request.windowName());
    if (action != windows_.end()) return action->second(request);
    if (!lenient) complain("unexpected window: " + std::string(request.windowName()));
}

void ScriptedPort::letEventsRun() {
    ++eventRuns;
    if (onEvents) onEvents();
}

bool ScriptedPort::startProgram(const std::string& program, const std::vector<std::string>& arguments) {
    programs.emplace_back(program, arguments);
    return programsStart;
}

bool ScriptedPort::openAddress(const std::string& url) {
    addresses.push_back(url);
    return programsStart;
}

}  // namespace brenvik::test
