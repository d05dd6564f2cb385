#pragma once
// What is wrong with a hive file, and where. A strict reading ends at the first finding with a HiveError; a salvaging one and
// the checker collect them. Texts are German and name the position in the file.
#include <cstdint>
#include <string>
#include <vector>

#include "frame/Errors.h"

namespace brenvik {

struct HiveFinding {
    std::uint64_t offset = 0;   // bytes from the start of the file
    bool fault = true;          // false: Windows leaves such things behind itself and they harm nobody
    std::string text;           // without the position
    std::size_t log = 0;        // 0: in the hive; else in the log of this number, counted from 1, and the offset is one in the log
    std::string line() const;   // "Position 0x1020: …", "Protokolldatei 2, Position 0x200: …"
};

class HiveError : public RegError {
public:
    HiveError(std::uint64_t fileOffset, const std::string& text);
    explicit HiveError(const std::string& text);   // not about a place in a file: the tree cannot be written
    std::uint64_t offset = 0;
};

enum class HiveMode : std::uint8_t { Strict, Salvage };

class HiveFindings {
public:
    explicit HiveFindings(HiveMode readingMode) : mode_(readingMode) {}

    // Strict: throws HiveError. Otherwise keeps the finding, up to a limit, after which only their number grows.
    void fault(std::uint64_t offset, const char* text);
    void note(std::uint64_t offset, const char* text);   // never an error
    bool salvaging() const { return mode_ == HiveMode::Salvage; }
    std::uint64_t count() const { return count_; }
    const std::vector<HiveFinding>& list() const { return list_; }

private:
    void keep(HiveFinding finding);
    HiveMode mode_;
    std::uint64_t count_ = 0;
    std::vector<HiveFinding> list_;
};

}  // namespace brenvik
