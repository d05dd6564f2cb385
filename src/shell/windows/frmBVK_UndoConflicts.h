#pragma once
// What was changed again since a change that is to be taken back: what of it goes back too.
#include <QTreeWidget>

#include "lists/ListWindows.h"
#include "shell/widgets/Dialogs.h"

namespace brenvik {

class frmBVK_UndoConflicts : public Dialog {
public:
    frmBVK_UndoConflicts(UndoConflictsRequest& request, QWidget* parent);

private:
    void fill();
    UndoConflictsRequest& request_;
    QTreeWidget* lvConflicts_;
};

}  // namespace brenvik
