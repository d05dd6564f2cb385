#include "support/TempDir.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace brenvik::test {

namespace fs = std::filesystem;

TempDir::TempDir() {
    std::random_device random;
    do path_ = fs::temp_directory_path() / ("brenvik-test-" + std::to_string(random()));
    while (!fs::create_directory(path_));
    path_ = fs::canonical(path_);
}

TempDir::~TempDir() {
    std::error_code ignored;
    for (fs::recursive_directory_iterator place(path_, ignored), end; place != end; place.increment(ignored))
        if (place->is_directory(ignored)) fs::permissions(place->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(path_, ignored);
}

fs::path TempDir::put(const fs::path& name, std::string_view bytes) const {
    const fs::path file = path_ / name;
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out.flush()) throw std::runtime_error("cannot write " + file.string());
    return file;
}

std::vector<std::string> TempDir::names(const fs::path& folder) const {
    std::vector<std::string> result;
    for (const auto& entry : fs::directory_iterator(path_ / folder)) result.push_back(entry.path().filename().string());
    std::sort(result.begin(), result.end());
    return result;
}

std::string bytesOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read " + file.string());
    std::ostringstream all;
    all << in.rdbuf();
    return all.str();
}

std::vector<std::string> traceLines(const fs::path& logFile) {
    constexpr std::size_t stampLength = 24;
    std::istringstream in(bytesOf(logFile));
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line.substr(std::min(stampLength, line.size())));
    return lines;
}

}  // namespace brenvik::test
