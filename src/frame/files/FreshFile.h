#pragma once
// Names for files that are made beside another one and then take its place. Such a name tells the process that makes the
// file, so that what a process has left behind that ended half way can be told from what somebody is writing just now.
#include <filesystem>
#include <vector>

namespace brenvik {

// <file>.<host>-<process>-<its start>-<random>.neu, numbers in hexadecimal. A long name is shortened in front of it.
std::filesystem::path freshNameBeside(const std::filesystem::path& file);
bool isFreshNameOf(const std::filesystem::path& name, const std::filesystem::path& file);   // whoever made it; of the file names only

// What processes that are gone have left of the file's making: files (those of a database beside them too) and folders.
// Nothing of another host, nothing that has any other name.
std::vector<std::filesystem::path> leftBehind(const std::filesystem::path& file);
void sweepLeftBehind(const std::filesystem::path& file) noexcept;   // removes the files among them

}  // namespace brenvik
