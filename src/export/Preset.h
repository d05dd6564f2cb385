#pragma once
// A list with the values its Tips had when they were collected, as a small TOML file to be shared. It names values by Tip and
// value name; where they lie comes from the database of the machine that reads it, never from the file.
#include <string>
#include <string_view>
#include <vector>

#include "export/ExportList.h"
#include "frame/toml/TomlLimits.h"
#include "tipengine/tip/TipSystems.h"

namespace brenvik {

inline constexpr std::uintmax_t MaxPreset = MaxTomlBytes;   // bytes

struct Presetdatei {
    std::string text;                    // UTF-8
    std::vector<std::string> ohneWert;   // paths of values that have none, or one of another type than the Tip's; they are left out
    std::string hindernis;               // German: why there is no file
};
Presetdatei presetDatei(Context& ctx, const TippListe& liste);

struct Presetliste {
    TippListe liste;                     // values as if the user had just chosen them, texts filled
    std::vector<std::string> probleme;   // German; then the list is empty
};
Presetliste ladePreset(TippMaschine& maschine, std::string_view text);

// What applying the list means on the selected machine: a change for each Tip that has something to change.
struct Anwendung {
    std::vector<Aenderung> changes;
    std::vector<std::string> probleme;   // German; then nothing should be changed
    TipEffect wirkung = TipEffect::AtOnce;   // of all changes together
};
Anwendung anwendung(TippMaschine& maschine, const TippListe& liste);

}  // namespace brenvik
