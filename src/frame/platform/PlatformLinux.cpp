#ifndef _WIN32
#include <array>
#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

#include "frame/platform/Platform.h"

namespace brenvik {
namespace {

class PlatformLinux final : public Platform {
public:
    std::filesystem::path executableDirectory() const override {
        std::error_code error;
        const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
        return error ? std::filesystem::current_path(error) : program.parent_path();
    }

    std::filesystem::path defaultHome() const override {
        // The XDG rules: a relative path counts as not set.
        if (const auto data = environment("XDG_DATA_HOME"); data && std::filesystem::path(*data).is_absolute())
            return std::filesystem::path(*data) / "brenvik";
        return userDirectory() / ".local" / "share" / "brenvik";
    }

    std::optional<std::string> environment(const std::string& name) const override {
        const char* value = std::getenv(name.c_str());
        return value == nullptr ? std::nullopt : std::optional<std::string>(value);
    }

    std::string userName() const override {
        const auto account = lookUp();
        return account.name;
    }

    std::string hostName() const override {
        std::array<char, 256> name{};
        return ::gethostname(name.data(), name.size() - 1) == 0 ? std::string(name.data()) : std::string();
    }

    void sendSettingChange(std::uint32_t, std::uint32_t, std::uint32_t) override {}  // nobody listens here

private:
    struct Account {
        std::string name, directory;
    };

    static Account lookUp() {
        std::array<char, 16384> buffer{};
        passwd entry{};
        passwd* found = nullptr;
        if (::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) return {};
        return {entry.pw_name, entry.pw_dir};
    }

    std::filesystem::path userDirectory() const {
        if (const auto home = environment("HOME"); home && !home->empty()) return *home;
        const std::string directory = lookUp().directory;
        return directory.empty() ? "/" : directory;
    }
};

}  // namespace

std::unique_ptr<Platform> makeNativePlatform() { return std::make_unique<PlatformLinux>(); }

}  // namespace brenvik
#endif
