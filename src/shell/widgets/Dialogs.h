#pragma once
// Common look of the program's modal windows.
#include <QAbstractItemView>
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
    void fixSize(int width);    // after the layout is made: as high as the texts need at this width, and no resizing
};

// The Delete key in a list presses the button that deletes.
void deleteByKey(QAbstractItemView& list, QPushButton& button);

// Moves a window into the middle of another one's place, as far as the screen allows.
void FormZentrieren(const QRect& anchor, QWidget& window);

}  // namespace brenvik
