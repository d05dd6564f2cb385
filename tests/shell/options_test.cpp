// The options and the start password through their windows, down to the registry.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include "DialogFixture.h"
#include "frame/program/StartPassword.h"
#include "registry/Settings.h"
#include "shell/program/ConnectSearchOptionsBrowser.h"
#include "shell/tipwindows/frmBVK_PWAbfrage.h"
#include "shell/widgets/Colours.h"
#include "shell/windows/frmBVK_Optionen.h"

namespace brenvik::test {
namespace {

class OptionsWindow : public testing::Test {
protected:
    OptionsWindow() : probe(std::vector<Zeile>{{.Überschrift = "Nur 95", .Systems = "95"}}) {
        probe.store->createKey(Root::LocalMachine, "SOFTWARE");
        ctx.blnAdmin = true;
        ctx.einstellungen.strHistoryPfad = ctx.einstellungen.strFavoritenPfad = (probe.dir / "").string();
        ctx.einstellungen.strBackupPath = (probe.dir / "Backup").string();
        ctx.einstellungen.strOstranaPfad = (probe.dir / "hilfe/").string();
        probe.dir.put("hilfe/ostrana.hlp", "");
    }
    ~OptionsWindow() override { setColourMode(*qApp, ColourMode::Light); }
    void options(std::function<void(frmBVK_Optionen&)> act) {
        probe.port.onWindow("frmBVK_Optionen", driving<frmBVK_Optionen, OptionenRequest>(probe.port, std::move(act)));
        showOptions(*probe.engine, [this] { ++foldersNew; });
    }
    std::string stored(const char* path) {
        saveCoreSettings(ctx);
        return probe.get(path);
    }
    // Controls stand on pages of which one is in front.
    static void click(QWidget& dialog, const char* name) { named<QAbstractButton>(dialog, name).click(); }
    EngineFixture probe;
    Context& ctx = *probe.ctx;
    int foldersNew = 0;
};

TEST_F(OptionsWindow, EveryControlReachesItsSetting) {
    ctx.einstellungen.SoundOn = true;
    ctx.einstellungen.LöschenAktiv = false;
    options([&](frmBVK_Optionen& dialog) {
        EXPECT_TRUE(named<QCheckBox>(dialog, "chkSound").isChecked());
        EXPECT_FALSE(named<QCheckBox>(dialog, "chkLoadInfo").isChecked()) << "ticked where no pause is wanted";
        EXPECT_TRUE(named<QRadioButton>(dialog, "opbClassic").isChecked());
        for (const char* name : {"chkLoadInfo", "chkBSPruefen", "chkBSErsatz", "chkLöschen", "opbGeprueft", "chkSound"}) click(dialog, name);
        EXPECT_EQ(probe.port.sounds.size(), 6u);
        named<QComboBox>(dialog, "cboFarbschema").setCurrentIndex(2);
        emit named<QComboBox>(dialog, "cboFarbschema").activated(2);
        named<QLineEdit>(dialog, "txtBackupPfad").setText("C:\\Sicherung\\");
        EXPECT_FALSE(ctx.einstellungen.LöschenAktiv) << "only with OK";
        click(dialog, "cmdOptOK");
    });
    const std::string base = "HKCU\\Software\\Brenvik\\";
    for (const auto& [name, text] : std::vector<std::pair<std::string, std::string>>{
             {"Einstellungen\\SoundOn", "1:False"}, {"Einstellungen\\ShowInfo", "1:False"}, {"Einstellungen\\BSSystemAktiv", "1:False"},
             {"Einstellungen\\BSErsatz", "1:True"}, {"Einstellungen\\LöschenAktiv", "1:True"}, {"Einstellungen\\RegFileGeprueft", "1:True"},
             {"Einstellungen\\RegFileClasic", "1:True"}, {"Einstellungen\\Farbschema", "1:Dunkel"}, {"Pfade\\RegBackupRestore", "1:C:\\Sicherung"}})
        EXPECT_EQ(stored((base + name).c_str()), text) << name;
    EXPECT_TRUE(isDark(qApp->palette()));
    EXPECT_EQ(foldersNew, 0);
    options([&](frmBVK_Optionen& dialog) {
        EXPECT_TRUE(named<QRadioButton>(dialog, "opbGeprueft").isChecked());
        click(dialog, "opbNew");
        click(dialog, "chkSound");
        click(dialog, "cmdAbbruch");
    });
    EXPECT_TRUE(ctx.einstellungen.RegFileChecked) << "Cancel drops the copies";
    EXPECT_FALSE(ctx.einstellungen.SoundOn);
}

TEST_F(OptionsWindow, TheTipOnScreenFollows) {
    ctx.einstellungen.BSSystemAktiv = true;
    probe.show("Nur 95");
    EXPECT_TRUE(probe.windows().panels.empty()) << "not meant for this system";
    options([&](frmBVK_Optionen& dialog) {
        click(dialog, "chkBSPruefen");
        click(dialog, "cmdOptOK");
    });
    ASSERT_EQ(probe.windows().panels.size(), 1u);
    ctx.blnGeaendert = ctx.blnSchreibrecht = true;
    probe.port.expectBox("nicht gespeichert", Answer::No);   // before anything else happens
    options([&](frmBVK_Optionen& dialog) {
        EXPECT_FALSE(ctx.blnGeaendert);
        dialog.reject();
    });
}

TEST_F(OptionsWindow, Folders) {
    const std::string neu = (probe.dir / "neu").string();
    options([&](frmBVK_Optionen& dialog) {
        probe.port.expectFolder(neu).expectFolder(std::nullopt);
        click(dialog, "cmdHisBrowse");
        click(dialog, "cmdFavBrowse");
        EXPECT_EQ(named<QLineEdit>(dialog, "txtHistoryPfad").text().toStdString(), neu + "/");
        click(dialog, "cmdOptOK");
    });
    EXPECT_EQ(ctx.einstellungen.strHistoryPfad, neu + "/");
    EXPECT_EQ(ctx.einstellungen.strFavoritenPfad, (probe.dir / "").string());
    EXPECT_EQ(foldersNew, 1);
    options([&](frmBVK_Optionen& dialog) {
        named<QLineEdit>(dialog, "txtFavoritePfad").setText(QString::fromStdString(neu));
        named<QLineEdit>(dialog, "txtHistoryPfad").setText(" ");
        click(dialog, "cmdOptOK");
    });
    EXPECT_EQ(ctx.einstellungen.strFavoritenPfad, neu + "/") << "a typed folder gets its separator";
    EXPECT_EQ(ctx.einstellungen.strHistoryPfad, (probe.dir / "").string()) << "emptied: the standard folder";
    options([&](frmBVK_Optionen& dialog) {
        probe.port.expectFolder(std::nullopt);
        EXPECT_TRUE(named<QRadioButton>(dialog, "opbAltesHelp").isChecked());
        click(dialog, "opbNeuesHelp");
        EXPECT_TRUE(named<QRadioButton>(dialog, "opbAltesHelp").isChecked()) << "the other file is not there";
        probe.port.expectFolder(neu).expectBox("Hilfedatei wurde nicht gefunden, Einstellungen wurden zurückgesetzt.");
        click(dialog, "opbNeuesHelp");
        EXPECT_TRUE(named<QRadioButton>(dialog, "opbAltesHelp").isChecked());
        probe.dir.put("neu/ostrana.chm", "");
        probe.port.expectFolder(neu);
        click(dialog, "opbNeuesHelp");
        EXPECT_TRUE(named<QRadioButton>(dialog, "opbNeuesHelp").isChecked());
        EXPECT_EQ(named<QLineEdit>(dialog, "txtHelpPfad").text().toStdString(), neu + "/");
        click(dialog, "cmdOptOK");
    });
    EXPECT_EQ(ctx.einstellungen.Ostrana_Name, "ostrana.chm");
    EXPECT_EQ(ctx.einstellungen.strOstranaPfad, neu + "/");
}

TEST_F(OptionsWindow, StartPasswordFromItsSettingToTheQuestion) {
    options([&](frmBVK_Optionen& dialog) {
        click(dialog, "chkPasswort");
        named<QLineEdit>(dialog, "txtPW1").setText("Geheim");
        named<QLineEdit>(dialog, "txtPW2").setText("geheim");
        probe.port.expectBox("unterschiedliche Passwörter");
        click(dialog, "cmdOptOK");
        EXPECT_TRUE(dialog.isVisible());
        named<QLineEdit>(dialog, "txtPW2").setText("Geheim");
        click(dialog, "cmdOptOK");
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_NE(named<QLabel>(dialog, "lblPWGilt").text().indexOf("Beenden"), -1);
    });
    EXPECT_EQ(stored("HKLM\\Software\\Brenvik\\Einstellungen\\BVKOPT1"), "1:hajdmmmj");
    ctx.einstellungen = {};
    loadCoreSettings(ctx);
    probe.port.onWindow("frmBVK_PWAbfrage", driving<frmBVK_PWAbfrage, PWAbfrageRequest>(probe.port, [&](frmBVK_PWAbfrage& dialog) {
        auto& field = named<QLineEdit>(dialog, "txtPW");
        field.setText("falsch");
        probe.port.expectBox("Ungültiges Kennwort. Bitte versuchen Sie es noch einmal !");
        clickOn(dialog, "cmdOK");
        EXPECT_EQ(probe.port.boxes.back().title, "Anmeldefehler !!!");
        EXPECT_EQ(field.selectedText(), "falsch");
        EXPECT_TRUE(dialog.isVisible());
        field.setText(" GEHEIM ");
        QTest::keyClick(&field, Qt::Key_Return);
    }));
    EXPECT_TRUE(StartPassword(ctx));
    probe.port.onWindow("frmBVK_PWAbfrage", driving<frmBVK_PWAbfrage, PWAbfrageRequest>(
                                                probe.port, [](frmBVK_PWAbfrage& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }));
    EXPECT_FALSE(StartPassword(ctx));
    options([&](frmBVK_Optionen& dialog) {
        click(dialog, "chkPasswort");
        click(dialog, "cmdOptOK");
    });
    EXPECT_FALSE(ctx.einstellungen.blnPasswortAktiv);
}

TEST_F(OptionsWindow, WithoutRightsThePasswordIsOutOfReach) {
    ctx.blnAdmin = false;
    options([&](frmBVK_Optionen& dialog) {
        EXPECT_EQ(named<QLabel>(dialog, "lblPWInfo").text(), "Sie haben keine administrativen Rechte um die Einstellungen zu verändern !!!");
        for (const char* name : {"chkPasswort", "txtPW1", "txtPW2"}) EXPECT_FALSE(named<QWidget>(dialog, name).isEnabled()) << name;
    });
}

}  // namespace
}  // namespace brenvik::test
