#include "shell/windows/frmBVK_About.h"

#include "frame/program/Product.h"
#include "shell/widgets/Icons.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int TextTitle = 98, TextDisclaimer = 99, TextVersion = 94, LogoSize = 64, Width = 430;

}  // namespace

frmBVK_About::frmBVK_About(const std::string& strProgVersion, QWidget* parent) : InfoWindows("frmBVK_About", TextTitle, parent) {
    auto* imgLogo = new QLabel(this);
    imgLogo->setObjectName(QStringLiteral("imgLogo"));
    imgLogo->setPixmap(IconSet::programPixmap(LogoSize, devicePixelRatioF()));
    QLabel* title = label("lblTitel", qt(product::Titel));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.8);
    large.setBold(true);
    title->setFont(large);
    QLabel* version = label("lblVersion", tableText(TextVersion) + QLatin1Char(' ') + qt(strProgVersion));
    version->setTextInteractionFlags(Qt::TextSelectableByMouse);
    grid()->addWidget(imgLogo, 0, 0, 2, 1);
    grid()->addWidget(title, 0, 1, Qt::AlignBottom);
    grid()->addWidget(version, 1, 1, Qt::AlignTop);
    addRow(text("lblInfo", TextDisclaimer));
    addRow(label("lblCopyRight", qt(product::Rights)));
    closeButton("cmdOK");
    setFixedSize(Width, layout()->totalHeightForWidth(Width));
}

}  // namespace brenvik
