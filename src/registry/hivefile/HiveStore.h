#pragma once
// Hive files as a registry: each one stands at a place below HKLM or HKU. Everything is changed in memory and written at the
// end of the operation or transaction as whole new files (registry/HiveFile.h). What can be addressed elsewhere in a
// Windows works here too: HKCU is the chosen profile, CurrentControlSet the set named by Select\Current, HKCC the current
// hardware profile, HKCR the user's classes over the machine's. HKDD is empty. Several stores on the same files notice
// each other when writing: the later one is refused and reads again. Several files of one transaction are written all or none,
// over a crash too (registry/HiveJournal.h).
// Failures are RegError: NoKey, NoAccess (read-only, outside of all hives), NoAssignment (refused or not written, message
// in German; memory and files are then as before), KeyNotRead (a file cannot be read; the others still can).
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "registry/hivefile/HiveFile.h"
#include "registry/store/RegStore.h"

namespace brenvik {

class HiveStore : public RegStore {
public:
    HiveStore() = default;
    ~HiveStore() override = default;
    HiveStore(const HiveStore&) = delete;
    HiveStore& operator=(const HiveStore&) = delete;

    // root is LocalMachine or Users; place is one key name, or "" for a hive that is all of HKLM (then there are no links).
    // The same file may stand at several places.
    void mount(Root root, std::string place, std::shared_ptr<HiveFile> file);
    void setCurrentUser(std::string sid) { userSid_ = std::move(sid); }   // a place below HKU; "": HKCU is empty
    const std::string& currentUserSid() const { return userSid_; }
    // A place whose file is not there: whoever asks below it gets RegError KeyNotRead with the reason (German). It is not listed.
    void mountMissing(Root root, std::string place, std::string reason);
    // Nobody knows whose HKCU it is, or it cannot be had: the same for HKCU and HKCR as long as no user is set.
    void setUsersUnknown(std::string reason) { usersUnknown_ = std::move(reason); }
    // Answers a question that comes before writing; without it, or if it answers false, nothing is written.
    using Ask = std::function<bool(const std::string& question)>;
    void setAsk(Ask ask) { ask_ = std::move(ask); }

    bool keyExists(Root root, std::string_view key) override;
    bool canOpen(Root root, std::string_view key, std::uint32_t mask) override;
    std::vector<std::string> subKeys(Root root, std::string_view key) override;
    std::optional<RawValue> value(Root root, std::string_view key, const ValueName& name) override;
    bool hasValue(Root root, std::string_view key, const ValueName& name) override;
    std::vector<NamedValue> values(Root root, std::string_view key) override;
    void createKey(Root root, std::string_view key) override;
    void setValue(Root root, std::string_view key, const ValueName& name, const RawValue& value) override;
    bool deleteValue(Root root, std::string_view key, const ValueName& name) override;
    bool deleteKey(Root root, std::string_view key) override;
    void transaction(const std::function<void()>& changes) override;
    bool writable() override;                                              // whether any of the files can be written
    RealKey realKey(Root root, std::string_view key) override;
    std::optional<KeyDetails> details(Root root, std::string_view key) override;
    void setDetails(Root root, std::string_view key, const KeyDetails& details) override;
    bool isLink(Root root, std::string_view key) override;
    std::vector<std::string> linksOut(Root root, std::string_view key) override;
    void walk(Root root, std::string_view key, TreeSink& sink) override;
    void fill(Root root, std::string_view key, const std::function<void(TreeSink&)>& source) override;
    void clear(Root root, std::string_view key) override;

protected:
    // What is to be asked before these files are written (German), each once if it was answered with yes: whether the Windows sleeps.
    virtual std::vector<std::string> questionsBeforeWriting(const std::vector<HiveFile*>& files);
    bool standsBelow(const HiveFile& file, std::string_view sid) const;   // in HKU: the user's registry or classes

private:
    struct Mount {
        Root root;
        std::string place;
        std::shared_ptr<HiveFile> file;   // none: missing
        std::string missing = {};
    };
    // A path in one of the files; without a file a place between them.
    struct Place {
        HiveFile* file = nullptr;
        std::string path;
        bool exists = false;   // of a place without a file: HKLM and HKU themselves
    };
    struct Undo {
        HiveFile* file;
        std::function<void(Hive&)> revert;
    };

    Place place(Root root, std::string_view key);
    Place machinePlace(std::string_view key);
    Place userPlace(std::string_view key);
    std::string throughClasses(std::string_view userKey) const;
    Place mounted(Root root, std::string_view key);
    bool isSingleHive() const { return !mounts_.empty() && mounts_.front().place.empty(); }
    bool hasMount(Root root, std::string_view place) const;
    std::string linkBelow(Root root, std::string_view key) const;
    std::string controlSet();
    std::string hardwareProfile();

    HiveKey* find(const Place& place);
    std::vector<Place> layers(Root root, std::string_view key);            // HKCR: the user's and the machine's; only keys that are there
    Place writePlace(Root root, std::string_view key);
    HiveKey& obtain(const Place& place);
    void touch(const Place& place, HiveKey& key);
    void writing(const std::function<void()>& work);
    void write(std::size_t from);
    void requireConsent(const std::vector<HiveFile*>& files);
    void rollBack(std::size_t to);

    std::vector<Mount> mounts_;
    std::string userSid_, usersUnknown_;
    Ask ask_;
    std::vector<std::string> agreed_;   // questions that were answered with yes
    int depth_ = 0;             // of transactions under way
    std::vector<Undo> undo_;    // what takes the changes of the transaction back, in their order
};

struct HiveOpenOptions {
    bool salvage = false;   // what can be read of a damaged file; the store is then read-only
    std::function<void(const HiveFinding&)> tell;   // what was wrong, also with the logs of a dirty hive
    HiveStore::Ask ask;
};

// One hive file as a store. Its root is HKLM itself: the value "w" of the hive's key "A\B" is (Root::LocalMachine, "A\B", "w").
// The file is read at once with its logs; throws RegError KeyNotRead with a message that names it.
std::unique_ptr<RegStore> openHiveFile(const std::filesystem::path& file, const HiveOpenOptions& options = {});

}  // namespace brenvik
