#pragma once
// The values of one change: what they were, and what stands there now.
#include "lists/ListWindows.h"
#include "shell/widgets/Dialogs.h"

namespace brenvik {

class frmBVK_HistoryDaten : public Dialog {
public:
    frmBVK_HistoryDaten(HistoryDatenRequest& request, QWidget* parent);

private:
    void makeButtons(QGridLayout& grid);
    HistoryDatenRequest& request_;
};

}  // namespace brenvik
