// The program as its user meets it: start, the road of a change in each panel kind, tools, end, next start.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTreeView>
#include <set>
#include <thread>

#include "ProgramFixture.h"
#include "shell/tipwindows/frmBVK_Bearbeiten.h"
#include "shell/windows/frmBVK_Optionen.h"
#include "tipengine/WindowRequests.h"

namespace brenvik::test {
namespace {

using Lines = std::vector<std::string>;
constexpr const char* Question = "Sollen die Veränderungen gespeichert werden ?";
constexpr const char* Saved = "Der Schlüssel wurde geändert/angelegt !";

}  // namespace

// The road once for every kind of panel, on a Tip that the shipped database has.
class EveryKind : public ProgramFixture, public testing::WithParamInterface<int> {
protected:
    int kind() const { return GetParam(); }

    // The first Tip of this kind that can be changed here.
    bool find() {
        for (const TipListEntry& row : ctx().udtTippListe) {
            engine().tree().showTipByNumber(row.Index);
            const auto& panels = ctx().frmBVK_Prog.panels;
            const bool fits = !panels.empty() && panels[0].Ausgabeart == kind() && !panels[0].readOnly && ctx().frmBVK_Prog.fraSteuerung &&
                              ctx().frmBVK_Prog.KeySave && (kind() != art::Drive || !panels[0].text.empty()) &&
                              (kind() != art::Liste || !ctx().aktuellerTipp.Eintrag[1].Wertname.empty());   // lists of keys can only be deleted
            if (!fits) continue;
            heading = row.Überschrift;
            return true;
        }
        return false;
    }

    // All that the Tip can change: the values and sub keys of its keys, and the boot file.
    std::string stand() {
        std::string all;
        std::set<std::string> lines;          // what is deleted and comes back stands last
        for (std::size_t i = 1; i <= tipp.lastEntry(); ++i) {
            const TipEntry& e = tipp.Eintrag[i];
            if (e.Hauptschlüssel.empty()) continue;
            ctx().objBVKReg.SetPath("", e.Hauptschlüssel + "\\" + e.Schlüssel + "\\");
            for (const NamedValue& v : ctx().objBVKReg.ListRaw()) lines.insert(e.Schlüssel + v.name.text() + "=" + std::to_string(v.value.type) + ":" + toText(v.value) + "\n");
            for (const std::string& key : ctx().objBVKReg.EnumSubKeys()) lines.insert(e.Schlüssel + "[" + key + "]\n");
        }
        for (const std::string& line : lines) all += line;
        return all + bytesOf(home / "drive_c/boot.ini");
    }

