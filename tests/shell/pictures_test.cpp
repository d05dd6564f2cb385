// Renders the window with every panel kind. With BRENVIK_PICTURES the pictures are kept there to be looked at.
#include <QDir>
#include <QImage>
#include <QTemporaryDir>

#include "Fensterprobe.h"
#include "shell/Farben.h"
#include "shell/QtPort.h"
#include "shell/Screenshots.h"
#include "shell/frmBVK_Bearbeiten.h"
#include "shell/frmBVK_BootINI.h"
#include "shell/frmBVK_Datentyp.h"

namespace brenvik::test {

class Pictures : public Fensterprobe, public testing::WithParamInterface<int> {
protected:
    ~Pictures() override { setColourMode(*qApp, ColourMode::Light); }
};

void fillTree(Hauptfenster& record) {
    for (const char* group : {"Desktop", "Netzwerk", "Sicherheit"}) {
        const int node = addNode(record, 0, group, TreeNode::Art::Gruppe, 1);
        for (int i = 2; i <= 5; ++i) addNode(record, node, std::string("Ein Tipp über ") + group + " mit Symbol " + std::to_string(i), TreeNode::Art::Tipp, i);
    }
}

std::vector<Panel> examples(int kind) {
    Panel first = panelOfKind(static_cast<std::int16_t>(kind));
    first.label = kind == 1 || kind == 3 ? "MenuShowDelay Verzögerung der Menüs in Millisekunden" : first.label;
    std::vector<Panel> panels{first};
    if (kind >= art::Drive && kind <= art::Kontext) return panels;
    Panel second = first;
    second.index = 1;
    second.label = "Eine lange Beschriftung, die in einer schmalen Spalte umbrechen muss, damit kein Wort verloren geht";
    second.status = {"[Registry Wert nicht vorhanden]", StatusFarbe::Fehlt};
    second.chkBeschriftung = "Den Inhalt der zuletzt geöffneten Dokumente beim Herunterfahren des Rechners löschen und danach neu anlegen";
    second.mehrzeilig = true;
    second.text = "erste Zeile\nzweite Zeile";
    second.zahlText = "abc";
    second.zahlUngueltig = true;
    Panel third = first;
    third.index = 2;
    third.nurLesen = true;
    third.status = {"[Registry Wert vorhanden] - [Rechte: Lesen]", StatusFarbe::Gefunden};
    panels.push_back(second);
    panels.push_back(third);
    return panels;
}

TEST_P(Pictures, AreWritten) {
    QTemporaryDir own;
    const QString folder = qEnvironmentVariable("BRENVIK_PICTURES", own.path());
    window.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);    // the test's screen is a small one
    fillTree(record);
    record.ausgewaehlterKnoten = 3;
    record.sbrBVK = {"PC: BRENVIK-PC", "Tipp ist geeignet für:  95 98 ME NT 2000 XP", "Index: 301"};
    record.txtInfo = "Legt fest, wie lange Windows wartet, bevor ein Untermenü aufklappt. Kleine Werte machen die Menüs schneller.";
    record.fraInfo = "Information";
    record.lblDBTippU = "Menüs schneller öffnen";
    record.KeySave = record.KeyDel = record.Default = record.KeyInfo = record.RegFile = true;
    window.treeChanged();
    if (GetParam() > 0) showPanels(examples(GetParam()));
    window.setVersion("0.1.0");
    for (const bool dark : {false, true}) {
        setColourMode(*qApp, dark ? ColourMode::Dark : ColourMode::Light);
        for (const int width : {700, 980}) {
            window.resize(width, width == 700 ? 606 : 720);
            const QString file = QStringLiteral("%1/art%2-%3-%4.png").arg(folder).arg(GetParam()).arg(width).arg(dark ? "dunkel" : "hell");
            ASSERT_TRUE(saveScreenshot(window, file, 1.0));
            const QImage picture(file);
            EXPECT_EQ(picture.width(), qRound(width * window.devicePixelRatioF()));
            EXPECT_EQ(picture.pixelColor(2, picture.height() / 2).lightness() < 128, dark);
        }
    }
}

TEST(DialogPictures, AreWritten) {
    QTemporaryDir own;
    const QString folder = qEnvironmentVariable("BRENVIK_PICTURES", own.path());
    QtPort port;
    DatentypAnfrage type;
    type.tippNummer = "301";
    type.typDatenbank = "REG_DWORD";
    type.typRegistry = "REG_SZ";
    type.inhalt = "400";
    BearbeitenAnfrage entry;
    entry.txtKeyName = "notepad";
    entry.txtBefehl = "notepad.exe \"%1\"";
    BootINIAnfrage boot;
    boot.txtBootWert = "Microsoft Windows XP Professional";
    for (const bool dark : {false, true}) {
        setColourMode(*qApp, dark ? ColourMode::Dark : ColourMode::Light);
        frmBVK_Datentyp typeWindow(port, type, nullptr);
        frmBVK_Bearbeiten entryWindow(entry, nullptr);
        frmBVK_BootINI bootWindow(port, boot, nullptr);
        for (QDialog* dialog : {static_cast<QDialog*>(&typeWindow), static_cast<QDialog*>(&entryWindow), static_cast<QDialog*>(&bootWindow)})
            EXPECT_TRUE(saveScreenshot(*dialog, folder + '/' + dialog->objectName() + (dark ? "-dunkel.png" : "-hell.png")));
    }
    setColourMode(*qApp, ColourMode::Light);
}

INSTANTIATE_TEST_SUITE_P(EachKind, Pictures, testing::Range(0, 12));

}  // namespace brenvik::test
