#pragma once
// A store in a folder of its own, and short words for what the tests of this room do again and again.
#include <filesystem>
#include <fstream>
#include <string>

#include "registry/store/SqliteStore.h"
#include "support/TempDir.h"

namespace brenvik::test {

inline void writeFile(const std::filesystem::path& file, const std::string& content) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

struct TempStore {
    TempDir folder;
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

// What the call complains about, "<none>" if nothing.
template <class Call> std::string messageOf(const Call& call) {
    try {
        call();
    } catch (const NumberedError& error) {
        return error.what();
    }
    return "<none>";
}

}  // namespace brenvik::test
