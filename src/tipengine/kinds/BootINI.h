#pragma once
#include "tipengine/kinds/Kind.h"

namespace brenvik {

// Kind 9: the boot menu file; its section as a table of entries, the panel on the selected one, and writing it back.
class BootINIKind final : public Kind {
public:
    BootINIKind();
    void build(KindHost& host, std::int16_t i) const override;
    void choose(KindHost& host, Panel& panel, int item) const override;
    void flip(KindHost& host, Panel& panel, std::size_t box, bool on) const override;
    void typeSwitch(KindHost& host, Panel& panel, std::size_t box, const std::string& text) const override;
    void typeTitle(KindHost& host, Panel& panel, const std::string& text) const override;
    bool mayCollect(KindHost& host, const Panel& panel, std::optional<BootInput>& input) const override;
    bool planFile(KindHost& host, std::int16_t entry, Change& change, std::string& refusal) const override;
    bool saveFile(KindHost& host, ChangeRecorder& recorder, std::int16_t entry) const override;
    std::string shownText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    std::string setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const override;
    void checkSource(const SourceCheck& check) const override;

private:
    void BootINIAuslesen(KindHost& host, Panel& panel, std::int16_t entry) const;
};

}  // namespace brenvik
