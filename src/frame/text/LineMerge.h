#pragma once
// How one list of lines becomes another with the fewest lines touched.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

// One run of changes: the old lines [oldFirst, oldLast) give way to the new lines [newFirst, newLast).
struct LineChange {
    std::size_t oldFirst, oldLast, newFirst, newLast;
};

// In order. Lists too long to compare exactly (over four million pairs that differ) change as one run.
std::vector<LineChange> lineChanges(const std::vector<std::string_view>& oldLines, const std::vector<std::string>& newLines);

}  // namespace brenvik
