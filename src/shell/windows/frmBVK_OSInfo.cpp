#include "shell/windows/frmBVK_OSInfo.h"

#include <fmt/core.h>

#include "frame/program/Product.h"
#include "frame/text/Texts.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int TextTitle = 105, TextProgram = 94, TextProgramDate = 95, TextDatabase = 96, TextDatabaseDate = 97, TextSystem = 107,
              TextVersion = 106, TextBuild = 29, TextBrowser = 185, TextUnknown = 216;

}  // namespace

std::string browserVersionText(const FrameContext& ctx) {
    if (ctx.intIEMajor == 0) return strBVKTexte(TextUnknown);
    return fmt::format("{}.{:02}.{:04}", ctx.intIEMajor, ctx.intIEMinor, ctx.intIEBuild);
}

frmBVK_OSInfo::frmBVK_OSInfo(const TipdbContext& ctx, QWidget* parent) : InfoWindows("frmBVK_OSInfo", TextTitle, parent) {
    line("lblProgVer", TextProgram, "lblProgVerA", qt(ctx.strProgVersion));
    line("lblProgDate", TextProgramDate, "lblProgDateA", qt(product::ProgramDate));
    line("lblDBVer", TextDatabase, "lblDBVerA", plainLine(ctx.strDBVersion));
    line("lblDBDate", TextDatabaseDate, "lblDBDateA", plainLine(ctx.strDBDatum));
    auto* rule = new QFrame(this);
    rule->setFrameShape(QFrame::HLine);
    rule->setFrameShadow(QFrame::Sunken);
    addRow(rule);
    line("lblOS", TextSystem, "txtOS", plainLine(ctx.systemDisplay()));
    line("lblVersion", TextVersion, "txtVersion", qt(fmt::format("{}.{}", ctx.osVersion.dwMajorVersion, ctx.osVersion.dwMinorVersion)));
    line("lblBuild", TextBuild, "txtBuild", QString::number(ctx.osVersion.dwBuildNumber));
    line("lblIEVersion", TextBrowser, "txtIEVersion", qt(browserVersionText(ctx)));
    closeButton("cmdOK");
    setMinimumWidth(400);
}

}  // namespace brenvik
