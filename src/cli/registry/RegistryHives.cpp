// registry save | restore
#include "cli/registry/RegistryGroup.h"
#include "frame/files/FileSystem.h"
#include "registry/hivefile/HiveFilesImpl.h"

namespace brenvik::cli {
namespace {

namespace fs = std::filesystem;

constexpr const char* NotAvailable = "Hive-Dateien stehen nicht zur Verfügung.";

std::string keyText(const Ort& place) { return place.shown(place.key()) + "\\"; }

bool isThere(const fs::path& file) {
    std::error_code error;
    return fs::exists(fs::symlink_status(file, error));
}

// The service works on the selected machine; other places take the same road without it.
int save(Program& program, Places& places, const std::string& text, const std::string& file) {
    const Ort place = places.resolve(text);
    if (place.whole) return failed(KeyNeeded, 2);
    const fs::path target = fs::absolute(pathFromUtf8(file));
    if (!place.store->keyExists(place.path.root, place.key())) return failed("Der Schlüssel ist nicht vorhanden: " + text);
    if (isThere(target)) return failed("Die Datei ist schon vorhanden und bleibt, wie sie ist: " + file);
    if (place.art != Ort::Art::Registry)
        return RegfHiveFiles().save(*place.store, place.path.root, place.key(), target) ? 0 : failed("Der Schlüssel wurde nicht gesichert: " + text);
    Context& ctx = program.context();
    ctx.objBVKReg.SetPath(ctx.strRechnername, keyText(place));
    return ctx.objBVKReg.SaveKey(utf8FromPath(target)) ? 0 : failed(NotAvailable);
}

int restore(Program& program, Places& places, const std::string& text, const std::string& file) {
    const Ort place = places.resolve(text);
    if (place.art == Ort::Art::RegFileExport) return failed("In eine REG-Datei kann nicht wiederhergestellt werden: " + text);
    if (place.whole) return failed(KeyNeeded, 2);
    if (place.key().empty() && place.art != Ort::Art::Hive) return failed("Ein Hauptschlüssel kann nicht ersetzt werden: " + text);
    const fs::path source = fs::absolute(pathFromUtf8(file));
    std::error_code error;
    if (!fs::is_regular_file(source, error)) return failed("Die Datei ist nicht vorhanden: " + file);
    Context& ctx = program.context();
    if (!ctx.port.ask("Soll der ganze Inhalt des Schlüssels " + place.shown(place.key()) + " durch den der Datei " + file + " ersetzt werden?")) return 1;
    if (place.art != Ort::Art::Registry)
        return RegfHiveFiles().restore(*place.store, place.path.root, place.key(), source) ? 0 : failed("Der Schlüssel wurde nicht wiederhergestellt: " + text);
    ctx.objBVKReg.SetPath(ctx.strRechnername, keyText(place));
    return ctx.objBVKReg.RestoreKey(utf8FromPath(source.parent_path()), utf8FromPath(source.filename())) ? 0 : failed(NotAvailable);
}

}  // namespace

void addHiveCommands(const RegistryGroup& group) {
    const auto path = std::make_shared<std::string>(), file = std::make_shared<std::string>();
    auto* saver = group.add("save", "Einen Schlüssel mit allem darunter als Hive-Datei sichern");
    saver->add_option("PATH", *path, PathHelp)->required();
    saver->add_option("HIVE", *file, "Neue Hive-Datei; eine vorhandene bleibt, wie sie ist")->required();
    group.maySalvage(saver);
    group.on(saver, [path, file](Program& p, Places& places) { return save(p, places, *path, *file); });

    auto* restorer = group.add("restore", "Den ganzen Inhalt eines Schlüssels durch den einer Hive-Datei ersetzen (fragt nach)");
    restorer->add_option("PATH", *path, PathHelp)->required();
    restorer->add_option("HIVE", *file, "Hive-Datei")->required();
    group.on(restorer, [path, file](Program& p, Places& places) { return restore(p, places, *path, *file); });
}

}  // namespace brenvik::cli
