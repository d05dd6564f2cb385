// The windows that only show what the program knows.
#include <QClipboard>

#include "WindowFixture.h"
#include "shell/QtPort.h"
#include "shell/tipwindows/frmBVK_KeyInfo.h"
#include "shell/tipwindows/frmBVK_OSFreigabe.h"
#include "shell/windows/frmBVK_OSInfo.h"
#include "tipengine/EngineFixture.h"

namespace brenvik::test {
namespace {

// Caption, texts and values of a window, by control name in the order of the names.
std::map<std::string, std::string> contentOf(QWidget& window) {
    std::map<std::string, std::string> content{{"", window.windowTitle().toStdString()}};
    for (const QLabel* label : window.findChildren<QLabel*>())
        if (!label->objectName().isEmpty()) content[label->objectName().toStdString()] = label->text().toStdString();
    for (const QLineEdit* field : window.findChildren<QLineEdit*>()) {
        content[field->objectName().toStdString()] = field->text().toStdString();
        EXPECT_TRUE(field->isReadOnly()) << field->objectName().toStdString();
    }
    return content;
}

using Content = std::map<std::string, std::string>;

TEST(KeyInfo, ShowsTheChosenEntryAndPutsItsPathOnTheClipboard) {
    EngineFixture probe({{.Index = 1, .Überschrift = "Zwei", .Ausgabeart = 1, .Datentyp = 4, .Wertname = "Erster", .AnzahlWerte = 1},
                 {.Index = 2, .Ausgabeart = 2, .Datentyp = 1, .Wertname = "", .HauptIndex = 1, .Schlüssel = "Software\\[SID]"}});
    probe.show("Zwei");
    frmBVK_KeyInfo window(*probe.ctx, probe.ctx->aktuellerTipp, nullptr);
    Content expected{{"", "Schlüssel Informationen"},
                     {"lblKeyInfo", "Daten über den Schlüsselwert:"},
                     {"lblKeyHauptS", "Hauptschlüssel:"},
                     {"lblKeySchlüssel", "Schlüssel:"},
                     {"lblKeyWertname", "Wertname:"},
                     {"lblKeyDatenTyp", "Datentyp:"},
                     {"txtKeyHauptS", "HKEY_CURRENT_USER"},
                     {"txtKeySchlüssel", "Software\\Probe"},
                     {"txtKeyWertname", "Erster"},
                     {"txtKeyDatenTyp", "REG_DWORD"}};
    EXPECT_EQ(contentOf(window), expected);
    auto& names = *window.findChild<QComboBox*>("cboKeyInfo");
    EXPECT_EQ(names.itemText(0), "Erster");
    EXPECT_EQ(names.itemText(1), "(Standard)");
    names.setCurrentIndex(1);
    expected["txtKeySchlüssel"] = "Software\\" + std::string(Sid);      // as it was read
    expected["txtKeyWertname"] = "";
    expected["txtKeyDatenTyp"] = "REG_SZ";
    EXPECT_EQ(contentOf(window), expected);

    window.findChild<QPushButton*>("cmdZw")->click();
    names.setCurrentIndex(0);
    window.findChild<QPushButton*>("cmdZw")->click();
    EXPECT_EQ(probe.port.clipboard, (Lines{"HKEY_CURRENT_USER\\Software\\" + std::string(Sid) + "\\", "HKEY_CURRENT_USER\\Software\\Probe\\Erster"}));
    window.show();
    window.findChild<QPushButton*>("cmdKeyOk")->click();
    EXPECT_FALSE(window.isVisible());
}

TEST(OSApproval, MarksEachSystem) {
    Tipp tipp;
    tipp.Win98 = tipp.WinNT = tipp.WinXP = true;
    frmBVK_OSFreigabe window(tipp, nullptr);
    EXPECT_EQ(window.windowTitle(), "Geeignet für...");
    const char* names[] = {"Windows 95", "Windows 98", "Windows ME", "Windows NT", "Windows 2000", "Windows XP"};
    const bool suits[] = {false, true, false, true, false, true};
    for (std::size_t i = 0; i < std::size(names); ++i) {
        EXPECT_EQ(window.findChild<QLabel*>(elementName("lblBSBezeichnung", i))->text(), names[i]);
        for (const bool yes : {true, false}) {
            const QLabel* mark = window.findChild<QLabel*>(elementName(yes ? "imgYes" : "imgNo", i));
            EXPECT_EQ(mark != nullptr, suits[i] == yes) << names[i];
            if (mark) {
                EXPECT_FALSE(mark->pixmap(Qt::ReturnByValue).isNull()) << names[i];
            }
        }
    }
}

TEST(OSInfo, ShowsVersionsOfSystemProgramAndDatabase) {
    EngineFixture probe({{.Index = 1, .Überschrift = "Eins"}});
    Context& ctx = *probe.ctx;
    ctx.strProgVersion = "0.1.0";
    ctx.strDBVersion = "1.0.7";
    ctx.strDBDatum = "01.02.2003";
    ctx.strBS = "Windows XP";
    ctx.osVersion = {148, 5, 1, 2600, 2, "Service Pack 3"};
    EXPECT_EQ(browserVersionText(ctx), "<unbekannt>");
    ctx.intIEMajor = 6;
    ctx.intIEBuild = 290;
    frmBVK_OSInfo window(ctx, nullptr);
    const Content expected{{"", "System Informationen"},
                           {"lblProgVer", "Programm Version:"}, {"lblProgVerA", "0.1.0"},
                           {"lblProgDate", "Programm Datum:"},  {"lblProgDateA", "09.11.2002"},
                           {"lblDBVer", "Datenbank Version:"},  {"lblDBVerA", "1.0.7"},
                           {"lblDBDate", "Datenbank Datum:"},   {"lblDBDateA", "01.02.2003"},
                           {"lblOS", "Betriebsystem:"},         {"txtOS", "Windows XP"},
                           {"lblVersion", "Versionsnummer:"},   {"txtVersion", "5.1"},
                           {"lblBuild", "Build-Number:"},       {"txtBuild", "2600"},
                           {"lblIEVersion", "IE Version:"},     {"txtIEVersion", "6.00.0290"}};
    EXPECT_EQ(contentOf(window), expected);
}

}  // namespace
}  // namespace brenvik::test
