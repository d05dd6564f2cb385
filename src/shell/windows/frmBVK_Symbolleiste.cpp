#include "shell/windows/frmBVK_Symbolleiste.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "frame/text/Texts.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int KeyRole = Qt::UserRole;
constexpr int ButtonCancel = 0, ButtonOk = 8;

}  // namespace

frmBVK_Symbolleiste::frmBVK_Symbolleiste(const ButtonOrder& order, const ButtonOrder& standard, const QHash<QString, QAction*>& actions, QWidget* parent)
    : Dialog("frmBVK_Symbolleiste", QStringLiteral("Symbolleiste anpassen"), parent), actions_(actions), lstButtons_(new QListWidget(this)) {
    lstButtons_->setObjectName(QStringLiteral("lstButtons"));
    lstButtons_->setDragDropMode(QAbstractItemView::InternalMove);
    lstButtons_->setIconSize({24, 24});
    QLabel* lblButtons = label("lblButtons", QString::fromUtf8("&Knöpfe; ein Haken heißt, dass der Knopf gezeigt wird:"));
    lblButtons->setBuddy(lstButtons_);
    lstButtons_->setAccessibleName(QStringLiteral("Knöpfe"));
    cmdUp_ = button("cmdUp", QStringLiteral("Nach o&ben"));
    cmdDown_ = button("cmdDown", QStringLiteral("Nach &unten"));
    QPushButton* cmdStandard = button("cmdStandard", qt(strBVKButtons(7)));
    cmdOK_ = button("cmdOK", qt(strBVKButtons(ButtonOk)));
    QPushButton* cmdAbbruch = button("cmdAbbruch", qt(strBVKButtons(ButtonCancel)));
    cmdOK_->setDefault(true);

    auto* side = new QVBoxLayout;
    for (QPushButton* each : {cmdUp_, cmdDown_, cmdStandard}) side->addWidget(each);
    side->addStretch(1);
    auto* middle = new QHBoxLayout;
    middle->addWidget(lstButtons_, 1);
    middle->addLayout(side);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(cmdOK_);
    bottom->addWidget(cmdAbbruch);
    auto* box = new QVBoxLayout(this);
    box->addWidget(lblButtons);
    box->addLayout(middle);
    box->addLayout(bottom);
    resize(420, 400);

    connect(cmdUp_, &QPushButton::clicked, this, [this] { moveItem(-1); });
    connect(cmdDown_, &QPushButton::clicked, this, [this] { moveItem(1); });
    connect(cmdStandard, &QPushButton::clicked, this, [this, standard] { showOrder(standard); });
    connect(cmdOK_, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdAbbruch, &QPushButton::clicked, this, &QDialog::reject);
    connect(lstButtons_, &QListWidget::currentRowChanged, this, [this] { enableButtons(); });
    connect(lstButtons_, &QListWidget::itemChanged, this, [this] { enableButtons(); });
    showOrder(order);
}

void frmBVK_Symbolleiste::showOrder(const ButtonOrder& order) {
    lstButtons_->clear();
    for (const ButtonPlace& place : order) {
        const QAction* action = actions_.value(qt(place.key));
        auto* item = new QListWidgetItem(action ? action->text() : QStringLiteral("– Trennstrich –"));
        if (action) item->setIcon(action->icon());
        item->setData(KeyRole, qt(place.key));
        item->setFlags((item->flags() | Qt::ItemIsUserCheckable) & ~Qt::ItemIsDropEnabled);
        item->setCheckState(place.visible ? Qt::Checked : Qt::Unchecked);
        lstButtons_->addItem(item);
    }
    lstButtons_->setCurrentRow(0);
    enableButtons();
}

void frmBVK_Symbolleiste::moveItem(int by) {
    const int row = lstButtons_->currentRow(), target = row + by;
    if (row < 0 || target < 0 || target >= lstButtons_->count()) return;
    QListWidgetItem* item = lstButtons_->takeItem(row);
    lstButtons_->insertItem(target, item);
    lstButtons_->setCurrentRow(target);
}

// A toolbar without a button could not be brought back.
void frmBVK_Symbolleiste::enableButtons() {
    const int row = lstButtons_->currentRow();
    cmdUp_->setEnabled(row > 0);
    cmdDown_->setEnabled(row >= 0 && row + 1 < lstButtons_->count());
    bool shows = false;
    for (const ButtonPlace& place : order()) shows = shows || (place.visible && !place.isSeparator());
    cmdOK_->setEnabled(shows);
}

ButtonOrder frmBVK_Symbolleiste::order() const {
    ButtonOrder order;
    for (int i = 0; i < lstButtons_->count(); ++i) {
        const QListWidgetItem* item = lstButtons_->item(i);
        order.push_back({utf8(item->data(KeyRole).toString()), item->checkState() == Qt::Checked});
    }
    return order;
}

}  // namespace brenvik
