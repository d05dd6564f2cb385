#pragma once
#include <QLineEdit>
#include <QSlider>

#include "shell/panels/PanelView.h"
#include "shell/panels/UpDown.h"

namespace brenvik {

class PanelZahlenWerte : public PanelView {   // kind 3
public:
    PanelZahlenWerte(PanelHost& host, std::size_t place, QWidget* parent);

protected:
    void draw(const Panel& panel) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QSlider* sliZahlenWerte_;
    QLineEdit* txtZahlenWerte_;
    UpDown* updZahlenWerte_;
    QLabel* range_;
    int pageStep_ = 1;
};

}  // namespace brenvik
