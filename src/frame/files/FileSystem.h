#pragma once
// Files. Two kinds of names: host paths (std::filesystem::path), and paths as texts, which are Windows paths
// ("C:\WINDOWS\win.ini", UTF-8) that are looked up in the embedded Windows below <home>/drive_c, ignoring case.
// Failing operations throw NumberedError 53 (not there), 70 or 75 (no access), 61 (disk full), 76 (no such folder).
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "frame/Context.h"
#include "frame/files/TargetFiles.h"

namespace brenvik {

// --- names ---
std::filesystem::path pathFromUtf8(std::string_view text);
std::string utf8FromPath(const std::filesystem::path& path);
// A name or relative path below a folder; never leaves it by a leading separator.
std::filesystem::path joinPath(const std::filesystem::path& folder, std::string_view name);

// The files of the embedded Windows: its drives are <home>/drive_<letter>. The context must outlive them.
TargetFiles localFiles(const FrameContext& ctx);
// The host path of a path of the embedded Windows; frame/TargetFiles.h tells the rules.
std::filesystem::path hostPath(const FrameContext& ctx, std::string_view windowsPath);
// The same for paths that a user chose or set: a full host path stays as it is.
std::filesystem::path userPath(const TargetFiles& files, std::string_view path);
std::filesystem::path userPath(const FrameContext& ctx, std::string_view path);
// Back: "C:\..." for what lies on a drive of the embedded Windows, else the host's own spelling.
std::string windowsPath(const FrameContext& ctx, const std::filesystem::path& file);

// A folder's text as file names are put behind it: with a separator at its end, of the kind it has.
std::string withSeparator(std::string folder);

// --- whole files ---
inline constexpr std::uintmax_t DefaultReadLimit = 64u << 20;
std::string readFile(const std::filesystem::path& file, std::uintmax_t limit = DefaultReadLimit);  // error 7 beyond the limit
// A new file beside the old one is filled, brought to the disk and renamed over it; a failure leaves the old
// file as it was. Error 75 if the file is marked read-only. A link is followed, rights and owner of an old file are kept as
// host::writeNewFile says. What earlier calls left that ended half way with their process is swept.
void writeFileAtomic(const std::filesystem::path& file, std::string_view bytes);
// The same for what is not in memory as a whole: fill hands over one piece after the other. If it throws, nothing is left.
using OutputPiece = std::function<void(std::string_view piece)>;
void writeFileAtomic(const std::filesystem::path& file, const std::function<void(const OutputPiece& put)>& fill);

// Why a file could not be used, as a sentence: what users meet in their language, the rest in the system's.
std::string fileErrorText(const std::error_code& code);

bool isReadOnly(const std::filesystem::path& file);          // the read-only attribute; false if it isn't there
void setReadOnly(const std::filesystem::path& file, bool on);

// --- the program's file helpers; their texts go through userPath ---
bool ExistFileDirDrive(FrameContext& ctx, std::string_view path);   // "c" and "c:" mean the drive
// Names of the files (no folders) that fit the pattern in its last part ("C:\WINDOWS\system32\*.cpl"), in lower case,
// sorted, from index 1 on ([0] is empty). Without a hit names stays as it is.
std::int16_t DirList(FrameContext& ctx, const TargetFiles& files, std::string_view pattern, std::vector<std::string>& names);
bool DateiDel(FrameContext& ctx, std::string_view path);            // files only; true also if nothing was there
bool DateiCopy(FrameContext& ctx, std::string_view source, std::string_view target);  // into a folder too; failure shows text 204
// The folder that the user chose, with a separator at its end; empty if he cancelled. The start folder may be empty.
std::string BrowseForFolder(FrameContext& ctx, std::string_view start = {}, std::string_view title = {});
std::string GetShortPath(FrameContext& ctx, std::string_view path);  // there are no short names here: the path itself, empty if it isn't there

bool fitsPattern(std::string_view name, std::string_view pattern);  // * and ?, ignoring case; "*.*" fits every name

}  // namespace brenvik
