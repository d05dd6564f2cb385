#pragma once
// A list file of the user's: lines of Windows-1252. CR LF, CR and LF each end a line. A file that somebody saved as UTF-8
// with its mark is read and written back so. The object remembers what the file held when it last read or wrote it, so
// that a change by another program can be told and joined instead of being overwritten. Failures are NumberedErrors.
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/platform/HostFile.h"

namespace brenvik {

// How often a line occurs more often in one list than in the other.
struct ListDifference {
    std::vector<std::string> dazu, weg;
};
ListDifference listDifference(const std::vector<std::string>& before, const std::vector<std::string>& now);

class ListFile {
public:
    static constexpr std::uintmax_t Bound = 64u << 20;   // bytes; error 7 beyond

    explicit ListFile(std::filesystem::path file) : file_(std::move(file)) {}
    const std::filesystem::path& file() const { return file_; }

    std::vector<std::string> read();                       // UTF-8; a file that is not there has no lines
    ListDifference foreignChanges();                    // since the last read or write; they count as read now
    void write(const std::vector<std::string_view>& lines);// each with CR LF, in one step
    void writeText(std::string_view text);                 // the same with line ends of the caller's
    std::string afterReading(std::string_view line) const; // what a line will be once it was written and read again

private:
    void writeBytes(std::string bytes);
    void appendEncoded(std::string& bytes, std::string_view text) const;
    std::vector<std::string> linesOf(const std::string& bytes);
    std::string load();

    std::filesystem::path file_;
    std::string stand_;                                    // the bytes as last read or written
    std::optional<host::FileStamp> stamp_;                 // of these bytes; none: read again to know
    bool utf8_ = false;
};

}  // namespace brenvik
