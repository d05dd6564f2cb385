#pragma once
// The registry of a Windows that is not running: the hive files below a folder in which its drive is mounted. HKLM has SAM,
// Security, Software and System, HKU has .DEFAULT (S-1-5-18 is the same) and every user of ProfileList with
// NTUSER.DAT and UsrClass.dat. Files are found ignoring case and never outside of the folder.
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "registry/hivefile/HiveStore.h"
#include "registry/machine/LocalMachines.h"
#include "registry/machine/TargetSystem.h"

namespace brenvik {

class OfflineWindows final : public HiveStore {
public:
    // The drive's folder (or the Windows folder itself). Reads the list of profiles only; a hive is read when it is asked for.
    // HKCU is that of the first user whose registry is there. Throws RegError NoKey if there is no Windows. What is not there or cannot
    // be read stands at its place all the same: whoever asks there gets RegError KeyNotRead with the reason.
    explicit OfflineWindows(const std::filesystem::path& folder);

    const std::filesystem::path& windowsFolder() const { return windows_; }
    const std::filesystem::path& driveFolder() const { return top_; }
    const std::string& systemRoot() const { return systemRoot_; }      // "C:\Windows", as this Windows names its folder
    const std::vector<TargetProfile>& profiles() const { return profiles_; }
    bool chooseUser(std::string_view sidOrName);                       // false: there is no such profile, or it cannot be read
    bool userIsPlain() const;                                          // chosen, or the only one
    const std::vector<std::string>& notes() const { return notes_; }   // German: what is not there or cannot be read

protected:
    std::vector<std::string> questionsBeforeWriting(const std::vector<HiveFile*>& files) override;

private:
    void mountMachine(const std::filesystem::path& config);
    void mountProfiles();
    void mountProfile(const std::string& sid, const std::string& imagePath);
    std::filesystem::path top_, windows_;
    std::string systemRoot_;
    std::vector<TargetProfile> profiles_;
    std::vector<std::string> notes_;
    bool chosen_ = false;
};

// The host path of "Users\anna" below a folder, ignoring case; empty if it is not there or would lead out of the folder.
std::optional<std::filesystem::path> findBelow(const std::filesystem::path& folder, std::string_view windowsPath);

// A Windows in a folder as the machine worked on. Its files are those of the drive that the folder stands for.
class MountedWindows final : public TargetSystem {
public:
    explicit MountedWindows(const std::filesystem::path& folder);
    RegStore& store() override { return windows_; }
    const TargetFiles& files() const override { return files_; }
    std::vector<TargetProfile> profiles() const override { return windows_.profiles(); }
    std::string profile() const override { return windows_.currentUserSid(); }
    bool chooseProfile(std::string_view sidOrName) override { return windows_.chooseUser(sidOrName); }
    std::vector<std::string> notes() const override;
    void setAsk(std::function<bool(const std::string&)> ask) override { windows_.setAsk(std::move(ask)); }

private:
    OfflineWindows windows_;
    TargetFiles files_;
};

// From now on a machine name with a "/" in it is a host folder that holds a Windows. Each is opened once and stays open as
// long as the finder lives; ask answers the questions that come before writing. The service answers 53 for what is no such folder.
void reachOfflineWindows(LocalMachines& machines, std::function<bool(const std::string& question)> ask = {});

}  // namespace brenvik
