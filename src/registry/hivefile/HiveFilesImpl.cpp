#include "registry/hivefile/HiveFilesImpl.h"

#include "frame/files/FileSystem.h"
#include "registry/RegPath.h"
#include "registry/hive/HiveWriter.h"
#include "registry/hivefile/HiveFileBytes.h"
#include "registry/store/RegLinks.h"
#include "registry/store/RegTree.h"

namespace brenvik {

namespace fs = std::filesystem;

bool RegfHiveFiles::save(RegStore& store, Root root, const std::string& key, const fs::path& file) {
    std::error_code error;
    if (fs::exists(fs::symlink_status(file, error)) || !store.keyExists(root, key)) return false;
    const std::uint64_t now = fileTimeNow();
    Hive hive;
    HiveTreeSink sink(hive, hive.root, now);
    store.walk(root, key, sink);
    // A hive file's own root has a name of its own, a root of a whole registry only that by which it is addressed.
    hive.root.name = !key.empty() ? std::string(lastKeyName(key)) : !sink.toldName().empty() ? sink.toldName() : std::string(longRootName(root));
    HiveWriteOptions options;
    options.minorVersion = sink.hasBigData() ? 5 : 3;
    options.fileName = utf8FromPath(file.filename());
    options.lastWritten = now;
    return writeNewHiveFile(file, writeHive(hive, options));
}

bool RegfHiveFiles::restore(RegStore& store, Root root, const std::string& key, const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error)) return false;
    const Hive hive = readHiveFrom(readHiveFile(file), file, HiveMode::Strict).hive;
    replaceTree(store, root, key, [&](TreeSink& sink) { walkHiveKey(hive, hive.root, sink); });
    return true;
}

}  // namespace brenvik
