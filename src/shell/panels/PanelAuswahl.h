#pragma once
// Choosing one of several: by a combo box (kind 4) or by option buttons (kind 5).
#include <QButtonGroup>
#include <QList>

#include "shell/panels/Combo.h"
#include "shell/panels/PanelView.h"
#include "shell/widgets/WrapButton.h"

namespace brenvik {

class PanelAuswahlBox : public PanelView {
public:
    PanelAuswahlBox(PanelHost& host, std::size_t place, QWidget* parent);

protected:
    void draw(const Panel& panel) override;

private:
    Combo* cboAuswahlBox_;
};

class PanelOptionsAuswahl : public PanelView {
public:
    PanelOptionsAuswahl(PanelHost& host, std::size_t place, QWidget* parent);

protected:
    void draw(const Panel& panel) override;

private:
    static constexpr int Options = 6;
    QButtonGroup* group_;
    QList<WrapRadioButton*> opbOptionsAuswahl_;
};

}  // namespace brenvik
