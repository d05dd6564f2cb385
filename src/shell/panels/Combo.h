#pragma once
// A combo box for texts of any length: it does not widen its panel, shows the whole text as its tool tip, and its
// list is as wide as its longest line.
#include <QComboBox>
#include <string>
#include <vector>

namespace brenvik {

class Combo : public QComboBox {
    Q_OBJECT
public:
    Combo(const QString& objectName, QWidget* parent);
    void setChoices(const std::vector<std::string>& choices, int selected);
    void showPopup() override;
};

}  // namespace brenvik
