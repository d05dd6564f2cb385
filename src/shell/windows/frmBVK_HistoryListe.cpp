#include "shell/windows/frmBVK_HistoryListe.h"

#include <QAbstractTableModel>
#include <QHBoxLayout>
#include <QHeaderView>
#include <algorithm>
#include <array>

#include "frame/text/Texts.h"
#include "lists/Messages.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int TextTitle = 44, TextInfo = 46, ButtonShow = 13, ButtonDelete = 14, ButtonAll = 15, ButtonBack = 16;
constexpr std::array<const char*, 4> Columns{"Datum", "Uhrzeit", "Rechnername", "Überschrift"};
constexpr std::array<int, 4> Widths{90, 80, 130, 320};

}  // namespace

class HistoryModel : public QAbstractTableModel {
public:
    HistoryModel(const HistoryListeRequest& request, QObject* parent) : QAbstractTableModel(parent), request_(request) {}
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : static_cast<int>(request_.lines.size()); }
    int columnCount(const QModelIndex& = {}) const override { return static_cast<int>(Columns.size()); }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole || !index.isValid()) return {};
        if (index.row() != shownRow_) {
            shown_ = request_.zeile(static_cast<std::size_t>(index.row()));
            shownRow_ = index.row();
        }
        const std::string* texts[] = {&shown_.datum, &shown_.timeOfDay, &shown_.rechnername, &shown_.überschrift};
        return plainLine(*texts[index.column()]);
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
        return QString::fromUtf8(Columns.at(static_cast<std::size_t>(section)));
    }
    void refresh() {
        beginResetModel();
        shownRow_ = -1;
        endResetModel();
    }

private:
    const HistoryListeRequest& request_;
    mutable HistoryListeRequest::Zeile shown_;    // all columns of a row are asked for one after the other
    mutable int shownRow_ = -1;
};

frmBVK_HistoryListe::frmBVK_HistoryListe(HistoryListeRequest& request, QWidget* parent)
    : Dialog("frmBVK_HistoryListe", qt(strBVKTexte(TextTitle)), parent), request_(request), model_(new HistoryModel(request, this)), lvHistory_(new QTreeView(this)) {
    auto* grid = new QGridLayout(this);
    QLabel* info = label("lblHisInfo", qt(strBVKTexte(TextInfo)));
    info->setBuddy(lvHistory_);
    grid->addWidget(info, 0, 0);
    lvHistory_->setObjectName(QStringLiteral("lvHistory"));
    lvHistory_->setAccessibleName(info->text());
    lvHistory_->setRootIsDecorated(false);
    lvHistory_->setUniformRowHeights(true);
    lvHistory_->setAllColumnsShowFocus(true);
    lvHistory_->setAlternatingRowColors(true);
    lvHistory_->setTabKeyNavigation(false);
    lvHistory_->setModel(model_);
    for (std::size_t k = 0; k < Widths.size(); ++k) lvHistory_->setColumnWidth(static_cast<int>(k), Widths[k]);
    grid->addWidget(lvHistory_, 1, 0);
    if (!request.hint.empty()) {
        QLabel* note = label("lblHinweis", qt(request.hint));
        note->setWordWrap(true);
        grid->addWidget(note, 2, 0);
    }
    makeButtons(*grid);
    resize(760, 420);
    refresh();
    if (const int last = model_->rowCount() - 1; last >= 0) {    // the newest change is what one looks for
        lvHistory_->setCurrentIndex(model_->index(last, 0));
        lvHistory_->scrollToBottom();
    }
    lvHistory_->setFocus();
}

void frmBVK_HistoryListe::makeButtons(QGridLayout& grid) {
    auto* row = new QHBoxLayout;
    cmdHisAnzeigen_ = button("cmdHisAnzeigen", qt(strBVKButtons(ButtonShow)));
    cmdHisDel_ = button("cmdHisDel", qt(strBVKButtons(ButtonDelete)));
    cmdHisAllDel_ = button("cmdHisAllDel", qt(strBVKButtons(ButtonAll)));
    cmdHisRedo_ = button("cmdHisRedo", qt(messages::RestoreButton));
    cmdHisRedo_->setToolTip(QStringLiteral("Die zuletzt zurückgesetzte Änderung noch einmal durchführen"));
    cmdHisZurueck_ = button("cmdHisZurück", qt(strBVKButtons(ButtonBack)));
    cmdHisForget_ = button("cmdHisForget", qt(messages::ForgetButton));
    cmdHisForget_->setToolTip(QStringLiteral("Den Eintrag mit allen alten Werten endgültig entfernen, auch aus dem Änderungsjournal"));
    for (QPushButton* one : {cmdHisAnzeigen_, cmdHisDel_, cmdHisAllDel_, cmdHisRedo_, cmdHisForget_}) row->addWidget(one);
    row->addStretch(1);
    row->addWidget(cmdHisZurueck_);
    grid.addLayout(row, 3, 0);
    cmdHisAnzeigen_->setDefault(true);

    const auto show = [this] { withRow(request_.show); };
    connect(cmdHisAnzeigen_, &QPushButton::clicked, this, show);
    connect(lvHistory_, &QTreeView::doubleClicked, this, show);
    connect(cmdHisDel_, &QPushButton::clicked, this, [this] { withRow(request_.loeschen); });
    deleteByKey(*lvHistory_, *cmdHisDel_);
    connect(cmdHisAllDel_, &QPushButton::clicked, this, [this] {
        request_.deleteAll();
        refresh();
    });
    connect(cmdHisRedo_, &QPushButton::clicked, this, [this] {
        request_.restore();
        refresh();
    });
    connect(cmdHisForget_, &QPushButton::clicked, this, [this] { withRow(request_.forget); });
    connect(cmdHisZurueck_, &QPushButton::clicked, this, [this] {
        request_.back();
        accept();
    });
}

void frmBVK_HistoryListe::withRow(const std::function<void(std::size_t)>& work) {
    const QModelIndex current = lvHistory_->currentIndex();
    if (!current.isValid()) return;
    work(static_cast<std::size_t>(current.row()));
    refresh();
}

void frmBVK_HistoryListe::refresh() {
    const int row = std::max(0, lvHistory_->currentIndex().row()), top = lvHistory_->indexAt({1, 1}).row();
    model_->refresh();
    if (model_->rowCount() > 0) {
        if (top >= 0) lvHistory_->scrollTo(model_->index(std::min(top, model_->rowCount() - 1), 0), QAbstractItemView::PositionAtTop);
        lvHistory_->setCurrentIndex(model_->index(std::min(row, model_->rowCount() - 1), 0));
    }
    for (QPushButton* one : {cmdHisAnzeigen_, cmdHisDel_, cmdHisAllDel_, cmdHisForget_}) one->setEnabled(request_.commandsActive);
    cmdHisRedo_->setEnabled(request_.redoPossible);
}

}  // namespace brenvik
