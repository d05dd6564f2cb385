#include "shell/tipwindows/frmBVK_PWAbfrage.h"

#include <QHBoxLayout>

#include "frame/text/Texts.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int TextTitle = 140, TextPassword = 141, TextWrong = 142, TextWrongTitle = 143;
constexpr int ButtonCancel = 0, ButtonOk = 8;

}  // namespace

frmBVK_PWAbfrage::frmBVK_PWAbfrage(UserPort& port, PWAbfrageRequest& request, QWidget* parent)
    : Dialog("frmBVK_PWAbfrage", qt(strBVKTexte(TextTitle)), parent), port_(port), request_(request), txtPW_(new QLineEdit(this)) {
    QLabel* lblPW = label("lblPW", qt(strBVKTexte(TextPassword)));
    lblPW->setWordWrap(false);
    lblPW->setBuddy(txtPW_);
    txtPW_->setObjectName(QStringLiteral("txtPW"));
    txtPW_->setEchoMode(QLineEdit::Password);
    txtPW_->setAccessibleName(lblPW->text());
    QPushButton* ok = button("cmdOK", qt(strBVKButtons(ButtonOk)));
    QPushButton* cancel = button("cmdAbbruch", qt(strBVKButtons(ButtonCancel)));
    ok->setDefault(true);
    auto* grid = new QGridLayout(this);
    grid->addWidget(lblPW, 0, 0);
    grid->addWidget(txtPW_, 0, 1);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(ok);
    row->addWidget(cancel);
    grid->addLayout(row, 1, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    setFixedWidth(360);
    connect(ok, &QPushButton::clicked, this, [this] { cmdOK(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmBVK_PWAbfrage::cmdOK() {
    if (request_.check(utf8(txtPW_->text()))) {
        request_.passed = true;
        return accept();
    }
    port_.tell(strBVKTexte(TextWrong), box::Exclamation, strBVKTexte(TextWrongTitle));
    txtPW_->setFocus();
    txtPW_->selectAll();
}

}  // namespace brenvik
