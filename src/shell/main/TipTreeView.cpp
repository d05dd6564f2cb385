#include "shell/main/TipTreeView.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace brenvik {

TipTreeView::TipTreeView(TipTreeModel& model, QWidget* parent) : QTreeView(parent), model_(model) {
    setObjectName(QStringLiteral("tvBVKDB"));
    setAccessibleName(tr("Tipps"));
    setModel(&model_);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setIconSize({16, 16});
    // As wide as its longest visible text, so that nothing is cut; wider than the view, it scrolls.
    header()->setStretchLastSection(false);
    header()->setResizeContentsPrecision(0);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(this, &QTreeView::clicked, this, [this](const QModelIndex& index) { emit nodeChosen(model_.nodeOf(index)); });
}

void TipTreeView::showTree(int selectedNode) {
    model_.rebuild();
    expand(model_.indexOf(0));
    showSelection(selectedNode);
}

void TipTreeView::showSelection(int node) {
    const QModelIndex index = model_.indexOf(node);
    if (!index.isValid()) return;
    for (QModelIndex up = index.parent(); up.isValid(); up = up.parent()) expand(up);
    setCurrentIndex(index);
    executeDelayedItemsLayout();    // with the scroll bar that wider rows bring, which takes a row's height away
    updateGeometries();
    scrollTo(index);
}

void TipTreeView::keyPressEvent(QKeyEvent* event) {
    pressedHere_ = true;
    QTreeView::keyPressEvent(event);
}

// A release counts only where its press arrived here too: neither the Tab that brought the focus nor the rest of a
// shortcut is a choice in the tree.
void TipTreeView::keyReleaseEvent(QKeyEvent* event) {
    QTreeView::keyReleaseEvent(event);
    const bool modifier = event->key() == Qt::Key_Shift || event->key() == Qt::Key_Control || event->key() == Qt::Key_Alt ||
                          event->key() == Qt::Key_AltGr || event->key() == Qt::Key_Meta;
    if (event->isAutoRepeat() || modifier || !pressedHere_) return;
    pressedHere_ = false;
    if (currentIndex().isValid()) emit nodeChosen(model_.nodeOf(currentIndex()));
}

void TipTreeView::resizeEvent(QResizeEvent* event) {
    header()->setMinimumSectionSize(viewport()->width());       // a selected row is marked over the whole width
    QTreeView::resizeEvent(event);
}

void TipTreeView::focusOutEvent(QFocusEvent* event) {
    pressedHere_ = false;
    QTreeView::focusOutEvent(event);
}

}  // namespace brenvik
