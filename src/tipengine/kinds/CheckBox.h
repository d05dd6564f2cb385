#pragma once
#include "tipengine/kinds/Kind.h"

namespace brenvik {

// Kind 1: a box for two values.
class CheckBoxKind final : public Kind {
public:
    CheckBoxKind();
    void build(KindHost& host, std::int16_t i) const override;
    void unload(Context& ctx) const override;
    void check(KindHost& host, Panel& panel, bool on) const override;
    bool isKnown(const ReadValue& value) const override;
    std::optional<std::string> valueText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    std::string registryText(const TipEntry& e, std::string text) const override;
    std::string shownText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    std::string setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const override;
    void checkSource(const SourceCheck& check) const override;

private:
    std::string ownForm(FrameContext& ctx, std::int32_t type, std::string text) const override;
};

}  // namespace brenvik
