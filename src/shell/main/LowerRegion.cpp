#include "shell/main/LowerRegion.h"

#include <QHBoxLayout>

#include "frame/Messages.h"
#include "frame/text/Texts.h"
#include "shell/widgets/Colours.h"
#include "shell/widgets/FlowLayout.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

struct RowButton {
    const char* name;
    int caption;        // strBVKButtons
    int tip;            // strBVKTips, -1: none
    Command command;
    const char* icon;
};
constexpr RowButton RowButtons[] = {
    {"cmdRegSave", 4, 11, Command::RegSave, "speichern"},
    {"cmdRegDel", 5, 12, Command::RegDel, "loeschen"},
    {"cmdKeyInfo", 6, -1, Command::KeyInfo, "schluessel"},
    {"cmdDefault", 7, 14, Command::Default, "standard"},
};
constexpr int HeadGap = 6;
constexpr int ButtonHelp = 1, ButtonNew = 26, TextPresentSettings = 56, TipMachine = 10;

}  // namespace

InfoFrame::InfoFrame(QWidget* parent) : TitledFrame("fraInfo", parent), txtInfo_(new QPlainTextEdit(this)) {
    txtInfo_->setObjectName(QStringLiteral("txtInfo"));
    txtInfo_->setAccessibleName(QStringLiteral("Beschreibung"));
    txtInfo_->setReadOnly(true);
    txtInfo_->setTabChangesFocus(true);
    txtInfo_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    txtInfo_->setMinimumHeight(30);
    lblHilfe_ = new QLabel(QString::fromUtf8(messages::MoreInfos), this);
    lblHilfe_->setObjectName(QStringLiteral("lblHilfe"));
    cmdHilfe_ = new QPushButton(qt(strBVKButtons(ButtonHelp)), this);
    cmdHilfe_->setObjectName(QStringLiteral("cmdHilfe"));
    cmdHilfe_->setToolTip(QStringLiteral("Hilfe zu dem, was gerade angezeigt wird (F1)"));
    lblHilfe_->setBuddy(cmdHilfe_);
    auto* head = new QHBoxLayout;
    head->setSpacing(HeadGap);
    body()->removeWidget(caption());
    head->addWidget(caption(), 1);
    head->addWidget(lblHilfe_);
    head->addWidget(cmdHilfe_);
    body()->addLayout(head);
    body()->addWidget(txtInfo_, 1);
}

void InfoFrame::show(const MainWindow& record, bool helpPossible) {
    caption()->setText(plainLine(record.fraInfo));
    const QColor red = warningColour();
    setTextColour(*caption(), record.fraInfoFarbe == TextColour::Rot ? red : QColor());
    setTextColour(*txtInfo_, record.txtInfoFarbe == TextColour::Rot ? red : QColor());
    const QString text = plainLines(record.txtInfo);
    if (txtInfo_->toPlainText() != text) txtInfo_->setPlainText(text);
    QSizePolicy kept = txtInfo_->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    txtInfo_->setSizePolicy(kept);
    txtInfo_->setVisible(record.txtInfoSichtbar);
    cmdHilfe_->setEnabled(helpPossible);
    fitHelpLabel();
}

void InfoFrame::resizeEvent(QResizeEvent* event) {
    TitledFrame::resizeEvent(event);
    fitHelpLabel();
}

// A long caption (it warns of something then) needs the line more than the words beside the button, which has the same to say.
void InfoFrame::fitHelpLabel() {
    const int needed = caption()->fontMetrics().horizontalAdvance(caption()->text()) + lblHilfe_->sizeHint().width() + cmdHilfe_->sizeHint().width() + 2 * HeadGap;
    lblHilfe_->setVisible(needed <= body()->contentsRect().width());
}

ActionRow::ActionRow(IconSet& icons, std::function<void(Command, const QString&)> run, QWidget* parent) : TitledFrame("fraSteuerung", parent) {
    caption()->setText(qt(strBVKTexte(TextPresentSettings)));
    auto* holder = new QWidget(this);
    auto* flow = new FlowLayout(holder, 6);
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const RowButton& entry = RowButtons[i];
        buttons_[i] = new QPushButton(qt(strBVKButtons(entry.caption)), holder);
        buttons_[i]->setObjectName(QLatin1String(entry.name));
        if (entry.tip >= 0) buttons_[i]->setToolTip(qt(strBVKTips(entry.tip)));
        buttons_[i]->setMinimumWidth(98);
        flow->addWidget(buttons_[i]);
        connect(buttons_[i], &QPushButton::clicked, this, [run, entry] { run(entry.command, QLatin1String(entry.name)); });
    }
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    holder->setSizePolicy(policy);
    body()->addWidget(holder);
    refreshIcons(icons);
}

void ActionRow::refreshIcons(IconSet& icons) {
    for (std::size_t i = 0; i < buttons_.size(); ++i) buttons_[i]->setIcon(icons.get(QLatin1String(RowButtons[i].icon)));
    if (!entries_) return;
    buttons_[0]->setIcon(icons.get(QStringLiteral("neu")));
    buttons_[3]->setIcon(icons.get(QStringLiteral("bearbeiten")));
}

void ActionRow::show(const MainWindow& record, const std::function<bool(Command)>& possible, IconSet& icons) {
    if (const bool entries = record.cmdRegSave == strBVKButtons(ButtonNew); entries != entries_) {
        entries_ = entries;
        refreshIcons(icons);
    }
    for (std::size_t i = 0; i < buttons_.size(); ++i) buttons_[i]->setEnabled(possible(RowButtons[i].command));
    const auto put = [](QPushButton& button, const std::string& caption, const std::string& tip) {
        if (!caption.empty()) button.setText(qt(caption));
        if (!tip.empty()) button.setToolTip(qt(tip));
    };
    put(*buttons_[0], record.cmdRegSave, record.tipRegSave);
    put(*buttons_[1], {}, record.tipRegDel);
    put(*buttons_[3], record.cmdDefault, record.tipDefault);
}

StatusRow::StatusRow(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("sbrBVK"));
    auto* flow = new FlowLayout(this, 4);
    flow->setContentsMargins(4, 2, 4, 3);
    flow->setStretchLast(true);
    for (std::size_t i = 0; i < panels_.size(); ++i) {
        panels_[i] = new QLabel(this);
        panels_[i]->setObjectName(elementName("sbrBVK", i + 1));
        panels_[i]->setFrameShape(QFrame::StyledPanel);
        panels_[i]->setFrameShadow(QFrame::Sunken);
        panels_[i]->setMargin(2);
        panels_[i]->setTextFormat(Qt::PlainText);
        panels_[i]->setTextInteractionFlags(Qt::TextSelectableByMouse);
        flow->addWidget(panels_[i]);
    }
    panels_[0]->setToolTip(qt(strBVKTips(TipMachine)));
    panels_[0]->setMinimumWidth(120);
}

void StatusRow::show(const MainWindow& record) {
    for (std::size_t i = 0; i < panels_.size(); ++i) panels_[i]->setText(plainLine(record.sbrBVK[i]));
}

}  // namespace brenvik
