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
    frmBVK_REGEdit(UserPort& port, REGEditRequest& request, QWidget* parent);

private:
    void makeFields();
    QWidget* makeValue();
    QWidget* makeToolbar();
    void fillTypes();
    void showForm(ValueForm form, const QString& text);
    void showValue();                 // what the request holds, in its form
    void changeType();
    void changeNumberForm(ValueForm form);
    bool inLines() const { return form_ == ValueForm::Lines || form_ == ValueForm::ByteValues; }
    std::string enteredText() const;
    std::optional<RawValue> entered();   // none: it does not fit, and the user has been told
    QWidget* valueField();
    void save();

    UserPort& port_;
    REGEditRequest& request_;
    ValueForm form_ = ValueForm::Text;
    bool readOnly_ = false;
    std::optional<std::string> shownText_;   // while the field still holds it nothing was changed
    QLineEdit *Text1_, *Text2_, *Text3_;
    QPlainTextEdit* Text2Zeilen_;
    QStackedWidget* value_;
    QComboBox* Combo1_;
    QWidget* numberForms_;
    QRadioButton *opbDecimal_, *opbHex_;
    QLabel* lblHint_;
    QPushButton* cmdSave_ = nullptr;
};

}  // namespace brenvik
