#pragma once
// A directory of its own for one test, removed with all it holds.
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik::test {

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }
    // Writes a file below (folders are made) and answers its path.
    std::filesystem::path put(const std::filesystem::path& name, std::string_view bytes) const;
    std::vector<std::string> names(const std::filesystem::path& folder = {}) const;  // everything directly below, sorted

private:
    std::filesystem::path path_;
};

std::string bytesOf(const std::filesystem::path& file);
std::vector<std::string> traceLines(const std::filesystem::path& logFile);  // without their time stamps

}  // namespace brenvik::test
