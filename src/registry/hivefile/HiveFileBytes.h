#pragma once
// Hive files on the disk: the file with its logs as bytes, and new files that nobody sees half written.
#include <filesystem>
#include <string>
#include <vector>

#include "registry/hive/HiveFormat.h"
#include "registry/hive/HiveReader.h"

namespace brenvik {

inline constexpr std::uintmax_t MaxHiveFile = std::uintmax_t{1} << 30;

// .LOG, .LOG1, .LOG2 in any case. A log that is a link is none: what it leads to may be any file of the host.
std::vector<std::filesystem::path> logsBeside(const std::filesystem::path& hive);

struct HiveFileBytes {
    std::string hive;
    struct Log {
        std::filesystem::path file;
        std::string bytes;
    };
    std::vector<Log> logs;                            // only of a dirty hive
    std::vector<std::filesystem::path> linkedLogs;    // of a dirty hive, not read
    hivefmt::ByteSpan span() const { return {reinterpret_cast<const std::uint8_t*>(hive.data()), hive.size()}; }
    std::vector<hivefmt::ByteSpan> logSpans() const;
};

bool isHiveFile(const std::filesystem::path& file);   // by its start; also one whose first block is lost

// Throw RegError KeyNotRead whose message names the file.
void requireHiveFile(const std::filesystem::path& file);
HiveFileBytes readHiveFile(const std::filesystem::path& file);
// Strict: also for a dirty hive with a log that is a link.
HiveReading readHiveFrom(const HiveFileBytes& bytes, const std::filesystem::path& file, HiveMode mode);
void requireSoundHiveOf(const std::filesystem::path& file, hivefmt::ByteSpan bytes);

// A new file beside with the given bytes, on the disk; its name. The file takes over rights and owner of model, if that
// exists. Throws RegError NoAssignment, and leaves nothing behind.
std::filesystem::path writeBeside(const std::filesystem::path& file, hivefmt::ByteSpan bytes, const std::filesystem::path& model);
// Written under another name first. False: there is something of that name, which stays. Throws RegError NoAssignment.
bool writeNewHiveFile(const std::filesystem::path& file, hivefmt::ByteSpan bytes, const std::filesystem::path& model = {});

std::string shownFile(const std::filesystem::path& file);   // quoted, for messages

// What the work finds wrong with a hive's bytes, as a RegError KeyNotRead that names the file.
template <class Work> auto namingTheFile(const std::filesystem::path& file, const Work& work) {
    try {
        return work();
    } catch (const HiveError& error) {
        throw RegError(regerr::KeyNotRead, "Die Hivedatei " + shownFile(file) + " kann nicht gelesen werden. " + error.what());
    }
}

}  // namespace brenvik
