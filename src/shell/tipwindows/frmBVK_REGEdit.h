#pragma once
// One value of the registry, to be looked at and changed in the form of its type: text, number, lines or bytes.
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStackedWidget>

#include "browser/RegBrowser.h"
#include "registry/text/ValueText.h"
#include "shell/widgets/Dialogs.h"

namespace brenvik {

class frmBVK_REGEdit : public Dialog {
public:
    frmBVK_REGEdit(UserPort& port, REGEditAnfrage& request, QWidget* parent);

private:
    void makeFields();
    QWidget* makeValue();
    QWidget* makeToolbar();
    void fillTypes();
    void showForm(Wertform form, const QString& text);
    void showValue();                 // what the request holds, in its form
    void changeType();
    void changeNumberForm(Wertform form);
    bool inLines() const { return form_ == Wertform::Zeilen || form_ == Wertform::Bytewerte; }
    std::string enteredText() const;
    std::optional<RawValue> entered();   // none: it does not fit, and the user has been told
    QWidget* valueField();
    void save();

    UserPort& port_;
    REGEditAnfrage& request_;
    Wertform form_ = Wertform::Text;
    bool readOnly_ = false;
    std::optional<std::string> shownText_;   // while the field still holds it nothing was changed
    QLineEdit *Text1_, *Text2_, *Text3_;
    QPlainTextEdit* Text2Zeilen_;
    QStackedWidget* value_;
    QComboBox* Combo1_;
    QWidget* numberForms_;
    QRadioButton *opbDezimal_, *opbHex_;
    QLabel* lblHinweis_;
    QPushButton* cmdSave_ = nullptr;
};

}  // namespace brenvik
