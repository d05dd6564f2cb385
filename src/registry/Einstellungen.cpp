#include "registry/Einstellungen.h"

#include "frame/Konvertierung.h"
#include "frame/Startpasswort.h"
#include "registry/ValueOperations.h"

namespace brenvik {
namespace {

struct Schalter {
    const char* name;
    bool Settings::*field;
};
constexpr Schalter schalter[] = {
    {"ShowNavText", &Settings::ShowNavText},     {"SoundOn", &Settings::SoundOn},
    {"ShowInfo", &Settings::ShowInfo},           {"BSSystemAktiv", &Settings::BSSystemAktiv},
    {"LöschenAktiv", &Settings::LöschenAktiv},   {"RegFileClasic", &Settings::RegFileClasic},
    {"BSErsatz", &Settings::BSErsatz},           {"RegFileGeprueft", &Settings::RegFileGeprueft},
};

struct Pfad {
    const char* name;
    std::string Settings::*field;
    const char* below;   // of the program's own folder
};
// Lists live in the program's home, since its program directory may belong to the system.
constexpr Pfad pfade[] = {
    {"Ostrana", &Settings::strOstranaPfad, ""},
    {"Favorite", &Settings::strFavoritenPfad, ""},
    {"History", &Settings::strHistoryPfad, ""},
    {"RegBackupRestore", &Settings::strBackupPfad, "Backup"},
};

constexpr std::int16_t RegSz = 1;

// A text of the start password, which must not reach the trace.
std::string readSecret(RegistryContext& ctx, const char* name) {
    const std::string path = std::string(MaschinenEinstellungenPfad) + name;
    try {
        ctx.objBVKReg.SetPath(ctx.strLokalerRechner, path);
        ctx.trace.hide(ctx.objBVKReg.ReadValue(false));
    } catch (const NumberedError&) {
        // reported by the reading that follows
    }
    return ReadRegistryKey(ctx, path, "");
}

void loadStartPasswort(RegistryContext& ctx) {
    Settings& s = ctx.einstellungen;
    const std::string stored = ReadRegistryKey(ctx, std::string(MaschinenEinstellungenPfad) + "BVKOPT1", "");
    s.blnPasswortAktiv = false;
    if (!stored.empty()) {
        const auto on = passwortSchalter(stored);
        if (!on) ctx.trace.write("--- Einstellung BVKOPT1 ist unbrauchbar, die Passwortabfrage ist aus");
        s.blnPasswortAktiv = on.value_or(false);
    }
    s.strPasswortWert = readSecret(ctx, "BVKOPT2");
    s.strPasswortSalz = readSecret(ctx, "BVKOPT3");
}

void saveStartPasswort(RegistryContext& ctx) {
    const Settings& s = ctx.einstellungen;
    const std::string base = MaschinenEinstellungenPfad;
    SaveRegistryKey(ctx, base + "BVKOPT1", passwortSchalterText(s.blnPasswortAktiv), RegSz);
    ctx.trace.hide(s.strPasswortWert);
    ctx.trace.hide(s.strPasswortSalz);
    SaveRegistryKey(ctx, base + "BVKOPT2", s.strPasswortWert, RegSz);
    SaveRegistryKey(ctx, base + "BVKOPT3", s.strPasswortSalz, RegSz);
}

}  // namespace

void loadCoreSettings(RegistryContext& ctx) {
    Settings& s = ctx.einstellungen;
    const std::string base = EinstellungenPfad;
    for (const Schalter& entry : schalter) {
        const std::string text = ReadRegistryKey(ctx, base + entry.name, boolText(s.*entry.field));
        try {
            s.*entry.field = toBool(text);
        } catch (const NumberedError&) {
            ctx.trace.write(std::string("--- Einstellung ") + entry.name + " ist unbrauchbar: " + text);
        }
    }
    const std::string tree = ReadRegistryKey(ctx, base + "TreeAktiv", "1");
    try {
        const int tab = toInt(tree);
        if (tab >= 1 && tab <= 9) s.TreeAktiv = tab;
    } catch (const NumberedError&) {
        ctx.trace.write("--- Einstellung TreeAktiv ist unbrauchbar: " + tree);
    }
    s.Ostrana_Name = ReadRegistryKey(ctx, base + "Ostrana_Name", s.Ostrana_Name);
    s.Farbschema = ReadRegistryKey(ctx, base + "Farbschema", s.Farbschema);
    for (const Pfad& entry : pfade) {
        std::filesystem::path folder = std::string(entry.name) == "Ostrana" ? ctx.programmPfad : ctx.heimPfad;
        std::string standard = (folder / entry.below).string();
        if (!*entry.below && !standard.ends_with('/')) standard += '/';
        s.*entry.field = ReadRegistryKey(ctx, std::string(PfadePfad) + entry.name, standard);
    }
    loadStartPasswort(ctx);
}

void saveCoreSettings(RegistryContext& ctx) {
    const Settings& s = ctx.einstellungen;
    const std::string base = EinstellungenPfad;
    for (const Schalter& entry : schalter) SaveRegistryKey(ctx, base + entry.name, boolText(s.*entry.field), RegSz);
    SaveRegistryKey(ctx, base + "Ostrana_Name", s.Ostrana_Name, RegSz);
    SaveRegistryKey(ctx, base + "Farbschema", s.Farbschema, RegSz);
    for (const Pfad& entry : pfade) SaveRegistryKey(ctx, std::string(PfadePfad) + entry.name, s.*entry.field, RegSz);
    SaveRegistryKey(ctx, base + "TreeAktiv", numberText(s.TreeAktiv), RegSz);
    if (ctx.blnAdmin) saveStartPasswort(ctx);
}

}  // namespace brenvik
