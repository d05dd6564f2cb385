#pragma once
#include "tipengine/kinds/Parts.h"

namespace brenvik {

// Kind 7: colours, one at a time, as three numbers.
class FarbeKind final : public EntryChoice {
public:
    FarbeKind();
    void build(KindHost& host, std::int16_t i) const override;
    void pickColour(KindHost& host, Panel& panel) const override;
    bool shownDifferently(std::int32_t type) const override { return type == 3; }
    std::string registryText(const TipEntry& e, std::string text) const override;
    std::string setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const override;
    void checkSource(const SourceCheck& check) const override;

private:
    void showEntry(const CurrentTip& tip, Panel& panel, std::int16_t entry) const override;
};

}  // namespace brenvik