    void change() {
        ++round;                     // another value each time
        const QString number = QString::number(round);
        switch (kind()) {
            case art::CheckBox: return QTest::mouseClick(&control<QCheckBox>("chkCheckBox(0)"), Qt::LeftButton, {}, {8, 8});
            case art::TextWerte: return control<QLineEdit>("txtTextWerte(0)").setText((ctx().aktuellerTipp.Eintrag[1].Datentyp == 4 ? "1A" : "geprüft ") + number);
            case art::ZahlenWerte: {
                auto& field = control<QLineEdit>("txtZahlenWerte(0)");
                const Panel& panel = ctx().frmBVK_Prog.panels[0];
                return field.setText(QString::number(field.text().toInt() == panel.Min ? panel.Max : panel.Min));
            }
            case art::AuswahlBox: return otherChoice("cboAuswahlBox(0)");
            case art::OptionsAuswahl:
                for (const int j : {1, 2}) {
                    auto& option = control<QRadioButton>("opbOptionsAuswahl" + std::to_string(j) + "(0)");
                    if (!option.isChecked()) return option.click();
                }
                return;
            case art::Drive: return control<QLineEdit>("txtDrive").setText("C:\\Geprüft " + number);
            case art::Farbe: port.colour = Rgb{12, 34, static_cast<std::uint8_t>(56 + round)}; return press("cmdFarbe");
            case art::Liste: {
                auto* model = control<QTreeView>("lvListe").model();
                const auto first = model->index(0, 0);
                model->setData(first, first.data(Qt::CheckStateRole).toInt() == Qt::Checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
                return;
            }
            case art::BootINI: return control<QCheckBox>("chkBootINI(0)").click();
            case art::BitMaske: return control<QCheckBox>("chkBitMaske(0)").click();
            default: FAIL();
        }
    }
    void otherChoice(const char* name) {
        auto& box = control<QComboBox>(name);
        QTest::keyClick(&box, box.currentIndex() > 0 ? Qt::Key_Up : Qt::Key_Down);
    }
    void pick() {
        clickNode(heading);
        tipp = ctx().aktuellerTipp;
        EXPECT_EQ(utf8(control<QLabel>("lblDBTippU").text()), heading);
    }
    void expectSuccess() {
        if (kind() != art::BootINI) port.expect(Saved);      // a boot file is written without a word
    }

    int round = 0;
    std::string heading;
    Tipp tipp;
};

TEST_P(EveryKind, IsChangedLeftSavedAndReset) {
    ASSERT_TRUE(start());
    port.registerWindow("frmBVK_BootINI", [](QtPort&, QWidget*, WindowRequest& r) { dynamic_cast<BootINIRequest&>(r).reply = BootINIRequest::Reply::Overwrite; });
    ctx().einstellungen.LöschenAktiv = true;
    ASSERT_TRUE(find()) << "no such Tip";
    pick();
    const std::string before = stand();
    change();
    EXPECT_EQ(stand(), before) << "nothing is written before it is saved";
    port.expect(Question, Answer::No);
    clickNode("Brenvik");
    EXPECT_EQ(stand(), before);
    EXPECT_TRUE(port.answers.empty());

    pick();
    change();
    port.expect(Question, Answer::Yes);
    expectSuccess();
    clickNode("Brenvik");
    EXPECT_TRUE(port.answers.empty());
    const std::string after = stand();
    EXPECT_NE(after, before) << heading;
    pick();
    clickNode("Brenvik");            // what is shown is what stands: no question

    pick();
    change();
    expectSuccess();
    QTest::keySequence(&window(), QKeySequence(Qt::CTRL | Qt::Key_S));
    EXPECT_NE(stand(), after) << heading;
    EXPECT_TRUE(port.answers.empty());
    takeBack();
    EXPECT_EQ(stand(), after);
    clickNode("Brenvik");            // the panels followed: no question
    pick();
    if (!ctx().frmBVK_Prog.KeyDel) return;
    port.expect("gelöscht", Answer::Yes);
    press("cmdRegDel");
    EXPECT_NE(stand(), after);
    takeBack();
    EXPECT_EQ(stand(), after);
}

INSTANTIATE_TEST_SUITE_P(Kinds, EveryKind, testing::Values(1, 2, 3, 4, 5, 6, 7, 8, 9, 11));

// Lists of keys: what is ticked is deleted, what is new or changed is saved at once.
class KeyLists : public ProgramFixture {
protected:
    bool find(int kind) {
        for (const TipListEntry& row : ctx().udtTippListe) {
            engine().tree().showTipByNumber(row.Index);
            const auto& panels = ctx().frmBVK_Prog.panels;
            if (panels.empty() || panels[0].Ausgabeart != kind || panels[0].readOnly || !ctx().frmBVK_Prog.KeyDel || (kind == art::Liste && !ctx().aktuellerTipp.Eintrag[1].Wertname.empty())) continue;
            key = ctx().aktuellerTipp.Eintrag[1].Hauptschlüssel + "\\" + ctx().aktuellerTipp.Eintrag[1].Schlüssel + "\\";
            return true;
        }
        return false;
    }
    std::string value(const std::string& below) { return ReadRegistryKey(ctx(), key + below, "fehlt"); }
    QModelIndex row(const char* text) {
        const auto* model = control<QTreeView>("lvListe").model();
        const auto hits = model->match(model->index(0, 0), Qt::DisplayRole, QString::fromUtf8(text), 1, Qt::MatchExactly);
        return hits.isEmpty() ? QModelIndex() : hits[0];
    }
    void deleteTicked(const char* text) {
        ASSERT_TRUE(row(text).isValid());
        control<QTreeView>("lvListe").model()->setData(row(text), Qt::Checked, Qt::CheckStateRole);
        port.expect("Alle markierten Einträge werden gelöscht..Sind Sie sicher?", Answer::Yes);
        press("cmdRegDel");
        EXPECT_FALSE(row(text).isValid());
    }
    std::string key;
};

TEST_F(KeyLists, ContextMenuEntriesAreMadeChangedDeletedAndTakenBack) {
    ASSERT_TRUE(start());
    ctx().einstellungen.LöschenAktiv = true;
    ASSERT_TRUE(find(art::Kontext));
    const auto edit = [this](const char* name, const char* command) {
        inWindow<frmBVK_Bearbeiten, BearbeitenRequest>("frmBVK_Bearbeiten", [=](frmBVK_Bearbeiten& dialog) {
            if (name) dialog.findChild<QLineEdit*>("txtKeyName")->setText(name);
            dialog.findChild<QLineEdit*>("txtBefehl")->setText(command);
            pressIn(dialog, "cmdSave");
        });
        port.expect("Änderungen wurde in der Registry gespeichert !!!");
    };
    edit("pruefen", "notepad.exe \"%1\"");
    press("cmdRegSave");
    EXPECT_EQ(value("pruefen\\Command\\"), "notepad.exe \"%1\"");
    ASSERT_TRUE(row("pruefen").isValid());
    control<QTreeView>("lvListe").setCurrentIndex(row("pruefen"));
    edit(nullptr, "write.exe");
    press("cmdDefault");
    EXPECT_EQ(value("pruefen\\Command\\"), "write.exe");
    deleteTicked("pruefen");
    EXPECT_EQ(value("pruefen\\Command\\"), "fehlt");
    takeBack();
    EXPECT_EQ(value("pruefen\\Command\\"), "write.exe");
    EXPECT_TRUE(row("pruefen").isValid()) << "the panel shows it again";
    takeBack();
    EXPECT_EQ(value("pruefen\\Command\\"), "notepad.exe \"%1\"");
    clickNode("Brenvik");
}

TEST_F(KeyLists, KeysAreDeletedWithAllBelowAndTakenBack) {
    ASSERT_TRUE(start());
    ctx().einstellungen.LöschenAktiv = true;
    ASSERT_TRUE(find(art::Liste));
    SaveRegistryKey(ctx(), key + "Probe\\Tief\\Wert", "x", 1);
    engine().reloadTip();
    deleteTicked("Probe");
    EXPECT_EQ(value("Probe\\Tief\\Wert"), "fehlt");
    takeBack();
    EXPECT_EQ(value("Probe\\Tief\\Wert"), "x");
    EXPECT_TRUE(row("Probe").isValid());
}

TEST_F(ProgramFixture, AListThatWasOffComesBackWithItsNewFolder) {
    for (const char* folder : {"zu/History.txt", "neu"}) std::filesystem::create_directories(home / folder);
    ASSERT_TRUE(start());
    SaveRegistryKey(ctx(), "HKCU\\Software\\Brenvik\\Pfade\\History", (home / "zu/").string(), 1);
    end();
    port.expect("Auf die Datei: History.txt kann nicht zugegriffen werden !", Answer::Cancel).expect("Die History Liste wurde deaktiviert");
    ASSERT_TRUE(start());
    EXPECT_FALSE(window().coolBar().button("tbrHistory")->isVisible());
    EXPECT_TRUE(window().menus().action("mnuFav")->isVisible()) << "the other list goes on";
    port.folder = (home / "neu").string();
    inWindow<frmBVK_Optionen, OptionenRequest>("frmBVK_Optionen", [](frmBVK_Optionen& dialog) {
        dialog.findChild<QPushButton*>("cmdHisBrowse")->click();
        pressIn(dialog, "cmdOptOK");
    });
    menu("mnuOptionen");
    EXPECT_TRUE(window().coolBar().button("tbrHistory")->isVisible());
    EXPECT_TRUE(ctx().blnHistoryAktiv);
    EXPECT_TRUE(std::filesystem::is_regular_file(home / "neu/History.txt"));
}

// From a number that no save takes, and from one that the user drops. What the way leads to sees only what stands.
TEST_F(ProgramFixture, NoWayOutLosesWhatCannotBeSavedOrKeepsWhatWasDropped) {
    ASSERT_TRUE(start());
    for (const TipListEntry& row : ctx().udtTippListe) {
        engine().tree().showTipByNumber(row.Index);
        const auto& panels = ctx().frmBVK_Prog.panels;
        if (!panels.empty() && panels[0].Ausgabeart == art::ZahlenWerte && !panels[0].readOnly) break;
    }
    const auto shown = [this] { return control<QLineEdit>("txtZahlenWerte(0)").text(); };
    const QString stands = shown();
    QString seen;
    for (const char* name : {"frmBVK_HistoryListe", "frmBVK_Optionen"})
        port.registerWindow(QLatin1String(name), [&](QtPort&, QWidget*, WindowRequest&) { seen = shown(); });
    ctx().frmBVK_Prog.tbrHistory = true;
    window().windowChanged();
    menu("mnuFavAdd");
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"favourite", [&] {
             emit control<QComboBox>("cboFavoriten").activated(0);
             if (shown() != "abc") seen = shown();
         }},
        {"history", [&] { window().coolBar().button("tbrHistory")->trigger(); }},
        {"options", [&] { menu("mnuOptionen"); }},
        {"end", [&] { if (window().close()) seen = stands; }},
    };
    for (const auto& [name, go] : ways) {
        SCOPED_TRACE(name);
        control<QLineEdit>("txtZahlenWerte(0)").setText("abc");
        port.expect(Question, Answer::Yes).expect("abc");
        go();
        EXPECT_EQ(seen, QString()) << "the way was taken";
        EXPECT_EQ(shown(), "abc");
        port.expect(Question, Answer::No);
        go();
        EXPECT_EQ(std::exchange(seen, {}), stands);
    }
}

