#include "frame/text/LineMerge.h"

#include <algorithm>
#include <cstdint>

namespace brenvik {

std::vector<LineChange> lineChanges(const std::vector<std::string_view>& oldLines, const std::vector<std::string>& newLines) {
    std::size_t front = 0, oldEnd = oldLines.size(), newEnd = newLines.size();
    while (front < oldEnd && front < newEnd && oldLines[front] == newLines[front]) ++front;
    while (oldEnd > front && newEnd > front && oldLines[oldEnd - 1] == newLines[newEnd - 1]) --oldEnd, --newEnd;
    if (front == oldEnd && front == newEnd) return {};

    const std::size_t rows = oldEnd - front, columns = newEnd - front;
    constexpr std::size_t MostPairs = 4'000'000;
    if (rows == 0 || columns == 0 || rows > MostPairs / columns) return {{front, oldEnd, front, newEnd}};

    // common[r][c]: how many lines the rests from r and c have in common at most.
    std::vector<std::uint32_t> common((rows + 1) * (columns + 1));
    const auto at = [&](std::size_t r, std::size_t c) -> std::uint32_t& { return common[r * (columns + 1) + c]; };
    const auto equal = [&](std::size_t r, std::size_t c) { return oldLines[front + r] == newLines[front + c]; };
    for (std::size_t r = rows; r-- > 0;)
        for (std::size_t c = columns; c-- > 0;)
            at(r, c) = equal(r, c) ? at(r + 1, c + 1) + 1 : std::max(at(r + 1, c), at(r, c + 1));

    std::vector<LineChange> changes;
    std::size_t r = 0, c = 0;
    while (r < rows || c < columns) {
        LineChange run{front + r, 0, front + c, 0};
        while ((r < rows || c < columns) && !(r < rows && c < columns && equal(r, c))) {
            if (c == columns || (r < rows && at(r + 1, c) >= at(r, c + 1))) ++r;
            else ++c;
        }
        run.oldLast = front + r, run.newLast = front + c;
        if (run.oldFirst != run.oldLast || run.newFirst != run.newLast) changes.push_back(run);
        while (r < rows && c < columns && equal(r, c)) ++r, ++c;
    }
    return changes;
}

}  // namespace brenvik
