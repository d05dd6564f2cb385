#pragma once
#include "tipengine/WindowRequests.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {

// Kind 10: entries of a context menu: a key each, whose unnamed value is the text shown, with a key "Command" below it.
class KontextKind final : public Kind {
public:
    KontextKind();
    void build(KindHost& host, std::int16_t i) const override;
    void tick(KindHost& host, Panel& panel, std::size_t row, bool on) const override;
    void selectRow(Panel& panel, int row) const override;
    std::string shownText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const override;
    void checkSource(const SourceCheck& check) const override;

private:
    void ReadRecKontext(KindHost& host, Panel& panel) const;
};

// The window on one entry of the menu, filled and saved here.
class MenuEntries {
public:
    MenuEntries(CurrentTip& tip, ChangeRecorder& recorder) : tip_(tip), recorder_(recorder) {}

    Panel* list() const;                       // of the Tip on screen; none: it has no menu
    BearbeitenRequest request(bool neu);       // the fields as they open, for a new entry or the selected row

private:
    std::string key() const;
    bool KontextSpeichern(BearbeitenRequest& dialog);
    void write(BearbeitenRequest& dialog, const std::string& key, bool exists, const ListLine* selected);

    CurrentTip& tip_;
    ChangeRecorder& recorder_;
};

}  // namespace brenvik
