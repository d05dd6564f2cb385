#pragma once
// tvBVKDB: the view on the tree. Tells which node the user clicked, or stands on when a key is released.
#include <QTreeView>

#include "shell/models/TipTreeModel.h"

namespace brenvik {

class TipTreeView : public QTreeView {
    Q_OBJECT
public:
    TipTreeView(TipTreeModel& model, QWidget* parent = nullptr);

    void showTree(int selectedNode);        // after the record's tree was built afresh
    void showSelection(int node);

signals:
    void nodeChosen(int node);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    TipTreeModel& model_;
    bool pressedHere_ = false;
};

}  // namespace brenvik
