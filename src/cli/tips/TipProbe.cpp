#include "cli/tips/TipProbe.h"

#include <iostream>

#include "cli/history/HistoryOutput.h"
#include "frame/text/Codepage.h"
#include "frame/text/Conversions.h"
#include "frame/text/LineMerge.h"

namespace brenvik::cli {

using nlohmann::ordered_json;

int printPlan(Program& program, bool json) {
    Context& ctx = program.context();
    std::string refusal;
    const Change plan = program.engine().plannedSave(refusal);
    if (!refusal.empty()) return failed(refusal);
    ordered_json out{{"tip", plan.tippIndex}, {"heading", plan.tipHeading}, {"values", ordered_json::array()}, {"files", ordered_json::array()}};
    for (const ValueChange& value : plan.values) {
        const std::string path = value.name ? value.path + "\\" + *value.name : value.path;
        out["values"].push_back({{"path", path}, {"old", rawJson(ctx, value.alt)}, {"new", rawJson(ctx, value.neu)}, {"changes", value.alt != value.neu}});
        if (!json)
            std::cout << oneLine(path) << (value.alt == value.neu ? "  (bleibt)" : "") << "\n   alt: " << shownRaw(value.alt) << "\n   neu: " << shownRaw(value.neu) << "\n";
    }
    for (const FileImage& file : plan.dateien) {
        const auto lines = [](const std::string& bytes) { return Split(Replace(utf8FromAnsi(bytes), "\r\n", "\n"), "\n"); };
        const auto before = lines(file.contents), after = lines(file.neu);
        ordered_json changes = ordered_json::array();
        if (!json) std::cout << oneLine(file.datei) << (file.there ? "" : "  (wird angelegt)") << "\n";
        for (const LineChange& run : lineChanges({before.begin(), before.end()}, after)) {
            for (std::size_t k = run.oldFirst; k < run.oldLast; ++k) changes.push_back("-" + before[k]);
            for (std::size_t k = run.newFirst; k < run.newLast; ++k) changes.push_back("+" + after[k]);
        }
        if (!json)
            for (const auto& line : changes) std::cout << "   " << oneLine(line.get<std::string>()) << "\n";
        out["files"].push_back({{"file", file.datei}, {"exists", file.there}, {"lines", std::move(changes)}});
    }
    if (json) std::cout << jsonText(out) << "\n";
    else if (plan.values.empty() && plan.dateien.empty()) std::cout << "Es würde nichts geschrieben.\n";
    return 0;
}

}  // namespace brenvik::cli
