#include "shell/windows/frmBVK_Info.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QFrame>
#include <QHBoxLayout>
#include <QTimer>
#include <QVBoxLayout>

#include "frame/program/Product.h"
#include "frame/text/Texts.h"
#include "shell/widgets/Colours.h"
#include "shell/widgets/Icons.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int TextDisclaimer = 5, TextVersion = 94, TextModules = 154;
constexpr int Done = 100;
constexpr int Width = 470, LogoSize = 96;

}  // namespace

frmBVK_Info::frmBVK_Info(FrameContext& ctx, bool withPause)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint), ctx_(ctx), withPause_(withPause) {
    setObjectName(QStringLiteral("frmBVK_Info"));
    setWindowTitle(qt(product::Titel));
    setWindowIcon(IconSet::program());
    setAttribute(Qt::WA_QuitOnClose, false);
    setFocusPolicy(Qt::StrongFocus);
    lblStartInfo_ = label("lblStartInfo", qt(ctx.strStartInfo));
    ProgressBar1_ = new QProgressBar(this);
    ProgressBar1_->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1_->setAccessibleName(QStringLiteral("Fortschritt"));
    ProgressBar1_->setRange(0, Done);
    ProgressBar1_->setTextVisible(false);

    auto* row = new QHBoxLayout;
    row->addWidget(label("lblStart", qt(strBVKTexte(TextModules))));
    row->addWidget(lblStartInfo_, 1);
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(10, 10, 10, 12);
    box->addWidget(makeInfoFrame());
    box->addSpacing(4);
    box->addLayout(row);
    box->addWidget(ProgressBar1_);
    setFixedWidth(Width);
    setFixedHeight(box->heightForWidth(Width));
}

QLabel* frmBVK_Info::label(const char* name, const QString& text) {
    auto* label = new QLabel(text, this);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

QWidget* frmBVK_Info::makeInfoFrame() {
    auto* fraInfo = new QFrame(this);
    fraInfo->setObjectName(QStringLiteral("fraInfo"));
    fraInfo->setFrameShape(QFrame::StyledPanel);
    fraInfo->setAutoFillBackground(true);
    fraInfo->setBackgroundRole(QPalette::Base);

    QLabel* imgLogo = label("imgLogo", {});
    imgLogo->setPixmap(IconSet::programPixmap(LogoSize, devicePixelRatioF()));
    QLabel* imgWizard = label("imgWizard", qt(product::Titel));     // the product's name, large
    QFont large = imgWizard->font();
    large.setPointSizeF(large.pointSizeF() * 2.4);
    large.setBold(true);
    imgWizard->setFont(large);
    setTextColour(*imgWizard, accentColour(palette()));
    QLabel* disclaimer = label("lblBVKInfoText", qt(strBVKTexte(TextDisclaimer)));
    disclaimer->setWordWrap(true);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(3);
    texts->addStretch(1);
    texts->addWidget(imgWizard);
    texts->addWidget(label("lblBVKVersion", qt(strBVKTexte(TextVersion) + ctx_.strProgVersion)));
    texts->addWidget(label("lblBVKDate", qt(product::ProgramDate)));
    texts->addWidget(label("lblBVKCopy", qt(product::Rights)));
    texts->addStretch(1);
    auto* row = new QHBoxLayout;
    row->setSpacing(20);
    row->addWidget(imgLogo);
    row->addLayout(texts, 1);
    auto* box = new QVBoxLayout(fraInfo);
    box->setContentsMargins(20, 18, 20, 16);
    box->setSpacing(14);
    box->addLayout(row);
    box->addWidget(disclaimer);
    return fraInfo;
}

void frmBVK_Info::Update(int percent) {
    ProgressBar1_->setValue(percent);
    lblStartInfo_->setText(qt(ctx_.strStartInfo));
    if (!withPause_ || !ctx_.einstellungen.ShowInfo || ProgressBar1_->value() != Done) return;
    ctx_.port.letEventsRun();
    pause();
}

void frmBVK_Info::pause() {
    QEventLoop loop;
    waiting_ = &loop;
    QTimer::singleShot(PauseMs, &loop, &QEventLoop::quit);
    loop.exec();
    waiting_ = nullptr;
}

void frmBVK_Info::endPause() {
    if (waiting_) waiting_->quit();
}

void frmBVK_Info::mousePressEvent(QMouseEvent*) { endPause(); }

void frmBVK_Info::keyPressEvent(QKeyEvent*) { endPause(); }

// The load sequence closes it; what the user can do is to shorten the pause.
void frmBVK_Info::closeEvent(QCloseEvent* event) {
    endPause();
    event->ignore();
}

}  // namespace brenvik
