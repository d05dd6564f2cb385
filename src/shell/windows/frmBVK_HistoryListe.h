#pragma once
// The list of changes. It may hold very many, so that a row is asked for only when it is shown.
#include <QTreeView>

#include "lists/ListWindows.h"
#include "shell/widgets/Dialogs.h"

namespace brenvik {

class HistoryModel;

class frmBVK_HistoryListe : public Dialog {
public:
    frmBVK_HistoryListe(HistoryListeRequest& request, QWidget* parent);

private:
    void makeButtons(QGridLayout& grid);
    void refresh();
    void withRow(const std::function<void(std::size_t)>& work);
    HistoryListeRequest& request_;
    HistoryModel* model_;
    QTreeView* lvHistory_;
    QPushButton *cmdHisAnzeigen_ = nullptr, *cmdHisDel_ = nullptr, *cmdHisAllDel_ = nullptr, *cmdHisRedo_ = nullptr, *cmdHisForget_ = nullptr, *cmdHisZurueck_ = nullptr;
};

}  // namespace brenvik
