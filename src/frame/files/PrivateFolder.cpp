#include "frame/files/PrivateFolder.h"

#include "frame/files/FreshFile.h"

namespace brenvik {

namespace fs = std::filesystem;

PrivateFolder::PrivateFolder(const std::string& name) : path_(freshNameBeside(fs::temp_directory_path() / name)) {
    std::error_code ignored;   // somebody else's
    for (const fs::path& left : leftBehind(fs::temp_directory_path() / name)) fs::remove_all(left, ignored);
    fs::create_directory(path_);
    fs::permissions(path_, fs::perms::owner_all);
}

PrivateFolder::~PrivateFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

}  // namespace brenvik
