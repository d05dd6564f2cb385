#pragma once
// The machines that the service reaches: the local store, and whatever else is registered under a finder.
#include <functional>
#include <string>

#include "registry/machine/TargetSystem.h"
#include "registry/store/RegStore.h"

namespace brenvik {

// Names that the store itself holds; empty if it does not.
std::string storedComputerName(RegStore& store);
std::string storedUserName(RegStore& store, const std::string& sid);   // from ProfileList, the last part of the profile's folder

class LocalMachines final : public Machines {
public:
    // Gives a machine, or nullptr if there is none of that name. May throw RegError: NoAccess (access denied),
    // NoKey (there is none, and why).
    using Finder = std::function<TargetSystem*(const std::string& machine)>;

    // fallbackName is the local machine's name if the store holds none.
    explicit LocalMachines(RegStore& local, std::string fallbackName = DefaultName);
    // local gives the local store; asked when something needs it.
    explicit LocalMachines(std::function<RegStore&()> local, std::string fallbackName = DefaultName);
    static constexpr const char* DefaultName = "BRENVIK-PC";
    void setFinder(Finder finder) { finder_ = std::move(finder); }

    std::string localName() override;
    std::int32_t connect(const std::string& machine) override;
    TargetSystem& target(const std::string& machine) override;
    void setLocalFiles(TargetFiles files) override { local_.setFiles(std::move(files)); }

private:
    bool isLocal(const std::string& machine);
    RegistryTarget local_;
    std::string fallbackName_;
    std::string localName_;       // once it has been read
    bool fallbackTold_ = false;   // somebody knows this machine by that name
    Finder finder_;
};

}  // namespace brenvik
