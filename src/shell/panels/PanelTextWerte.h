#pragma once
#include "shell/panels/PanelView.h"
#include "shell/panels/TextField.h"

namespace brenvik {

class PanelTextWerte : public PanelView {   // kind 2
public:
    PanelTextWerte(PanelHost& host, std::size_t place, const Panel& panel, QWidget* parent);
    bool fits(const Panel& panel) const override;

protected:
    void draw(const Panel& panel) override;

private:
    TextField* txtTextWerte_;
};

}  // namespace brenvik
