#pragma once
// A change as an object: what was written, where, and what stood there before, raw. Journal and undo build on it.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "registry/BVKRegistry.h"
#include "registry/store/RegStore.h"

namespace brenvik {

struct WertAenderung {
    std::string machine;                 // empty: local
    std::string path;                    // root "\" key "\" value name, as given to the registry service; with name below: root "\" key
    std::int16_t TippIndex = 0;
    std::optional<RawValue> alt;         // none: the value did not exist
    std::optional<RawValue> neu;         // none: it is deleted
    bool geschrieben = false;            // set after the write succeeded
    std::optional<std::string> name = {};   // the value's name where it travels apart from its key: it may hold backslashes
};

// Where the value of the change is; the first makes it the service's selection.
void selectValue(BVKRegistry& registry, const WertAenderung& change);
RegPath placeOf(const WertAenderung& change);

// A key with everything below it, as it stood before it was deleted.
struct SchluesselBild {
    struct Wert {
        std::string unter;               // "" or "\\Sub\\Key" below path
        NamedValue wert;
    };
    std::string machine;
    std::string path;                    // root "\\" key, no backslash at the end; the key's real place
    std::vector<std::string> unterschluessel;   // "" first, then "\\Sub", each before those below it; empty: the key was not there
    std::vector<Wert> werte;
    bool geloescht = false;
    bool angelegt = false;               // the key was not there before: taking the change back deletes it
    std::vector<KeyDetails> details;     // of unterschluessel, where the store keeps some
};

// A file before and after it was changed.
struct DateiBild {
    std::string datei;                   // path on the host
    std::string inhalt;                  // bytes
    bool vorhanden = false;
    std::string neu;                     // bytes that it is to hold
    bool geschrieben = false;
};

struct Aenderung {
    enum class Art { Speichern, Standard, Loeschen, TypAngepasst, Kontextmenue, Schluessel, IniDatei, BootDatei, Zuruecksetzen, Wiederherstellen };
    Art art = Art::Speichern;
    std::string tippÜberschrift;
    std::int16_t tippIndex = 0;
    std::vector<WertAenderung> werte;
    std::vector<SchluesselBild> schluessel;
    std::vector<DateiBild> dateien;
    bool amBildschirm = false;           // made from the panels of the Tip on screen, whose working values tell the old display texts
};

// Hears of every change, before its first write and after each write. Whatever befalls a recorder, the change goes on:
// none of these throws.
class ChangeRecorder {
public:
    virtual ~ChangeRecorder() = default;
    virtual void begin(const Aenderung&) {}
    virtual void written(const Aenderung&, std::size_t /*value*/) {}
    virtual void finished(const Aenderung&) {}      // also after a failure; the change tells what was written
    // After a failure half way, when the user knows what was written: offers to take it back. True: it was taken back.
    virtual bool offerTakeBack(const Aenderung&) { return false; }
};

// A change under way: begun here, finished however the block is left.
class LaufendeAenderung {
public:
    LaufendeAenderung(ChangeRecorder& recorder, Aenderung& change) : recorder_(recorder), change_(change) { recorder_.begin(change_); }
    ~LaufendeAenderung() { recorder_.finished(change_); }
    LaufendeAenderung(const LaufendeAenderung&) = delete;
    LaufendeAenderung& operator=(const LaufendeAenderung&) = delete;
    void written(std::size_t value) {
        change_.werte[value].geschrieben = true;
        recorder_.written(change_, value);
    }

private:
    ChangeRecorder& recorder_;
    Aenderung& change_;
};

}  // namespace brenvik
