#include "shell/panels/Combo.h"

#include <QAbstractItemView>
#include <algorithm>

#include "shell/panels/PanelView.h"
#include "shell/widgets/PlainText.h"

namespace brenvik {

Combo::Combo(const QString& objectName, QWidget* parent) : QComboBox(parent) {
    setObjectName(objectName);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(12);
    setMaxVisibleItems(20);
    guardWheel(*this);
    connect(this, &QComboBox::currentTextChanged, this, [this](const QString& text) { setToolTip(toolTipText(text)); });
}

void Combo::setChoices(const std::vector<std::string>& choices, int selected) {
    QStringList wanted;
    for (const std::string& choice : choices) wanted.append(plainLine(choice));
    QStringList present;
    for (int i = 0; i < count(); ++i) present.append(itemText(i));
    if (present != wanted) {
        clear();
        addItems(wanted);
    }
    const int valid = selected >= 0 && selected < count() ? selected : -1;
    if (currentIndex() != valid) setCurrentIndex(valid);
}

void Combo::showPopup() {
    view()->setMinimumWidth(std::max(width(), view()->sizeHintForColumn(0) + 30));
    QComboBox::showPopup();
}

}  // namespace brenvik
