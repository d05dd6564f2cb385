#include "tipengine/tip/PanelInput.h"

#include <fmt/format.h>

#include "frame/text/Conversions.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {

template <class T> bool isIn(const std::vector<T>& items, int place) { return place >= 0 && place < static_cast<int>(items.size()); }

}  // namespace

Panel* PanelInput::listening(std::size_t place) {
    if (ctx_.blnAusgabeLaeuft || ctx_.blnInitPanel || place >= windows().panels.size()) return nullptr;
    return &windows().panels[place];
}

void PanelInput::userCheck(std::size_t place, bool on) {
    if (Panel* panel = listening(place)) kindOf(*panel).check(host_, *panel, on);
}

void PanelInput::userText(std::size_t place, const std::string& text) {
    if (Panel* panel = listening(place)) kindOf(*panel).typeText(host_, *panel, text);
}

void PanelInput::userNumber(std::size_t place, std::int32_t value) {
    if (Panel* panel = listening(place)) kindOf(*panel).setNumber(host_, *panel, value);
}

void PanelInput::userNumberText(std::size_t place, const std::string& text) {
    if (Panel* panel = listening(place)) kindOf(*panel).typeNumber(host_, *panel, text);
}

void PanelInput::userChoose(std::size_t place, int item) {
    if (Panel* panel = listening(place); panel != nullptr && isIn(panel->selection, item)) kindOf(*panel).choose(host_, *panel, item);
}

void PanelInput::userBrowse(std::size_t place) {
    if (Panel* panel = listening(place)) kindOf(*panel).browse(host_, *panel);
}

void PanelInput::userColour(std::size_t place) {
    if (Panel* panel = listening(place)) kindOf(*panel).pickColour(host_, *panel);
}

void PanelInput::userTick(std::size_t place, int row, bool on) {
    if (Panel* panel = listening(place); panel != nullptr && isIn(panel->lines, row)) kindOf(*panel).tick(host_, *panel, static_cast<std::size_t>(row), on);
}

void PanelInput::userSelectRow(std::size_t place, int row) {
    if (Panel* panel = listening(place); panel != nullptr && row < static_cast<int>(panel->lines.size())) kindOf(*panel).selectRow(*panel, row);
}

void PanelInput::userSwitch(std::size_t place, int box, bool on) {
    if (Panel* panel = listening(place); panel != nullptr && isIn(panel->schalter, box)) kindOf(*panel).flip(host_, *panel, static_cast<std::size_t>(box), on);
}

void PanelInput::userSwitchText(std::size_t place, int box, const std::string& text) {
    if (Panel* panel = listening(place); panel != nullptr && isIn(panel->schalter, box))
        kindOf(*panel).typeSwitch(host_, *panel, static_cast<std::size_t>(box), text);
}

void PanelInput::userBootTitle(std::size_t place, const std::string& text) {
    if (Panel* panel = listening(place)) kindOf(*panel).typeTitle(host_, *panel, text);
}

std::string PanelInput::shownText(std::int16_t entry) const {
    const Panel* panel = tip_.panelOfEntry(entry);
    return panel != nullptr ? kindOf(*panel).shownText(tip_, *panel, entry) : std::string();
}

std::string PanelInput::setEntryFromText(std::int32_t number, const std::string& text) {
    if (number < 1 || number > lastEntry()) return fmt::format(messages::NoEntry, number);
    const auto entry = static_cast<std::int16_t>(number);
    Panel* panel = tip_.panelOfEntry(entry);
    if (panel == nullptr) return messages::NotSettable;
    if (panel->unfinished) return messages::PanelUnfinished;
    return kindOf(*panel).setText(host_, *panel, entry, text);
}

}  // namespace brenvik
