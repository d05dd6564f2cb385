#pragma once
// The files of one machine. Whatever reads or writes a file that belongs to a Windows asks here where it lies on the host.
// Paths are Windows paths ("C:\WINDOWS\win.ini", UTF-8; "\" and "/" both separate) and are matched ignoring case: the exact
// name goes before others, of those the first in order. A bare name lies in the Windows folder, other paths without a drive on
// drive C:, and ".." ends at the drive. What is found lies below its drive: a link that leads out of it is refused.
// Failures are NumberedError: 76 for a network path, a drive that is not within reach, a link out of the drive, or a
// machine without files; 5 for a text with U+0000.
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

// The host path of a Windows path below a folder that stands for a drive. Links are followed as long as they stay below; missing
// parts are appended as they are. Throws NumberedError 76 where a link leads out of the folder or to nothing.
std::filesystem::path findInside(const std::filesystem::path& folder, std::string_view windowsPath);

// Files and folders of a host folder that fit the pattern (* and ?, ignoring case; exactly where it has neither), in no order.
std::vector<std::filesystem::path> filesFitting(const std::filesystem::path& folder, std::string_view pattern);

class TargetFiles {
public:
    using Drive = std::function<std::optional<std::filesystem::path>(char letter)>;   // host folder of a drive, "a" to "z"
    using Folder = std::function<std::string()>;                                     // the Windows folder: "C:\WINDOWS"

    TargetFiles(Drive drive, Folder windowsFolder) : drive_(std::move(drive)), windowsFolder_(std::move(windowsFolder)) {}
    // A machine whose files are not within reach; the sentence (German) says why.
    static TargetFiles none(std::string why);

    bool reachable() const { return drive_ != nullptr; }
    const std::string& whyNot() const { return why_; }
    std::string windowsFolder() const { return windowsFolder_ ? windowsFolder_() : std::string(); }

    std::filesystem::path find(std::string_view windowsPath) const;
    bool isFile(std::string_view windowsPath) const;   // false also for what find refuses
    bool exists(std::string_view windowsPath) const;
    // Host files and folders that fit the pattern in the path's last part ("C:\WINDOWS\system32\*.cpl"), in no order.
    std::vector<std::filesystem::path> matches(std::string_view pattern) const;
    // Back: "C:\..." for what lies on one of the drives; nothing for other files of the host.
    std::optional<std::string> windowsPath(const std::filesystem::path& file) const;

private:
    TargetFiles() = default;
    std::filesystem::path driveFolder(char letter) const;
    Drive drive_;
    Folder windowsFolder_;
    std::string why_;
};

}  // namespace brenvik
