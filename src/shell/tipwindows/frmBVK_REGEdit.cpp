#include "shell/tipwindows/frmBVK_REGEdit.h"

#include <QHBoxLayout>
#include <QShortcut>

#include "frame/Errors.h"
#include "frame/text/Texts.h"
#include "shell/widgets/Colours.h"
#include "shell/widgets/FieldText.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int ButtonCancel = 0, ButtonSave = 4;
constexpr std::size_t LargestEditable = 256 * 1024;      // bytes of a value; more than that no field is quick with
constexpr std::size_t LargestShown = 16 * 1024;
constexpr int Width = 540, HeightWithLines = 400;
constexpr int LongestLine = static_cast<int>(LargestEditable);

QString typeName(std::uint32_t type) {
    for (int i = 0; i < typeCount; ++i)
        if (typDatentyp(i).nummer == static_cast<std::int32_t>(type)) return qt(typDatentyp(i).name);
    return QStringLiteral("Typ %1").arg(type);
}

// The fields hold it unchanged; single surrogates and what Qt takes for the end of a paragraph they would not.
bool fitsField(const std::string& text) {
    const QString shown = qt(text);
    return utf8(shown) == text && !shown.contains(QChar::ParagraphSeparator);
}

}  // namespace

frmBVK_REGEdit::frmBVK_REGEdit(UserPort& port, REGEditRequest& request, QWidget* parent)
    : Dialog("frmBVK_REGEdit", request.ItemWert ? QStringLiteral("Wert ändern") : QStringLiteral("Neuer Wert"), parent), port_(port), request_(request),
      Text1_(new QLineEdit(this)), Text2_(new QLineEdit), Text3_(new QLineEdit(this)), Text2Zeilen_(new QPlainTextEdit), value_(new QStackedWidget(this)),
      Combo1_(new QComboBox(this)), numberForms_(new QWidget(this)), opbDecimal_(new QRadioButton(QStringLiteral("&Dezimal"), numberForms_)),
      opbHex_(new QRadioButton(QStringLiteral("&Hexadezimal"), numberForms_)), lblHint_(nullptr) {
    makeFields();
    fillTypes();
    showValue();
    (request_.neu ? static_cast<QWidget*>(Text1_) : valueField())->setFocus();
    resize(Width, inLines() ? HeightWithLines : sizeHint().height());
}

