#pragma once
// A folder of its own for each test, and a store in it.
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <string>

#include "registry/SqliteStore.h"

namespace brenvik::test {

class TempFolder {
public:
    TempFolder() {
        std::random_device random;
        path_ = std::filesystem::temp_directory_path() / ("brenvik-" + std::to_string(random()) + std::to_string(random()));
        std::filesystem::create_directories(path_);
    }
    ~TempFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

inline void writeFile(const std::filesystem::path& file, const std::string& content) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

inline std::string readFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

struct TempStore {
    TempFolder folder;
    SqliteStore store{folder / "registry.db"};
};

inline RawValue sz(const std::string& text) { return fromText(text, regtype::Sz); }
inline RawValue dword(std::uint32_t number) { return fromText(std::to_string(number), regtype::Dword); }

// Text of a value, "<none>" if it is not there.
inline std::string textOf(RegStore& store, Root root, const std::string& key, const std::string& name) {
    const auto value = store.value(root, key, ValueName::named(name));
    return value ? toText(*value) : "<none>";
}

inline std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) text += (i == 0 ? "" : "|") + names[i];
    return text;
}

// Number of the error that the call raises, 0 if none.
template <class Call> std::uint32_t errorOf(const Call& call) {
    try {
        call();
    } catch (const NumberedError& error) {
        return static_cast<std::uint32_t>(error.number);
    }
    return 0;
}

}  // namespace brenvik::test
