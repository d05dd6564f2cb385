#pragma once
// A host whose facts the test sets; records the messages of BroadCast.
#include <map>
#include <tuple>
#include <vector>

#include "frame/platform/Platform.h"

namespace brenvik::test {

class TestPlatform final : public Platform {
public:
    std::filesystem::path programDirectory = "/programm", home = "/heim";
    std::map<std::string, std::string> variables;
    std::string user = "Brenvik", host = "BRENVIK-PC";
    std::vector<std::tuple<std::uint32_t, std::uint32_t, std::uint32_t>> settingChanges;  // wParam, flags, time limit
    std::optional<std::int16_t> bits;                   // of the screen
    std::optional<BrowserComponent> browser;
    bool sessionCanEnd = false;
    std::vector<std::string> sessionCalls;              // "privilege", "shell", "exit FLAGS REASON"

    std::filesystem::path executableDirectory() const override { return programDirectory; }
    std::filesystem::path defaultHome() const override { return home; }
    std::optional<std::string> environment(const std::string& name) const override {
        const auto place = variables.find(name);
        return place == variables.end() ? std::nullopt : std::optional<std::string>(place->second);
    }
    std::string userName() const override { return user; }
    std::string hostName() const override { return host; }
    std::optional<std::int16_t> colourBits() const override { return bits; }
    std::optional<BrowserComponent> browserComponent() const override { return browser; }
    bool canEndSession() const override { return sessionCanEnd; }
    void obtainShutdownPrivilege() override { sessionCalls.emplace_back("privilege"); }
    void terminateShell() override { sessionCalls.emplace_back("shell"); }
    bool exitWindows(std::uint32_t flags, std::int32_t reason) override {
        sessionCalls.push_back("exit " + std::to_string(flags) + " " + std::to_string(reason));
        return true;
    }
    void sendSettingChange(std::uint32_t wParam, std::uint32_t flags, std::uint32_t timeoutMs) override {
        settingChanges.emplace_back(wParam, flags, timeoutMs);
    }
};

}  // namespace brenvik::test