TEST_F(ProgramFixture, TheNextStartFindsWhatTheLastOneLeft) {
    ASSERT_TRUE(start());
    window().resize(780, 640);
    window().SizeControlsV(4500);
    menu("mnuFavButton");
    menu("mnuIcoTXTOff");
    window().coolBar().arrange("tbrFiles", "tbrSrvADMListe,|,-tbrAddRegListe,tbrRegFileSave");
    QTest::mouseClick(control<TabStrip>("tbsTree").findChildren<QToolButton*>().at(1), Qt::LeftButton);
    EXPECT_EQ(ctx().intTreeAktiv, 2);
    EXPECT_TRUE(window().close());
    end();
    ASSERT_TRUE(start());
    EXPECT_EQ(window().size(), QSize(780, 640));
    EXPECT_EQ(window().presentSettings().SplitterVLeft, 4500);
    EXPECT_FALSE(window().menus().action("mnuFavButton")->isChecked());
    EXPECT_TRUE(window().menus().action("mnuIcoTXTOff")->isChecked());
    EXPECT_EQ(window().coolBar().arrangement("tbrFiles"), "tbrSrvADMListe,|,-tbrAddRegListe,tbrRegFileSave,tbrSrvRegListe,tbrADMFileSave,tbrAddADMListe");
    EXPECT_EQ(ctx().frmBVK_Prog.tbsTree, 2);
    EXPECT_EQ(window().windowTitle(), qt("Brenvik - Version: " + ctx().strProgVersion + " -"));
}