void frmBVK_REGEdit::makeFields() {
    auto* grid = new QGridLayout(this);
    const auto row = [&](int line, const char* name, const char* caption, QWidget* field) {
        QLabel* shown = label(name, QString::fromUtf8(caption));
        shown->setTextFormat(Qt::AutoText);    // with its mnemonic
        shown->setWordWrap(false);
        shown->setBuddy(field);
        field->setAccessibleName(shown->text().remove(QLatin1Char('&')).remove(QLatin1Char(':')));
        const bool tall = field == value_;
        if (tall) shown->setContentsMargins(0, 3, 0, 0);    // beside the first line of the field
        grid->addWidget(shown, line, 0, tall ? Qt::AlignTop : Qt::AlignVCenter);
        grid->addWidget(field, line, 1);
    };
    Text1_->setObjectName(QStringLiteral("Text1"));
    Text1_->setText(request_.ItemName.empty() && !request_.neu ? QStringLiteral("(default)") : plainLine(request_.ItemName));
    Text1_->setReadOnly(!request_.neu);
    Combo1_->setObjectName(QStringLiteral("Combo1"));
    Text3_->setObjectName(QStringLiteral("Text3"));
    Text3_->setText(plainLine(request_.ItemKey));
    Text3_->setReadOnly(true);
    Text3_->setCursorPosition(0);
    row(0, "lblKeyname", "&Keyname:", Text3_);
    row(1, "lblWertname", "Wert&name:", Text1_);
    row(2, "lblDatentyp", "Daten&typ:", Combo1_);
    row(3, "lblWert", "&Wert:", makeValue());
    lblHint_ = label("lblHinweis", {});
    grid->addWidget(lblHint_, 4, 1);
    grid->addWidget(makeToolbar(), 5, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(3, 1);
    QWidget* last = nullptr;
    for (QWidget* next : std::initializer_list<QWidget*>{Text3_, Text1_, Combo1_, Text2_, opbDecimal_, opbHex_, Text2Zeilen_, cmdSave_}) {
        if (last) setTabOrder(last, next);
        last = next;
    }
    connect(Combo1_, &QComboBox::activated, this, [this] { changeType(); });
    connect(opbDecimal_, &QRadioButton::clicked, this, [this] { changeNumberForm(ValueForm::Decimal); });
    connect(opbHex_, &QRadioButton::clicked, this, [this] { changeNumberForm(ValueForm::Hexadecimal); });
}

QWidget* frmBVK_REGEdit::makeValue() {
    Text2_->setObjectName(QStringLiteral("Text2"));
    Text2_->setMaxLength(LongestLine);
    Text2_->setAccessibleName(QStringLiteral("Wert"));
    Text2Zeilen_->setObjectName(QStringLiteral("Text2Zeilen"));
    Text2Zeilen_->setTabChangesFocus(true);
    Text2Zeilen_->setAccessibleName(QStringLiteral("Wert"));
    Text2Zeilen_->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto* line = new QWidget(value_);     // a line stands at the top, not in the middle of the room that lines need
    auto* column = new QVBoxLayout(line);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(Text2_);
    auto* numbers = new QHBoxLayout(numberForms_);
    numbers->setContentsMargins(0, 0, 0, 0);
    opbDecimal_->setObjectName(QStringLiteral("opbDezimal"));
    opbHex_->setObjectName(QStringLiteral("opbHex"));
    numbers->addWidget(opbDecimal_);
    numbers->addWidget(opbHex_);
    numbers->addStretch(1);
    column->addWidget(numberForms_);
    column->addStretch(1);
    value_->addWidget(line);
    value_->addWidget(Text2Zeilen_);
    return value_;
}

QWidget* frmBVK_REGEdit::makeToolbar() {
    auto* Toolbar1 = new QWidget(this);
    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    auto* row = new QHBoxLayout(Toolbar1);
    row->setContentsMargins(0, 0, 0, 0);
    cmdSave_ = button("cmdSave", qt(strBVKButtons(ButtonSave)));
    QPushButton* cmdAbbruch = button("cmdAbbruch", qt(strBVKButtons(ButtonCancel)));
    cmdSave_->setDefault(true);
    row->addStretch(1);
    row->addWidget(cmdSave_);
    row->addWidget(cmdAbbruch);
    connect(cmdSave_, &QPushButton::clicked, this, [this] { save(); });
    connect(cmdAbbruch, &QPushButton::clicked, this, &QDialog::reject);
    // Enter makes a new line in a list.
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this), &QShortcut::activated, cmdSave_, &QPushButton::click);
    return Toolbar1;
}

void frmBVK_REGEdit::fillTypes() {
    if (request_.ItemWert) {
        Combo1_->addItem(typeName(request_.ItemWert->type), request_.ItemWert->type);
        Combo1_->setEnabled(false);
        return;
    }
    for (int i = 0; i < typeCount; ++i) Combo1_->addItem(qt(typDatentyp(i).name), static_cast<std::uint32_t>(typDatentyp(i).nummer));
    Combo1_->setCurrentIndex(std::max(0, Combo1_->findData(request_.ItemTyp)));
}

