#pragma once
#include "tipengine/kinds/Kind.h"

namespace brenvik {

// Kind 2: a text field, with several lines for REG_MULTI_SZ; dwords in hexadecimal.
class TextWerteKind final : public Kind {
public:
    TextWerteKind();
    void build(KindHost& host, std::int16_t i) const override;
    void unload(Context& ctx) const override;
    void typeText(KindHost& host, Panel& panel, const std::string& text) const override;
    bool shownDifferently(std::int32_t type) const override { return type == 4; }
    std::string dwordForm(std::int32_t number) const override;
    std::optional<std::string> valueText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    std::string registryText(const TipEntry& e, std::string text) const override;
    std::string shownText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    std::string setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const override;
    void checkSource(const SourceCheck& check) const override;

private:
    std::string ownForm(FrameContext& ctx, std::int32_t type, std::string text) const override;
};

}  // namespace brenvik
