#include "shell/tipwindows/frmBVK_BootINI.h"

#include <QHBoxLayout>

#include "frame/text/Texts.h"
#include "shell/widgets/Colours.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int TextTitle = 180, TextInfo = 181, TextName = 182, TextWarning = 183, TextNameTaken = 184;
constexpr int ButtonCancel = 0, ButtonOk = 8, ButtonOverwrite = 31;

}  // namespace

frmBVK_BootINI::frmBVK_BootINI(UserPort& port, BootINIRequest& request, QWidget* parent)
    : Dialog("frmBVK_BootINI", qt(strBVKTexte(TextTitle)), parent), port_(port), request_(request), txtBootWert_(new QLineEdit(this)) {
    txtBootWert_->setObjectName(QStringLiteral("txtBootWert"));
    txtBootWert_->setText(qt(request.txtBootWert));
    txtBootWert_->selectAll();
    QLabel* lblBootWert = label("lblBootWert", qt(strBVKTexte(TextName)));
    lblBootWert->setBuddy(txtBootWert_);
    txtBootWert_->setAccessibleName(lblBootWert->text());
    QLabel* lblWarnung = label("lblWarnung", qt(strBVKTexte(TextWarning)));
    setTextColour(*lblWarnung, warningColour());
    QPushButton* ok = button("cmdOK", qt(strBVKButtons(ButtonOk)));
    QPushButton* write = button("cmdWrite", qt(strBVKButtons(ButtonOverwrite)));
    QPushButton* cancel = button("cmdAbbruch", qt(strBVKButtons(ButtonCancel)));
    ok->setDefault(true);

    auto* box = new QVBoxLayout(this);
    box->addWidget(label("lblInfo", qt(strBVKTexte(TextInfo))));
    box->addWidget(lblBootWert);
    box->addWidget(txtBootWert_);
    box->addWidget(lblWarnung);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    for (QPushButton* each : {ok, write, cancel}) row->addWidget(each);
    box->addLayout(row);
    setFixedWidth(520);

    connect(ok, &QPushButton::clicked, this, [this] { cmdOK(); });
    connect(write, &QPushButton::clicked, this, [this] {
        request_.reply = BootINIRequest::Reply::Overwrite;
        accept();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmBVK_BootINI::cmdOK() {
    if (request_.naming(utf8(txtBootWert_->text())))
        accept();
    else
        port_.tell(strBVKTexte(TextNameTaken));
}

}  // namespace brenvik
