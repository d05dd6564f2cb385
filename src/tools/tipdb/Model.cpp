#include "Model.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace brenvik::tipbuild {

void Complaints::add(const Ort& ort, const std::string& text) { liste_.push_back({ort, text}); }

void Complaints::hint(const Ort& ort, const std::string& text) { hints_.push_back({ort, "Hinweis: " + text}); }

std::vector<std::string> Complaints::lines() const { return sortedLines(liste_); }
std::vector<std::string> Complaints::hints() const { return sortedLines(hints_); }

std::vector<std::string> Complaints::sortedLines(std::vector<Eintrag> entries) {
    std::stable_sort(entries.begin(), entries.end(), [](const Eintrag& a, const Eintrag& b) {
        return std::tie(a.ort.datei, a.ort.zeile, a.ort.nummer) < std::tie(b.ort.datei, b.ort.zeile, b.ort.nummer);
    });
    std::vector<std::string> result;
    std::set<std::string> seen;
    for (const Eintrag& e : entries) {
        const std::string line = e.ort.text() + ": " + e.text;
        if (seen.insert(line).second) result.push_back(line);
    }
    return result;
}

Ort Zeile::placeOf(const std::string& field) const {
    const auto place = fields.find(field);
    return place == fields.end() ? ort : Ort{ort.datei, place->second, {}, 0};
}

}  // namespace brenvik::tipbau