void frmBVK_REGEdit::showForm(ValueForm form, const QString& text) {
    form_ = form;
    numberForms_->setVisible(form == ValueForm::Decimal || form == ValueForm::Hexadecimal);
    (form == ValueForm::Hexadecimal ? opbHex_ : opbDecimal_)->setChecked(true);
    value_->setCurrentIndex(inLines() ? 1 : 0);
    Text2Zeilen_->setSizePolicy(QSizePolicy::Expanding, inLines() ? QSizePolicy::Expanding : QSizePolicy::Ignored);
    if (inLines() && isVisible()) resize(width(), std::max(height(), HeightWithLines));
    if (inLines())
        Text2Zeilen_->setPlainText(text);
    else
        Text2_->setText(text);
    QFont fixed = font();
    if (form == ValueForm::ByteValues) {
        fixed.setStyleHint(QFont::Monospace);
        fixed.setFamily(QStringLiteral("monospace"));
    }
    Text2Zeilen_->setFont(fixed);
    shownText_ = enteredText();
}

void frmBVK_REGEdit::showValue() {
    if (!request_.ItemWert) return changeType();
    RawValue value = *request_.ItemWert;
    readOnly_ = value.bytes.size() > LargestEditable;
    if (readOnly_) value.bytes.resize(LargestShown);
    ValueForm form = readOnly_ ? ValueForm::ByteValues : inputForm(value);
    if (form != ValueForm::ByteValues && !fitsField(inputText(value, form))) form = ValueForm::ByteValues;
    if (readOnly_)
        lblHint_->setText(QStringLiteral("Der Wert ist %1 Bytes groß. Hier stehen die ersten %2, geändert werden kann er nicht.")
                                 .arg(request_.ItemWert->bytes.size()).arg(LargestShown));
    else if (form == ValueForm::ByteValues && inputForm(value.type) != ValueForm::ByteValues)
        lblHint_->setText(QStringLiteral("Der Inhalt hat nicht die Form, die sein Datentyp haben soll. Damit nichts verloren geht, stehen hier die einzelnen Bytes."));
    const std::string text = inputText(value, form);
    if (lblHint_->text().isEmpty()) lblHint_->setText(unseenNote(text));
    setTextColour(*lblHint_, warningColour());
    showForm(form, qt(text));
    Text2_->selectAll();
    Text2_->setReadOnly(readOnly_);
    Text2Zeilen_->setReadOnly(readOnly_);
    cmdSave_->setEnabled(!readOnly_);
}

// Only a value that is not there yet changes its type; what was typed is kept as text.
void frmBVK_REGEdit::changeType() {
    const std::string typed = enteredText();
    const ValueForm form = inputForm(Combo1_->currentData().toUInt());
    showForm(form, qt(typed));
}

void frmBVK_REGEdit::changeNumberForm(ValueForm form) {
    if (form == form_) return;
    const bool untouched = enteredText() == shownText_;
    const auto value = enteredText().empty() ? std::optional<RawValue>() : entered();
    if (!value && !enteredText().empty()) {
        (form_ == ValueForm::Hexadecimal ? opbHex_ : opbDecimal_)->setChecked(true);
        return;
    }
    showForm(form, value ? qt(inputText(*value, form)) : QString());
    if (!untouched) shownText_.reset();
}

std::string frmBVK_REGEdit::enteredText() const { return utf8(inLines() ? fieldText(*Text2Zeilen_) : Text2_->text()); }

QWidget* frmBVK_REGEdit::valueField() { return inLines() ? static_cast<QWidget*>(Text2Zeilen_) : Text2_; }

std::optional<RawValue> frmBVK_REGEdit::entered() {
    if (request_.ItemWert && enteredText() == shownText_) return request_.ItemWert;   // byte for byte
    try {
        return valueFromInput(enteredText(), Combo1_->currentData().toUInt(), form_);
    } catch (const NumberedError& error) {
        port_.tell(error.what(), box::Exclamation);
        valueField()->setFocus();
        return std::nullopt;
    }
}

void frmBVK_REGEdit::save() {
    if (readOnly_) return;
    const std::string name = request_.neu ? utf8(Text1_->text()) : request_.ItemName;
    if (request_.neu && name.empty()) return Text1_->setFocus();
    const auto value = entered();
    if (value && request_.save(name, *value)) accept();
}

}  // namespace brenvik
