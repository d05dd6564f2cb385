#include "lists/undo/PriorState.h"

#include <algorithm>
#include <unordered_map>

#include "frame/text/Conversions.h"
#include "registry/store/RegLinks.h"

namespace brenvik {
namespace {

// Whether what a step wrote counts as taken back. Bringing a change back is itself void once the change is taken back anew.
class Standing {
public:
    explicit Standing(const std::vector<JournalHeader>& heads) {
        for (const JournalHeader& head : heads) heads_.emplace(head.nummer, &head);
    }
    bool takenBack(const JournalHeader& step) const {
        if (step.art != Change::Art::Restore) return step.undoneBy != 0;
        const JournalHeader* const undo = find(step.undoes);
        const JournalHeader* const root = undo == nullptr ? nullptr : find(undo->undoes);
        return root != nullptr && root->undoneBy > step.nummer;
    }

private:
    const JournalHeader* find(std::int64_t nummer) const {
        const auto found = heads_.find(nummer);
        return found == heads_.end() ? nullptr : found->second;
    }
    std::unordered_map<std::int64_t, const JournalHeader*> heads_;
};

}  // namespace

PriorState::PriorState(Context& ctx, Journal& journal, const JournalHeader& change) {
    if (isUndo(change) || !journal.someTakenBackSince(change.nummer)) return;   // bringing back what an undo overwrote means just that
    const std::vector<JournalHeader> heads = journal.heads();
    const Standing standing(heads);
    const std::string machine = markOf(ctx, change);
    journal.eachStep([&](JournalStep& step) {
        if (step.nummer >= change.nummer || !sameMachine(markOf(ctx, step), machine)) return;
        const bool takenBack = standing.takenBack(step);
        const std::int64_t undoes = step.art == Change::Art::Undo ? step.undoes : 0;
        for (const ValueChange& value : step.values) {
            if (value.alt == value.neu) continue;
            const RegAddress place = addressOf(ctx, step, value);
            Values& known = values_[place.id()];
            known.place = place;
            known.steps.push_back({step.nummer, value.alt, value.neu, takenBack, undoes});
        }
        for (const FileImage& file : step.dateien)
            files_[lowerCase(file.datei)].push_back({step.nummer, file.there ? std::optional(file.contents) : std::nullopt, file.neu, takenBack, undoes});
    });
}

template <class Content>
std::optional<Content> PriorState::without(const std::vector<Written<Content>>& steps, std::optional<Content> recorded) {
    auto step = steps.rbegin();
    while (step != steps.rend() && step->after == recorded) {
        if (const std::int64_t undone = step->undoes; undone != 0) {   // what stood before that change stands again: whose is it?
            while (step != steps.rend() && step->number >= undone) ++step;
        } else if (step->takenBack) {
            recorded = step->before;
            ++step;
        } else {
            break;
        }
    }
    return recorded;
}

std::optional<RawValue> PriorState::value(const RegAddress& place, const std::optional<RawValue>& recorded) const {
    const auto known = values_.find(place.id());
    return known == values_.end() ? recorded : without(known->second.steps, recorded);
}

std::optional<std::string> PriorState::file(const std::string& windowsPath, const std::optional<std::string>& recorded) const {
    const auto known = files_.find(lowerCase(windowsPath));
    return known == files_.end() ? recorded : without(known->second, recorded);
}

std::vector<RegAddress> PriorState::correct(const RegAddress& key, KeyImage& image) const {
    std::vector<RegAddress> gone;
    const std::string top = key.id();
    for (auto known = values_.lower_bound(top); known != values_.end() && known->first.starts_with(top); ++known) {
        const RegAddress& place = known->second.place;
        if (!place.isBelow(top)) continue;
        const std::string below = place.key.size() > key.key.size() ? place.key.substr(key.key.size()) : std::string();
        const auto found = std::find_if(image.values.begin(), image.values.end(), [&](const KeyImage::Wert& value) {
            return equalText(value.unter, below) && equalText(value.wert.name.text(), place.name->text());
        });
        const std::optional<RawValue> recorded = found == image.values.end() ? std::nullopt : std::optional(found->wert.value);
        const std::optional<RawValue> right = without(known->second.steps, recorded);
        if (right == recorded) continue;
        if (!right) {
            image.values.erase(found);
            gone.push_back(place);
        } else if (found != image.values.end()) {
            found->wert.value = *right;
        } else {
            addValue(image, below, {*place.name, *right});
        }
    }
    return gone;
}

// With the keys on the way, each before those below it.
void PriorState::addValue(KeyImage& image, const std::string& below, NamedValue value) {
    const auto place = [&](const std::string& key) { return std::find_if(image.unterschluessel.begin(), image.unterschluessel.end(), [&](const std::string& known) { return equalText(known, key); }); };
    for (std::size_t end = 0; end != std::string::npos;) {
        end = end == below.size() ? std::string::npos : below.find('\\', end == 0 ? 1 : end + 1);
        const std::string key = end == std::string::npos ? below : below.substr(0, end);
        if (place(key) != image.unterschluessel.end()) continue;
        const auto parent = place(key.substr(0, key.rfind('\\') == std::string::npos ? 0 : key.rfind('\\')));
        const auto at = parent == image.unterschluessel.end() ? image.unterschluessel.begin() : parent + 1;
        const auto index = at - image.unterschluessel.begin();
        image.unterschluessel.insert(at, key);
        if (static_cast<std::size_t>(index) <= image.details.size()) image.details.insert(image.details.begin() + index, KeyDetails{});
    }
    image.values.push_back({below, std::move(value)});
}

}  // namespace brenvik
