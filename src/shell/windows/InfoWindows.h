#pragma once
// What the windows that only show something have in common: lines of caption and value, and a button that closes.
#include <QLineEdit>

#include "shell/widgets/Dialogs.h"

namespace brenvik {

class InfoWindows : public Dialog {
protected:
    InfoWindows(const char* name, int titleText, QWidget* parent);   // titleText: strBVKTexte

    QLabel* text(const char* name, int number) { return label(name, tableText(number)); }
    // The value can be selected and copied, but not changed.
    QLineEdit* line(const char* captionName, int captionText, const char* valueName, const QString& value = {});
    QPushButton* closeButton(const char* name);      // the last thing in the window
    void addRow(QWidget* widget);
    static QString tableText(int number);

    QGridLayout* grid() { return grid_; }
    QHBoxLayout* buttons() { return buttons_; }

private:
    QGridLayout* grid_;
    QHBoxLayout* buttons_;
};

}  // namespace brenvik
