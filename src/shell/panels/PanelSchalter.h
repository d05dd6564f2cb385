#pragma once
// Panels of many boxes: the switches of a boot entry (kind 9) and the bits of a mask (kind 11).
#include <QList>

#include "shell/panels/Combo.h"
#include "shell/panels/PanelView.h"
#include "shell/panels/TextField.h"
#include "shell/widgets/WrapButton.h"

class QGridLayout;

namespace brenvik {

class PanelBootINI : public PanelView {
public:
    PanelBootINI(PanelHost& host, std::size_t place, const Panel& panel, QWidget* parent);
    bool fits(const Panel& panel) const override;

protected:
    void draw(const Panel& panel) override;

private:
    struct Schalter {
        WrapCheckBox* chkBootINI = nullptr;
        TextField* txtBootINI = nullptr;     // only where the switch takes a value
    };
    void addSwitch(QGridLayout& grid, int j, bool withValue);
    Combo* cboBootINI_;
    TextField* txtBINI_;
    QList<Schalter> schalter_;
};

class PanelBitMaske : public PanelView {
public:
    PanelBitMaske(PanelHost& host, std::size_t place, const Panel& panel, QWidget* parent);
    bool fits(const Panel& panel) const override;

protected:
    void draw(const Panel& panel) override;

private:
    QList<WrapCheckBox*> chkBitMaske_;
};

}  // namespace brenvik
