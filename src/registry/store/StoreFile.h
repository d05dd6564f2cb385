#pragma once
// The file of the embedded registry: making, opening and checking it. Nothing here ever writes over a file that is there.
#include <filesystem>
#include <memory>

#include "frame/Errors.h"
#include "registry/store/Sqlite.h"

namespace brenvik {

// The store's file cannot be used. what() is one German message that names the file and says what to do.
class StoreOpenError : public RegError {
public:
    StoreOpenError(std::filesystem::path storeFile, const std::string& message)
        : RegError(regerr::NoAccess, message), file(std::move(storeFile)) {}
    std::filesystem::path file;
};

struct StoreOptions {
    bool readOnly = false;
    bool inMemory = false;         // a new, empty store that is gone at the end; the file only gives its name
    bool create = true;            // make a new, empty store if there is no file
    int busyTimeoutMs = 5000;      // how long to wait for another process
};

struct OpenedStore {
    std::unique_ptr<sqlite::Database> database;
    std::string whyReadOnly;   // a German sentence; empty: it can be written
};

// Keys with fixed numbers in every store file.
inline constexpr std::int64_t MachineKeyId = 1, UsersKeyId = 2;

// What can be read but not written is opened for reading: with others if the engine can, else as it stands at this moment.
OpenedStore openStoreFile(const std::filesystem::path& file, const StoreOptions& options);

// The failure of an opened store as what the service raises; number is what fits the operation.
RegError storeError(const sqlite::Error& error, const std::filesystem::path& file, std::int32_t number);

}  // namespace brenvik
