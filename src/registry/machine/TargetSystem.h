#pragma once
// The machine worked on, as one record: its registry, its files, its version, its profiles, and what of it cannot be had. The
// embedded Windows, a Windows in a folder and a machine of which only the registry is reached are made here and in
// registry/OfflineWindows.h. Whoever works on a machine gets it from Machines and asks nobody else.
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/files/TargetFiles.h"
#include "frame/program/SystemVersion.h"

namespace brenvik {

class RegStore;

// A user of the machine whose HKCU can be worked on.
struct TargetProfile {
    std::string sid, userName;   // the name is the last part of the profile's folder
    std::string missing;         // German: why its registry cannot be read; empty: it can
};

class TargetSystem {
public:
    virtual ~TargetSystem() = default;
    virtual RegStore& store() = 0;
    virtual const TargetFiles& files() const = 0;

    // Empty where HKCU can only be that of the user at hand.
    virtual std::vector<TargetProfile> profiles() const { return {}; }
    virtual std::string profile() const { return {}; }                                       // SID of the one that HKCU means now
    virtual bool chooseProfile(std::string_view /*sidOrName*/) { return false; }             // false: there is none, or it cannot be read
    // German sentences: whose HKCU it is where that is not plain, what is not there, what cannot be read.
    virtual std::vector<std::string> notes() const { return {}; }
    // Who answers, before something is written, whether that is really wanted.
    virtual void setAsk(std::function<bool(const std::string& question)> /*ask*/) {}

    OSVERSIONINFO version();      // platform id 0 if its registry does not tell; read anew each time
    std::string systemName();     // "Windows XP", "Windows 10"; empty if nobody knows
};

// What its registry tells of a Windows.
OSVERSIONINFO storedSystemVersion(RegStore& store);

// A machine of which nothing but the registry is reached, or whose files the maker knows.
class RegistryTarget final : public TargetSystem {
public:
    RegistryTarget(std::function<RegStore&()> store, TargetFiles files) : store_(std::move(store)), files_(std::move(files)) {}
    RegStore& store() override { return store_(); }
    const TargetFiles& files() const override { return files_; }
    void setFiles(TargetFiles files) { files_ = std::move(files); }

private:
    std::function<RegStore&()> store_;
    TargetFiles files_;
};

}  // namespace brenvik
