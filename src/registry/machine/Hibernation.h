#pragma once
// A Windows that hibernates, or was shut down by its fast start, goes on at its next start with what it has in memory, registry
// and file system included: what is written to its disk meanwhile is undone, or meets a memory that knows nothing of it. It is told
// by the file hiberfil.sys of its drive: the first four bytes are "hibr" while the image waits, "rstr" while or after a
// resumption that was not finished, "horm" if it is resumed time and again; "wake" or zeros once it has been used.
#include <filesystem>
#include <optional>
#include <string>

namespace brenvik {

class UserPort;

bool isLiveImage(const std::filesystem::path& hiberfil);
// The hiberfil.sys of a Windows that sleeps, in one of the folders above the file.
std::optional<std::filesystem::path> hibernatedAbove(const std::filesystem::path& file);

// German texts about one.
std::string hibernationNote(const std::filesystem::path& hiberfil);
std::string hibernationQuestion(const std::filesystem::path& hiberfil);

// Asks whether a file is really to be written that belongs to one. True also where there is nothing to ask.
bool mayBeWritten(UserPort& port, const std::filesystem::path& file);

}  // namespace brenvik
