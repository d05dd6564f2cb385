#pragma once
// The registry service: SetPath selects machine and path, the following operations work on that selection. Texts are UTF-8.
// A path is root "\" key for a value name as its last part; with a trailing "\" Exists and Delete mean the key,
// ReadType, ReadValue and WriteValue (data or a type other than 0) the key's unnamed value. Operations on keys alone
// (EnumSubKeys, ListSubKeys, ListValues, SaveKey, RestoreKey) take a path with or without a trailing "\" as the key;
// CheckAccess means the key that the path's value is in. Errors are RegError; more than 32767 names are NumberedError 6.
// What is not there is no error: ReadValue answers the empty text, the lists are empty.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Trace.h"
#include "registry/RegPath.h"
#include "registry/hivefile/HiveFiles.h"
#include "registry/store/RegStore.h"

namespace brenvik {

class BVKRegistry {
public:
    BVKRegistry(TraceLog& traceLog, Machines& machineDirectory) : trace_(traceLog), machines_(machineDirectory) {}
    BVKRegistry(const BVKRegistry&) = delete;
    BVKRegistry& operator=(const BVKRegistry&) = delete;

    // The 18 operations, in their fixed order.
    std::int32_t ConnectRemote(const std::string& machine, std::uint32_t root);
    bool Delete();
    std::vector<std::string> EnumSubKeys();
    std::int32_t ReadType(std::uint32_t accessMask);
    std::string ReadValue(bool defaultValue);
    bool WriteValue(std::string_view data, std::int16_t type);
    bool CheckAccess(std::uint32_t accessMask);
    void SetPath(const std::string& machine, const std::string& path);
    bool Exists(std::uint32_t accessMask);
    std::string GetComputerName();
    void ListSubKeys(std::int16_t& count, std::vector<std::string>& names);   // index 0 of names unused, entries from 1
    void ListValues(std::int16_t& count, std::vector<std::string>& names, std::vector<std::int32_t>& types,
                    std::vector<std::string>& data);
    bool EnablePrivileges(const std::string& machine);
    void DisablePrivileges();
    bool SaveKey(const std::string& filePath);
    bool RestoreKey(const std::string& directory, const std::string& file);
    void Debug(bool on) { trace_.setDebug(on); }
    void Trace(std::string_view line) { trace_.write(line); }

    // Beyond the 18: SetPath(machine, keyPath "\" valueName) for names that may hold a backslash, which belongs to the name
    // here. An empty name gives a path that ends in "\", with all it means.
    void SetValuePath(const std::string& machine, const std::string& keyPath, const std::string& valueName);
    // The raw side, for what must go back unchanged and for change records.
    std::optional<RawValue> ReadRaw();          // value of the path; with a trailing "\" the unnamed value
    void WriteRaw(const RawValue& value);
    bool DeleteValue();                         // never a key, whatever the path looks like
    std::vector<NamedValue> ListRaw();          // all values of the path's key, in their order
    RegStore& selectedStore();
    void setHiveFiles(HiveFiles* files) { hiveFiles_ = files; }   // not owned; nullptr: SaveKey and RestoreKey answer false

private:
    RegPath selected() const;                   // throws RegError NoRoot, NoKey
    RegPath target() const;                     // NoKey also for a root without "\"
    std::vector<std::string> subKeyNames();
    TraceLog& trace_;
    Machines& machines_;
    std::string machine_;
    std::string path_;                      // without the value's name if that is apart
    std::optional<std::string> valueName_;  // has a backslash
    HiveFiles* hiveFiles_ = nullptr;
};

}  // namespace brenvik
