#include "shell/widgets/FlowLayout.h"

#include <QWidget>
#include <algorithm>

namespace brenvik {

FlowLayout::FlowLayout(QWidget* parent, int spacing) : QLayout(parent) {
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
}

FlowLayout::~FlowLayout() { qDeleteAll(items_); }

void FlowLayout::setRowStart(QWidget* widget, bool on) {
    rowStarts_.removeAll(widget);
    if (on) rowStarts_.append(widget);
    invalidate();
}

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    arrange(rect, true);
}

int FlowLayout::widthFor(const QLayoutItem* item, int available) const {
    return std::max(item->minimumSize().width(), std::min(item->sizeHint().width(), available));
}

int FlowLayout::arrange(const QRect& rect, bool apply) const {
    const QMargins m = contentsMargins();
    const QRect inner = rect.marginsRemoved(m);
    QList<QLayoutItem*> row;
    int x = 0, y = inner.top(), rowHeight = 0;
    const auto finishRow = [&] {
        if (row.isEmpty()) return;
        if (apply) placeRow(row, QRect(inner.left(), y, inner.width(), rowHeight));
        y += rowHeight + spacing();
        row.clear();
        x = rowHeight = 0;
    };
    for (QLayoutItem* item : items_) {
        if (item->isEmpty()) continue;
        const int width = widthFor(item, inner.width());
        if (!row.isEmpty() && (x + width > inner.width() || rowStarts_.contains(item->widget()))) finishRow();
        const int height = item->hasHeightForWidth() ? item->heightForWidth(width) : item->sizeHint().height();
        row.append(item);
        x += width + spacing();
        rowHeight = std::max(rowHeight, height);
    }
    finishRow();
    return std::max(0, y - spacing() - inner.top()) + m.top() + m.bottom();
}

void FlowLayout::placeRow(const QList<QLayoutItem*>& row, const QRect& rowRect) const {
    int x = rowRect.left();
    for (QLayoutItem* item : row) {
        int width = widthFor(item, rowRect.width());
        if (stretchLast_ && item == row.last()) width = std::max(width, rowRect.right() + 1 - x);
        item->setGeometry(QRect(x, rowRect.top(), width, rowRect.height()));
        x += width + spacing();
    }
}

QSize FlowLayout::sizeHint() const {
    int width = 0, height = 0;
    for (const QLayoutItem* item : items_) {
        if (item->isEmpty()) continue;
        width += item->sizeHint().width() + spacing();
        height = std::max(height, item->sizeHint().height());
    }
    const QMargins m = contentsMargins();
    return {width + m.left() + m.right(), height + m.top() + m.bottom()};
}

QSize FlowLayout::minimumSize() const {
    QSize size;
    for (const QLayoutItem* item : items_)
        if (!item->isEmpty()) size = size.expandedTo(item->minimumSize());
    const QMargins m = contentsMargins();
    return size + QSize(m.left() + m.right(), m.top() + m.bottom());
}

}  // namespace brenvik
