#pragma once
// Hive files on the disk: the file with its logs as bytes, and new files that nobody sees half written.
#include <filesystem>
#include <string>
#include <vector>

#include "registry/hive/HiveFormat.h"
#include "registry/hive/HiveReader.h"

namespace brenvik {

inline constexpr std::uintmax_t MaxHiveFile = std::uintmax_t{1} << 30;

std::vector<std::filesystem::path> logsBeside(const std::filesystem::path& hive);   // .LOG, .LOG1, .LOG2 in any case

struct HiveFileBytes {
    std::string hive;
    std::vector<std::string> logs;   // only of a dirty hive
    hivefmt::ByteSpan span() const { return {reinterpret_cast<const std::uint8_t*>(hive.data()), hive.size()}; }
    HiveReading read(HiveMode mode) const;
};

// Throws RegError KeyNotRead whose message names the file.
HiveFileBytes readHiveFile(const std::filesystem::path& file);
HiveReading readHiveFrom(const HiveFileBytes& bytes, const std::filesystem::path& file, HiveMode mode);
void requireSoundHiveOf(const std::filesystem::path& file, hivefmt::ByteSpan bytes);

// A new file beside with the given bytes, on the disk; its name. The file takes over the rights of model, if that
// exists. Throws RegError NoAssignment, and leaves nothing behind.
std::filesystem::path writeBeside(const std::filesystem::path& file, hivefmt::ByteSpan bytes);

std::string shownFile(const std::filesystem::path& file);   // quoted, for messages

}  // namespace brenvik
