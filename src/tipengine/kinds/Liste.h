#pragma once
#include "tipengine/kinds/Kind.h"

namespace brenvik {

// Kind 8: rows with boxes, for values that are there or not; without a value name for the sub keys of the Tip's key.
class ListeKind final : public Kind {
public:
    ListeKind();
    void build(KindHost& host, std::int16_t i) const override;
    void tick(KindHost& host, Panel& panel, std::size_t row, bool on) const override;
    void selectRow(Panel& panel, int row) const override;
    std::optional<std::string> valueText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    std::string shownText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    std::string setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const override;
    void checkSource(const SourceCheck& check) const override;

private:
    bool keys(const CurrentTip& tip, const Panel& panel) const { return rowsAreKeys(tip.entry(panel.entries.front()).Wertname); }
    void lock(const CurrentTip& tip, Panel& panel) const override;
    void ReadRecListe(KindHost& host, Panel& panel) const;
};

}  // namespace brenvik
