#pragma once
// The upper right region: fraBVKAusgabe with the panels of the Tip, and fraBVKLogo in its place while there is no Tip.
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QStackedLayout>
#include <QVBoxLayout>
#include <QVector>
#include <memory>

#include "shell/panels/PanelView.h"

namespace brenvik {

class PanelArea : public QWidget {
public:
    PanelArea(const MainWindow& record, QWidget* parent);

    void attach(WindowEvents& events);
    void rebuild();                                // the list of panels is another one
    void refresh(std::size_t place);               // one panel's content
    void showRegion();                             // heading, and which of the two frames is seen
    QList<QWidget*> tabChain() const;              // the controls of the panels, in order

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void makeOutput();
    void fitPanels();
    void makeLogo();
    PanelView* makeView(std::size_t place);
    void replaceView(std::size_t place, PanelView* view);

    const MainWindow& record_;
    std::unique_ptr<PanelHost> host_;
    QStackedLayout* stack_;
    QWidget* empty_;
    QFrame* fraBVKAusgabe_;
    QFrame* fraBVKLogo_;
    QLabel* lblDBTippU_;
    QScrollArea* scroll_;
    QHBoxLayout* scrollRow_;
    QWidget* fraEinstellungen_;
    QVBoxLayout* panelsBox_;
    QVector<PanelView*> views_;                    // by place; none for a kind that has no view
};

}  // namespace brenvik
