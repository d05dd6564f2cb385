#pragma once
// The Tip on screen: its panels are built from the record by their kinds, and follow what the user and the saves make of them.
#include "tipengine/kinds/KindHost.h"
#include "tipengine/tip/Settler.h"
#include "tipengine/tip/TipPart.h"
#include "tipengine/values/ValueReader.h"

namespace brenvik {

class TipScreen final : public KindHost, private TipPart {
public:
    TipScreen(CurrentTip& currentTip, TipFiles& tipFiles, ValueReader& reader, WindowObserver& observer, Settler& settler)
        : KindHost(currentTip, tipFiles), TipPart(currentTip), reader_(reader), observer_(observer), settler_(settler) {}

    void FrameStartEinstellungen();
    void DBTippsAusgeben();
    void TippsEntladen();
    void DatenAusgabeOff();
    void reloadTip();                                   // TippsEntladen and DBTippsAusgeben, if a Tip is shown
    void look();                                         // builds the panels for a look: asks nothing, changes nothing
    bool mayBeShown() const;                             // whether DBTippsAusgeben would show aktuellerTipp on this system
    bool rowsAreKeys(const Panel& panel) const;          // ticks choose keys for deleting, no values
    void showWhatIsThere();                              // panels stay, but say which of their values are there now

    void readEntry(std::int16_t i, StatusLine& status) override { reader_.readEntry(i, status); }
    void readSilently(Panel& panel) override { reader_.readSilently(panel); }
    void touched(Panel& panel, std::int16_t entry) override;
    void redraw(Panel& panel) override;
    [[nodiscard]] bool settle() override { return settler_.DatenSichern(Whereabouts::StaysAsItIs); }
    void captionsForEntries() override;

private:
    void prepareOutput();
    bool isRemote() const;
    bool meantForThisSystem() const;
    bool showSuitability();
    bool buildEntries();
    void buildEntry(std::int16_t i);
    void finishPanel(Panel& panel);
    void finishOutput();
    void captionsNormal();
    StatusLine statusNow(const Panel& panel);

    ValueReader& reader_;
    WindowObserver& observer_;
    Settler& settler_;
};

}  // namespace brenvik
