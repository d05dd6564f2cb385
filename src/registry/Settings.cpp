#include "registry/Settings.h"

#include <map>

#include "frame/files/DefaultFolders.h"
#include "frame/files/FileSystem.h"
#include "frame/program/StartPassword.h"
#include "frame/text/Conversions.h"
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
    {"BSErsatz", &Settings::BSErsatz},           {"RegFileGeprueft", &Settings::RegFileChecked},
};

constexpr std::int16_t RegSz = 1;
// Of which home and which program folder the folders were when they were saved.
constexpr const char* HomeValue = "Heim";
constexpr const char* ProgramValue = "Programm";
constexpr const char* HomeMark = "registry.db";
constexpr const char* ProgramMark = "RegDaten.mdb";

using FolderTexts = std::map<std::string_view, std::string>;   // by the setting's name

bool isThere(const std::filesystem::path& file) {
    std::error_code ignored;
    return std::filesystem::exists(file, ignored);
}

// A home whose settings do not say where they were saved: its folders may be the standard ones of the home that it was
// copied or moved from. They are if that is a home still; and if it is gone, the list and the backup folder tell it together.
bool isOfFormerPlace(const FolderSetting& entry, const FolderTexts& stored) {
    const std::string folder = folderText(pathFromUtf8(stored.at(entry.name)));
    const std::string former = *entry.below ? folderText(pathFromUtf8(folder).parent_path()) : folder;
    if (!pathFromUtf8(former).is_absolute() || folder != folderText(pathFromUtf8(defaultFolder(entry, former)))) return false;
    if (entry.base == &FrameContext::programPath) return isThere(pathFromUtf8(former) / ProgramMark);
    if (isThere(pathFromUtf8(former))) return isThere(pathFromUtf8(former) / HomeMark);
    const auto stands = [&](const FolderSetting& other) { return stored.at(other.name) == defaultFolder(other, former); };
    const auto& [help, favourites, history, backup] = FolderSettings;
    return stands(backup) && (stands(favourites) || stands(history));
}

void loadFolders(RegistryContext& ctx) {
    FolderTexts stored;
    for (const FolderSetting& entry : FolderSettings)
        stored[entry.name] = Trim(ReadRegistryKey(ctx, std::string(PathsPath) + entry.name, defaultFolder(ctx, entry)));
    const std::string home = ReadRegistryKey(ctx, std::string(PathsPath) + HomeValue, ""), program = ReadRegistryKey(ctx, std::string(PathsPath) + ProgramValue, "");
    for (const FolderSetting& entry : FolderSettings) {
        const std::string& text = stored.at(entry.name);
        const std::string& then = entry.base == &FrameContext::programPath ? program : home;
        std::string folder = takenAlong(text, then, folderText(ctx.*entry.base));
        if (text.empty() || (then.empty() && isOfFormerPlace(entry, stored))) folder = defaultFolder(ctx, entry);
        if (folder != text) ctx.trace.write(std::string("--- Einstellung ") + entry.name + ": statt " + text + " gilt " + folder);
        ctx.einstellungen.*entry.field = folder;
    }
}

// The bases come last: folders of another home are understood until all four have been written.
void saveFolders(RegistryContext& ctx) {
    for (const FolderSetting& entry : FolderSettings) SaveRegistryKey(ctx, std::string(PathsPath) + entry.name, ctx.einstellungen.*entry.field, RegSz);
    SaveRegistryKey(ctx, std::string(PathsPath) + HomeValue, folderText(ctx.homePath), RegSz);
    SaveRegistryKey(ctx, std::string(PathsPath) + ProgramValue, folderText(ctx.programPath), RegSz);
}

// A text of the start password, which must not reach the trace.
std::string readSecret(RegistryContext& ctx, const char* name) {
    const std::string path = std::string(MachineSettingsPath) + name;
    try {
        ctx.objBVKReg.SetPath(ctx.strLokalerRechner, path);
        ctx.trace.hide(ctx.objBVKReg.ReadValue(false));
    } catch (const NumberedError&) {
        // reported by the reading that follows
    }
    return ReadRegistryKey(ctx, path, "");
}

void loadStartPassword(RegistryContext& ctx) {
    Settings& s = ctx.einstellungen;
    const std::string stored = ReadRegistryKey(ctx, std::string(MachineSettingsPath) + "BVKOPT1", "");
    const auto on = passwordSwitch(stored);
    s.blnPasswortAktiv = on.value_or(false);
    s.blnPasswordUnclear = !on && !stored.empty();
    if (s.blnPasswordUnclear) ctx.trace.write("--- Einstellung BVKOPT1 ist unbrauchbar, die Passwortabfrage ist aus");
    s.strPasswortWert = readSecret(ctx, "BVKOPT2");
    s.strPasswortSalz = readSecret(ctx, "BVKOPT3");
}

void saveStartPassword(RegistryContext& ctx) {
    const Settings& s = ctx.einstellungen;
    if (s.blnPasswordUnclear) return;   // what stands there may still be set right
    const std::string base = MachineSettingsPath;
    SaveRegistryKey(ctx, base + "BVKOPT1", passwordSwitchText(s.blnPasswortAktiv), RegSz);
    ctx.trace.hide(s.strPasswortWert);
    ctx.trace.hide(s.strPasswortSalz);
    SaveRegistryKey(ctx, base + "BVKOPT2", s.strPasswortWert, RegSz);
    SaveRegistryKey(ctx, base + "BVKOPT3", s.strPasswortSalz, RegSz);
}

}  // namespace

void loadCoreSettings(RegistryContext& ctx) {
    Settings& s = ctx.einstellungen;
    const std::string base = SettingsPath;
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
    s.ColourScheme = ReadRegistryKey(ctx, base + "Farbschema", s.ColourScheme);
    loadFolders(ctx);
    loadStartPassword(ctx);
}

void saveCoreSettings(RegistryContext& ctx) {
    const Settings& s = ctx.einstellungen;
    const std::string base = SettingsPath;
    for (const Schalter& entry : schalter) SaveRegistryKey(ctx, base + entry.name, boolText(s.*entry.field), RegSz);
    SaveRegistryKey(ctx, base + "Ostrana_Name", s.Ostrana_Name, RegSz);
    SaveRegistryKey(ctx, base + "Farbschema", s.ColourScheme, RegSz);
    saveFolders(ctx);
    SaveRegistryKey(ctx, base + "TreeAktiv", numberText(s.TreeAktiv), RegSz);
    if (ctx.blnAdmin) saveStartPassword(ctx);
}

}  // namespace brenvik