TEST_F(ProgramFixture, NonsenseInTheSettingsLeavesAUsableWindow) {
    ASSERT_TRUE(start());
    const char* names[] = {"MainLeft", "MainTop", "MainWidth", "MainHeight", "SplitterVLeft", "SplitterHTop", "ShowNavText", "SoundOn", "TreeAktiv", "Toolbar\\Band1_Visible",
                           "Toolbar\\Band3_MinWidth", "Toolbar\\Band1_MinHeight", "Toolbar\\tbrBVKNav", "Farbschema"};
    for (const char* name : names) SaveRegistryKey(ctx(), std::string(SettingsPath) + name, "999999", 1);      // measures that nobody means
    end();
    ASSERT_TRUE(start());
    EXPECT_LT(window().coolBar().height(), window().height() / 2);
    EXPECT_EQ(window().coolBar().band(0).MinWidth, 2505) << "kept for the next start";
    for (const char* name : names) SaveRegistryKey(ctx(), std::string(SettingsPath) + name, "-1e9 Unsinn", 1);
    for (const char* name : {"MainWidth", "ShowNavText"}) {                                                        // and of a type that is no text
        ctx().objBVKReg.SetPath("", std::string(SettingsPath) + name);
        ctx().objBVKReg.WriteRaw({regtype::Binary, {0xFF, 0x00, 0x81}});
    }
    end();
    ASSERT_TRUE(start());
    EXPECT_TRUE(QGuiApplication::primaryScreen()->geometry().intersects(window().geometry()));
    EXPECT_GE(window().width(), 700);
    EXPECT_EQ(window().presentSettings().SplitterVLeft, 3400) << "the default, raised to the limit";
    EXPECT_EQ(ctx().frmBVK_Prog.tbsTree, 1);
    EXPECT_TRUE(window().coolBar().button("tbrExit")->isVisible());
}

