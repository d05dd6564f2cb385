#pragma once
// Carrying out the content of a REG file on a store, all or nothing, and showing beforehand what it would change.
#include <optional>
#include <string>
#include <vector>

#include "registry/RegOperations.h"
#include "registry/text/RegText.h"

namespace brenvik {

// Empty: everything was carried out. Else nothing was, and these are all the lines that cannot be read or, if all can be, that
// the store refuses. Throws RegError if the store takes no changes at all.
std::vector<RegTextProblem> replay(RegStore& store, const RegTextFile& file);

struct ChangePreview {
    Root root = Root::LocalMachine;
    std::string key;
    bool isKey = false;                        // the key itself: keyBefore and the opposite afterwards
    bool keyBefore = false;
    ValueName name = ValueName::unnamed();
    std::optional<RawValue> before, after;     // empty: not there
};

struct Preview {
    std::vector<ChangePreview> changes;   // in the order of the file; only what would really be another
    std::vector<RegTextProblem> problems;      // then there are no changes
};

// Changes nothing: carries everything out and takes it back.
Preview previewOf(RegStore& store, const RegTextFile& file);

}  // namespace brenvik
