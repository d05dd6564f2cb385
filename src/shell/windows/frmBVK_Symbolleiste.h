#pragma once
// Which buttons a toolbar shows, and in which order.
#include <QAction>
#include <QHash>
#include <QListWidget>

#include "shell/main/ButtonOrder.h"
#include "shell/widgets/Dialogs.h"

namespace brenvik {

class frmBVK_Symbolleiste : public Dialog {
public:
    frmBVK_Symbolleiste(const ButtonOrder& order, const ButtonOrder& standard, const QHash<QString, QAction*>& actions, QWidget* parent);
    ButtonOrder order() const;

private:
    void showOrder(const ButtonOrder& order);
    void moveItem(int by);
    void enableButtons();

    const QHash<QString, QAction*>& actions_;
    QListWidget* lstButtons_;
    QPushButton *cmdUp_, *cmdDown_, *cmdOK_;
};

}  // namespace brenvik
