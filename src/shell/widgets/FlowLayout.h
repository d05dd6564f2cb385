#pragma once
// Lays its items out in rows, left to right, and begins a new row where the next one does not fit.
#include <QLayout>
#include <QList>
#include <QStyle>

namespace brenvik {

class FlowLayout : public QLayout {
public:
    explicit FlowLayout(QWidget* parent = nullptr, int spacing = 4);
    ~FlowLayout() override;

    void setRowStart(QWidget* widget, bool on);      // the widget begins a row even where it would fit
    void setStretchLast(bool on) { stretchLast_ = on; }   // the last item of each row takes what is left

    void addItem(QLayoutItem* item) override { items_.append(item); }
    int count() const override { return static_cast<int>(items_.size()); }
    QLayoutItem* itemAt(int index) const override { return items_.value(index); }
    QLayoutItem* takeAt(int index) override { return index >= 0 && index < items_.size() ? items_.takeAt(index) : nullptr; }
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return arrange(QRect(0, 0, width, 0), false); }
    void setGeometry(const QRect& rect) override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;

private:
    int arrange(const QRect& rect, bool apply) const;    // answers the height
    void placeRow(const QList<QLayoutItem*>& row, const QRect& rowRect) const;
    int widthFor(const QLayoutItem* item, int available) const;

    QList<QLayoutItem*> items_;
    QList<const QWidget*> rowStarts_;
    bool stretchLast_ = false;
};

}  // namespace brenvik
