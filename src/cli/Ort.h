#pragma once
// Where a text of the command line leads: a registry path of the selected machine ("HKLM\Software"), a key in a hive file
// ("file.hiv:\Key", "file.hiv"), or the content of a REG file ("file.reg", "file.reg:\HKLM\Software"). Files are those of
// the host. Opened files are kept, so that two texts may lead to one hive.
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "registry/RegPath.h"
#include "tipengine/Programm.h"

namespace brenvik::cli {

struct Ort {
    enum class Art { Registry, Hive, RegDatei };
    Art art = Art::Registry;
    RegStore* store = nullptr;
    RegPath path;
    bool whole = false;      // a REG file without a path behind it: all its roots
    std::string file;        // as it was given; empty for registry paths

    std::string key() const { return path.wholeKey(); }
    std::string shown(std::string_view keyPath) const { return shown(path.root, keyPath); }   // a key of the same place
    std::string shown(Root root, std::string_view keyPath) const;                           // in full
};

struct Wertort {
    std::string key;
    ValueName name = ValueName::unnamed();
};

// The value that a place means: the last part of its path or, if a name was given for it, a value of the whole path.
// Throws RegError NoKey for a bare root.
Wertort wertort(const Ort& place, const std::optional<std::string>& valueName);

class Orte {
public:
    explicit Orte(Programm& programm) : programm_(programm) {}
    Ort resolve(const std::string& text);   // throws NumberedError with a German message
    RegStore& machine();                    // the selected one
    std::uint64_t deletions() const { return deletions_; }   // entries of REG files that delete something, which no state can show

private:
    std::optional<Ort> fileOf(const std::string& text);
    Ort open(const std::string& file, const std::string& inside);
    RegStore& hive(const std::filesystem::path& file);
    RegStore& regFile(const std::filesystem::path& file, const std::string& bytes);
    Programm& programm_;
    std::map<std::filesystem::path, std::unique_ptr<RegStore>> stores_;
    std::uint64_t deletions_ = 0;
};

}  // namespace brenvik::cli
