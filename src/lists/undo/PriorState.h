#pragma once
// What stood in a place before a change, without what is taken back by now: where an earlier change was taken back only after
// this one had overwritten its value, this one's record still names that value as the old one.
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "lists/journal/Journal.h"
#include "lists/undo/RegAddress.h"

namespace brenvik {

class PriorState {
public:
    // Of what stood before this change; of an undo as it is recorded. Reads the journal only if an earlier change was taken back since.
    PriorState(Context& ctx, Journal& journal, const JournalHeader& change);

    std::optional<RawValue> value(const RegAddress& place, const std::optional<RawValue>& recorded) const;
    std::optional<std::string> file(const std::string& windowsPath, const std::optional<std::string>& recorded) const;
    // The image of a key with its values as above. Answers places whose values are not in it any more.
    std::vector<RegAddress> correct(const RegAddress& key, KeyImage& image) const;

private:
    template <class Content> struct Written {
        std::int64_t number = 0;
        std::optional<Content> before, after;
        bool takenBack = false;
        std::int64_t undoes = 0;   // the change that this step took back
    };
    struct Values {
        RegAddress place;
        std::vector<Written<RawValue>> steps;   // oldest first
    };
    static void addValue(KeyImage& image, const std::string& below, NamedValue value);
    template <class Content> static std::optional<Content> without(const std::vector<Written<Content>>& steps, std::optional<Content> recorded);
    std::map<std::string, Values> values_;
    std::map<std::string, std::vector<Written<std::string>>> files_;
};

}  // namespace brenvik
