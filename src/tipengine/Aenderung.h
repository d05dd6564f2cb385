#pragma once
// A change as an object: what was written, where, and what stood there before, raw. Journal and undo build on it.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "registry/RegStore.h"

namespace brenvik {

struct WertAenderung {
    std::string machine;                 // empty: local
    std::string path;                    // root "\" key "\" value name, as given to the registry service
    std::int16_t TippIndex = 0;
    std::optional<RawValue> alt;         // none: the value did not exist
    std::optional<RawValue> neu;         // none: it is deleted
    bool geschrieben = false;            // set after the write succeeded
};

// A key with everything below it, as it stood before it was deleted.
struct SchluesselBild {
    struct Wert {
        std::string unter;               // "" or "\\Sub\\Key" below path
        NamedValue wert;
    };
    std::string machine;
    std::string path;                    // root "\\" key, no backslash at the end
    std::vector<std::string> unterschluessel;   // "" first, then "\\Sub", top down
    std::vector<Wert> werte;
    bool geloescht = false;
    bool angelegt = false;               // the key was not there before: taking the change back deletes it
};

// A file before it was changed.
struct DateiBild {
    std::string datei;                   // path on the host
    std::string inhalt;                  // bytes
    bool vorhanden = false;
};

struct Aenderung {
    enum class Art { Speichern, Standard, Loeschen, TypAngepasst, Kontextmenue, Schluessel, IniDatei, BootDatei };
    Art art = Art::Speichern;
    std::string tippÜberschrift;
    std::int16_t tippIndex = 0;
    std::vector<WertAenderung> werte;
    std::vector<SchluesselBild> schluessel;
    std::vector<DateiBild> dateien;
};

// Hears of every change, before its first write and after each write.
class ChangeRecorder {
public:
    virtual ~ChangeRecorder() = default;
    virtual void begin(const Aenderung&) {}
    virtual void written(const Aenderung&, std::size_t /*value*/) {}
    virtual void finished(const Aenderung&) {}
};

}  // namespace brenvik
