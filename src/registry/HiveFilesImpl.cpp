#include "registry/HiveFilesImpl.h"

#include "frame/DateiSystem.h"
#include "frame/HostDatei.h"
#include "registry/HiveFileBytes.h"
#include "registry/RegLinks.h"
#include "registry/RegPath.h"
#include "registry/RegTree.h"
#include "registry/hive/HiveWriter.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

bool isThere(const fs::path& file) {
    std::error_code error;
    return fs::exists(fs::symlink_status(file, error));
}

// Gives the finished file its name, never over one that is there. False: somebody was quicker.
bool nameNewFile(const fs::path& fresh, const fs::path& file) {
    std::error_code error, ignored;
    fs::create_hard_link(fresh, file, error);
    if (!error) {
        fs::remove(fresh, ignored);
        return true;
    }
    const bool taken = isThere(file);
    if (!taken) error = host::replaceFile(fresh, file);   // a file system without hard links
    if (!taken && !error) return true;
    fs::remove(fresh, ignored);
    if (taken) return false;
    throw RegError(regerr::NoAssignment, "Die Datei " + shownFile(file) + " kann nicht geschrieben werden: " + error.message());
}

}  // namespace

bool RegfHiveFiles::save(RegStore& store, Root root, const std::string& key, const fs::path& file) {
    if (isThere(file) || !store.keyExists(root, key)) return false;
    const std::uint64_t now = fileTimeNow();
    Hive hive;
    hive.root.name = key.empty() ? std::string(longRootName(root)) : std::string(lastKeyName(key));
    HiveTreeSink sink(hive, hive.root, now);
    store.walk(root, key, sink);
    HiveWriteOptions options;
    options.minorVersion = sink.hasBigData() ? 5 : 3;
    options.fileName = utf8FromPath(file.filename());
    options.lastWritten = now;
    return nameNewFile(writeBeside(file, writeHive(hive, options)), file);
}

bool RegfHiveFiles::restore(RegStore& store, Root root, const std::string& key, const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error)) return false;
    const Hive hive = readHiveFrom(readHiveFile(file), file, HiveMode::Strict).hive;
    replaceTree(store, root, key, [&](TreeSink& sink) { walkHiveKey(hive, hive.root, sink); });
    return true;
}

}  // namespace brenvik
