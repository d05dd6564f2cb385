#include "lists/INIStand.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "frame/DateiSystem.h"
#include "frame/Konvertierung.h"
#include "frame/Profildatei.h"

namespace brenvik {
namespace {

constexpr std::uintmax_t MostFile = 16u << 20;

struct Zeile {
    std::string sektion, schluessel, wert;
};
// By section, key and which of several lines of that key it is; the boot menu has such.
using Zeilen = std::map<std::tuple<std::string, std::string, int>, Zeile>;

Zeilen linesOf(const std::string& bytes) {
    const Profildatei file(bytes);
    Zeilen lines;
    std::map<std::pair<std::string, std::string>, int> seen;
    for (const std::string& section : file.sections()) {
        const std::string folded = lowerCase(section);
        if (seen[{folded, {}}]++ > 0) continue;   // the first of a name counts
        for (const std::string& line : file.sectionLines(section)) {
            const std::size_t equals = line.find('=');
            if (equals == std::string::npos) continue;
            const std::string key = Trim(line.substr(0, equals));
            lines[{folded, lowerCase(key), seen[{folded, lowerCase(key)}]++}] = {section, key, Trim(line.substr(equals + 1))};
        }
    }
    return lines;
}

std::optional<std::string> valueAt(const Zeilen& lines, const Zeilen::key_type& place) {
    const auto found = lines.find(place);
    return found == lines.end() ? std::nullopt : std::optional(found->second.wert);
}

}  // namespace

std::vector<INIAbweichung> iniAbweichungen(Journal& journal, std::vector<std::string>& unlesbar) {
    std::map<std::string, std::map<Zeilen::key_type, INIAbweichung>> files;
    journal.eachWrittenFile([&](const JournalKopf& change, const DateiBild& image) {
        const Zeilen before = linesOf(image.inhalt), after = linesOf(image.neu);
        for (const Zeilen* side : {&before, &after})
            for (const auto& [place, line] : *side) {
                const auto set = valueAt(after, place);
                if (set != valueAt(before, place))
                    files[image.datei][place] = {change.nummer, change.tipp, change.überschrift, image.datei, line.sektion, line.schluessel, set, {}};
            }
    });
    std::vector<INIAbweichung> found;
    for (auto& [name, lines] : files) {
        try {
            const auto path = pathFromUtf8(name);
            std::error_code error;
            const Zeilen now = linesOf(std::filesystem::exists(path, error) ? readFile(path, MostFile) : std::string());
            for (auto& [place, line] : lines) {
                line.jetzt = valueAt(now, place);
                if (line.jetzt != line.gesetzt) found.push_back(line);
            }
        } catch (const NumberedError& error) {
            unlesbar.push_back(name + ": " + error.what());
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const INIAbweichung& a, const INIAbweichung& b) { return a.tipp < b.tipp; });
    return found;
}

}  // namespace brenvik
