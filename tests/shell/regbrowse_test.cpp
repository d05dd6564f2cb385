// The registry browser through its windows, down to the registry.
#include <QAction>
#include <QLineEdit>

#include "DialogFixture.h"
#include "shell/program/ConnectSearchOptionsBrowser.h"
#include "shell/tipwindows/frmBVK_REGEdit.h"
#include "shell/tipwindows/frmBVK_RegName.h"
#include "shell/windows/frmBVK_RegBrowse.h"

namespace brenvik::test {
namespace {

constexpr const char* Key = "HKEY_CURRENT_USER\\Software\\Probe";

class BrowserWindow : public testing::Test {
protected:
    BrowserWindow() : probe(std::vector<Zeile>{{.Index = 3, .Überschrift = "Text", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "Text"}}) {
        put("Text", 1, "grün");
        put("Zahl", 4, "255");
        put("Liste", 7, std::string("eins\0zwei", 9));
        put("Daten", 3, "0A FF");
        put("Unten\\Tief\\Wert", 1, "Nadel");
        make();
    }
    void make() {
        browser = makeRegBrowser(*probe.ctx, probe.recorder);
        request = std::make_unique<RegBrowseRequest>(*browser);
        window = std::make_unique<frmBVK_RegBrowse>(probe.port, *request, nullptr);
        window->show();
    }
    void put(const std::string& below, std::uint32_t type, const std::string& text) { probe.put(std::string(Key) + "\\" + below, type, text); }
    std::string get(const std::string& below) { return probe.get(std::string(Key) + "\\" + below); }
    QTreeView& keys() { return named<QTreeView>(*window, "tvwReg"); }
    QTreeView& values() { return named<QTreeView>(*window, "lvwReg"); }
    void choose(const char* entry) { named<QAction>(entry).trigger(); }
    template <class T> T& named(const char* name) {
        T* found = window->findChild<T*>(QLatin1String(name));
        if (!found) throw std::runtime_error(name);
        return *found;
    }
    template <class T> static T& named(QWidget& dialog, const char* name) { return test::named<T>(dialog, name); }
    static std::string children(const QTreeView& view, const QModelIndex& parent) {
        std::string text;
        for (int row = 0; row < view.model()->rowCount(parent); ++row) text += view.model()->index(row, 0, parent).data().toString().toStdString() + "|";
        return text;
    }
    std::string rows() {
        std::string text;
        for (int row = 0; row < values().model()->rowCount(); ++row) {
            for (int column = 0; column < 3; ++column) text += values().model()->index(row, column).data().toString().toStdString() + "|";
            text += values().model()->index(row, 0).data(RegValueModel::TagRole).toString().toStdString() + "\n";
        }
        return text;
    }
    void selectValue(const char* name) {
        const auto hits = values().model()->match(values().model()->index(0, 0), Qt::DisplayRole, QString::fromUtf8(name), 1, Qt::MatchFixedString);
        ASSERT_EQ(hits.size(), 1) << name;
        values().setCurrentIndex(hits[0]);
    }
    // Opens the value's window as a double click does.
    void edit(const char* name, std::function<void(frmBVK_REGEdit&)> act) {
        probe.port.onWindow("frmBVK_REGEdit", driving<frmBVK_REGEdit, REGEditRequest>(probe.port, std::move(act)));
        selectValue(name);
        emit values().activated(values().currentIndex());
    }
    void answerName(const std::string& name) {
        probe.port.onWindow("frmBVK_RegName", driving<frmBVK_RegName, RegNameRequest>(probe.port, [name](frmBVK_RegName& dialog) {
            test::named<QLineEdit>(dialog, "txtName").setText(qt(name));
            clickOn(dialog, "cmdOK");
        }));
    }

