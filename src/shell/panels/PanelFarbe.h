#pragma once
#include <QPushButton>

#include "shell/panels/Combo.h"
#include "shell/panels/PanelView.h"

namespace brenvik {

// cmdFarbSET: shows a colour, or that there is none.
class ColourField : public QFrame {
public:
    explicit ColourField(QWidget* parent);
    void setColour(const std::optional<Rgb>& colour);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<Rgb> colour_;
};

class PanelFarbe : public PanelView {   // kind 7
public:
    PanelFarbe(PanelHost& host, std::size_t place, QWidget* parent);

protected:
    void draw(const Panel& panel) override;

private:
    Combo* cboFarbe_;
    ColourField* cmdFarbSET_;
    QPushButton* cmdFarbe_;
};

}  // namespace brenvik
