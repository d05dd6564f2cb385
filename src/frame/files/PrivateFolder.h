#pragma once
#include <filesystem>
#include <string>

namespace brenvik {

// A folder in the system's temporary one that nobody else can look into, gone with its content at the end. What processes left
// there under the same name that are gone goes first.
class PrivateFolder {
public:
    explicit PrivateFolder(const std::string& name);
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace brenvik
