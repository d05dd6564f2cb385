#include "shell/tipwindows/frmBVK_TippFileSave.h"

#include <QHBoxLayout>
#include <algorithm>

#include "frame/text/Texts.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int ButtonSave = 4, ButtonDelete = 14, ButtonDeleteAll = 15, ButtonBack = 16;
constexpr int GroupGap = 14, ButtonWidth = 150;

}  // namespace

frmBVK_TippFileSave::frmBVK_TippFileSave(TippFileSaveRequest& request, QWidget* parent)
    : Dialog("frmBVK_TippFileSave", qt(request.caption), parent), request_(request), lvRegList_(new QListWidget(this)) {
    QLabel* lblInfo = label("lblInfo", qt(request_.lblInfo));
    lvRegList_->setObjectName(QStringLiteral("lvRegList"));
    lvRegList_->setAccessibleName(lblInfo->text());
    lvRegList_->setAlternatingRowColors(true);
    lblInfo->setBuddy(lvRegList_);

    cmdSave_ = command("cmdSave", qt(strBVKButtons(ButtonSave)), [this] { request_.cmdSave(); });
    cmdDel_ = command("cmdDel", qt(strBVKButtons(ButtonDelete)), [this] { request_.cmdDel(static_cast<std::size_t>(std::max(0, lvRegList_->currentRow()))); });
    cmdDelAll_ = command("cmdDelAll", qt(strBVKButtons(ButtonDeleteAll)), [this] { request_.cmdDelAll(); });
    QPushButton* saveList = command("cmdListeSpeichern", QStringLiteral("Liste s&peichern…"), [this] { request_.cmdListeSpeichern(); });
    QPushButton* loadList = command("cmdListeLaden", QStringLiteral("Liste la&den…"), [this] { request_.cmdListeLaden(); });
    QPushButton* cmdExit = button("cmdExit", qt(strBVKButtons(ButtonBack)));
    connect(cmdExit, &QPushButton::clicked, this, [this] {
        request_.cmdExit();
        accept();
    });
    cmdSave_->setDefault(true);
    saveList->setToolTip(QStringLiteral("Die Tipps mit ihren Werten als Datei zum Weitergeben schreiben"));
    loadList->setToolTip(QStringLiteral("Die Tipps und Werte einer solchen Datei in die Liste aufnehmen"));

    auto* column = new QVBoxLayout;
    cmdExit->setMinimumWidth(ButtonWidth);
    for (QPushButton* each : {cmdSave_, cmdDel_, cmdDelAll_}) column->addWidget(each);
    column->addSpacing(GroupGap);
    column->addWidget(saveList);
    column->addWidget(loadList);
    column->addStretch(1);
    column->addWidget(cmdExit);
    auto* row = new QHBoxLayout;
    row->addWidget(lvRegList_, 1);
    row->addLayout(column);
    auto* box = new QVBoxLayout(this);
    box->addWidget(lblInfo);
    box->addLayout(row, 1);
    resize(620, 360);

    deleteByKey(*lvRegList_, *cmdDel_);
    showList();
    lvRegList_->setFocus();
}

QPushButton* frmBVK_TippFileSave::command(const char* name, const QString& caption, std::function<void()> work) {
    QPushButton* made = button(name, caption);
    connect(made, &QPushButton::clicked, this, [this, work = std::move(work)] {
        work();
        showList();
    });
    return made;
}

void frmBVK_TippFileSave::showList() {
    const int selected = lvRegList_->currentRow();
    lvRegList_->clear();
    for (const std::string& title : request_.lvRegList) lvRegList_->addItem(plainLine(title));
    if (lvRegList_->count() > 0) lvRegList_->setCurrentRow(std::clamp(selected, 0, lvRegList_->count() - 1));
    for (QPushButton* each : {cmdSave_, cmdDel_, cmdDelAll_}) each->setEnabled(request_.active);
}

}  // namespace brenvik
