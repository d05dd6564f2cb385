#pragma once
#include "tipengine/kinds/Kind.h"

namespace brenvik {

// Kind 11: a box for each bit of a number or of a row of bytes.
class BitMaskeKind final : public Kind {
public:
    BitMaskeKind();
    void build(KindHost& host, std::int16_t i) const override;
    void flip(KindHost& host, Panel& panel, std::size_t box, bool on) const override;
    std::optional<std::string> valueText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    std::string registryText(const TipEntry& e, std::string text) const override;
    std::string shownText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    std::string setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const override;
    void checkSource(const SourceCheck& check) const override;
};

}  // namespace brenvik
