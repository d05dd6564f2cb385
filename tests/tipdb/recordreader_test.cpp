// The record reader: whole records as text, the path rule, file lists, and rows that do not fit.
#include <gtest/gtest.h>

#include "World.h"

namespace brenvik::test {
namespace {

std::string quoted(const std::string& text) { return "[" + text + "]"; }

std::string entryText(const TipEntry& e) {
    return std::to_string(e.TippIndex) + " " + e.Hauptschlüssel + quoted(e.Schlüssel) + quoted(e.SchlüsselNT) + quoted(e.Wertname) + " typ" + std::to_string(e.Datentyp) + " art" + std::to_string(e.Ausgabeart) +
           " ein" + quoted(e.WertEin) + " aus" + quoted(e.WertAus) + " text" + quoted(e.Anzeigetext) + " liste" + quoted(e.Werteliste) + " standard" + quoted(e.Standardwert) + " anpassen" + std::to_string(e.TypAnpassen) +
           " label" + quoted(e.Beschriftung) + "\n";
}

std::string recordText(const Tipp& t) {
    std::string out = t.Überschrift + " | " + t.Gruppen + " | " + t.Beschreibung + " | hilfe" + std::to_string(t.HilfeNummer) + " anzahl" + std::to_string(t.AnzahlWerte) + " ";
    for (const bool flag : {t.Win95, t.Win98, t.WinME, t.WinNT, t.Win2000, t.WinXP}) out += flag ? '1' : '0';
    out += " neustart" + std::to_string(t.Neustart) + " ini" + std::to_string(t.INITipp) + " neu" + quoted(t.NeuInVersion) + " symbol" + std::to_string(t.Symbol) + " adm" + std::to_string(t.ADMExport) + "\n";
    for (std::size_t i = 1; i < t.Eintrag.size(); ++i) out += entryText(t.Eintrag[i]);
    return out;
}

class TipRecord : public testing::TestWithParam<const char*> {
protected:
    TipRecord() { w.loadFixture(GetParam() + std::string("/RegDaten.mdb")); }
    std::string tip(std::int32_t index) {
        w.readTip(index);
        return recordText(w.ctx.aktuellerTipp);
    }
    World w;
};
INSTANTIATE_TEST_SUITE_P(Formats, TipRecord, testing::Values("jet3", "jet4", "sqlite"), [](const auto& format) { return std::string(format.param); });

TEST_P(TipRecord, wholeRecords) {
    const std::string policies = "HKEY_CURRENT_USER[Software\\Microsoft\\Windows\\CurrentVersion\\Policies\\Explorer][]";
    const std::string rest = " liste[] standard[] anpassen0 label";
    EXPECT_EQ(tip(5), "Einträge im Startmenü sperren | 2 | Sperrt einzelne Einträge des Startmenüs. | hilfe205 anzahl2 111111 neustart2 ini0 neu[1.0.0] symbol3 adm1\n"
                      "5 " + policies + "[NoRun] typ4 art1 ein[1] aus[<delkey>] text['Ausführen...' entfernen]" + rest + "[Startmenü]\n"
                      "6 " + policies + "[NoFind] typ4 art1 ein[1] aus[<delkey>] text['Suchen' entfernen]" + rest + "[]\n"
                      "9 " + policies + "[NoLogOff] typ4 art1 ein[1] aus[<delkey>] text['Abmelden' entfernen]" + rest + "[]\n");
    EXPECT_EQ(tip(20), "Kontextmenü für Ordner bearbeiten | 5 | Fügt Ordnern eigene Befehle hinzu. | hilfe0 anzahl0 111111 neustart0 ini0 neu[1.0.0] symbol2 adm1\n"
                       "20 HKEY_CLASSES_ROOT[Directory\\shell][][] typ1 art10 ein[1] aus[0] text[] liste[Command] standard[] anpassen0 label[]\n");
    EXPECT_EQ(tip(34), "Name des leeren Anschlusses | 1 |  | hilfe0 anzahl0 110000 neustart0 ini1 neu[1.2.18] symbol2 adm1\n"
                       "34 [windows][][NullPort] typ1 art2 ein[1] aus[0] text[] liste[] standard[None] anpassen0 label[]\n");
    EXPECT_EQ(tip(33).substr(0, 10), "Startseite");
    EXPECT_EQ(w.ctx.aktuellerTipp.Eintrag[1].Hauptschlüssel, "");  // "hkcu" is no root
    tip(7);
    EXPECT_EQ(w.ctx.aktuellerTipp.Eintrag[2].TippIndex, 8);
    EXPECT_EQ(w.ctx.aktuellerTipp.Überschrift, "Name und Firma des Besitzers ändern");
    tip(11);
    EXPECT_EQ(w.ctx.aktuellerTipp.Beschreibung.size(), std::string("Absatz 001: Die Farbe setzt sich aus den drei Anteilen Rot, Grün und Blau zusammen, jeder Anteil geht von 0 bis 255.").size() * 45 + 44 * 2);
    EXPECT_TRUE(w.port.boxes.empty());
}

TEST_P(TipRecord, numbersAtTheirLimits) {
    EXPECT_EQ(tip(35).substr(0, tip(35).find(" text[")), "Grenzwerte der Zahlen | 1 |  | hilfe-1 anzahl200 100000 neustart128 ini0 neu[1.0.0] symbol-32768 adm1\n"
                                      "35 HKEY_LOCAL_MACHINE[Software\\Grenzwerte][][x] typ-2147483648 art-1 ein[€] aus[]");
    EXPECT_EQ(w.ctx.aktuellerTipp.Eintrag.size(), 202U);
    EXPECT_EQ(w.ctx.aktuellerTipp.Eintrag[1].TypAnpassen, 255);
    EXPECT_EQ(entryText(w.ctx.aktuellerTipp.Eintrag[201]), entryText({}));
}

TEST_P(TipRecord, windowsPath) {
    for (const auto& [system, folder] : std::map<int, std::string>{{1, "System"}, {2, "System"}, {5, "System"}, {3, "System32"}, {4, "System32"}, {6, "System32"}, {0, "System32"}}) {
        w.ctx.intBS = static_cast<std::int16_t>(system);
        tip(18);
        EXPECT_EQ(w.ctx.aktuellerTipp.Eintrag[1].WertEin, "C:\\WINDOWS\\" + folder + "\\userinit.exe,");
        EXPECT_EQ(w.ctx.aktuellerTipp.Eintrag[1].WertAus, "a[WindowsPfad]b[WindowsPfad]c");  // three parts
    }
}

TEST_P(TipRecord, fileList) {
    const auto system = w.home / "drive_c/WINDOWS/system32";
    w.home.put("drive_c/WINDOWS/system32/desk.cpl", "x");
    w.home.put("drive_c/WINDOWS/system32/Fremd.CPL", "x");
    w.home.put("drive_c/WINDOWS/system32/TimeDate.cpl", "x");
    w.home.put("drive_c/WINDOWS/system32/user32.dll", "x");
    const std::string key = " HKEY_CURRENT_USER[Control Panel\\Don't load][]";
    const std::string rest = " liste[<filelist>] standard[] anpassen0 label[]\n";
    EXPECT_EQ(tip(15), "Symbole der Systemsteuerung ausblenden | 3 |  | hilfe0 anzahl2 111111 neustart0 ini0 neu[] symbol2 adm1\n"
                       "15" + key + "[desk.cpl] typ1 art8 ein[No] aus[Yes] text[Anzeige]" + rest +
                       "15" + key + "[fremd.cpl] typ1 art8 ein[No] aus[Yes] text[Unbekannt!]" + rest +
                       "15" + key + "[timedate.cpl] typ1 art8 ein[No] aus[Yes] text[Datum und Uhrzeit]" + rest);
}

TEST_P(TipRecord, searchGoesForwardOnly) {
    w.ctx.objRS->MoveFirst();
    DBTippSuchen(w.ctx, "Startseite");
    EXPECT_EQ(w.ctx.aktuellerTipp.Eintrag[1].TippIndex, 33);
    w.port.expectBox("DBTippRead aufgetreten mit der Fehlernummer: 3021");
    DBTippSuchen(w.ctx, "Farben der Oberfläche");  // lies before
    EXPECT_EQ(w.ctx.aktuellerTipp.Überschrift, "Startseite");
}

TEST_P(TipRecord, singleTexts) {
    struct Case {
        spalte::Spalte column;
        int index, system;
        const char* text;
    };
    const Case cases[] = {
        {spalte::Wertname, 5, 6, "NoRun"},
        {spalte::Werteliste, 26, 6, "145#149#181#255"},  // taken over from row 25
        {spalte::Wertname, 26, 6, "NoDriveTypeAutoRun"},
        {spalte::Beschreibung, 27, 6, ""},               // Verweis 0
        {spalte::Schlüssel, 21, 6, "Software\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon"},
        {spalte::Schlüssel, 21, 2, "Software\\Microsoft\\Windows\\CurrentVersion\\Winlogon"},
        {spalte::Schlüssel, 5, 4, "Software\\Microsoft\\Windows\\CurrentVersion\\Policies\\Explorer"},
        {spalte::Standardwert, 14, 6, "9E 3E 07 80"},
    };
    for (const Case& c : cases) {
        w.ctx.intBS = static_cast<std::int16_t>(c.system);
        EXPECT_EQ(DBTextSuchen(w.ctx, c.column, c.index), c.text) << c.index;
    }
    w.port.expectBox("DBTextSuchen aufgetreten mit der Fehlernummer: 3021").expectBox("DBTextSuchen aufgetreten mit der Fehlernummer: 3021");
    EXPECT_EQ(DBTextSuchen(w.ctx, spalte::Wertname, 4711), "");
    EXPECT_EQ(DBTextSuchen(w.ctx, spalte::Beschreibung, 35), "");  // its Verweis leads nowhere
}

// Rows that no shipped database has, made by bending single cells of the fixture.
TEST(TipRecordBent, numbersThatDoNotFitAreReported) {
    struct Case {
        const char* change;
        int index;
        const char *number, *place;
    };
    const Case cases[] = {{"update RegDaten set AnzahlWerte=256 where \"Index\"=5", 5, "6", "Tabelle RegDaten, Index 5, Spalte AnzahlWerte: Überlauf"},
                          {"update RegDaten set Symbol=32768 where \"Index\"=5", 5, "6", "Tabelle RegDaten, Index 5, Spalte Symbol: Überlauf"},
                          {"update RegDaten set Neustart=-1 where \"Index\"=5", 5, "6", "Tabelle RegDaten, Index 5, Spalte Neustart: Überlauf"},
                          {"update RegDaten set \"Index\"=40000 where \"Index\"=6", 5, "6", "Tabelle RegDaten, Index 40000, Spalte Index: Überlauf"},
                          {"update RegDaten set TypAnpassen=null where \"Index\"=9", 5, "94", "Tabelle RegDaten, Index 9, Spalte TypAnpassen: Unzulässige Verwendung von Null"},
                          {"update RegDaten set Ausgabeart='viel' where \"Index\"=9", 5, "13", "Tabelle RegDaten, Index 9, Spalte Ausgabeart: Typen unverträglich"},
                          {"update RegDaten set AnzahlWerte=1 where \"Index\"=5", 5, "9", "Tabelle RegDaten, Index 5: Der Tipp hat mehr Zeilen, als in AnzahlWerte stehen"}};
    const TempDir dir;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.change);
        const auto file = bent(dir, c.change);
        World w;
        // A symbol beyond its range already stops the loading of the list.
        const bool inList = std::string(c.change).find("Symbol") != std::string::npos;
        if (inList) {
            w.port.expectBox("Die Datenbank konnte nicht geöffnet werden", Answer::No);
            EXPECT_FALSE(w.load(file));
            EXPECT_NE(w.port.lastBox().find(c.place), std::string::npos) << w.port.lastBox();
            continue;
        }
        ASSERT_TRUE(w.load(file));
        w.readTip(1);
        w.port.expectBox(std::string("DBTippRead aufgetreten mit der Fehlernummer: ") + c.number);
        w.readTip(c.index);
        EXPECT_NE(w.port.lastBox().find(c.place), std::string::npos) << w.port.lastBox();
        EXPECT_EQ(w.ctx.aktuellerTipp.Überschrift, "Einträge im Startmenü sperren");
        for (const TipEntry& e : w.ctx.aktuellerTipp.Eintrag) EXPECT_NE(e.Wertname, "MenuShowDelay");  // nothing of the Tip before
        EXPECT_TRUE(w.port.done());
    }
}

}  // namespace
}  // namespace brenvik::test
