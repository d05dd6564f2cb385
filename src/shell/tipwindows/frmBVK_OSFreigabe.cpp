#include "shell/tipwindows/frmBVK_OSFreigabe.h"

#include "frame/text/Texts.h"
#include "shell/widgets/Icons.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int TextTitle = 103, TextInfo = 104, MarkSize = 24;

}  // namespace

frmBVK_OSFreigabe::frmBVK_OSFreigabe(const Tipp& tipp, QWidget* parent) : InfoWindows("frmBVK_OSFreigabe", TextTitle, parent) {
    IconSet icons(palette());
    addRow(text("lblInfoTXT", TextInfo));
    const bool suitable[] = {tipp.Win95, tipp.Win98, tipp.WinME, tipp.WinNT, tipp.Win2000, tipp.WinXP};    // as strBVKBS
    for (std::size_t i = 0; i < std::size(suitable); ++i) {
        auto* mark = new QLabel(this);
        mark->setObjectName(elementName(suitable[i] ? "imgYes" : "imgNo", i));
        mark->setPixmap(icons.get(suitable[i] ? QStringLiteral("ja") : QStringLiteral("nein")).pixmap(QSize(MarkSize, MarkSize), devicePixelRatioF()));
        mark->setToolTip(suitable[i] ? QStringLiteral("Geeignet") : QStringLiteral("Nicht geeignet"));
        mark->setAccessibleName(mark->toolTip());
        auto* name = label("", qt(strBVKBS(static_cast<int>(i))));
        name->setObjectName(elementName("lblBSBezeichnung", i));
        name->setAccessibleDescription(mark->toolTip());
        name->setEnabled(suitable[i]);
        const int row = grid()->rowCount();
        grid()->addWidget(mark, row, 0);
        grid()->addWidget(name, row, 1);
    }
    closeButton("cmdOK");
    setMinimumWidth(330);
}

}  // namespace brenvik
