#pragma once
#include "tipengine/kinds/Kind.h"

namespace brenvik {

// Kind 3: a number between two others, in panel units; a divisor makes them from those of the value.
class ZahlenWerteKind final : public Kind {
public:
    ZahlenWerteKind();
    void build(KindHost& host, std::int16_t i) const override;
    void unload(Context& ctx) const override;
    void setNumber(KindHost& host, Panel& panel, std::int32_t value) const override;
    void typeNumber(KindHost& host, Panel& panel, const std::string& text) const override;
    bool shownDifferently(std::int32_t type) const override { return type == 3; }
    bool mayCollect(KindHost& host, const Panel& panel, std::optional<BootInput>& input) const override;
    std::optional<std::string> valueText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    std::string shownText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    std::string setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const override;
    void checkSource(const SourceCheck& check) const override;

private:
    std::string ownForm(FrameContext& ctx, std::int32_t type, std::string text) const override;
};

}  // namespace brenvik
