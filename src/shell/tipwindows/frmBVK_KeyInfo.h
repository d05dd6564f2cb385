#pragma once
// Where the values of a Tip live.
#include <QComboBox>

#include "frame/Context.h"
#include "shell/windows/InfoWindows.h"
#include "tipdb/Tipp.h"

namespace brenvik {

class frmBVK_KeyInfo : public InfoWindows {
public:
    frmBVK_KeyInfo(FrameContext& ctx, const Tipp& tipp, QWidget* parent);

private:
    const TipEntry* chosen() const;
    void showChosen();
    void cmdZw();

    FrameContext& ctx_;
    const Tipp& tipp_;
    QComboBox* cboKeyInfo_;
    QLineEdit *txtKeyHauptS_, *txtKeySchlüssel_, *txtKeyWertname_, *txtKeyDatenTyp_;
};

}  // namespace brenvik
