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
    {"BSErsatz", &Settings::BSErsatz},           {"RegFileGeprueft", &Settings::RegFileGeprueft},
};

constexpr std::int16_t RegSz = 1;
// Of which home and which program folder the folders were when they were saved.
constexpr const char* HeimWert = "Heim";
constexpr const char* ProgrammWert = "Programm";
constexpr const char* HeimKennzeichen = "registry.db";
constexpr const char* ProgrammKennzeichen = "RegDaten.mdb";

using Ordnertexte = std::map<std::string_view, std::string>;   // by the setting's name

bool isThere(const std::filesystem::path& file) {
    std::error_code ignored;
    return std::filesystem::exists(file, ignored);
}

// A home whose settings do not say where they were saved: its folders may be the standard ones of the home that it was
// copied or moved from. They are if that is a home still; and if it is gone, the list and the backup folder tell it together.
bool isOfFormerPlace(const Ordnereinstellung& entry, const Ordnertexte& stored) {
    const std::string folder = ordnerText(pathFromUtf8(stored.at(entry.name)));
    const std::string former = *entry.below ? ordnerText(pathFromUtf8(folder).parent_path()) : folder;
    if (!pathFromUtf8(former).is_absolute() || folder != ordnerText(pathFromUtf8(standardOrdner(entry, former)))) return false;
    if (entry.base == &FrameContext::programmPfad) return isThere(pathFromUtf8(former) / ProgrammKennzeichen);
    if (isThere(pathFromUtf8(former))) return isThere(pathFromUtf8(former) / HeimKennzeichen);
    const auto stands = [&](const Ordnereinstellung& other) { return stored.at(other.name) == standardOrdner(other, former); };
    const auto& [help, favourites, history, backup] = Ordnereinstellungen;
    return stands(backup) && (stands(favourites) || stands(history));
}

void loadFolders(RegistryContext& ctx) {
    Ordnertexte stored;
    for (const Ordnereinstellung& entry : Ordnereinstellungen)
        stored[entry.name] = Trim(ReadRegistryKey(ctx, std::string(PfadePfad) + entry.name, standardOrdner(ctx, entry)));
    const std::string home = ReadRegistryKey(ctx, std::string(PfadePfad) + HeimWert, ""), program = ReadRegistryKey(ctx, std::string(PfadePfad) + ProgrammWert, "");
    for (const Ordnereinstellung& entry : Ordnereinstellungen) {
        const std::string& text = stored.at(entry.name);
        const std::string& then = entry.base == &FrameContext::programmPfad ? program : home;
        std::string folder = mitgezogen(text, then, ordnerText(ctx.*entry.base));
        if (text.empty() || (then.empty() && isOfFormerPlace(entry, stored))) folder = standardOrdner(ctx, entry);
        if (folder != text) ctx.trace.write(std::string("--- Einstellung ") + entry.name + ": statt " + text + " gilt " + folder);
        ctx.einstellungen.*entry.field = folder;
    }
}

// The bases come last: folders of another home are understood until all four have been written.
void saveFolders(RegistryContext& ctx) {
    for (const Ordnereinstellung& entry : Ordnereinstellungen) SaveRegistryKey(ctx, std::string(PfadePfad) + entry.name, ctx.einstellungen.*entry.field, RegSz);
    SaveRegistryKey(ctx, std::string(PfadePfad) + HeimWert, ordnerText(ctx.heimPfad), RegSz);
    SaveRegistryKey(ctx, std::string(PfadePfad) + ProgrammWert, ordnerText(ctx.programmPfad), RegSz);
}

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
    const auto on = passwortSchalter(stored);
    s.blnPasswortAktiv = on.value_or(false);
    s.blnPasswortUnklar = !on && !stored.empty();
    if (s.blnPasswortUnklar) ctx.trace.write("--- Einstellung BVKOPT1 ist unbrauchbar, die Passwortabfrage ist aus");
    s.strPasswortWert = readSecret(ctx, "BVKOPT2");
    s.strPasswortSalz = readSecret(ctx, "BVKOPT3");
}

void saveStartPasswort(RegistryContext& ctx) {
    const Settings& s = ctx.einstellungen;
    if (s.blnPasswortUnklar) return;   // what stands there may still be set right
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
    loadFolders(ctx);
    loadStartPasswort(ctx);
}

void saveCoreSettings(RegistryContext& ctx) {
    const Settings& s = ctx.einstellungen;
    const std::string base = EinstellungenPfad;
    for (const Schalter& entry : schalter) SaveRegistryKey(ctx, base + entry.name, boolText(s.*entry.field), RegSz);
    SaveRegistryKey(ctx, base + "Ostrana_Name", s.Ostrana_Name, RegSz);
    SaveRegistryKey(ctx, base + "Farbschema", s.Farbschema, RegSz);
    saveFolders(ctx);
    SaveRegistryKey(ctx, base + "TreeAktiv", numberText(s.TreeAktiv), RegSz);
    if (ctx.blnAdmin) saveStartPasswort(ctx);
}

}  // namespace brenvik
