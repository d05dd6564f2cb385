#pragma once
// A user and a host that answer nothing and show nothing, for measuring.
#include <functional>

#include "frame/UserPort.h"
#include "frame/platform/Platform.h"

namespace brenvik::bench {

class SilentPort final : public UserPort {
public:
    Answer messageBox(const MessageBox& request) override { return ++boxes, (request.flags & box::YesNo) != 0 ? Answer::No : Answer::OK; }
    std::optional<std::string> chooseFile(const FileChoice&) override { return std::nullopt; }
    std::optional<std::string> chooseFolder(std::string_view, std::string_view) override { return std::nullopt; }
    std::optional<Rgb> chooseColour(Rgb) override { return std::nullopt; }
    void showWindow(WindowRequest& request) override { if (onWindow) onWindow(request); }
    void setClipboard(std::string_view) override {}
    DateTime now() override { return {}; }
    void sleepMs(int) override {}
    void letEventsRun() override {}
    void playSound(const std::string&) override {}
    void waitPointer(bool) override {}
    bool startProgram(const std::string&, const std::vector<std::string>&) override { return false; }
    bool openAddress(const std::string&) override { return false; }
    void showHelp(const std::string&, int) override {}
    std::function<void(WindowRequest&)> onWindow;
    int boxes = 0;  // a measurement with boxes measures the wrong thing
};

class SilentPlatform final : public Platform {
public:
    std::filesystem::path executableDirectory() const override { return {}; }
    std::filesystem::path defaultHome() const override { return {}; }
    std::optional<std::string> environment(const std::string&) const override { return std::nullopt; }
    std::string userName() const override { return {}; }
    std::string hostName() const override { return {}; }
    void sendSettingChange(std::uint32_t, std::uint32_t, std::uint32_t) override {}
};

}  // namespace brenvik::bench
