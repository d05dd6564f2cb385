#include "shell/frmBVK_OSErkennung.h"

namespace brenvik {
namespace {

constexpr int TextTitle = 22, TextPlease = 23, TextSystem = 24, TextFigures = 25, TextSize = 26, TextMajor = 27, TextMinor = 28, TextBuild = 29,
              TextId = 30;

}  // namespace

frmBVK_OSErkennung::frmBVK_OSErkennung(const OSErkennungAnfrage& request, QWidget* parent) : Infofenster("frmBVK_OSErkennung", TextTitle, parent) {
    QLabel* please = text("lblOSInfo1", TextPlease);
    please->setTextInteractionFlags(Qt::TextSelectableByMouse);       // it holds an address
    addRow(please);
    addRow(text("lblOSInfo2", TextSystem));
    addRow(text("lblOSInfo3", TextFigures));
    const OSVERSIONINFO& v = request.version;
    line("lblOSVersion", TextSize, "lblOSVersionAnz", QString::number(v.dwOSVersionInfoSize));
    line("lblOSMajor", TextMajor, "lblOSMajorAnz", QString::number(v.dwMajorVersion));
    line("lblOSMinor", TextMinor, "lblOSMinorAnz", QString::number(v.dwMinorVersion));
    line("lblOSBuild", TextBuild, "lblOSBuildAnz", QString::number(v.dwBuildNumber));
    line("lblOSID", TextId, "lblOSIDAnz", QString::number(v.dwPlatformId));
    closeButton("cmdOK");
    setFixedWidth(480);
}

}  // namespace brenvik
