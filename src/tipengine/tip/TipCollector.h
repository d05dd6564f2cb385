#pragma once
// Taking the input of the panels and the values of Tips along, for saves, exports and lists.
#include "tipengine/TipTree.h"
#include "tipengine/values/ValueWriter.h"

namespace brenvik {

class TipCollector : private TipPart {
public:
    TipCollector(CurrentTip& tip, TipScreen& screen, TipTree& tree, ValueWriter& writer, ChangeRecorder& recorder)
        : TipPart(tip), screen_(screen), tree_(tree), writer_(writer), recorder_(recorder) {}

    bool DatenRead();                                    // false: a panel holds what cannot be, and the user was told
    bool collectForExport();                             // the same, and nothing counts as changed by it
    std::optional<Tipp> lookUpTip(std::int32_t number); // read with its keys resolved; what is on screen stays as it is
    // Carries prepared changes of several Tips out, all of them or none; each is recorded on its own. Empty: done, else
    // why not, in German. The caller tells the result.
    std::string writeTogether(std::vector<Change>& changes);

private:
    TipScreen& screen_;
    TipTree& tree_;
    ValueWriter& writer_;
    ChangeRecorder& recorder_;
};

}  // namespace brenvik
