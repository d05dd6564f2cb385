#include "registry/hive/HiveFinding.h"

#include <fmt/format.h>

namespace brenvik {

namespace {
constexpr std::size_t mostFindingsKept = 1000;
}

std::string HiveFinding::line() const { return fmt::format("{}Position 0x{:X}: {}", log == 0 ? std::string() : fmt::format("Protokolldatei {}, ", log), offset, text); }

HiveError::HiveError(std::uint64_t fileOffset, const std::string& text)
    : RegError(regerr::KeyNotRead, fmt::format("Die Strukturdatei ist beschädigt (Position 0x{:X}): {}", fileOffset, text)),
      offset(fileOffset) {}

HiveError::HiveError(const std::string& text) : RegError(regerr::KeyCreateFailed, text) {}

void HiveFindings::fault(std::uint64_t offset, const char* text) {
    if (mode_ == HiveMode::Strict) throw HiveError(offset, text);
    keep({offset, true, text, 0});
}

void HiveFindings::note(std::uint64_t offset, const char* text) { keep({offset, false, text, 0}); }

void HiveFindings::keep(HiveFinding finding) {
    ++count_;
    if (list_.size() < mostFindingsKept) list_.push_back(std::move(finding));
}

}  // namespace brenvik
