#pragma once
// The embedded registry: one SQLite file in the program's home. The user's key below HKU stands for HKCU, the control set
// named by HKLM\System\Select\Current for CurrentControlSet, the current hardware profile for HKCC; HKCR shows the user's
// Software\Classes over the machine's and writes where a key exists in the user's, else to the machine's. HKDD is empty.
// Several processes may use the file. Errors are RegError: NoKey (a name that is no key name), NoAccess (no right to
// write), NoAssignment (value refused or not written), KeyNotRead (the file cannot be read). Where the file cannot be
// written the store can only be read, and each change is NoAccess with the reason.
#include <filesystem>
#include <limits>
#include <unordered_map>
#include <unordered_set>

#include "registry/store/RegLimits.h"
#include "registry/store/RegLinks.h"
#include "registry/store/RegStore.h"
#include "registry/store/StoreFile.h"
#include "registry/store/StoreTables.h"

namespace brenvik {

class SqliteStore final : public RegStore {
public:
    explicit SqliteStore(std::filesystem::path file, const StoreOptions& options = {});   // throws StoreOpenError
    ~SqliteStore() override;
    SqliteStore(const SqliteStore&) = delete;
    SqliteStore& operator=(const SqliteStore&) = delete;

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
    bool writable() override { return opened_.whyReadOnly.empty(); }
    const std::string& whyReadOnly() const override { return opened_.whyReadOnly; }   // a German sentence; empty: it can be written
    void seal(std::string why) { opened_.whyReadOnly = std::move(why); }     // from now on it can only be read
    RealKey realKey(Root root, std::string_view key) override;
    std::optional<KeyDetails> details(Root root, std::string_view key) override;
    void setDetails(Root root, std::string_view key, const KeyDetails& details) override;
    bool isLink(Root root, std::string_view key) override { return root == Root::LocalMachine && isControlSetName(key); }
    void walk(Root root, std::string_view key, TreeSink& sink) override;
    void fill(Root root, std::string_view key, const std::function<void(TreeSink&)>& source) override;
    void clear(Root root, std::string_view key) override;

    bool isEmpty();                                                      // neither HKLM nor HKU has a key
    std::string currentUserSid();                                        // the profile that HKCU stands for
    void setReadOnly(Root root, std::string_view key, bool readOnly);    // a key that the user may only read
    const std::filesystem::path& file() const { return file_; }

private:
    struct Place {
        std::int64_t base = 0;   // 0: a place that holds nothing
        std::string path;
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::u16string_view path) const { return std::hash<std::u16string_view>()(path); }
    };

    template <class Work> auto reading(const Work& work);
    template <class Work> void writing(const Work& work);
    void refresh(std::int64_t version);
    void forget();
    void forgetLinks();

    Place place(Root root, std::string_view key);
    Place machinePlace(std::string_view key);
    const std::string& controlSet();
    const std::string& userSid();

    struct Reached {
        KeyRef key;
        std::size_t units = 0;   // so much of the path leads to it
    };
    Reached reach(std::int64_t base, std::u16string_view cachePath);
    std::optional<KeyRef> find(const Place& place);
    std::optional<KeyRef> find(Root root, std::string_view key) { return find(place(root, key)); }
    std::optional<KeyRef> findClasses(bool user, std::string_view key);
    std::optional<KeyRef> findAny(Root root, std::string_view key);            // HKCR: the user's or else the machine's
    std::vector<KeyRef> findLayers(Root root, std::string_view key);           // HKCR: both, the user's first
    Place writePlace(Root root, std::string_view key);
    KeyRef obtain(const Place& place);
    void remember(std::u16string_view path, const KeyRef& key);
    KeyRef obtainAgain(Root root, std::string_view key);
    bool isNew(const KeyRef& key) const { return firstNew_ != 0 && key.id >= firstNew_; }
    void touch(const KeyRef& key) {
        if (!isNew(key)) touched_.insert(key.id);
    }
    void flushTouched();

    std::filesystem::path file_;
    OpenedStore opened_;
    StoreTables tables_;
    int depth_ = 0;              // of transactions under way
    std::int64_t dataVersion_ = 0;
    std::unordered_map<std::u16string, KeyRef, Hash, std::equal_to<>> keys_;   // base and folded path to key
    std::unordered_set<std::int64_t> touched_;
    static constexpr std::int64_t NoneIsNew = std::numeric_limits<std::int64_t>::max();
    std::int64_t firstNew_ = 0;          // keys from this number on were made in the transaction under way; 0: none yet
    bool newAreKnown_ = false;           // keys_ holds every key that is new
    struct Written {
        Root root;
        std::string key;
        KeyRef ref;
    };
    std::optional<Written> lastWritten_;
    std::string controlSet_, userSid_;   // empty: not looked up yet
};

}  // namespace brenvik
