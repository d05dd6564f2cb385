#pragma once
// Common look of the program's modal windows.
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace brenvik {

class Dialog : public QDialog {
public:
    Dialog(const char* name, const QString& title, QWidget* parent);

protected:
    QLabel* label(const char* name, const QString& text);
    QPushButton* button(const char* name, const QString& caption);
};

}  // namespace brenvik
