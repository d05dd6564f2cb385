#include "shell/main/WindowSettings.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

#include "frame/text/Conversions.h"
#include "registry/Settings.h"
#include "registry/ValueOperations.h"

namespace brenvik {
namespace {

constexpr double LargestMeasure = 1'000'000;    // twips, about 66,000 pixels: beyond that no value is meant seriously
constexpr double WidestMinimum = 6000, HighestMinimum = 900;    // of a band: beyond them it would cover the window
constexpr std::int16_t RegSz = 1;
constexpr const char* NothingSaved =
    "Die Einstellungen des Programms konnten nicht gespeichert werden, weil diese Registry nur gelesen werden darf. Beim nächsten Start gelten die bisherigen.";

struct Bounds {
    double smallest = 0, largest = LargestMeasure;
};

// One walk over all values serves reading and writing, so that the two cannot drift apart.
template <class Mover> void walkPlace(Mover& mover, MainWindowSettings& window) {
    const std::string base = SettingsPath;
    mover.measure(base + "MainLeft", window.MainLeft, {-LargestMeasure});
    mover.measure(base + "MainTop", window.MainTop, {-LargestMeasure});
    mover.measure(base + "MainWidth", window.MainWidth);
    mover.measure(base + "MainHeight", window.MainHeight);
}

template <class Mover> void walk(Mover& mover, MainWindowSettings& window) {
    const std::string base = SettingsPath;
    walkPlace(mover, window);
    mover.flag(base + "MainMaximiert", window.MainMaximised);
    mover.measure(base + "SplitterVLeft", window.SplitterVLeft);
    mover.measure(base + "SplitterHTop", window.SplitterHTop);
    for (std::size_t i = 0; i < window.Buttons.size(); ++i) mover.text(base + "Toolbar\\" + MainWindowSettings::ButtonBars[i], window.Buttons[i]);
    for (std::size_t i = 0; i < window.Band.size(); ++i) {
        const std::string band = base + "Toolbar\\Band" + std::to_string(i + 1) + "_";
        mover.flag(band + "Visible", window.Band[i].Visible);
        mover.measure(band + "Width", window.Band[i].Width);
        mover.measure(band + "MinWidth", window.Band[i].MinWidth, {0, WidestMinimum});
        mover.measure(band + "MinHeight", window.Band[i].MinHeight, {0, HighestMinimum});
        if (i > 0) mover.flag(band + "NewRow", window.Band[i].NewRow);
    }
}

struct Reader {
    RegistryContext& ctx;
    void measure(const std::string& path, double& twips, const Bounds& limits = {}) {
        const std::string text = ReadRegistryKey(ctx, path, numberText(twips));
        const double read = isNumeric(text) ? toDbl(text) : NAN;
        if (read >= limits.smallest && read <= limits.largest)
            twips = read;
        else
            unusable(path, text);
    }
    void flag(const std::string& path, bool& value) {
        const std::string text = ReadRegistryKey(ctx, path, boolText(value));
        try {
            value = toBool(text);
        } catch (const NumberedError&) {
            unusable(path, text);
        }
    }
    void text(const std::string& path, std::string& value) { value = ReadRegistryKey(ctx, path, value); }
    void unusable(const std::string& path, const std::string& text) {
        ctx.trace.write("--- Einstellung " + path + " ist unbrauchbar: " + text);
    }
};

bool anyKeyIsWritable(RegistryContext& ctx) {
    const std::string keys[] = {SettingsPath, std::string(SettingsPath) + "Toolbar\\", PathsPath, MachineSettingsPath};
    return std::any_of(std::begin(keys), std::end(keys), [&](const std::string& key) {
        ctx.objBVKReg.SetPath(ctx.strLokalerRechner, key);
        return ctx.objBVKReg.CheckAccess(KEY_ALL_ACCESS_MASK);
    });
}

// Each value that cannot be written is reported, and the next one follows. In a registry that takes nothing at all one report
// serves for the fifty.
struct Writer {
    RegistryContext& ctx;
    bool begun = false, inVain = false;

    void measure(const std::string& path, double& twips, const Bounds& = {}) { put(path, numberText(twips)); }
    void text(const std::string& path, std::string& value) { put(path, value); }
    void flag(const std::string& path, bool& value) { put(path, boolText(value)); }
    void put(const std::string& path, const std::string& text) {
        if (inVain) return;
        const bool saved = SaveRegistryKey(ctx, path, text, RegSz);
        inVain = !begun && !saved && !anyKeyIsWritable(ctx);
        begun = true;
    }
};

}  // namespace

MainWindowSettings loadWindowSettings(RegistryContext& ctx) {
    MainWindowSettings window;
    Reader reader{ctx};
    walk(reader, window);
    return window;
}

MainWindowSettings loadWindowPlace(RegistryContext& ctx) {
    MainWindowSettings window;
    Reader reader{ctx};
    walkPlace(reader, window);
    return window;
}

bool saveWindowSettings(RegistryContext& ctx, const MainWindowSettings& window) {
    MainWindowSettings copy = window;
    Writer writer{ctx};
    walk(writer, copy);
    return !writer.inVain;
}

void Save_BVKEinstellungen(RegistryContext& ctx, const MainWindowSettings& window) {
    const ProcTrace trace(ctx.trace, "Save_BVKEinstellungen");
    if (saveWindowSettings(ctx, window))
        saveCoreSettings(ctx);
    else
        ctx.port.tell(NothingSaved, box::Exclamation);
}

}  // namespace brenvik
