#pragma once
// Writing INI files in front of the user: the outcome is told in a box. Files are host paths; answers whether it
// was written.
#include <filesystem>
#include <string_view>
#include <vector>

#include "frame/Context.h"

namespace brenvik {

inline constexpr std::size_t INIBound = 255;  // most characters of a key and of a value

bool INISchreiben(FrameContext& ctx, const std::filesystem::path& file, std::string_view section, std::string_view key, std::string_view value);
bool INILoeschen(FrameContext& ctx, const std::filesystem::path& file, std::string_view section, std::string_view key);
bool INISektionSchreiben(FrameContext& ctx, const std::filesystem::path& file, std::string_view section, const std::vector<std::string>& lines);

}  // namespace brenvik
