#include "shell/windows/frmBVK_OSErkennung.h"

#include <QVBoxLayout>

#include "frame/text/Texts.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int Width = 470;
constexpr int TextCaption = 22, TextPlease = 23, TextName = 24, TextData = 25, ButtonOk = 8;

}  // namespace

frmBVK_OSErkennung::frmBVK_OSErkennung(OSErkennungRequest& request, QWidget* parent)
    : Dialog("frmBVK_OSErkennung", qt(strBVKTexte(TextCaption)), parent) {
    const OSVERSIONINFO& v = request.version;
    const struct {
        const char* name;
        int text;               // strBVKTexte
        std::uint32_t figure;
    } lines[] = {{"lblOSVersion", 26, v.dwOSVersionInfoSize}, {"lblOSMajor", 27, v.dwMajorVersion}, {"lblOSMinor", 28, v.dwMinorVersion},
                 {"lblOSBuild", 29, v.dwBuildNumber}, {"lblOSID", 30, v.dwPlatformId}};
    auto* grid = new QGridLayout;
    grid->setContentsMargins(16, 0, 0, 0);
    grid->setHorizontalSpacing(24);
    grid->setColumnStretch(1, 1);
    int row = 0;
    for (const auto& line : lines) {
        grid->addWidget(label(line.name, qt(strBVKTexte(line.text))), row, 0);
        QLabel* figure = label((std::string(line.name) + "Anz").c_str(), QString::number(line.figure));
        figure->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        figure->setAccessibleName(qt(strBVKTexte(line.text)) + QLatin1Char(' ') + figure->text());
        grid->addWidget(figure, row++, 1);
    }
    QPushButton* ok = button("cmdOK", qt(strBVKButtons(ButtonOk)));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    QLabel* please = label("lblOSInfo1", qt(strBVKTexte(TextPlease)));
    please->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* box = new QVBoxLayout(this);
    box->setSpacing(12);
    box->addWidget(please);
    box->addWidget(label("lblOSInfo2", qt(strBVKTexte(TextName))));
    box->addWidget(label("lblOSInfo3", qt(strBVKTexte(TextData))));
    box->addLayout(grid);
    box->addWidget(ok, 0, Qt::AlignRight);
    fixSize(Width);
    ok->setFocus();
}

}  // namespace brenvik
