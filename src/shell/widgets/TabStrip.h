#pragma once
// tbsTree: a tab strip in as many rows as it needs, so that no caption is cut in a narrow column.
#include <QButtonGroup>
#include <QGridLayout>
#include <QList>
#include <QToolButton>
#include <QWidget>

namespace brenvik {

class TabStrip : public QWidget {
    Q_OBJECT
public:
    explicit TabStrip(QWidget* parent = nullptr);

    void addTab(const QString& caption, const QString& toolTip);    // tabs count from 1
    void setSelected(int tab);                                      // tells nobody
    int selected() const { return group_.checkedId(); }
    int count() const { return static_cast<int>(buttons_.size()); }

signals:
    void tabClicked(int tab);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void arrange();
    QButtonGroup group_;
    QList<QToolButton*> buttons_;
    QGridLayout* grid_;
    int columns_ = 0;
};

}  // namespace brenvik
