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

struct PresetFile {
    std::string text;                    // UTF-8
    std::vector<std::string> withoutValue;   // paths of values that have none, or one of another type than the Tip's; they are left out
    std::string obstacle;               // German: why there is no file
};
PresetFile presetFile(Context& ctx, const TipList& liste);

struct PresetList {
    TipList liste;                     // values as if the user had just chosen them, texts filled
    std::vector<std::string> problems;   // German; then the list is empty
};
PresetList ladePreset(TipEngine& engine, std::string_view text);

// What applying the list means on the selected machine: a change for each Tip that has something to change.
struct Application {
    std::vector<Change> changes;
    std::vector<std::string> problems;   // German; then nothing should be changed
    TipEffect effect = TipEffect::AtOnce;   // of all changes together
};
Application application(TipEngine& engine, const TipList& liste);

}  // namespace brenvik