    EngineFixture probe;
    std::unique_ptr<RegBrowser> browser;
    std::unique_ptr<RegBrowseRequest> request;
    std::unique_ptr<frmBVK_RegBrowse> window;
};

TEST_F(BrowserWindow, KeysAreReadWhenOpenedAndForgottenWhenClosed) {
    EXPECT_EQ(window->windowTitle(), "BVK Registry Browser (- Beta: 0.2 -)");
    EXPECT_EQ(children(keys(), {}), "HKEY_CLASSES_ROOT|HKEY_CURRENT_CONFIG|HKEY_CURRENT_USER|HKEY_DYN_DATA|HKEY_LOCAL_MACHINE|HKEY_USERS|");
    EXPECT_EQ(rows(), "(default)|REG_SZ|[Wert nicht vorhanden]|\n");
    const QModelIndex empty = keys().model()->index(3, 0);
    EXPECT_TRUE(keys().model()->hasChildren(empty)) << "unread";
    keys().expand(empty);
    EXPECT_FALSE(keys().model()->hasChildren(empty));
    ASSERT_TRUE(window->goTo(Key));
    const QPersistentModelIndex place = keys().currentIndex();
    EXPECT_EQ(named<QLineEdit>("txtPfad").text(), Key);
    keys().expand(place);
    EXPECT_EQ(children(keys(), place), "Unten|");
    put("Neben\\Wert", 1, "x");
    EXPECT_EQ(children(keys(), place), "Unten|");
    keys().collapse(place);
    keys().expand(place);
    EXPECT_EQ(children(keys(), place), "Neben|Unten|");
    EXPECT_EQ(rows(), "(default)|REG_SZ|[Wert nicht vorhanden]|\nText|REG_SZ|grün|ASC\nZahl|REG_DWORD|255|\nListe|REG_MULTI_SZ|eins zwei|DATA\nDaten|REG_BINARY|0A FF|DATA\n");
}

TEST_F(BrowserWindow, EveryTypeIsEdited) {
    ASSERT_TRUE(window->goTo(Key));
    edit("Text", [&](frmBVK_REGEdit& dialog) {
        EXPECT_EQ(named<QLineEdit>(dialog, "Text1").text(), "Text");
        EXPECT_EQ(named<QLineEdit>(dialog, "Text3").text(), Key);
        EXPECT_EQ(named<QComboBox>(dialog, "Combo1").currentText(), "REG_SZ");
        EXPECT_EQ(named<QLineEdit>(dialog, "Text2").text(), "grün");
        EXPECT_EQ(tabOrder(dialog, named<QLineEdit>(dialog, "Text3")), "Text3 Text1 Text2 cmdSave cmdAbbruch ");
        clickOn(dialog, "cmdSave");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(probe.recorder.begun.empty()) << "untouched: nothing written";
    edit("Text", [&](frmBVK_REGEdit& dialog) {
        named<QLineEdit>(dialog, "Text2").setText("blau");
        QTest::keyClick(&named<QLineEdit>(dialog, "Text2"), Qt::Key_Return);
    });
    EXPECT_EQ(get("Text"), "1:blau");
    edit("Zahl", [&](frmBVK_REGEdit& dialog) {
        auto& field = named<QLineEdit>(dialog, "Text2");
        EXPECT_EQ(field.text(), "255");
        clickOn(dialog, "opbHex");
        EXPECT_EQ(field.text(), "FF");
        field.setText("xyz");
        probe.port.expectBox("ist keine Hexadezimalzahl").expectBox("ist keine Hexadezimalzahl");
        clickOn(dialog, "cmdSave");
        clickOn(dialog, "opbDezimal");
        EXPECT_TRUE(named<QRadioButton>(dialog, "opbHex").isChecked()) << "what cannot be read stays as it is";
        field.setText("80000000");
        clickOn(dialog, "opbDezimal");
        EXPECT_EQ(field.text(), "-2147483648");
        clickOn(dialog, "cmdSave");
    });
    EXPECT_EQ(get("Zahl"), "4:-2147483648");
    edit("Liste", [&](frmBVK_REGEdit& dialog) {
        auto& lines = named<QPlainTextEdit>(dialog, "Text2Zeilen");
        EXPECT_EQ(lines.toPlainText(), "eins\nzwei");
        lines.setPlainText("eins\n\ndrei");
        probe.port.expectBox("keine leere Zeile");
        clickOn(dialog, "cmdSave");
        lines.setPlainText("eins\ndrei");
        clickOn(dialog, "cmdSave");
    });
    EXPECT_EQ(get("Liste"), std::string("7:eins\0drei", 11));
    edit("Daten", [&](frmBVK_REGEdit& dialog) {
        auto& bytes = named<QPlainTextEdit>(dialog, "Text2Zeilen");
        EXPECT_EQ(bytes.toPlainText(), "0A FF");
        bytes.setPlainText("0b");
        clickOn(dialog, "cmdSave");
    });
    EXPECT_EQ(get("Daten"), "3:0B");
    edit("(default)", [&](frmBVK_REGEdit& dialog) {
        EXPECT_TRUE(named<QLineEdit>(dialog, "Text1").isReadOnly());
        named<QLineEdit>(dialog, "Text2").setText("Vorgabe");
        clickOn(dialog, "cmdSave");
    });
    EXPECT_EQ(get(""), "1:Vorgabe");
    EXPECT_EQ(probe.recorder.ended.size(), 5u);
    EXPECT_EQ(rows().substr(0, 30), "(default)|REG_SZ|Vorgabe|ASC\nT");
}

// What a field cannot show is shown as bytes, and goes back byte for byte.
TEST_F(BrowserWindow, ADamagedValueLosesNothing) {
    const RawValue odd{regtype::Sz, {'a', 0, 0, 0, 'b', 0, 0, 0, 0x7F}};
    probe.store->setValue(Root::CurrentUser, "Software\\Probe", ValueName::named("Seltsam"), odd);
    ASSERT_TRUE(window->goTo(Key));
    edit("Seltsam", [&](frmBVK_REGEdit& dialog) {
        EXPECT_FALSE(named<QLabel>(dialog, "lblHinweis").text().isEmpty());
        auto& bytes = named<QPlainTextEdit>(dialog, "Text2Zeilen");
        EXPECT_EQ(bytes.toPlainText(), "61 00 00 00 62 00 00 00 7F");
        bytes.setPlainText("61 00 00 00 62 00 00 00 7E");
        clickOn(dialog, "cmdSave");
    });
    const auto now = probe.store->value(Root::CurrentUser, "Software\\Probe", ValueName::named("Seltsam"));
    EXPECT_EQ(now->type, regtype::Sz);
    EXPECT_EQ(now->bytes.back(), 0x7E);
    EXPECT_EQ(now->bytes.size(), odd.bytes.size());
    probe.store->setValue(Root::CurrentUser, "Software\\Probe", ValueName::named("Riese"), {regtype::Binary, Bytes(300 * 1024, 1)});
    choose("mnuRefresh");
    edit("Riese", [&](frmBVK_REGEdit& dialog) {
        EXPECT_FALSE(named<QPushButton>(dialog, "cmdSave").isEnabled());
        EXPECT_TRUE(named<QPlainTextEdit>(dialog, "Text2Zeilen").isReadOnly());
    });
}

TEST_F(BrowserWindow, ValuesAreMadeRenamedAndDeleted) {
    ASSERT_TRUE(window->goTo(Key));
    probe.port.onWindow("frmBVK_REGEdit", driving<frmBVK_REGEdit, REGEditRequest>(probe.port, [&](frmBVK_REGEdit& dialog) {
        EXPECT_EQ(named<QComboBox>(dialog, "Combo1").currentText(), "REG_DWORD");
        named<QLineEdit>(dialog, "Text1").setText("Neu");
        named<QLineEdit>(dialog, "Text2").setText("7");
        clickOn(dialog, "cmdSave");
    }));
    choose("mnuNew4");
    EXPECT_EQ(get("Neu"), "4:7");
    EXPECT_EQ(values().currentIndex().data(), "Neu");
    answerName("Anders");
    choose("mnuRenValue");
    EXPECT_EQ(get("Neu"), "-");
    EXPECT_EQ(get("Anders"), "4:7");
    EXPECT_EQ(values().currentIndex().data(), "Anders");
    choose("mnuCopyPath");
    EXPECT_EQ(probe.port.clipboard.back(), std::string(Key) + "\\Anders");
    probe.port.expectBox("Der Wert " + std::string(Key) + "\\Anders wird gelöscht", Answer::Yes);
    choose("mnuDelValue");
    EXPECT_EQ(get("Anders"), "-");
    selectValue("(default)");
    EXPECT_FALSE(named<QAction>("mnuDelValue").isEnabled()) << "it is not there";
}

TEST_F(BrowserWindow, KeysAreMadeRenamedAndDeleted) {
    ASSERT_TRUE(window->goTo(Key));
    answerName("Frisch");
    choose("mnuNewKey");
    EXPECT_EQ(named<QLineEdit>("txtPfad").text().toStdString(), std::string(Key) + "\\Frisch");
    answerName("Alt");
    choose("mnuRenKey");
    EXPECT_EQ(named<QLineEdit>("txtPfad").text().toStdString(), std::string(Key) + "\\Alt");
    EXPECT_EQ(children(keys(), keys().currentIndex().parent()), "Alt|Unten|");
    probe.port.expectBox(std::string(Key) + "\\Alt", Answer::No).expectBox(std::string(Key) + "\\Alt", Answer::Yes);
    choose("mnuDelKey");
    EXPECT_TRUE(browser->exists(std::string(Key) + "\\Alt"));
    choose("mnuDelKey");
    EXPECT_FALSE(browser->exists(std::string(Key) + "\\Alt"));
    EXPECT_EQ(named<QLineEdit>("txtPfad").text(), Key);
    ASSERT_TRUE(window->goTo("HKEY_USERS"));
    EXPECT_FALSE(named<QAction>("mnuDelKey").isEnabled()) << "a root";
}

TEST_F(BrowserWindow, FindAndPath) {
    ASSERT_TRUE(window->goTo("HKEY_CURRENT_USER"));
    choose("mnuFind");
    auto& text = named<QLineEdit>("txtRegSuche");
    text.setText("nadel");
    QTest::keyClick(&text, Qt::Key_Return);
    EXPECT_EQ(named<QLabel>("lblRegTreffer").text(), "1 Treffer");
    auto& hits = named<QTreeView>("lvRegTreffer");
    emit hits.activated(hits.model()->index(0, 0));
    EXPECT_EQ(named<QLineEdit>("txtPfad").text().toStdString(), std::string(Key) + "\\Unten\\Tief");
    EXPECT_EQ(values().currentIndex().data(), "Wert");
    auto& path = named<QLineEdit>("txtPfad");
    path.setText("hkcu\\software\\probe\\unten\\");
    QTest::keyClick(&path, Qt::Key_Return);
    EXPECT_EQ(path.text().toStdString(), std::string(Key) + "\\Unten");
    path.setText("hkcu\\gibt\\es\\nicht");
    probe.port.expectBox("gibt es nicht");
    QTest::keyClick(&path, Qt::Key_Return);
}

TEST_F(BrowserWindow, TheTipOnScreenShowsWhatTheBrowserWrote) {
    probe.show("Text");
    probe.port.onWindow("frmBVK_RegBrowse", driving<frmBVK_RegBrowse, RegBrowseRequest>(probe.port, [&](frmBVK_RegBrowse& open) {
        ASSERT_TRUE(open.goTo(Key, "Text"));
        probe.port.onWindow("frmBVK_REGEdit", driving<frmBVK_REGEdit, REGEditRequest>(probe.port, [&](frmBVK_REGEdit& dialog) {
            test::named<QLineEdit>(dialog, "Text2").setText("von drüben");
            clickOn(dialog, "cmdSave");
        }));
        open.findChild<QAction*>("mnuAendern")->trigger();
    }));
    showRegBrowser(*probe.engine, probe.recorder);
    EXPECT_EQ(probe.panel().text, "von drüben");
}

}  // namespace
}  // namespace brenvik::test
