#pragma once
// The entry of a context menu, new or changed.
#include <QLineEdit>

#include "shell/widgets/Dialogs.h"
#include "tipengine/WindowRequests.h"

namespace brenvik {

class frmBVK_Bearbeiten : public Dialog {
public:
    frmBVK_Bearbeiten(BearbeitenRequest& request, QWidget* parent);

private:
    void readFields();      // into the request
    void showFields();      // from the request
    void cmdSave();
    void cmdBefehl();
    BearbeitenRequest& request_;
    QLineEdit* txtKeyName_;
    QLineEdit* txtBeschreibung_;
    QLineEdit* txtBefehl_;
};

}  // namespace brenvik
