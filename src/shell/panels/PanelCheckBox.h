#pragma once
#include "shell/panels/PanelView.h"
#include "shell/widgets/WrapButton.h"

namespace brenvik {

class PanelCheckBox : public PanelView {   // kind 1
public:
    PanelCheckBox(PanelHost& host, std::size_t place, QWidget* parent);

protected:
    void draw(const Panel& panel) override;

private:
    WrapCheckBox* chkCheckBox_;
};

}  // namespace brenvik
