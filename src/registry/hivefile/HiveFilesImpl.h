#pragma once
// Saving keys as hive files and bringing them back, from and to any store.
#include <filesystem>

#include "registry/hivefile/HiveFiles.h"

namespace brenvik {

// Files are written beside, brought to the disk and then named. Version 1.3, or 1.5 if a value needs big data.
class RegfHiveFiles final : public HiveFiles {
public:
    // False: the file exists already, or there is no such key. Throws RegError if the file cannot be written or the key's
    // content cannot be a hive; then there is no file.
    bool save(RegStore& store, Root root, const std::string& key, const std::filesystem::path& file) override;
    // The file may be dirty: logs beside it are replayed first. False: there is no file. Throws RegError if it is damaged or the store
    // refuses; then the key is as it was. A key that is not there is made.
    bool restore(RegStore& store, Root root, const std::string& key, const std::filesystem::path& file) override;
};

}  // namespace brenvik
