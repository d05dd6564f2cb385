#include "shell/tipwindows/frmBVK_KeyInfo.h"

#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int TextInfo = 50, TextRoot = 51, TextKey = 52, TextName = 53, TextType = 54, TextTitle = 55, ButtonClipboard = 34;
constexpr char Unnamed[] = "(Standard)";

}  // namespace

frmBVK_KeyInfo::frmBVK_KeyInfo(FrameContext& ctx, const Tipp& tipp, QWidget* parent)
    : InfoWindows("frmBVK_KeyInfo", TextTitle, parent), ctx_(ctx), tipp_(tipp), cboKeyInfo_(new QComboBox(this)) {
    cboKeyInfo_->setObjectName(QStringLiteral("cboKeyInfo"));
    QLabel* lblKeyInfo = text("lblKeyInfo", TextInfo);
    lblKeyInfo->setBuddy(cboKeyInfo_);
    cboKeyInfo_->setAccessibleName(lblKeyInfo->text());
    addRow(lblKeyInfo);
    addRow(cboKeyInfo_);
    txtKeyHauptS_ = line("lblKeyHauptS", TextRoot, "txtKeyHauptS");
    txtKeySchlüssel_ = line("lblKeySchlüssel", TextKey, "txtKeySchlüssel");
    txtKeyWertname_ = line("lblKeyWertname", TextName, "txtKeyWertname");
    txtKeyDatenTyp_ = line("lblKeyDatenTyp", TextType, "txtKeyDatenTyp");
    QPushButton* copy = button("cmdZw", qt(strBVKButtons(ButtonClipboard)));
    buttons()->addWidget(copy);
    closeButton("cmdKeyOk");
    resize(560, sizeHint().height());

    for (std::size_t i = 1; i < tipp.Eintrag.size(); ++i)
        cboKeyInfo_->addItem(tipp.Eintrag[i].Wertname.empty() ? QString::fromUtf8(Unnamed) : plainLine(tipp.Eintrag[i].Wertname));
    copy->setEnabled(chosen() != nullptr);
    showChosen();
    connect(cboKeyInfo_, &QComboBox::currentIndexChanged, this, [this] { showChosen(); });
    connect(copy, &QPushButton::clicked, this, [this] { cmdZw(); });
}

const TipEntry* frmBVK_KeyInfo::chosen() const {
    const auto entry = static_cast<std::size_t>(cboKeyInfo_->currentIndex() + 1);
    return entry > 0 && entry < tipp_.Eintrag.size() ? &tipp_.Eintrag[entry] : nullptr;
}

void frmBVK_KeyInfo::showChosen() {
    const TipEntry* entry = chosen();
    if (!entry) return;
    const auto put = [](QLineEdit* field, const std::string& value) {
        field->setText(plainLine(value));
        field->setCursorPosition(0);
        field->setToolTip(toolTipText(value));
    };
    put(txtKeyHauptS_, entry->Hauptschlüssel);
    put(txtKeySchlüssel_, entry->Schlüssel);
    put(txtKeyWertname_, entry->Wertname);
    put(txtKeyDatenTyp_, DatenTypText(ctx_, entry->Datentyp));
}

void frmBVK_KeyInfo::cmdZw() {
    if (const TipEntry* entry = chosen()) ctx_.port.setClipboard(entry->Hauptschlüssel + "\\" + entry->Schlüssel + "\\" + entry->Wertname);
}

}  // namespace brenvik
