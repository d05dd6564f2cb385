#include "shell/tipwindows/frmBVK_RegName.h"

#include <QHBoxLayout>

#include "frame/text/Texts.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int ButtonCancel = 0, ButtonOk = 8;
constexpr int LongestName = 16'383;     // of a value

}  // namespace

frmBVK_RegName::frmBVK_RegName(RegNameRequest& request, QWidget* parent)
    : Dialog("frmBVK_RegName", qt(request.titel), parent), request_(request), txtName_(new QLineEdit(qt(request.name), this)) {
    QLabel* lblName = label("lblName", qt(request.question));
    lblName->setWordWrap(false);
    lblName->setBuddy(txtName_);
    txtName_->setObjectName(QStringLiteral("txtName"));
    txtName_->setAccessibleName(lblName->text());
    txtName_->setMaxLength(LongestName);
    txtName_->selectAll();
    QPushButton* ok = button("cmdOK", qt(strBVKButtons(ButtonOk)));
    QPushButton* cancel = button("cmdAbbruch", qt(strBVKButtons(ButtonCancel)));
    ok->setDefault(true);
    auto* box = new QVBoxLayout(this);
    box->addWidget(lblName);
    box->addWidget(txtName_);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(ok);
    row->addWidget(cancel);
    box->addLayout(row);
    resize(440, sizeHint().height());
    const auto enable = [this, ok] { ok->setEnabled(!txtName_->text().isEmpty()); };
    connect(txtName_, &QLineEdit::textChanged, this, enable);
    enable();
    connect(ok, &QPushButton::clicked, this, [this] {
        request_.name = utf8(txtName_->text());
        request_.ok = true;
        accept();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

}  // namespace brenvik
