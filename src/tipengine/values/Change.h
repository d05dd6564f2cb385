#pragma once
// A change as an object: what was written, where, and what stood there before, raw. Journal and undo build on it.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "registry/BVKRegistry.h"
#include "registry/store/RegStore.h"

namespace brenvik {

struct ValueChange {
    std::string machine;                 // empty: local
    std::string path;                    // root "\" key "\" value name, as given to the registry service; with name below: root "\" key
    std::int16_t TippIndex = 0;
    std::optional<RawValue> alt;         // none: the value did not exist
    std::optional<RawValue> neu;         // none: it is deleted
    bool written = false;            // set after the write succeeded
    std::optional<std::string> name = {};   // the value's name where it travels apart from its key: it may hold backslashes
};

// Where the value of the change is; the first makes it the service's selection.
void selectValue(BVKRegistry& registry, const ValueChange& change);
RegPath placeOf(const ValueChange& change);

// A key with everything below it, as it stood before it was deleted.
struct KeyImage {
    struct Wert {
        std::string unter;               // "" or "\\Sub\\Key" below path
        NamedValue wert;
    };
    std::string machine;
    std::string path;                    // root "\\" key, no backslash at the end; the key's real place
    std::vector<std::string> unterschluessel;   // "" first, then "\\Sub", each before those below it; empty: the key was not there
    std::vector<Wert> values;
    bool geloescht = false;
    bool created = false;               // the key was not there before: taking the change back deletes it
    std::vector<KeyDetails> details;     // of unterschluessel, where the store keeps some
};

// A file before and after it was changed.
struct FileImage {
    std::string datei;                   // path on the host
    std::string contents;                  // bytes
    bool there = false;
    std::string neu;                     // bytes that it is to hold
    bool written = false;
};

struct Change {
    enum class Art { Speichern, Standard, Loeschen, TypeAdapted, ContextMenu, Key, IniDatei, BootFile, Undo, Restore };
    Art art = Art::Speichern;
    std::string tipHeading;
    std::int16_t tippIndex = 0;
    std::vector<ValueChange> values;
    std::vector<KeyImage> key;
    std::vector<FileImage> dateien;
    bool onScreen = false;           // made from the panels of the Tip on screen, whose working values tell the old display texts
};

// Hears of every change, before its first write and after each write. Whatever befalls a recorder, the change goes on:
// none of these throws.
class ChangeRecorder {
public:
    virtual ~ChangeRecorder() = default;
    virtual void begin(const Change&) {}
    virtual void written(const Change&, std::size_t /*value*/) {}
    virtual void finished(const Change&) {}      // also after a failure; the change tells what was written
    // After a failure half way, when the user knows what was written: offers to take it back. True: it was taken back.
    virtual bool offerTakeBack(const Change&) { return false; }
};

// A change under way: begun here, finished however the block is left.
class RunningChange {
public:
    RunningChange(ChangeRecorder& recorder, Change& change) : recorder_(recorder), change_(change) { recorder_.begin(change_); }
    ~RunningChange() { recorder_.finished(change_); }
    RunningChange(const RunningChange&) = delete;
    RunningChange& operator=(const RunningChange&) = delete;
    void written(std::size_t value) {
        change_.values[value].written = true;
        recorder_.written(change_, value);
    }

private:
    ChangeRecorder& recorder_;
    Change& change_;
};

}  // namespace brenvik
