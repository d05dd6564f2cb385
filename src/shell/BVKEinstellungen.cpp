#include "shell/BVKEinstellungen.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "frame/Konvertierung.h"
#include "registry/ValueOperations.h"

namespace brenvik {
namespace {

constexpr char UserKey[] = "HKCU\\Software\\Brenvik\\Einstellungen\\";
constexpr char BandKey[] = "HKCU\\Software\\Brenvik\\Einstellungen\\Toolbar\\";
constexpr char PathKey[] = "HKCU\\Software\\Brenvik\\Pfade\\";
constexpr double LargestMeasure = 1'000'000;    // twips, about 66,000 pixels: beyond that no value is meant seriously
constexpr std::int16_t RegSz = 1;

// One walk over all values serves reading and writing, so that the two cannot drift apart.
class Mover {
public:
    virtual ~Mover() = default;
    virtual void measure(const std::string& path, double& twips, bool mayBeNegative = false) = 0;
    virtual void flag(const std::string& path, bool& value) = 0;
    virtual void text(const std::string& path, std::string& value) = 0;
    virtual void tab(const std::string& path, int& value) = 0;
};

class Reader : public Mover {
public:
    explicit Reader(RegistryContext& ctx) : ctx_(ctx) {}
    void measure(const std::string& path, double& twips, bool mayBeNegative) override {
        const std::string text = ReadRegistryKey(ctx_, path, numberText(twips));
        if (!isNumeric(text)) return;
        const double read = toDbl(text);
        if (std::isfinite(read) && std::abs(read) <= LargestMeasure && (mayBeNegative || read >= 0)) twips = read;
    }
    void flag(const std::string& path, bool& value) override {
        const std::string text = ReadRegistryKey(ctx_, path, boolText(value));
        try {
            value = toBool(text);
        } catch (const NumberedError&) {
            ctx_.trace.write("--- Einstellung nicht lesbar: " + path);   // the default stays
        }
    }
    void text(const std::string& path, std::string& value) override { value = ReadRegistryKey(ctx_, path, value); }
    void tab(const std::string& path, int& value) override {
        const double read = Val(ReadRegistryKey(ctx_, path, numberText(value)));
        if (read >= 1 && read <= 9) value = static_cast<int>(read);
    }

private:
    RegistryContext& ctx_;
};

class Writer : public Mover {
public:
    explicit Writer(RegistryContext& ctx) : ctx_(ctx) {}
    void measure(const std::string& path, double& twips, bool) override { put(path, numberText(twips)); }
    void flag(const std::string& path, bool& value) override { put(path, boolText(value)); }
    void text(const std::string& path, std::string& value) override { put(path, value); }
    void tab(const std::string& path, int& value) override { put(path, numberText(value)); }

private:
    void put(const std::string& path, const std::string& value) { SaveRegistryKey(ctx_, path, value, RegSz); }
    RegistryContext& ctx_;
};

void moveBands(Mover& mover, FensterEinstellungen& window) {
    for (std::size_t i = 0; i < window.Band.size(); ++i) {
        const std::string band = std::string(BandKey) + "Band" + std::to_string(i + 1) + "_";
        mover.flag(band + "Visible", window.Band[i].Visible);
        mover.measure(band + "Width", window.Band[i].Width);
        mover.measure(band + "MinWidth", window.Band[i].MinWidth);
        mover.measure(band + "MinHeight", window.Band[i].MinHeight);
        if (i > 0) mover.flag(band + "NewRow", window.Band[i].NewRow);
    }
}

void moveAll(Mover& mover, Settings& settings, FensterEinstellungen& window) {
    const std::string user = UserKey, paths = PathKey;
    mover.measure(user + "MainLeft", window.MainLeft, true);
    mover.measure(user + "MainTop", window.MainTop, true);
    mover.measure(user + "MainWidth", window.MainWidth);
    mover.measure(user + "MainHeight", window.MainHeight);
    mover.measure(user + "SplitterVLeft", window.SplitterVLeft);
    mover.measure(user + "SplitterHTop", window.SplitterHTop);
    mover.flag(user + "ShowNavText", settings.ShowNavText);
    mover.text(user + "Ostrana_Name", settings.Ostrana_Name);
    mover.text(paths + "Ostrana", settings.strOstranaPfad);
    mover.text(paths + "Favorite", settings.strFavoritenPfad);
    mover.text(paths + "History", settings.strHistoryPfad);
    mover.text(paths + "RegBackupRestore", settings.strBackupPfad);
    mover.flag(user + "SoundOn", settings.SoundOn);
    mover.flag(user + "ShowInfo", settings.ShowInfo);
    mover.flag(user + "BSSystemAktiv", settings.BSSystemAktiv);
    mover.flag(user + "LöschenAktiv", settings.LöschenAktiv);
    mover.flag(user + "RegFileClasic", settings.RegFileClasic);
    mover.flag(user + "BSErsatz", settings.BSErsatz);
    mover.tab(user + "TreeAktiv", settings.TreeAktiv);
    moveBands(mover, window);
}

}  // namespace

FensterEinstellungen Load_BVKEinstellungen(RegistryContext& ctx) {
    ProcTrace trace(ctx.trace, "Load_BVKEinstellungen");
    FensterEinstellungen window;
    Reader reader(ctx);
    moveAll(reader, ctx.einstellungen, window);
    return window;
}

void Save_BVKEinstellungen(RegistryContext& ctx, const FensterEinstellungen& window) {
    ProcTrace trace(ctx.trace, "Save_BVKEinstellungen");
    FensterEinstellungen copy = window;
    Writer writer(ctx);
    moveAll(writer, ctx.einstellungen, copy);
}

}  // namespace brenvik
