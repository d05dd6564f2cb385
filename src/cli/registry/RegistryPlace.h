#pragma once
// Where a text of the command line leads: a registry path of the selected machine ("HKLM\Software"), a key in a hive file
// ("file.hiv:\Key", "file.hiv"), or the content of a REG file ("file.reg", "file.reg:\HKLM\Software"), of a registry of this
// program ("registry.db:\HKLM\Software") or of a Windows in a folder ("/mnt/c:\HKLM\Software"). Files and folders are
// those of the host. Opened files are kept, so that two texts may lead to one hive.
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "registry/RegPath.h"
#include "tipengine/Program.h"

namespace brenvik::cli {

struct Ort {
    enum class Art { Registry, Hive, RegFileExport, Store };   // Store: a whole registry beside the selected one
    Art art = Art::Registry;
    RegStore* store = nullptr;
    RegPath path;
    bool whole = false;      // a REG file or a store without a path behind it: all its roots
    std::string file;        // as it was given; empty for registry paths

    bool hasLinks() const { return art == Art::Registry || art == Art::Store; }   // some keys have second names
    std::string key() const { return path.wholeKey(); }
    std::string shown(std::string_view keyPath) const { return shown(path.root, keyPath); }   // a key of the same place
    std::string shown(Root root, std::string_view keyPath) const;                           // in full
};

struct ValuePlace {
    std::string key;
    ValueName name = ValueName::unnamed();
};

// The value that a place means: the last part of its path or, if a name was given for it, a value of the whole path.
// Throws RegError NoKey for a bare root.
ValuePlace valuePlace(const Ort& place, const std::optional<std::string>& valueName);

// The roots whose content is not that of another: of a registry HKLM and HKU, of other files all.
std::vector<Root> rootsOf(const Ort& place);

class Places {
public:
    // Salvaging: of damaged hives what can be read, with their faults on stderr.
    explicit Places(Program& program, bool salvage = false) : program_(program), salvage_(salvage) {}
    Ort resolve(const std::string& text);   // throws NumberedError with a German message
    RegStore& machine();                    // the selected one
    std::uint64_t deletions() const { return deletions_; }   // entries of REG files that delete something, which no state can show

private:
    std::optional<Ort> fileOf(const std::string& text);
    Ort open(const std::string& file, const std::string& inside);
    struct Opened {
        Ort::Art art;
        RegStore* store;
        std::unique_ptr<RegStore> owned;
    };
    Opened openFile(const std::filesystem::path& file);
    Opened openHive(const std::filesystem::path& file);
    Opened openRegFile(const std::filesystem::path& file);
    Program& program_;
    bool salvage_;
    std::map<std::filesystem::path, Opened> opened_;
    std::uint64_t deletions_ = 0;
};

}  // namespace brenvik::cli
