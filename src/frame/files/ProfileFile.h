#pragma once
// Profile (INI) files as the platform's profile calls treat them. The text of a file stays Windows-1252 bytes; lines that
// nobody changed keep every byte. Sections and keys ignore case and blanks around them; the first section of a
// name and the first key in it count. Lines that begin with ";" are comments. Arguments and results are UTF-8.
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brenvik {

inline constexpr std::size_t ProfileBuffer = 256;  // buffer of a reading call: at most 255 characters come back

class ProfileFile {
public:
    explicit ProfileFile(std::string bytes = {});

    const std::string& bytes() const { return bytes_; }
    // UTF-16 files are not ANSI text: nothing is found in them, and changing them is error 13.
    bool isAnsi() const { return ansi_; }

    // The value without blanks and one pair of enclosing quotes, cut to size - 1 characters and at a U+0000; size 0: whole.
    std::optional<std::string> value(std::string_view section, std::string_view key, std::size_t size = ProfileBuffer) const;
    // All that stands behind "=" in the line, blanks and quotes too; setValue with it changes nothing.
    std::optional<std::string> rawValue(std::string_view section, std::string_view key) const;
    std::vector<std::string> sections() const;
    // The lines of a section without blanks around them; comments and empty lines are left out.
    std::vector<std::string> sectionLines(std::string_view section) const;
    bool hasSection(std::string_view section) const { return find(section).has_value(); }

    // Changing. Error 5 for texts that a profile file cannot hold (line ends, U+0000, characters outside Windows-1252, "="
    // in a key, "]" in a section).
    void setValue(std::string_view section, std::string_view key, std::string_view value);
    bool removeKey(std::string_view section, std::string_view key);   // false: was not there
    // Comments, empty lines and lines that stay equal keep their bytes; a missing section is made at the end.
    void setSectionLines(std::string_view section, const std::vector<std::string>& lines);

private:
    // Places of one line in bytes_: begin, end of its text, begin of the next line.
    struct Line {
        std::size_t begin, end, next;
    };
    // Lines of a section, header not counted: [first, last) in lines_.
    struct Section {
        std::size_t first, last;
    };
    using LineTexts = std::vector<std::pair<std::size_t, std::string_view>>;  // number of the line, its text

    void split();
    std::string_view text(const Line& line) const { return std::string_view(bytes_).substr(line.begin, line.end - line.begin); }
    std::optional<Section> find(std::string_view section) const;
    std::optional<std::size_t> findKey(const Section& section, std::string_view key) const;
    LineTexts entries(const Section& section) const;
    std::size_t appendPlace(const Section& section) const;  // byte place behind the section's last line with text
    Section makeSection(std::string_view section);
    void insertLine(std::size_t place, std::string_view line);
    void mustBeAnsi() const;

    std::string bytes_;
    bool ansi_ = true;
    std::vector<Line> lines_;
};

// The same on files (host paths). A file that isn't there reads as empty and is made on writing; its folder
// must exist. Reading errors and files over 16 MiB throw as readFile does, writing ones as writeFileAtomic does.
std::optional<std::string> profileValue(const std::filesystem::path& file, std::string_view section, std::string_view key, std::size_t size = ProfileBuffer);
std::optional<std::string> rawProfileValue(const std::filesystem::path& file, std::string_view section, std::string_view key);
std::vector<std::string> profileSection(const std::filesystem::path& file, std::string_view section);
void writeProfileValue(const std::filesystem::path& file, std::string_view section, std::string_view key, std::string_view value);
bool deleteProfileKey(const std::filesystem::path& file, std::string_view section, std::string_view key);  // false: was not there
void writeProfileSection(const std::filesystem::path& file, std::string_view section, const std::vector<std::string>& lines);

}  // namespace brenvik
