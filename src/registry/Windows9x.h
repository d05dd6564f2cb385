#pragma once
// A Windows 95, 98 or ME that is not running: the files below a folder in which its drive is mounted. MSDOS.SYS at the drive's root
// names its folder; without it any folder with a SYSTEM.DAT is taken. Files are found ignoring case and never outside of the folder.
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "registry/CregStore.h"
#include "registry/machine/TargetSystem.h"

namespace brenvik {

class Windows9x final : public TargetSystem {
public:
    RegStore& store() override { return store_; }
    const TargetFiles& files() const override { return files_; }
    std::vector<TargetProfile> profiles() const override { return profiles_; }
    std::string profile() const override { return store_.currentUser(); }
    bool chooseProfile(std::string_view name) override;
    std::vector<std::string> notes() const override;
    void setAsk(std::function<bool(const std::string&)> ask) override { store_.files().setAsk(std::move(ask)); }

private:
    friend std::unique_ptr<TargetSystem> openWindows9x(const std::filesystem::path& folder);
    struct Place {
        std::filesystem::path drive, windows;
        std::string path;   // "C:\WINDOWS"
    };
    static std::optional<Place> placeIn(const std::filesystem::path& folder);
    explicit Windows9x(Place place);
    void mountMachine();
    void mountClasses();
    void mountUsers();
    void mountUser(const std::string& name, const std::filesystem::path& file);
    void missingUser(const std::string& name, const std::string& reason);
    std::filesystem::path profileFolder(const std::string& name);
    bool userIsPlain() const { return chosen_ || profiles_.size() < 2; }
    std::vector<std::string> questionsAboutUsers(const std::vector<HiveFile*>& files) const;

    Place place_;
    TargetFiles files_;
    CregStore store_;
    std::shared_ptr<HiveFile> system_;
    std::vector<TargetProfile> profiles_;
    std::vector<std::pair<std::string, std::filesystem::path>> userFiles_;
    std::vector<std::string> notes_;
    bool chosen_ = false;
};

// Nothing if there is none in the folder.
std::unique_ptr<TargetSystem> openWindows9x(const std::filesystem::path& folder);

}  // namespace brenvik