TEST_F(ProgramFixture, ToolsAreStartedOrTheirAbsenceIsTold) {
    ASSERT_TRUE(start());
    const std::pair<const char*, const char*> tools[] = {
        {"mnuRegedit", "regedit.exe"},   {"mnuRegedt32", "regedt32.exe"},   {"mnudxdiag", "dxdiag.exe"},       {"mnusugverif", "sigverif.exe"},
        {"mnuDrWotson16", "drwatson.exe"}, {"mnuDrwtsn32", "drwtsn32.exe"}, {"mnueventvwr", "eventvwr.exe"},
        {"mnugpedit", "mmc C:\\WINDOWS\\system32\\gpedit.msc"},
        {"mnumsinfo32", "C:\\Program Files\\Common Files\\Microsoft Shared\\MSInfo\\msinfo32.exe"}};
    const std::size_t quiet = port.sounds.size();
    for (const auto& [entry, command] : tools) {
        menu(entry);
        EXPECT_EQ(port.programs.back(), command);
    }
    EXPECT_EQ(port.sounds.size() - quiet, std::size(tools)) << "a click for each";
    EXPECT_EQ(port.sounds.back(), std::string(BRENVIK_PROGRAMM_DIR) + "/bvkklick.wav");
    std::filesystem::create_directories(home / "drive_c/Programme/Gemeinsame Dateien/Microsoft Shared/MSInfo");
    home.put("drive_c/Programme/Gemeinsame Dateien/Microsoft Shared/MSInfo/msinfo32.exe", "MZ");
    menu("mnumsinfo32");
    EXPECT_EQ(port.programs.back(), "C:\\Programme\\Gemeinsame Dateien\\Microsoft Shared\\MSInfo\\msinfo32.exe");
    port.programsStart = false;
    port.expect("Programm \"drwtsn32.exe\" konnte nicht gestartet werden!").expect("Programm \"gpedit.msc\" konnte").expect("Programm \"msinfo32.exe\" konnte");
    menu("mnuDrwtsn32");
    menu("mnugpedit");
    menu("mnumsinfo32");
}

TEST_F(ProgramFixture, ANeededLogonIsOfferedAfterAllIsSaved) {
    platform.sessionCanEnd = true;
    ASSERT_TRUE(start());
    ctx().blnNeustartNoetig = true;
    window().resize(777, 600);
    port.expect("sollen Sie abgemeldet werden ?\r\n\r\nDer Computer soll neu gestartet werden.", Answer::Yes);
    EXPECT_TRUE(window().close());
    EXPECT_EQ(platform.sessionCalls, (Lines{"privilege", "exit 3 -1"}));
    EXPECT_EQ(ReadRegistryKey(ctx(), std::string(SettingsPath) + "MainWidth", ""), "11655");
}

TEST_F(ProgramFixture, ASecondStartCallsTheFirstWindow) {
    ASSERT_TRUE(start());
    window().showMinimized();
    const auto second = host::makeSingleInstance(home.path());
    auto state = host::SingleInstance::Stand::First;
    std::thread other([&] { state = second->logOn(std::chrono::seconds(10), ""); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window().isMinimized(); }, 10'000));
    other.join();
    EXPECT_EQ(state, host::SingleInstance::Stand::OtherCalled);
}

}  // namespace brenvik::test
