#pragma once
#include <QPushButton>

#include "shell/panels/Combo.h"
#include "shell/panels/PanelView.h"
#include "shell/panels/TextField.h"

namespace brenvik {

class PanelDrive : public PanelView {   // kind 6
public:
    PanelDrive(PanelHost& host, std::size_t place, QWidget* parent);

protected:
    void draw(const Panel& panel) override;

private:
    Combo* cboDrive_;
    TextField* txtDrive_;
    QPushButton* cmdDrive_;
};

}  // namespace brenvik
