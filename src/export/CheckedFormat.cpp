#include "export/CheckedFormat.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <set>
#include <tuple>

#include "export/LineText.h"
#include "export/Messages.h"
#include "frame/Errors.h"
#include "registry/Upcase.h"
#include "registry/text/RegText.h"

namespace brenvik {
namespace {

using Place = std::tuple<Root, std::u16string, std::u16string>;   // names folded

Place placeOf(Root root, const std::string& key, const ValueName& name) { return {root, foldName(key), foldName(name.text())}; }
Place placeOf(const ExportValue& value) { return placeOf(value.root, value.key, value.name); }

// Whether a key is that one or lies below it.
bool isAtOrBelow(const std::u16string& key, const std::u16string& top) {
    return key.starts_with(top) && (key.size() == top.size() || top.empty() || key[top.size()] == u'\\');
}

// What a set wants and what a REG file brings, side by side.
class ReadBack {
public:
    ReadBack(std::string_view regFile, const ExportRecord& item) {
        for (const ExportTip& tipp : item.tipps)
            for (const ExportValue& value : tipp.values) wanted_[placeOf(value)] = {value.wert, value.pfad()};
        const RegText text = parseRegText(regFile);
        for (const RegOperation& operation : text.operations) take(operation);
        for (const auto& [place, state] : wanted_) {
            const auto found = arrives_.find(place);
            if (found == arrives_.end() || found->second.value != state.value) differing_.emplace(place, state.path);
        }
        for (const auto& [place, state] : arrives_)
            if (wanted_.count(place) == 0) differing_.emplace(place, state.path);
        if (same() && !text.ok()) keys_.insert(fmt::format(messages::ValueDoesNotFit, text.problems[0].line, text.problems[0].message));
    }

    bool same() const { return differing_.empty() && keys_.empty(); }
    bool differsAt(const ExportValue& value) const { return differing_.count(placeOf(value)) != 0; }
    std::vector<std::string> paths() const {
        std::vector<std::string> all;
        for (const auto& [place, path] : differing_) all.push_back(path);
        all.insert(all.end(), keys_.begin(), keys_.end());
        return all;
    }

private:
    struct State {
        std::optional<RawValue> value;
        std::string path;
    };

    void take(const RegOperation& operation) {
        const std::u16string key = foldName(operation.key);
        const auto keyPath = [&] { return std::string(longRootName(operation.root)) + "\\" + operation.key + "\\"; };
        switch (operation.kind) {
            case RegOperation::Kind::DeleteKey:   // no set deletes keys
                keys_.insert(keyPath());
                std::erase_if(arrives_, [&](const auto& each) { return std::get<0>(each.first) == operation.root && isAtOrBelow(std::get<1>(each.first), key); });
                break;
            case RegOperation::Kind::CreateKey:
                if (std::none_of(wanted_.begin(), wanted_.end(), [&](const auto& each) { return std::get<0>(each.first) == operation.root && isAtOrBelow(std::get<1>(each.first), key); }))
                    keys_.insert(keyPath());
                break;
            case RegOperation::Kind::SetValue: case RegOperation::Kind::DeleteValue: {
                const bool sets = operation.kind == RegOperation::Kind::SetValue;
                const ExportValue shown{operation.root, operation.key, operation.name, {}};
                arrives_[placeOf(shown)] = {sets ? std::optional(operation.value) : std::nullopt, shown.pfad()};
            }
        }
    }

    std::map<Place, State> wanted_, arrives_;
    std::map<Place, std::string> differing_;
    std::set<std::string> keys_;   // made or deleted beside what was wanted
};

std::string written(const ExportRecord& item, RegTextWriter::Format format, const std::vector<std::string>& head) {
    RegTextWriter writer(format);
    for (const std::string& line : head) writer.comment(line);
    for (const ExportTip& tipp : item.tipps) {
        if (tipp.values.empty()) continue;
        writer.comment("");
        writer.comment(fmt::format("; [{}] - {}", tipp.TippNr, commentText(tipp.Titel)));
        const ExportValue* last = nullptr;
        for (const ExportValue& value : tipp.values) {
            if (last == nullptr || last->root != value.root || last->key != value.key) writer.key(value.root, value.key);
            last = &value;
            if (value.wert)
                writer.value(value.name, *value.wert);
            else
                writer.deleteValue(value.name);
        }
    }
    return writer.bytes();
}

template <class Test> void takeOut(ExportRecord& item, std::vector<std::string>& paths, const Test& test) {
    for (ExportTip& tipp : item.tipps) {
        for (const ExportValue& value : tipp.values)
            if (test(value)) paths.push_back(value.pfad());
        std::erase_if(tipp.values, test);
    }
}

}  // namespace

CheckedFile CheckedFormat(const ExportRecord& item, RegTextWriter::Format format, const std::vector<std::string>& head) {
    CheckedFile file;
    ExportRecord rest = item;
    // Readers differ in what they take a line end in a name for.
    takeOut(rest, file.missing, [](const ExportValue& value) { return breaksLine(value.key) || breaksLine(value.name.text()); });
    file.bytes = written(rest, format, head);
    if (const ReadBack first(file.bytes, rest); !first.same()) {
        takeOut(rest, file.missing, [&](const ExportValue& value) { return first.differsAt(value); });
        file.bytes = written(rest, format, head);
        if (const ReadBack second(file.bytes, rest); !second.same()) throw NumberedError(errnum::Internal, fmt::format(messages::NotAsMeant, listed(second.paths())));
    }
    return file;
}

std::vector<std::string> differences(std::string_view regFileExport, const ExportRecord& item) { return ReadBack(regFileExport, item).paths(); }

}  // namespace brenvik
