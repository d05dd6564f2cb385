#include "shell/tipwindows/frmBVK_Bearbeiten.h"

#include <QHBoxLayout>

#include "frame/text/Texts.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int TextTitle = 156, TextKeyName = 157, TextDescription = 158, TextInfo = 159, TextCommand = 160;
constexpr int ButtonSave = 4, ButtonBack = 16, ButtonBrowse = 18;
constexpr int LongestField = 100'000;
constexpr int Width = 560;

}  // namespace

frmBVK_Bearbeiten::frmBVK_Bearbeiten(BearbeitenRequest& request, QWidget* parent)
    : Dialog("frmBVK_Bearbeiten", qt(strBVKTexte(TextTitle)), parent), request_(request), txtKeyName_(new QLineEdit(this)),
      txtBeschreibung_(new QLineEdit(this)), txtBefehl_(new QLineEdit(this)) {
    const auto field = [](QLineEdit& edit, const char* name, QLabel* caption) {
        edit.setObjectName(QLatin1String(name));
        edit.setMaxLength(LongestField);
        edit.setAccessibleName(caption->text());
        caption->setBuddy(&edit);
    };
    QLabel* lblKeyName = label("lblKeyName", qt(strBVKTexte(TextKeyName)));
    QLabel* lblBeschreibung = label("lblBeschreibung", qt(strBVKTexte(TextDescription)));
    QLabel* lblBefehl = label("lblBefehl", qt(strBVKTexte(TextCommand)));
    field(*txtKeyName_, "txtKeyName", lblKeyName);
    field(*txtBeschreibung_, "txtBeschreibung", lblBeschreibung);
    field(*txtBefehl_, "txtBefehl", lblBefehl);
    QPushButton* browse = button("cmdBefehl", qt(strBVKButtons(ButtonBrowse)));
    QPushButton* save = button("cmdSave", qt(strBVKButtons(ButtonSave)));
    QPushButton* back = button("cmdZurück", qt(strBVKButtons(ButtonBack)));
    save->setDefault(true);

    auto* grid = new QGridLayout(this);
    grid->addWidget(lblKeyName, 0, 0, 1, 2);
    grid->addWidget(txtKeyName_, 1, 0, 1, 2);
    grid->addWidget(lblBeschreibung, 2, 0, 1, 2);
    grid->addWidget(txtBeschreibung_, 3, 0, 1, 2);
    grid->addWidget(label("lblInfo", qt(strBVKTexte(TextInfo))), 4, 0, 1, 2);
    grid->addWidget(lblBefehl, 5, 0, 1, 2);
    grid->addWidget(txtBefehl_, 6, 0);
    grid->addWidget(browse, 6, 1);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(save);
    row->addWidget(back);
    grid->addLayout(row, 7, 0, 1, 2);
    grid->setRowStretch(7, 1);
    resize(Width, layout()->totalHeightForWidth(Width));

    connect(browse, &QPushButton::clicked, this, [this] { cmdBefehl(); });
    connect(save, &QPushButton::clicked, this, [this] { cmdSave(); });
    connect(back, &QPushButton::clicked, this, &QDialog::reject);

    if (!request_.neu && request_.commandRead) request_.commandRead(request_);
    showFields();
}

void frmBVK_Bearbeiten::readFields() {
    request_.txtKeyName = utf8(txtKeyName_->text());
    request_.txtBeschreibung = utf8(txtBeschreibung_->text());
    request_.txtBefehl = utf8(txtBefehl_->text());
}

void frmBVK_Bearbeiten::showFields() {
    txtKeyName_->setText(qt(request_.txtKeyName));
    txtBeschreibung_->setText(qt(request_.txtBeschreibung));
    txtBefehl_->setText(qt(request_.txtBefehl));
}

void frmBVK_Bearbeiten::cmdSave() {
    readFields();
    if (request_.txtKeyName.empty() || request_.txtBefehl.empty()) {
        (request_.txtKeyName.empty() ? txtKeyName_ : txtBefehl_)->setFocus();
        return;
    }
    if (request_.save && request_.save(request_)) accept();
}

void frmBVK_Bearbeiten::cmdBefehl() {
    readFields();
    if (request_.commandFind) request_.commandFind(request_);
    showFields();
}

}  // namespace brenvik
