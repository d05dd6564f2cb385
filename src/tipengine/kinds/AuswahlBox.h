#pragma once
#include "tipengine/kinds/Parts.h"

namespace brenvik {

// Kind 4: a list of texts; the chosen text is the value.
class AuswahlBoxKind final : public OneOfSeveral {
public:
    AuswahlBoxKind();
    void build(KindHost& host, std::int16_t i) const override;
    void unload(Context& ctx) const override;
    std::optional<std::string> valueText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    void checkSource(const SourceCheck& check) const override;
};

}  // namespace brenvik
