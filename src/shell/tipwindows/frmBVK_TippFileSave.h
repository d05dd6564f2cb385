#pragma once
// A list of collected Tips: written out, thinned out, kept as a file.
#include <QListWidget>

#include "export/TippFileSaveRequest.h"
#include "shell/widgets/Dialogs.h"

namespace brenvik {

class frmBVK_TippFileSave : public Dialog {
public:
    frmBVK_TippFileSave(TippFileSaveRequest& request, QWidget* parent);

private:
    QPushButton* command(const char* name, const QString& caption, std::function<void()> work);
    void showList();

    TippFileSaveRequest& request_;
    QListWidget* lvRegList_;
    QPushButton *cmdSave_, *cmdDel_, *cmdDelAll_;
};

}  // namespace brenvik
