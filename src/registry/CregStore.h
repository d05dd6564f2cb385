#pragma once
// The registry of a Windows 95, 98 or ME from its files: HKLM is one file, HKU another, users and classes have their own below them.
// HKCU is the chosen user, HKCR a part of HKLM, HKCC the current configuration in HKLM; HKDD is empty. CurrentControlSet is a key
// like others. What HiveStore tells of failures, transactions and other programs holds here too.
#include <optional>
#include <string>
#include <vector>

#include "registry/CregFile.h"

namespace brenvik {

class CregStore final : public RegStore {
public:
    // root is LocalMachine or Users; inside: the key of the file that stands there, "" for all of it.
    void mount(Root root, std::string key, const std::shared_ptr<HiveFile>& file, const std::string& inside = {});
    void mountMissing(Root root, std::string key, const std::string& reason);
    void setCurrentUser(std::string user) { user_ = std::move(user); }   // a key below HKU
    const std::string& currentUser() const { return user_; }
    CregFileStore& files() { return files_; }

    bool keyExists(Root root, std::string_view key) override;
    bool canOpen(Root root, std::string_view key, std::uint32_t mask) override;
    std::vector<std::string> subKeys(Root root, std::string_view key) override;
    std::optional<RawValue> value(Root root, std::string_view key, const ValueName& name) override;
    std::vector<NamedValue> values(Root root, std::string_view key) override;
    void createKey(Root root, std::string_view key) override;
    void setValue(Root root, std::string_view key, const ValueName& name, const RawValue& value) override;
    bool deleteValue(Root root, std::string_view key, const ValueName& name) override;
    bool deleteKey(Root root, std::string_view key) override;
    void transaction(const std::function<void()>& changes) override { files_.transaction(changes); }
    bool writable() override { return files_.writable(); }
    RealKey realKey(Root root, std::string_view key) override;
    std::optional<KeyDetails> details(Root root, std::string_view key) override;
    void walk(Root root, std::string_view key, TreeSink& sink) override;
    void fill(Root root, std::string_view key, const std::function<void(TreeSink&)>& source) override;
    void clear(Root root, std::string_view key) override;

private:
    struct Mount {
        Root root;
        std::string key, inside;   // inside: the path in files_
        bool missing = false;
    };
    const Mount* mountOf(const RealKey& at) const;                      // the one that the key lies in
    std::optional<std::string> inside(Root root, std::string_view key);   // the path in files_
    std::string require(Root root, std::string_view key);
    bool isMount(const RealKey& at) const;
    bool hasMountsBelow(const RealKey& at) const;
    std::string hardwareProfile();
    std::string newPlace() const { return "f" + std::to_string(mounts_.size()); }

    CregFileStore files_;   // each file at a place below HKLM
    std::vector<Mount> mounts_;
    std::string user_;
};

}  // namespace brenvik
