#pragma once
#include "tipengine/kinds/Parts.h"

namespace brenvik {

// Kind 6: paths, one at a time; chosen by a window if one likes.
class DriveKind final : public EntryChoice {
public:
    DriveKind();
    void build(KindHost& host, std::int16_t i) const override;
    void typeText(KindHost& host, Panel& panel, const std::string& text) const override;
    void browse(KindHost& host, Panel& panel) const override;
    std::string setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const override;
    void checkSource(const SourceCheck& check) const override;

private:
    void showEntry(const CurrentTip& tip, Panel& panel, std::int16_t entry) const override;
};

}  // namespace brenvik
