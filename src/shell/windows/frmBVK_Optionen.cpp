#include "shell/windows/frmBVK_Optionen.h"

#include <QGroupBox>
#include <QHBoxLayout>

#include "frame/files/FileSystem.h"
#include "frame/program/Product.h"
#include "frame/text/Texts.h"
#include "shell/widgets/Colours.h"
#include "shell/widgets/QtText.h"
#include "shell/widgets/WrapButton.h"

namespace brenvik {
namespace {

constexpr int TextTitle = 62, TextSound = 63, TextDelete = 64, TextDeleteNote = 65, TextSystem = 66, TextSystemNote = 67, TextNoDelay = 68,
              TextOldHelp = 69, TextNewHelp = 70, TextHelpFolder = 71, TextHelpNote = 72, TextAskPassword = 134, TextPassword = 135,
              TextPasswordAgain = 136, TextPasswordInfo = 137, TextNoRights = 138, TextRegForm = 144, TextRegClassic = 145, TextRegNew = 146,
              TextHelpFile = 147, TextHistoryFolder = 217, TextFavouritesFolder = 218, TextBackupFolder = 219;
constexpr int ButtonCancel = 0, ButtonOk = 8, ButtonBrowse = 18;

constexpr const char* ColourSchemes[][2] = {{"System", "Wie das System"}, {"Hell", "Hell"}, {"Dunkel", "Dunkel"}};

QString oneLine(int text) { return qt(strBVKTexte(text)).replace(QStringLiteral("\r\n"), QStringLiteral(" ")); }

}  // namespace

frmBVK_Optionen::frmBVK_Optionen(OptionenRequest& request, QWidget* parent)
    : Dialog("frmBVK_Optionen", qt(strBVKTexte(TextTitle)), parent), request_(request), tabOption_(new QTabWidget(this)) {
    tabOption_->setObjectName(QStringLiteral("tabOption"));
    tabOption_->setAccessibleName(qt(strBVKTexte(TextTitle)));
    tabOption_->setUsesScrollButtons(false);
    makeGeneral();
    makeChecks();
    makeFiles();
    makeFolders();
    makeHelp();
    makePassword();
    auto* box = new QVBoxLayout(this);
    box->addWidget(tabOption_, 1);
    auto* row = new QHBoxLayout;
    QPushButton* cmdOptOKButton = button("cmdOptOK", qt(strBVKButtons(ButtonOk)));
    QPushButton* cmdAbbruch = button("cmdAbbruch", qt(strBVKButtons(ButtonCancel)));
    cmdOptOKButton->setDefault(true);
    row->addStretch(1);
    row->addWidget(cmdOptOKButton);
    row->addWidget(cmdAbbruch);
    box->addLayout(row);
    connect(cmdOptOKButton, &QPushButton::clicked, this, [this] { cmdOptOK(); });
    connect(cmdAbbruch, &QPushButton::clicked, this, &QDialog::reject);
    resize(600, 420);
}

// --- the parts of a page ---

QVBoxLayout* frmBVK_Optionen::page(const char* name, const QString& caption) {
    auto* widget = new QWidget(tabOption_);
    widget->setObjectName(QLatin1String(name));
    widget->setAutoFillBackground(true);    // the style's own ground of a page is too light for the warnings on it
    widget->setBackgroundRole(QPalette::Window);
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(12, 12, 12, 12);
    column->setSpacing(8);
    tabOption_->addTab(widget, caption);
    return column;
}

QCheckBox* frmBVK_Optionen::check(QVBoxLayout& column, const char* name, const QString& caption, bool on, std::function<void(bool)> store) {
    auto* box = new WrapCheckBox(this);
    box->setText(caption);
    box->setObjectName(QString::fromUtf8(name));
    box->setChecked(on);
    column.addWidget(box);
    connect(box, &QCheckBox::clicked, this, [this, store = std::move(store)](bool checked) {
        request_.ctx.click();
        store(checked);
    });
    return box;
}

QRadioButton* frmBVK_Optionen::option(QVBoxLayout& column, const char* name, const QString& caption, bool on, std::function<void()> chosen) {
    auto* button = new WrapRadioButton(this);
    button->setText(caption);
    button->setObjectName(QString::fromUtf8(name));
    button->setChecked(on);
    column.addWidget(button);
    connect(button, &QRadioButton::clicked, this, [this, chosen = std::move(chosen)] {
        request_.ctx.click();
        chosen();
    });
    return button;
}

QLabel* frmBVK_Optionen::note(QVBoxLayout& column, const char* name, const QString& text) {
    QLabel* shown = label("", text);
    shown->setObjectName(QString::fromUtf8(name));
    column.addWidget(shown);
    return shown;
}

QLineEdit* frmBVK_Optionen::folder(QVBoxLayout& column, const char* field, const char* buttonName, int text, std::string& value) {
    QLabel* caption = label("", qt(strBVKTexte(text)));
    auto* edit = new QLineEdit(qt(value), this);
    edit->setObjectName(QLatin1String(field));
    edit->setAccessibleName(caption->text());
    caption->setBuddy(edit);
    QPushButton* browse = button(buttonName, qt(strBVKButtons(ButtonBrowse)));
    browse->setAccessibleName(caption->text() + QLatin1Char(' ') + browse->text().remove(QLatin1Char('&')));
    auto* row = new QHBoxLayout;
    row->addWidget(edit, 1);
    row->addWidget(browse);
    column.addWidget(caption);
    column.addLayout(row);
    folders_.emplace_back(edit, &value);
    return edit;
}

// --- the pages ---

void frmBVK_Optionen::makeGeneral() {
    QVBoxLayout* column = page("seiteAllgemein", QStringLiteral("Allgemein"));
    Settings& s = request_.values;
    check(*column, "chkSound", oneLine(TextSound), s.SoundOn, [&s](bool on) { s.SoundOn = on; });
    check(*column, "chkLoadInfo", oneLine(TextNoDelay), !s.ShowInfo, [&s](bool on) { s.ShowInfo = !on; });
    QLabel* caption = label("lblFarbschema", QStringLiteral("&Farbschema:"));
    caption->setTextFormat(Qt::AutoText);   // with its mnemonic
    auto* cboFarbschema = new QComboBox(this);
    cboFarbschema->setObjectName(QStringLiteral("cboFarbschema"));
    cboFarbschema->setAccessibleName(QStringLiteral("Farbschema"));
    caption->setBuddy(cboFarbschema);
    for (const auto& scheme : ColourSchemes) cboFarbschema->addItem(QString::fromUtf8(scheme[1]), QString::fromUtf8(scheme[0]));
    cboFarbschema->setCurrentIndex(std::max(0, cboFarbschema->findData(qt(s.ColourScheme))));
    connect(cboFarbschema, &QComboBox::activated, this, [&s, cboFarbschema] { s.ColourScheme = utf8(cboFarbschema->currentData().toString()); });
    auto* row = new QHBoxLayout;
    row->addWidget(caption);
    row->addWidget(cboFarbschema);
    row->addStretch(1);
    column->addLayout(row);
    column->addStretch(1);
}

void frmBVK_Optionen::makeChecks() {
    QVBoxLayout* column = page("seitePruefungen", QStringLiteral("Prüfungen"));
    Settings& s = request_.values;
    check(*column, "chkBSPruefen", oneLine(TextSystem), s.BSSystemAktiv, [&s](bool on) { s.BSSystemAktiv = on; });
    setTextColour(*note(*column, "lblBSPruefen", oneLine(TextSystemNote)), warningColour());
    check(*column, "chkBSErsatz", QStringLiteral("Ein nicht erkanntes Betriebssystem wie Windows XP behandeln (ab dem nächsten Start)"), s.BSErsatz,
          [&s](bool on) { s.BSErsatz = on; });
    column->addSpacing(8);
    check(*column, "chkLöschen", oneLine(TextDelete), s.LöschenAktiv, [&s](bool on) { s.LöschenAktiv = on; });
    setTextColour(*note(*column, "lblLöschen", oneLine(TextDeleteNote)), warningColour());
    column->addStretch(1);
}

void frmBVK_Optionen::makeFiles() {
    QVBoxLayout* column = page("seiteRegDateien", QStringLiteral("REG-Dateien"));
    auto* frmRegFile = new QGroupBox(oneLine(TextRegForm), this);
    frmRegFile->setObjectName(QStringLiteral("frmRegFile"));
    column->addWidget(frmRegFile);
    auto* forms = new QVBoxLayout(frmRegFile);
    Settings& s = request_.values;
    option(*forms, "opbClassic", oneLine(TextRegClassic), s.RegFileClasic && !s.RegFileChecked, [&s] { s.RegFileClasic = true, s.RegFileChecked = false; });
    option(*forms, "opbNew", oneLine(TextRegNew).simplified(), !s.RegFileClasic && !s.RegFileChecked,
           [&s] { s.RegFileClasic = s.RegFileChecked = false; });
    option(*forms, "opbGeprueft", QStringLiteral("Geprüftes Format (wird von jedem Importprogramm gleich gelesen)"), s.RegFileChecked,
           [&s] { s.RegFileChecked = true; });
    column->addStretch(1);
}

void frmBVK_Optionen::makeFolders() {
    QVBoxLayout* column = page("seiteVerzeichnisse", QStringLiteral("Verzeichnisse"));
    Settings& s = request_.values;
    const auto browsable = [&](const char* field, const char* buttonName, int text, std::string& value) {
        QLineEdit* edit = folder(*column, field, buttonName, text, value);
        connect(findChild<QPushButton*>(QLatin1String(buttonName)), &QPushButton::clicked, this,
                [this, edit] { edit->setText(qt(request_.PfadChange(utf8(edit->text())))); });
    };
    browsable("txtHistoryPfad", "cmdHisBrowse", TextHistoryFolder, s.strHistoryPfad);
    browsable("txtFavoritePfad", "cmdFavBrowse", TextFavouritesFolder, s.strFavoritenPfad);
    browsable("txtBackupPfad", "cmdBckBrowse", TextBackupFolder, s.strBackupPath);
    column->addStretch(1);
}

void frmBVK_Optionen::makeHelp() {
    QVBoxLayout* column = page("seiteHilfedatei", QStringLiteral("Hilfedatei"));
    auto* frmHelpFile = new QGroupBox(oneLine(TextHelpFile), this);
    frmHelpFile->setObjectName(QStringLiteral("frmHelpFile"));
    column->addWidget(frmHelpFile);
    auto* kinds = new QVBoxLayout(frmHelpFile);
    const bool old = request_.values.Ostrana_Name == product::OstranaHlp;
    opbAltesHelp_ = option(*kinds, "opbAltesHelp", oneLine(TextOldHelp), old, [this] { chooseHelp(std::string(product::OstranaHlp)); });
    opbNeuesHelp_ = option(*kinds, "opbNeuesHelp", oneLine(TextNewHelp), !old, [this] { chooseHelp(std::string(product::OstranaChm)); });
    txtHelpPfad_ = folder(*column, "txtHelpPfad", "cmdBrowse", TextHelpFolder, request_.values.strOstranaPfad);
    connect(findChild<QPushButton*>(QStringLiteral("cmdBrowse")), &QPushButton::clicked, this, [this] {
        const std::string chosen = BrowseForFolder(request_.ctx, utf8(txtHelpPfad_->text()));
        if (!chosen.empty()) txtHelpPfad_->setText(qt(chosen));
    });
    note(*column, "lblHelpInfo", oneLine(TextHelpNote));
    column->addStretch(1);
}

void frmBVK_Optionen::makePassword() {
    QVBoxLayout* column = page("seiteKennwort", QStringLiteral("Kennwort"));
    const bool admin = request_.ctx.blnAdmin;
    QLabel* lblPWInfo = note(*column, "lblPWInfo", oneLine(admin ? TextPasswordInfo : TextNoRights));
    if (!admin) setTextColour(*lblPWInfo, warningColour());
    const auto changed = [this] { request_.passwordChanged = true; };
    QCheckBox* chkPasswort = check(*column, "chkPasswort", oneLine(TextAskPassword), request_.chkPasswort, [this, changed](bool on) {
        request_.chkPasswort = on;
        changed();
    });
    auto* grid = new QGridLayout;
    const auto field = [&](const char* name, int text, std::string& value, int line) {
        QLabel* caption = label("", qt(strBVKTexte(text)));
        caption->setWordWrap(false);
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QLatin1String(name));
        edit->setEchoMode(QLineEdit::Password);
        edit->setAccessibleName(caption->text());
        caption->setBuddy(edit);
        edit->setEnabled(admin);
        grid->addWidget(caption, line, 0);
        grid->addWidget(edit, line, 1);
        connect(edit, &QLineEdit::textChanged, this, [&value, changed](const QString& typed) {
            value = utf8(typed);
            changed();
        });
        return edit;
    };
    txtPW1_ = field("txtPW1", TextPassword, request_.txtPW1, 0);
    txtPW2_ = field("txtPW2", TextPasswordAgain, request_.txtPW2, 1);
    grid->setColumnStretch(1, 1);
    column->addLayout(grid);
    chkPasswort->setEnabled(admin);
    note(*column, "lblPWGilt",
         QStringLiteral("Eine Änderung gilt sofort, gespeichert wird sie aber erst beim Beenden des Programms. Wird es nicht ordnungsgemäß beendet, "
                        "gilt beim nächsten Start das bisherige Kennwort."));
    note(*column, "lblPWSchutz", QStringLiteral("Das Kennwort hält nur vom Start dieses Programms ab. Daten schützt es nicht."));
    column->addStretch(1);
}

// --- what the user does ---

void frmBVK_Optionen::showHelp() {
    const bool old = request_.values.Ostrana_Name == product::OstranaHlp;
    (old ? opbAltesHelp_ : opbNeuesHelp_)->setChecked(true);
    txtHelpPfad_->setText(qt(request_.values.strOstranaPfad));
}

void frmBVK_Optionen::chooseHelp(const std::string& file) {
    readFolder(*txtHelpPfad_, request_.values.strOstranaPfad);
    request_.chooseHelpFile(file);
    showHelp();
}

// A folder that was typed gets its separator here, since the program puts file names right behind it.
void frmBVK_Optionen::readFolder(QLineEdit& field, std::string& value) { value = withSeparator(utf8(field.text().trimmed())); }

void frmBVK_Optionen::cmdOptOK() {
    for (const auto& [field, value] : folders_) readFolder(*field, *value);
    if (request_.cmdOptOK()) return accept();
    tabOption_->setCurrentWidget(tabOption_->findChild<QWidget*>(QStringLiteral("seiteKennwort")));
    txtPW1_->setFocus();
    txtPW1_->selectAll();
}

}  // namespace brenvik
