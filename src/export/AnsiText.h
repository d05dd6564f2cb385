#pragma once
// Lines of the told file forms: Windows-1252, each closed by CR LF. What the code page lacks becomes "?" and is counted.
#include <cstddef>
#include <string>
#include <string_view>

#include "frame/text/Codepage.h"

namespace brenvik {

class AnsiText {
public:
    void line(std::string_view utf8 = {}) { bytes_ += ansiFromUtf8(utf8, &missing_) + "\r\n"; }
    // A text that begins at a column, counted from 1.
    void line(std::size_t column, std::string_view utf8) { line(std::string(column - 1, ' ').append(utf8)); }
    // For pieces that are converted before they become part of a line.
    std::string ansi(std::string_view utf8) { return ansiFromUtf8(utf8, &missing_); }

    const std::string& bytes() const { return bytes_; }
    std::size_t missing() const { return missing_; }

private:
    std::string bytes_;
    std::size_t missing_ = 0;
};

}  // namespace brenvik
