#include "Model.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace brenvik::tipbau {

void Beschwerden::add(const Ort& ort, const std::string& text) { liste_.push_back({ort, text}); }

void Beschwerden::hint(const Ort& ort, const std::string& text) { hinweise_.push_back({ort, "Hinweis: " + text}); }

std::vector<std::string> Beschwerden::lines() const { return sortedLines(liste_); }
std::vector<std::string> Beschwerden::hints() const { return sortedLines(hinweise_); }

std::vector<std::string> Beschwerden::sortedLines(std::vector<Eintrag> entries) {
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

Ort Zeile::ortVon(const std::string& feld) const {
    const auto place = felder.find(feld);
    return place == felder.end() ? ort : Ort{ort.datei, place->second, {}, 0};
}

}  // namespace brenvik::tipbau
