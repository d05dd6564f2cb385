#pragma once
// What several kinds do alike.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tipengine/kinds/Kind.h"

namespace brenvik {

// Loading and unloading of the elements of a control array.
void DynModAdd(MainWindow& window, std::int16_t kind, std::int16_t index);
void DynModDel(MainWindow& window, std::int16_t kind, std::int16_t index);
// Element 0 is never unloaded, only hidden with the rest, so a counter ends at 0, or stays at -1.
void unloadPanels(Context& ctx, const Traits& kind, void (*each)(MainWindow&, std::int16_t, std::int16_t) = DynModDel);

std::optional<bool> onOff(const std::string& text);               // "on", "ein", "off", "aus"
std::string joined(const std::vector<std::string>& parts);        // "\"a\", \"b\""
std::vector<std::int16_t> entriesOfKind(const Tipp& tipp, std::int16_t kind);
// The sub keys of the Tip's key as rows, each with the text of the named value below it.
void addKeyRows(KindHost& host, Panel& panel);
void fillKeyRows(KindHost& host, Panel& panel, const std::string& unterWert);
std::string rowTexts(const Panel& panel);

// Kinds 4 and 5: one of several texts.
class OneOfSeveral : public Kind {
public:
    using Kind::Kind;
    void choose(KindHost& host, Panel& panel, int item) const override;
    std::string shownText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    std::string setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const override;
};

// Kinds 6 and 7: one panel with a choice among the entries, the first one shown.
class EntryChoice : public Kind {
public:
    using Kind::Kind;
    void choose(KindHost& host, Panel& panel, int item) const override;

protected:
    Panel& buildChoice(KindHost& host) const;
    static std::int16_t chosenEntry(const Panel& panel) { return panel.entries.at(static_cast<std::size_t>(panel.chosen)); }

private:
    virtual void showEntry(const CurrentTip& tip, Panel& panel, std::int16_t entry) const = 0;
};

}  // namespace brenvik
