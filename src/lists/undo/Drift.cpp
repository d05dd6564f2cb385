#include "lists/undo/Drift.h"

#include <fmt/format.h>

#include <algorithm>
#include <tuple>

#include "frame/files/ProfileFile.h"
#include "frame/text/Conversions.h"
#include "lists/Messages.h"
#include "lists/undo/ChangedFiles.h"
#include "registry/store/RegLinks.h"

namespace brenvik {
namespace {

// --- lines of files ---

struct Zeile {
    std::string section, key, wert;
};
// By section, key and which of several lines of that key it is; the boot menu has such.
using Lines = std::map<std::tuple<std::string, std::string, int>, Zeile>;

Lines linesOf(const std::string& bytes) {
    const ProfileFile file(bytes);
    Lines lines;
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

std::optional<std::string> valueAt(const Lines& lines, const Lines::key_type& place) {
    const auto found = lines.find(place);
    return found == lines.end() ? std::nullopt : std::optional(found->second.wert);
}

std::string lineId(const std::string& machine, const std::string& file, const Lines::key_type& place) {
    return (isFolder(machine) ? machine : lowerCase(machine)) + "\n" + lowerCase(file) + "\n" + std::get<0>(place) + "\n" + std::get<1>(place) + "\n" + std::to_string(std::get<2>(place));
}

// --- what was set ---

class Collector {
public:
    Collector(Context& ctx, SetState& state) : ctx_(ctx), state_(state) {}

    void take(const JournalStep& step) {
        const DriftSource source{step.nummer, step.tipp, step.überschrift};
        for (const KeyImage& key : step.key) keyLeft(step, key, source);
        valuesSet(step, source);
        const std::string machine = markOf(ctx_, step);
        for (const FileImage& file : step.dateien) fileWritten(machine, file, source);
    }

private:
    // Of what is watched below the key: what the change left of it.
    void keyLeft(const JournalStep& step, const KeyImage& key, const DriftSource& source) {
        const RegAddress top = addressOf(ctx_, step, key.path);
        const std::string first = top.id();
        std::map<std::string, RawValue> left;
        for (const auto& [unter, wert] : key.values) {
            RegAddress place = top;
            place.key = joinKey(top.key, unter.empty() ? unter : unter.substr(1));
            place.name = wert.name;
            left.insert_or_assign(place.id(), wert.value);
        }
        for (auto value = state_.values.lower_bound(first); value != state_.values.end() && value->first.starts_with(first); ++value) {
            if (!value->second.address.isBelow(first)) continue;
            const auto now = left.find(value->first);
            const std::optional<RawValue> content = now == left.end() ? std::nullopt : std::optional(now->second);
            if (content == value->second.wert) continue;
            value->second.wert = content;
            static_cast<DriftSource&>(value->second) = {source.nummer, value->second.tipp, value->second.überschrift};
        }
    }
    void valuesSet(const JournalStep& step, const DriftSource& source) {
        std::map<std::string, std::pair<SetValue, std::optional<RawValue>>> byPlace;   // with what was there before
        std::vector<std::string> order;
        for (const ValueChange& value : step.values) {
            SetValue set{source, addressOf(ctx_, step, value), value.neu};
            if (set.tipp == 0) set.tipp = value.TippIndex;
            const std::string id = set.address.id();
            const auto known = byPlace.find(id);
            if (known != byPlace.end()) known->second.first = std::move(set);
            else byPlace.emplace(id, std::pair{std::move(set), value.alt}), order.push_back(id);
        }
        for (const std::string& id : order) {
            auto& [set, before] = byPlace.at(id);
            if (set.wert != before) state_.values.insert_or_assign(id, std::move(set));
        }
    }
    void fileWritten(const std::string& machine, const FileImage& file, const DriftSource& source) {
        const Lines before = linesOf(file.contents), after = linesOf(file.neu);
        for (const Lines* side : {&before, &after})
            for (const auto& [place, line] : *side) {
                const auto set = valueAt(after, place);
                if (set == valueAt(before, place)) continue;
                state_.lines.insert_or_assign(lineId(machine, file.datei, place), SetLine{source, machine, file.datei, line.section, line.key, set});
            }
    }

    Context& ctx_;
    SetState& state_;
};

// --- how it stands ---

std::string notAtHand(const std::string& machine) { return fmt::format(messages::DriftNotConnected, machine); }

void look(Context& ctx, const RegAddress& address, DriftEntry& entry) {
    try {
        if (!atHand(ctx, address.machine)) throw NumberedError(errnum::PathNotFound, notAtHand(address.machine));
        RegStore& store = storeOf(ctx, address.machine);
        entry.now = store.value(address.root, address.key, *address.name);
        entry.state = entry.now == entry.set ? DriftState::AsSet : DriftState::Differs;
    } catch (const std::exception& error) {
        entry.state = DriftState::Unreadable;
        entry.why = error.what();
    }
}

// The files' lines as they stand, each file read once.
class Files {
public:
    explicit Files(Context& ctx) : ctx_(ctx) {}
    void look(const SetLine& line, const std::string& id, DriftEntry& entry) {
        const Contents& file = contentOf(line);
        entry.why = file.why;
        if (!file.why.empty()) {
            entry.state = DriftState::Unreadable;
            return;
        }
        const auto found = file.lines.find(id);
        if (found != file.lines.end()) entry.nowLine = found->second;
        entry.state = entry.nowLine == entry.setLine ? DriftState::AsSet : DriftState::Differs;
    }

private:
    struct Contents {
        std::map<std::string, std::string> lines;
        std::string why;
    };
    const Contents& contentOf(const SetLine& line) {
        const auto [known, fresh] = files_.try_emplace({line.machine, line.datei});
        if (!fresh) return known->second;
        try {
            if (!atHand(ctx_, line.machine)) throw NumberedError(errnum::PathNotFound, notAtHand(line.machine));
            for (const auto& [place, now] : linesOf(ChangedFile(ctx_, line.machine, line.datei).read().value_or(std::string())))
                known->second.lines.emplace(lineId(line.machine, line.datei, place), now.wert);
        } catch (const std::exception& error) {
            known->second.why = *error.what() != '\0' ? error.what() : messages::DriftUnreadable;
        }
        return known->second;
    }
    Context& ctx_;
    std::map<std::pair<std::string, std::string>, Contents> files_;
};

}  // namespace

SetState setState(Context& ctx, Journal& journal) {
    SetState state;
    Collector collector(ctx, state);
    journal.eachStep([&](JournalStep& step) {
        try {
            collector.take(step);
        } catch (const RegError& error) {   // a path that is none
            ctx.trace.write(fmt::format("--- Fehler: Journal {}: {}", step.nummer, error.what()));
            state.unknown.push_back({{step.nummer, step.tipp, step.überschrift}, error.what()});
        }
    });
    for (const std::int64_t nummer : journal.tooLong()) {
        const auto head = journal.head(nummer);
        state.unknown.push_back({{nummer, head ? head->tipp : 0, head ? head->überschrift : std::string()}, fmt::format(messages::JournalZuLang, nummer)});
    }
    return state;
}

std::vector<DriftEntry> drift(Context& ctx, Journal& journal) {
    const SetState state = setState(ctx, journal);
    std::vector<DriftEntry> entries;
    for (const auto& [id, value] : state.values) {
        DriftEntry& entry = entries.emplace_back(DriftEntry{value});
        entry.machine = value.address.machine;
        entry.place = shownPath(ctx, value.address);
        entry.set = value.wert;
        look(ctx, value.address, entry);
    }
    Files files(ctx);
    for (const auto& [id, line] : state.lines) {
        DriftEntry& entry = entries.emplace_back(DriftEntry{line});
        entry.isLine = true;
        entry.machine = line.machine;
        entry.place = fmt::format("{} [{}] {}", line.datei, line.section, line.key);
        entry.setLine = line.wert;
        files.look(line, id, entry);
    }
    for (const auto& [source, why] : state.unknown) {
        DriftEntry& entry = entries.emplace_back(DriftEntry{source});
        entry.state = DriftState::Unreadable;
        entry.place = fmt::format(messages::DriftChange, source.nummer);
        entry.why = why;
    }
    std::stable_sort(entries.begin(), entries.end(), [](const DriftEntry& a, const DriftEntry& b) { return std::tie(a.isLine, a.tipp) < std::tie(b.isLine, b.tipp); });
    return entries;
}

}  // namespace brenvik
