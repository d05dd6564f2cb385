// The program's statements over the three formats, how texts compare, and what a record set does.
#include <gtest/gtest.h>

#include <functional>

#include "World.h"
#include "tipdb/DatabaseErrors.h"
#include "tipdb/sql/Statement.h"
#include "tipdb/sql/TextComparison.h"

namespace brenvik::test {
namespace {

std::string indexes(World& w, const std::string& sql) {
    const auto rs = w.ctx.objDB.GetNewRS(w.ctx, w.ctx.objVerbindung.get(), sql);
    std::string out;
    for (; !rs->atEOF(); rs->MoveNext()) out += rs->text(0) + " ";
    return out;
}

TEST(Query, statementsOfTheProgram) {
    const std::pair<const char*, const char*> where[] = {
        {"Index=5 or HauptIndex=5", "5 6 9 "},
        {"Index=7 or HauptIndex=7", "7 8 "},
        {"Index=11 or HauptIndex=11", "11 12 13 "},
        {"Index=15 or HauptIndex=15", "15 16 17 "},
        {"HauptIndex=5 or Index=5", "5 6 9 "},
        {"Index=8 or Index=1 or Index=35", "1 8 35 "},  // table order, whatever the way to the rows
        {"Index=4711", ""},
        {"Wertname Like '%no%'", "5 6 9 21 22 25 26 "},
        {"Überschrift = 'versteckte dateien ANZEIGEN'", "3 29 "},
        {"Überschrift Like '%größe%'", "30 31 "},
        {"Überschrift Like '%GRÖSSE%'", "30 31 "},
        {"Beschreibung Like '%ÄÖÜ%'", "32 "},
        {"Beschreibung Like '%äöü%'", "32 "},
        {"Beschreibung Like '%Abstand_in%'", "31 "},
        {"Beschreibung Like '%100%%'", "30 "},
        {"Beschreibung = ''", "27 "},
        {"Wertname = ''", "15 "},
        {"Wertname is null", "20 "},
        {"Überschrift Like '%Index%' or Wertname Like 'index'", ""},
    };
    for (const char* format : {"jet3", "jet4", "sqlite"}) {
        World w;
        w.loadFixture(std::string(format) + "/RegDaten.mdb");
        for (const auto& [condition, found] : where) EXPECT_EQ(indexes(w, std::string("Select * From RegDaten where ") + condition), found) << format << ": " << condition;
        EXPECT_EQ(indexes(w, "Select Index, Überschrift, Beschreibung, Wertname, HauptIndex From RegDaten where Wertname Like '%n%' and HauptIndex=5 order by 1 desc"), "9 6 ");
        EXPECT_EQ(indexes(w, "select Gruppenname from gruppennamen order by gruppenname"), "Explorer Größe und Farbe Leere Gruppe Netzwerk Oberfläche Sicherheit Startmenü System ");
        // What is answered without the engine must be what the engine answers.
        EXPECT_EQ(indexes(w, "Select * From RegDaten"), indexes(w, "Select Index From RegDaten where 1=1"));
    }
}

TEST(Query, hauptIndexIsReachedByNameWhereverItStands) {
    for (const char* format : {"jet3", "jet4"}) {
        World w;
        w.loadFixture(std::string(format) + "/RegDaten-hauptindex9.mdb");
        EXPECT_EQ(indexes(w, "Select * From RegDaten where Index=5 or HauptIndex=5"), "5 6 9 ");
        w.readTip(5);
        EXPECT_EQ(w.ctx.aktuellerTipp.lastEntry(), 3U);
    }
}

TEST(Query, failuresAreReported) {
    const std::string reading = "[&h80040E14]\r\nFehler in der Abfrage: Es darf nur gelesen werden.\r\n";
    const std::pair<std::string, std::string> bad[] = {
        {"Select * From RegDaten where Überschrift Like '%it's%'", "Fehler in der Abfrage: Sie ist ab \"s\" nicht zu verstehen.\r\n"},
        {"Select * From RegDaten where Wertname='", "Fehler in der Abfrage: Sie ist ab \"'\" nicht zu verstehen.\r\n"},
        {"Select * From RegDaten where", "Fehler in der Abfrage: Sie ist nicht zu Ende.\r\n"},
        {"Select * From Nichts", "[&h80040E37]\r\nDie Tabelle \"Nichts\" gibt es nicht.\r\n"},
        {"Select Quatsch From RegDaten", "Fehler in der Abfrage: Die Spalte \"Quatsch\" gibt es nicht.\r\n"},
        {"Select Quatsch() From RegDaten", "Fehler in der Abfrage: Die Funktion \"Quatsch\" gibt es nicht.\r\n"},
        {"Select abs(-9223372036854775807-1)", "Fehler in der Abfrage: Sie kann nicht ausgeführt werden (SQLite-Fehler 1).\r\n"},
        {"", "Die Abfrage muß aus genau einer Anweisung bestehen.\r\n"},
        {"Select 1; Select 2", "Die Abfrage muß aus genau einer Anweisung bestehen.\r\n"},
        {"delete from RegDaten", reading},
        {"attach database '/tmp/x.db' as x", reading},
        {"pragma user_version=5", reading},
        {"create table x(y)", reading},
    };
    World w;
    w.loadFixture("sqlite/RegDaten.mdb");
    for (const auto& [sql, reason] : bad) {
        SCOPED_TRACE(sql);
        w.port.expectBox("RS.Source: " + sql, Answer::Yes);
        const auto rs = w.ctx.objDB.GetNewRS(w.ctx, w.ctx.objVerbindung.get(), sql);
        EXPECT_EQ(rs->State(), RecordSet::Closed);
        EXPECT_EQ(rs->Source(), sql);
        EXPECT_EQ(w.port.lastBox().rfind("bvkADO.GetNewRS", 0), 0U) << w.port.lastBox();
        EXPECT_NE(w.port.lastBox().find(reason), std::string::npos) << w.port.lastBox();
    }
    EXPECT_EQ(w.port.clipboard.size(), std::size(bad));
    w.ctx.objDB.ConnectionClose(w.ctx.objVerbindung.get());
    w.port.expectBox("geschlossen", Answer::No);
    EXPECT_EQ(w.ctx.objDB.GetNewRS(w.ctx, w.ctx.objVerbindung.get(), "Select * From RegDaten")->State(), RecordSet::Closed);
    EXPECT_TRUE(w.ctx.objDB.RSClose(nullptr));
    EXPECT_TRUE(w.ctx.objDB.ConnectionClose(nullptr));
}

TEST(Query, indexIsQuotedOutsideOfTexts) {
    EXPECT_EQ(quoteIndexWord("Select Index, INDEX From T where HauptIndex=1 and a='Index' and \"Index\"=[Index] or äindex=index"),
              "Select \"Index\", \"INDEX\" From T where HauptIndex=1 and a='Index' and \"Index\"=[Index] or äindex=\"index\"");
    EXPECT_EQ(quoteIndexWord("a='offen Index"), "a='offen Index");
}

TEST(Query, comparingTexts) {
    const std::pair<const char*, const char*> equal[] = {{"Ä", "ä"}, {"GRÖSSE", "größe"}, {"Straße", "STRASSE"}, {"", ""}, {"ÿ", "Ÿ"}, {"œ", "Œ"}};
    for (const auto& [a, b] : equal) EXPECT_EQ(compareDatabaseTexts(a, b), 0) << a << " " << b;
    const char* ascending[] = {"", "1", "a", "Ä", "ab", "B", "o", "Ö", "p"};
    for (std::size_t i = 1; i < std::size(ascending); ++i) {
        EXPECT_LT(compareDatabaseTexts(ascending[i - 1], ascending[i]), 0) << ascending[i];
        EXPECT_GT(compareDatabaseTexts(ascending[i], ascending[i - 1]), 0) << ascending[i];
    }
    struct Like {
        const char *text, *pattern;
        bool fits;
    };
    const Like cases[] = {{"Straße", "%ASS%", true}, {"Straße", "stra_e", true}, {"Strasse", "stra_e", false}, {"Strasse", "straße", true}, {"aXbXc", "a%x%c", true}, {"abc", "abc_", false},
                          {"", "%", true}, {"", "_", false}, {"äöü", "___", true}, {"aaaab", "%aab", true}, {"100%", "100%", true}, {"x", "", false}};
    for (const Like& c : cases) EXPECT_EQ(likeDatabaseText(c.text, c.pattern), c.fits) << c.text << " like " << c.pattern;
}

std::int32_t errorOf(const std::function<void()>& work) {
    try {
        work();
        return 0;
    } catch (const NumberedError& error) {
        return error.number;
    }
}

TEST(Query, recordSet) {
    World w;
    w.loadFixture("jet4/RegDaten.mdb");
    RecordSet& rs = *w.ctx.objRS;
    rs.MoveLast();
    EXPECT_EQ(rs.number<std::int16_t>(spalte::Symbol), -32768);
    EXPECT_EQ(errorOf([&] { rs.number<std::int16_t>(spalte::Datentyp); }), 6);
    EXPECT_EQ(errorOf([&] { rs.number<std::int32_t>(spalte::Überschrift); }), 13);
    EXPECT_EQ(errorOf([&] { rs.text(spalte::Schlüssel); rs.text(spalte::Beschreibung); }), 94);
    EXPECT_EQ(errorOf([&] { rs.text(34); }), 3265);
    EXPECT_TRUE(rs.isNullOrEmpty(spalte::WertAus) && !rs.isNull(spalte::WertAus));
    rs.MoveNext();
    EXPECT_EQ(errorOf([&] { rs.text(0); }), 3021);
    EXPECT_EQ(errorOf([&] { rs.MoveNext(); }), 3021);
    rs.MoveFirst();
    for (const char* index : {"3", "29"}) {   // the same heading twice
        rs.moveToText(spalte::Überschrift, "Versteckte Dateien anzeigen");
        EXPECT_EQ(rs.text(0), index);
        rs.MoveNext();
    }
    rs.moveToNumber(spalte::Index, 5);  // lies before
    EXPECT_TRUE(rs.atEOF());
    rs.MoveFirst();
    rs.moveToText(spalte::Überschrift, "versteckte dateien anzeigen");  // exact
    EXPECT_TRUE(rs.atEOF());
    rs.Close();
    EXPECT_EQ(errorOf([&] { rs.atEOF(); }), 3704);
}

}  // namespace
}  // namespace brenvik::test
