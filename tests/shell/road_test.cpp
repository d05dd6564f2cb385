// The whole road of a change through the real widgets and the real engine: pick a Tip, change it, save, switch, delete.
#include <QCheckBox>
#include <QLineEdit>
#include <QSlider>

#include "Fensterprobe.h"
#include "shell/MaschinenEvents.h"
#include "tipengine/Maschinenprobe.h"

namespace brenvik::test {

constexpr const char* Path = "HKCU\\Software\\Probe\\";

class Road : public testing::Test {
protected:
    Road()
        : probe({{.Index = 1, .Überschrift = "Kasten", .Ausgabeart = 1, .Datentyp = 4, .Wertname = "Kasten", .WertEin = "1", .WertAus = "0", .Standardwert = "0"},
                 {.Index = 2, .Überschrift = "Text", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "Text"},
                 {.Index = 3, .Überschrift = "Zahl", .Ausgabeart = 3, .Datentyp = 4, .Wertname = "Zahl", .WertEin = "100", .WertAus = "5"}}),
          window(probe.fenster(), probe.ctx->einstellungen, displayOrder), engine(*probe.ctx, window, probe.recorder), events(engine) {
        probe.put(std::string(Path) + "Kasten", 4, "0");
        probe.put(std::string(Path) + "Text", 1, "alt");
        probe.put(std::string(Path) + "Zahl", 4, "50");
        window.attach(events);
        engine.TreeEinlesen();
        window.show();
    }
    void pick(const char* heading) {
        auto& tree = control<TippTree>("tvBVKDB");
        const auto hits = tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole, QString::fromUtf8(heading), 1, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(hits.size(), 1) << heading;
        tree.scrollTo(hits[0]);
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualRect(hits[0]).center());
        EXPECT_EQ(control<QLabel>("lblDBTippU").text(), heading);
    }
    template <class T> T& control(const char* name) {
        T* found = window.findChild<T*>(QString::fromUtf8(name));
        if (!found) throw std::runtime_error(std::string("no control ") + name);
        return *found;
    }
    void press(const char* name) { QTest::mouseClick(&control<QPushButton>(name), Qt::LeftButton); }
    std::string get(const char* value) { return probe.get(std::string(Path) + value); }

    Probe probe;
    frmBVK_Prog window;
    TippMaschine engine;
    MaschinenEvents events;
};

TEST_F(Road, EachKindIsSavedByTheButton) {
    pick("Kasten");
    EXPECT_EQ(control<QLabel>("lblStatus(0)").text(), "[Registry Wert vorhanden]");
    QTest::mouseClick(&control<QCheckBox>("chkCheckBox(0)"), Qt::LeftButton);
    probe.port.expectBox("Der Schlüssel wurde geändert/angelegt !");
    press("cmdRegSave");
    EXPECT_EQ(get("Kasten"), "4:1");
    EXPECT_TRUE(control<QCheckBox>("chkCheckBox(0)").isChecked());

    pick("Text");
    control<QLineEdit>("txtTextWerte(0)").setText("grün");
    probe.port.expectBox("Der Schlüssel wurde geändert/angelegt !");
    press("cmdRegSave");
    EXPECT_EQ(get("Text"), "1:grün");

    pick("Zahl");
    control<QLineEdit>("txtZahlenWerte(0)").setText("77");
    EXPECT_EQ(control<QSlider>("sliZahlenWerte(0)").value(), 77);
    control<QSlider>("sliZahlenWerte(0)").setValue(78);
    EXPECT_EQ(control<QLineEdit>("txtZahlenWerte(0)").text(), "78");
    probe.port.expectBox("Der Schlüssel wurde geändert/angelegt !");
    press("cmdRegSave");
    EXPECT_EQ(get("Zahl"), "4:78");
    EXPECT_TRUE(probe.port.done());
}

TEST_F(Road, LeavingAChangedTipAsks) {
    pick("Text");
    pick("Kasten");                             // nothing changed, nothing asked
    pick("Text");
    control<QLineEdit>("txtTextWerte(0)").setText("verworfen");
    probe.port.expectBox("Sollen die Veränderungen gespeichert werden ?", Answer::No);
    pick("Kasten");
    EXPECT_EQ(get("Text"), "1:alt");
    QTest::mouseClick(&control<QCheckBox>("chkCheckBox(0)"), Qt::LeftButton);
    probe.port.expectBox("Sollen die Veränderungen gespeichert werden ?", Answer::Yes).expectBox("Der Schlüssel wurde geändert/angelegt !");
    EXPECT_TRUE(window.close());
    EXPECT_EQ(get("Kasten"), "4:1");
    EXPECT_TRUE(probe.port.done());
}

TEST_F(Road, DefaultAndDelete) {
    probe.put(std::string(Path) + "Kasten", 4, "1");
    pick("Kasten");
    EXPECT_TRUE(control<QCheckBox>("chkCheckBox(0)").isChecked());
    probe.port.expectBox("Soll die Aktion ausgeführt werden ?", Answer::Yes).expectBox("Der Schlüssel wurde geändert/angelegt !");
    press("cmdDefault");
    EXPECT_EQ(get("Kasten"), "4:0");
    EXPECT_FALSE(control<QCheckBox>("chkCheckBox(0)").isChecked());
    probe.port.expectBox("Schlüssel wird gelöscht", Answer::Yes);
    press("cmdRegDel");
    EXPECT_EQ(get("Kasten"), "-");
    EXPECT_EQ(control<QLabel>("lblStatus(0)").text(), "[Registry Wert nicht vorhanden]");
    EXPECT_TRUE(probe.port.done());
}

}  // namespace brenvik::test
