#include "shell/windows/frmBVK_UndoConflicts.h"

#include <QHBoxLayout>

#include "lists/Messages.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int Widths[] = {260, 130, 130, 130, 150};

}  // namespace

frmBVK_UndoConflicts::frmBVK_UndoConflicts(UndoConflictsRequest& request, QWidget* parent)
    : Dialog("frmBVK_UndoConflicts", qt(messages::ConflictTitle), parent), request_(request), lvConflicts_(new QTreeWidget(this)) {
    auto* grid = new QGridLayout(this);
    QLabel* info = label("lblConflicts", qt(messages::ConflictInfo));
    info->setWordWrap(true);
    info->setBuddy(lvConflicts_);
    grid->addWidget(info, 0, 0);
    lvConflicts_->setObjectName(QStringLiteral("lvConflicts"));
    lvConflicts_->setAccessibleName(info->text());
    lvConflicts_->setHeaderLabels({QStringLiteral("Überschreiben"), QStringLiteral("Vorher"), QStringLiteral("Nach der Änderung"), QStringLiteral("Jetzt"), QStringLiteral("Geändert")});
    lvConflicts_->setRootIsDecorated(false);
    lvConflicts_->setAllColumnsShowFocus(true);
    lvConflicts_->setAlternatingRowColors(true);
    for (int k = 0; k < 5; ++k) lvConflicts_->setColumnWidth(k, Widths[k]);
    fill();
    grid->addWidget(lvConflicts_, 1, 0);
    QPushButton* cmdProceed = button("cmdProceed", qt(messages::ConflictGoOn));
    QPushButton* cmdCancel = button("cmdCancel", qt(messages::ConflictAbort));
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(cmdProceed);
    row->addWidget(cmdCancel);
    grid->addLayout(row, 2, 0);
    cmdCancel->setDefault(true);
    resize(840, 320);
    lvConflicts_->setFocus();
    connect(cmdProceed, &QPushButton::clicked, this, [this] {
        for (int k = 0; k < lvConflicts_->topLevelItemCount(); ++k)
            request_.rows[static_cast<std::size_t>(k)].restore = lvConflicts_->topLevelItem(k)->checkState(0) == Qt::Checked;
        request_.proceed = true;
        accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmBVK_UndoConflicts::fill() {
    for (const UndoConflictsRequest::Row& row : request_.rows) {
        auto* item = new QTreeWidgetItem(lvConflicts_);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(0, row.restore ? Qt::Checked : Qt::Unchecked);
        const std::string* texts[] = {&row.place, &row.before, &row.after, &row.now, &row.by};
        for (int k = 0; k < 5; ++k) item->setText(k, plainLine(*texts[k]));
    }
    if (lvConflicts_->topLevelItemCount() > 0) lvConflicts_->setCurrentItem(lvConflicts_->topLevelItem(0));
}

}  // namespace brenvik
