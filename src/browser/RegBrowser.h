#pragma once
// The registry browser without its window: reading keys and values of the selected machine through the registry service,
// and changing them. Keys are path texts, root "\" key without a backslash at the end ("HKEY_USERS\.DEFAULT"); the empty
// value name is the unnamed value. Every failure and refusal is told to the user here; every write leaves a change record.
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "frame/UserPort.h"
#include "registry/search/Search.h"

namespace brenvik {

struct Context;
class ChangeRecorder;

struct BrowserValue {
    enum class Tag { None, ASC, DATA };   // how the value was read: neither, as text, from binary data
    std::string KeyName;                    // the value's name
    std::string Type;                       // "REG_SZ"
    std::string Wert;                       // the service's text; a long one is cut and ends in "..."
    Tag tag = Tag::None;
    std::uint32_t typ = 0;
    bool there = true;                  // false: the row of an unnamed value that is not there
};

struct BrowserHit {
    std::string key;
    std::optional<std::string> name;        // of the value; none: the key itself
    std::string text;                       // the value's data, cut like Wert
};

struct BrowserSearch {
    std::string text;
    bool keys = true, names = true, data = true;
};

class RegBrowser {
public:
    static constexpr std::size_t LongestText = 1'000;         // bytes of a value's text in a list
    static constexpr std::size_t MostHits = 10'000;

    virtual ~RegBrowser() = default;

    virtual std::vector<std::string> roots() const = 0;       // in the browser's order
    virtual std::string machine() const = 0;
    virtual bool exists(const std::string& key) = 0;
    virtual std::vector<std::string> subKeys(const std::string& key) = 0;      // names
    virtual std::vector<BrowserValue> values(const std::string& key) = 0;       // the unnamed value first, in any case
    virtual std::optional<RawValue> value(const std::string& key, const std::string& name) = 0;
    virtual std::string longKey(const std::string& path) = 0; // of what somebody typed ("hklm\software\"); empty if it is no path

    // True: it was done. before is what the user saw, none for a new value: if something else stands there by now, he is asked.
    virtual bool writeValue(const std::string& key, const std::string& name, const std::optional<RawValue>& before, const RawValue& value) = 0;
    virtual bool renameValue(const std::string& key, const std::string& name, const std::string& to) = 0;
    virtual bool deleteValue(const std::string& key, const std::string& name) = 0;
    virtual bool newKey(const std::string& parent, const std::string& name) = 0;
    virtual bool renameKey(const std::string& key, const std::string& to) = 0;
    virtual bool deleteKey(const std::string& key) = 0;
    virtual bool mayRename(const std::string& key) = 0;       // false for roots and for keys that the system needs where they are

    // Below the key. stop is asked often; true ends the search. hit must not use the browser.
    virtual void search(const std::string& key, const BrowserSearch& wanted, const std::function<void(BrowserHit)>& hit,
                        const std::function<bool(const std::string& key)>& stop) = 0;

    virtual void copyPath(const std::string& key, const std::optional<std::string>& name) = 0;
    virtual void click() = 0;
    virtual bool changedAnything() const = 0;                 // since it was made
};

std::unique_ptr<RegBrowser> makeRegBrowser(Context& ctx, ChangeRecorder& recorder);

struct RegBrowseRequest : WindowRequest {
    explicit RegBrowseRequest(RegBrowser& regBrowser) : browser(regBrowser) {}
    std::string_view windowName() const override { return "frmBVK_RegBrowse"; }
    RegBrowser& browser;
};

// One value to be looked at and changed. speichern answers true when the window may close.
struct REGEditRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_REGEdit"; }
    bool neu = false;                       // the name is the user's to choose
    std::string ItemName;
    std::uint32_t ItemTyp = regtype::Sz;
    std::optional<RawValue> ItemWert;       // none: it is not there yet, and its type is the user's to choose
    std::string ItemKey;
    std::function<bool(const std::string& name, const RawValue& value)> save;
};

}  // namespace brenvik
