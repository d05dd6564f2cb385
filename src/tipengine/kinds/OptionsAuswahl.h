#pragma once
#include "tipengine/kinds/Parts.h"

namespace brenvik {

// Kind 5: up to six options with a number each.
class OptionsAuswahlKind final : public OneOfSeveral {
public:
    OptionsAuswahlKind();
    void build(KindHost& host, std::int16_t i) const override;
    void unload(Context& ctx) const override;
    std::optional<std::string> valueText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    void checkSource(const SourceCheck& check) const override;
};

}  // namespace brenvik
