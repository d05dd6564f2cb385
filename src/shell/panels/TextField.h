#pragma once
// A text that the user edits, in one line or in several. What a control would not give back as it was given is shown
// read-only, with a word why: a text too long for it, of which it shows a part, and characters that it changes.
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QWidget>
#include <string>

namespace brenvik {

class TextField : public QWidget {
    Q_OBJECT
public:
    TextField(const QString& objectName, bool severalLines, QWidget* parent);

    void setValue(const std::string& text, bool readOnly);   // leaves cursor and selection alone if the text stands already
    bool severalLines() const { return lines_ != nullptr; }
    void setFieldAccessibleName(const QString& name);
    static constexpr std::size_t LongestShown = 100'000;    // UTF-8 bytes

signals:
    void edited(const QString& text);

private:
    QString fieldText() const;
    QLineEdit* line_ = nullptr;
    QPlainTextEdit* lines_ = nullptr;
    QLabel* note_;
};

}  // namespace brenvik
