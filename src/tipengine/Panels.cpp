// What the user does in a panel goes to its kind; unloading of panels.
#include <fmt/format.h>
#include <utility>

#include "frame/Konvertierung.h"
#include "frame/Reports.h"
#include "tipengine/Meldungen.h"
#include "tipengine/TippMaschine.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {

template <class T> bool isIn(const std::vector<T>& items, int place) { return place >= 0 && place < static_cast<int>(items.size()); }

}  // namespace

Panel* TippMaschine::listening(std::size_t place) {
    if (ctx_.blnAusgabeLaeuft || ctx_.blnInitPanel || place >= fenster().panels.size()) return nullptr;
    return &fenster().panels[place];
}

bool TippMaschine::rowsAreKeys(const Panel& panel) const { return kindOf(panel).rowsAreKeys(eintrag(panel.eintraege.front()).Wertname); }

void TippMaschine::touched(Panel& panel, std::int16_t entry) {
    if (entry > 0) wert(entry).beruehrt = true;
    ctx_.blnGeaendert = true;
    kindOf(panel).showLocks(tip_, panel);
    redraw(panel);
}

// The window draws a panel: what its controls report meanwhile comes from the drawing, not from the user.
void TippMaschine::redraw(Panel& panel) {
    const bool before = std::exchange(ctx_.blnInitPanel, true);
    observer_.panelChanged(tip_.placeOf(panel));
    ctx_.blnInitPanel = before;
}

bool TippMaschine::settle() { return DatenSichern(); }

void TippMaschine::userCheck(std::size_t place, bool on) {
    if (Panel* panel = listening(place)) kindOf(*panel).check(*this, *panel, on);
}

void TippMaschine::userText(std::size_t place, const std::string& text) {
    if (Panel* panel = listening(place)) kindOf(*panel).typeText(*this, *panel, text);
}

void TippMaschine::userNumber(std::size_t place, std::int32_t value) {
    if (Panel* panel = listening(place)) kindOf(*panel).setNumber(*this, *panel, value);
}

void TippMaschine::userNumberText(std::size_t place, const std::string& text) {
    if (Panel* panel = listening(place)) kindOf(*panel).typeNumber(*this, *panel, text);
}

void TippMaschine::userChoose(std::size_t place, int item) {
    if (Panel* panel = listening(place); panel != nullptr && isIn(panel->auswahl, item)) kindOf(*panel).choose(*this, *panel, item);
}

void TippMaschine::userBrowse(std::size_t place) {
    if (Panel* panel = listening(place)) kindOf(*panel).browse(*this, *panel);
}

void TippMaschine::userColour(std::size_t place) {
    if (Panel* panel = listening(place)) kindOf(*panel).pickColour(*this, *panel);
}

void TippMaschine::userTick(std::size_t place, int row, bool on) {
    if (Panel* panel = listening(place); panel != nullptr && isIn(panel->zeilen, row)) kindOf(*panel).tick(*this, *panel, static_cast<std::size_t>(row), on);
}

void TippMaschine::userSelectRow(std::size_t place, int row) {
    if (Panel* panel = listening(place); panel != nullptr && row < static_cast<int>(panel->zeilen.size())) kindOf(*panel).selectRow(*panel, row);
}

void TippMaschine::userSwitch(std::size_t place, int box, bool on) {
    if (Panel* panel = listening(place); panel != nullptr && isIn(panel->schalter, box)) kindOf(*panel).flip(*this, *panel, static_cast<std::size_t>(box), on);
}

void TippMaschine::userSwitchText(std::size_t place, int box, const std::string& text) {
    if (Panel* panel = listening(place); panel != nullptr && isIn(panel->schalter, box))
        kindOf(*panel).typeSwitch(*this, *panel, static_cast<std::size_t>(box), text);
}

void TippMaschine::userBootTitle(std::size_t place, const std::string& text) {
    if (Panel* panel = listening(place)) kindOf(*panel).typeTitle(*this, *panel, text);
}

// --- the same as text, for the command line ---

StatusZeile TippMaschine::statusOf(std::int16_t entry) {
    const Panel* panel = tip_.panelOfEntry(entry);
    return panel != nullptr ? panel->status : StatusZeile{};
}

std::string TippMaschine::shownText(std::int16_t entry) {
    const Panel* panel = tip_.panelOfEntry(entry);
    return panel != nullptr ? kindOf(*panel).shownText(tip_, *panel, entry) : std::string();
}

std::string TippMaschine::setEntryFromText(std::int32_t number, const std::string& text) {
    if (number < 1 || number > letzterEintrag()) return fmt::format(meldung::KeinEintrag, number);
    const auto entry = static_cast<std::int16_t>(number);
    Panel* panel = tip_.panelOfEntry(entry);
    if (panel == nullptr) return meldung::NichtSetzbar;
    if (panel->unfertig) return meldung::PanelUnfertig;
    return kindOf(*panel).setText(*this, *panel, entry, text);
}

// --- unloading ---

void TippMaschine::TippsEntladen() {
    reportAndGoOn(ctx_, "TippsEntladen", [&] {
        for (std::int16_t i = 1; i <= letzterEintrag(); ++i) kindOf(eintrag(i)).unload(ctx_);
    });
    fenster().panels.clear();
    observer_.panelsChanged();
}

void TippMaschine::DatenAusgabeOff() {
    ProcTrace trace(ctx_.trace, "DatenAusgabeOff");
    fenster().fraSteuerung = false;
    FB_KeySave(false);
    FB_KeyDel(false);
    FB_RegFile(false);
    FB_KeyInfo(false);
    observer_.windowChanged();
}

}  // namespace brenvik
