#pragma once
// Single values by path text, with tracing and reports. An omitted machine means the local one.
#include <cstdint>
#include <optional>
#include <string>

#include "registry/RegistryContext.h"

namespace brenvik {

inline constexpr const char* DelKey = "<delkey>";
inline constexpr const char* KeyNotThere = "<Key nicht vorhanden>";

std::string ReadRegistryKey(RegistryContext& ctx, const std::string& path, const std::string& defaultText,
                            const std::optional<std::string>& machine = std::nullopt);
bool SaveRegistryKey(RegistryContext& ctx, const std::string& path, const std::string& value, std::int16_t type,
                     const std::optional<std::string>& machine = std::nullopt);
std::string DatenTypText(FrameContext& ctx, std::int32_t type);
std::string NetzRegPfad(FrameContext& ctx, const std::string& root);
void DelUnterKey(RegistryContext& ctx, std::string& path, bool deleteSelf, const std::optional<std::string>& machine = std::nullopt);

}  // namespace brenvik
