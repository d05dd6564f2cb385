#pragma once
// The registry of a Windows that is not running: the hive files below a folder in which its drive is mounted. HKLM has SAM,
// Security, Software and System, HKU has .DEFAULT (S-1-5-18 is the same) and every user of ProfileList with
// NTUSER.DAT and UsrClass.dat. Files are found ignoring case and never outside of the folder.
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "registry/HiveStore.h"
#include "registry/LocalMachines.h"

namespace brenvik {

class OfflineWindows final : public HiveStore {
public:
    struct Profile {
        std::string sid, userName;        // the name is the last part of the profile's folder
        std::filesystem::path folder;
    };

    // The drive's folder (or the Windows folder itself). Reads the list of profiles only; a hive is read when it is asked for.
    // HKCU is the first user's. Throws RegError NoKey if there is no Windows.
    explicit OfflineWindows(const std::filesystem::path& folder);

    const std::filesystem::path& windowsFolder() const { return windows_; }
    const std::vector<Profile>& profiles() const { return profiles_; }
    bool chooseUser(std::string_view sidOrName);                       // false: there is no such profile
    const std::vector<std::string>& notes() const { return notes_; }   // German: what is not there or cannot be read

private:
    void mountMachine(const std::filesystem::path& config);
    void mountProfiles();
    void mountProfile(const std::string& sid, const std::string& imagePath, std::string_view systemRoot);
    std::filesystem::path top_, windows_;
    std::vector<Profile> profiles_;
    std::vector<std::string> notes_;
};

// The host path of "Users\anna" below a folder, ignoring case; empty if it is not there or would lead out of the folder.
std::optional<std::filesystem::path> findBelow(const std::filesystem::path& folder, std::string_view windowsPath);

// From now on a machine name with a "/" in it is a host folder that holds a Windows. Each is opened once and stays open as
// long as the finder lives. The service answers 53 for what is no such folder.
void reachOfflineWindows(LocalMachines& machines);

}  // namespace brenvik
