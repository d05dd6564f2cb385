#pragma once
// The list of favourites, to take some out.
#include <QListWidget>

#include "lists/ListWindows.h"
#include "shell/widgets/Dialogs.h"

namespace brenvik {

class frmBVK_FavVerwalten : public Dialog {
public:
    frmBVK_FavVerwalten(FavVerwaltenRequest& request, QWidget* parent);

private:
    void fill();
    FavVerwaltenRequest& request_;
    QListWidget* lvFav_;
    QPushButton* cmdLoeschen_;
};

}  // namespace brenvik
