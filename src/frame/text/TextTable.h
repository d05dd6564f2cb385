#pragma once
// A text table with fixed bounds, filled once from (number, text) pairs.
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "frame/Errors.h"

namespace brenvik {

class TextTable {
public:
    struct Eintrag {
        int nummer;
        std::string text;
    };
    TextTable(int first, int last, std::initializer_list<Eintrag> entries)
        : first_(first), texts_(static_cast<std::size_t>(last - first + 1)) {
        for (const Eintrag& entry : entries) texts_.at(static_cast<std::size_t>(entry.nummer - first)) = entry.text;
    }
    const std::string& at(int index) const {
        const long long place = static_cast<long long>(index) - first_;
        if (place < 0 || place >= static_cast<long long>(texts_.size()))
            throw NumberedError(errnum::Subscript, "Index außerhalb des gültigen Bereichs");
        return texts_[static_cast<std::size_t>(place)];
    }

private:
    int first_;
    std::vector<std::string> texts_;
};

const TextTable& mainTexts();   // strBVKTexte; the longest table has a file of its own

}  // namespace brenvik
