#include "shell/windows/frmBVK_FavVerwalten.h"

#include <QHBoxLayout>
#include <algorithm>

#include "frame/text/Texts.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int TextTitle = 124, ButtonDelete = 5, KnopfOk = 8;

}  // namespace

frmBVK_FavVerwalten::frmBVK_FavVerwalten(FavVerwaltenRequest& request, QWidget* parent)
    : Dialog("frmBVK_FavVerwalten", qt(strBVKTexte(TextTitle)), parent), request_(request), lvFav_(new QListWidget(this)),
      cmdLoeschen_(button("cmdLöschen", qt(strBVKButtons(ButtonDelete)))) {
    auto* grid = new QGridLayout(this);
    lvFav_->setObjectName(QStringLiteral("lvFav"));
    lvFav_->setAccessibleName(QStringLiteral("Favoriten"));
    lvFav_->setAlternatingRowColors(true);
    lvFav_->setUniformItemSizes(true);
    grid->addWidget(lvFav_, 0, 0);
    QPushButton* cmdOK = button("cmdOK", qt(strBVKButtons(KnopfOk)));
    auto* row = new QHBoxLayout;
    row->addWidget(cmdLoeschen_);
    row->addStretch(1);
    row->addWidget(cmdOK);
    grid->addLayout(row, 1, 0);
    cmdOK->setDefault(true);
    fill();
    resize(460, 340);
    lvFav_->setFocus();
    connect(cmdLoeschen_, &QPushButton::clicked, this, [this] {
        if (lvFav_->currentRow() < 0) return;
        request_.loeschen(static_cast<std::size_t>(lvFav_->currentRow()));
        fill();
    });
    deleteByKey(*lvFav_, *cmdLoeschen_);
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        request_.ok();
        accept();
    });
}

void frmBVK_FavVerwalten::fill() {
    const int row = std::max(0, lvFav_->currentRow());
    lvFav_->clear();
    for (const std::string& item : request_.lvFav) lvFav_->addItem(plainLine(item));
    if (lvFav_->count() > 0) lvFav_->setCurrentRow(std::min(row, lvFav_->count() - 1));
    cmdLoeschen_->setEnabled(lvFav_->count() > 0);
}

}  // namespace brenvik
