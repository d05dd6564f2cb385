#pragma once
// What saves a key as a hive file and brings it back. The service answers false to both while nobody offers it.
#include <filesystem>
#include <string>

#include "registry/store/RegStore.h"

namespace brenvik {

class HiveFiles {
public:
    virtual ~HiveFiles() = default;
    // The file does not exist yet. Throws RegError or answers false if it was not written.
    virtual bool save(RegStore& store, Root root, const std::string& key, const std::filesystem::path& file) = 0;
    // Replaces the whole content of the key, or changes nothing.
    virtual bool restore(RegStore& store, Root root, const std::string& key, const std::filesystem::path& file) = 0;
};

}  // namespace brenvik
