// Opening a database: what the tables in memory hold, and what the user is told when it goes wrong.
#include <gmock/gmock.h>

#include <ctime>
#include <fstream>

#include "World.h"

namespace brenvik::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

class Facts : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Formats, Facts, testing::Values("jet3", "jet4", "sqlite"), [](const auto& format) { return std::string(format.param); });

TEST_P(Facts, tablesInMemory) {
    World w;
    w.loadFixture(GetParam() + std::string("/RegDaten.mdb"));
    EXPECT_TRUE(w.ctx.blnDBGeladen);
    EXPECT_EQ(w.ctx.strDBVersion, "1.2.18");
    EXPECT_EQ(w.ctx.strDBDatum, "09.11.2002");
    EXPECT_THAT(w.ctx.strDBVersionen, ElementsAre("1.0.0", "1.1.4", "1.2.0", "1.2.9", "1.2.18"));

    std::string groups;
    for (const Gruppe& g : w.ctx.udtGruppen) {
        groups += std::to_string(g.Nummer) + " " + g.Name + " " + std::to_string(g.TippAnzahl) + ":";
        for (const auto index : g.Tipps) groups += " " + std::to_string(index);
        groups += "\n";
    }
    EXPECT_EQ(groups,
              "1 System 7: 2 7 18 19 23 24 34 35\n"
              "2 Sicherheit 2: 5 21 25\n"
              "3 Oberfläche 5: 1 4 11 14 15 29\n"
              "4 Startmenü 2: 1 32 33\n"
              "5 Explorer 3: 3 4 10 20\n"
              "6 Netzwerk 4: 7 26 27 27 28\n"
              "7 Leere Gruppe -1:\n"
              "8 Größe und Farbe 2: 11 30 31\n");
    EXPECT_EQ(w.ctx.udtGruppen[7].Beschreibung, "");

    std::string tree;
    for (const Treebaum& t : w.ctx.udtTreebaum)
        tree += std::to_string(t.Nummer) + "/" + std::to_string(t.Vorgänger) + "/" + std::to_string(t.Ebene) + "/" + std::to_string(t.Gruppe) + " ";
    EXPECT_EQ(tree, "1/1/1/0 2/1/1/1 3/1/1/2 4/2/2/3 5/2/2/7 6/1/1/4 7/1/1/5 8/1/1/6 9/1/1/0 ");

    std::string tips;
    for (const TipListEntry& t : w.ctx.udtTippListe) tips += std::to_string(t.Index) + " ";
    EXPECT_EQ(tips, "1 2 3 4 5 7 10 11 14 15 18 19 20 21 23 24 25 26 27 28 29 30 31 32 33 34 35 ");
    const TipListEntry& effects = w.ctx.udtTippListe[8];
    EXPECT_EQ(effects.Überschrift, "Effekte der Oberfläche");
    EXPECT_EQ(effects.NeuInVersion, "1.2.9");
    EXPECT_THAT(effects.Filter, ElementsAre(true, false, false, false, false, true, true));
    EXPECT_EQ(w.ctx.udtTippListe[9].NeuInVersion, "0");
    EXPECT_EQ(w.ctx.udtTippListe[26].Symbol, -32768);
    EXPECT_TRUE(w.port.boxes.empty());
}

// What each bad file tells the user, box by box, and whether the program goes on. The first box of a database report
// carries the reason; the paths are those of the files below.
struct BadInput {
    std::string name;
    fs::path file;
    std::vector<std::string> told;
    bool goesOn = false;
    std::vector<std::string> sounds = {};
};

fs::path truncated(const TempDir& dir, const std::string& fixture, std::size_t bytes) {
    return dir.put("gekürzt-" + fixture.substr(0, 4) + std::to_string(bytes) + ".mdb", bytesOf(jetFile(fixture)).substr(0, bytes));
}

// A database report asks whether to copy it; the other boxes have one button.
bool isReport(const std::string& text) {
    return text.find("Die Datenbankdatei: \"") != 0 && text.find("Datenbank konnte nicht") != 0 && text != "Passwort ungültig";
}

TEST(LoadDB, badInput) {
    const TempDir dir;
    const std::string ended = "Datenbank konnte nicht geöffnet werden, das Programm wird beendet.";
    const auto format7 = [](const std::string& file) {
        return "Die Datenbankdatei: \"" + file + "\" ist nicht für diese Programmversion geeignet.\r\n\r\nSie benötigen die Version: 1.2.18\r\n"
               "Sie haben die Version:       1.2.18 [09.11.2002] ";
    };
    const std::vector<BadInput> cases = {
        {"no file", dir / "fehlt.mdb",
         {"Die Datenbankdatei: \"" + (dir / "fehlt.mdb").string() + "\" wurde nicht gefunden.\r\n\r\nBitte überprüfen Sie die Installation und starten Sie das Programm neu !"},
         false, {"klick.wav"}},
        {"folder", dir.path(), {"keine gewöhnliche Datei", ended}},
        {"text file", jetFile("beschaedigt/text.mdb"), {"Das Format der Datenbankdatei wird nicht erkannt", ended}},
        {"empty file", dir.put("leer.mdb", ""), {"Das Format der Datenbankdatei wird nicht erkannt", ended}},
        {"short Jet 4", truncated(dir, "jet4/RegDaten.mdb", 40000), {"die letzte Seite ist unvollständig", ended}},
        {"short SQLite", truncated(dir, "sqlite/RegDaten.mdb", 9000), {"Die Datenbankdatei ist beschädigt", ended}},
        {"newer Access", dir.put("neu.mdb", std::string("\0\1\0\0Standard Jet DB\0\2", 21) + std::string(8192, '\0')),
         {"nur die Formate Jet 3 und Jet 4 werden gelesen", ended}},
        {"format 7, Jet 3", jetFile("jet3/RegDaten-format7.mdb"), {format7(jetFile("jet3/RegDaten-format7.mdb").string())}, false, {"klick.wav"}},
        {"other password", jetFile("jet4/RegDaten-pw-umlaut.mdb"), {"Passwort ungültig", "Passwort ungültig", ended}},
        {"table missing, Jet 3", jetFile("jet3/RegDaten-ohneversion.mdb"), {"RS.Source: Select * From Version"}, true},
    };
    for (const BadInput& c : cases) {
        SCOPED_TRACE(c.name);
        World w;
        w.ctx.strKlickWav = "klick.wav";
        for (const std::string& text : c.told) w.port.expectBox(text, isReport(text) ? Answer::No : Answer::OK);
        EXPECT_EQ(w.load(c.file), c.goesOn);
        EXPECT_EQ(w.ctx.blnDBGeladen, c.goesOn);
        EXPECT_EQ(w.port.sounds, c.sounds);
        EXPECT_TRUE(w.port.done());
        if (c.goesOn) {
            EXPECT_TRUE(w.ctx.strDBVersionen.empty());
            EXPECT_EQ(w.ctx.udtTippListe.size(), 27U);
        }
    }
}

TEST(LoadDB, damagedFilesEndInTheReport) {
    World w;
    int count = 0;
    for (const auto& entry : fs::directory_iterator(jetFile("beschaedigt"))) {
        SCOPED_TRACE(entry.path().filename().string());
        w.port.expectBox("bvkADO.ConnectAccess", Answer::No).expectBox("Datenbank konnte nicht geöffnet werden");
        EXPECT_FALSE(w.load(entry.path()));
        EXPECT_TRUE(w.port.done());
        ++count;
    }
    EXPECT_EQ(count, 26);
}

// Whatever stands in the way of another database is told once, and the present one stays with what it shows.
TEST(LoadDB, anotherDatabaseIsRefusedInOneBox) {
    struct Case {
        std::string name;
        fs::path file;
        std::string reason;
    };
    const TempDir dir;
    const auto made = [&](const char* name, const std::string& sql) {
        const fs::path file = dir / (std::string(name) + ".mdb");
        fs::rename(bent(dir, sql), file);
        return file;
    };
    const Case cases[] = {
        {"no file", dir / "fehlt.mdb", "Die Datei wurde nicht gefunden."},
        {"text", jetFile("beschaedigt/text.mdb"), "Das Format der Datenbankdatei wird nicht erkannt"},
        {"damaged", jetFile("beschaedigt/ring-memo4.mdb"), "Die Datenbankdatei ist beschädigt (Tabelle RegDaten)"},
        {"password", jetFile("jet4/RegDaten-pw-umlaut.mdb"), "Das Kennwort der Datenbank ist ungültig."},
        {"no Version, Jet", jetFile("jet3/RegDaten-ohneversion.mdb"), "Die Tabelle \"Version\" gibt es nicht."},
        {"Version empty", made("a", "delete from Version"), "Die Tabelle \"Version\" ist leer."},
        {"no RegDaten", made("b", "drop table RegDaten"), "Die Tabelle \"RegDaten\" gibt es nicht."},
        {"no Gruppennamen", made("c", "drop table Gruppennamen"), "Die Tabelle \"Gruppennamen\" gibt es nicht."},
        {"no Treebaum", made("d", "drop table Treebaum"), "Die Tabelle \"Treebaum\" gibt es nicht."},
        {"a view", made("e", "alter table RegDaten rename to R; create view RegDaten as select * from R"), "Die Tabelle \"RegDaten\" gibt es nicht."},
        {"no HauptIndex", made("f", "alter table RegDaten drop column HauptIndex"), "Fehler in der Abfrage: Die Spalte \"HauptIndex\" gibt es nicht."},
        {"few columns", made("g", "drop table Version; create table Version(Version text); insert into Version values('1')"), "Tabelle Version: Die Spalte 1 gibt es nicht."},
        {"a bad number", made("h", "update RegDaten set Symbol='viel' where \"Index\"=5"), "Tabelle RegDaten, Index 5, Spalte Symbol: Typen unverträglich"},
    };
    World w;
    w.loadFixture("jet4/RegDaten.mdb");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        w.port.expectBox("Die Datei \"" + c.file.string() + "\" wird nicht als Tipp-Datenbank geöffnet.\r\n\r\n" + c.reason);
        EXPECT_FALSE(loadOtherDatabase(w.ctx, c.file));
        EXPECT_THAT(w.port.lastBox(), testing::AllOf(testing::EndsWith("\r\n\r\nDie bisherige Datenbank bleibt geöffnet."), testing::Not(HasSubstr("beendet"))));
        EXPECT_EQ(w.ctx.udtTippListe.size(), 27U);
        EXPECT_EQ(w.ctx.databaseFile, jetFile("jet4/RegDaten.mdb"));
    }
    w.port.expectBox("ist nicht für diese Programmversion geeignet");
    EXPECT_FALSE(loadOtherDatabase(w.ctx, jetFile("jet3/RegDaten-format7.mdb")));
    w.readTip(5);
    EXPECT_EQ(w.ctx.aktuellerTipp.Überschrift, "Einträge im Startmenü sperren");
    EXPECT_TRUE(loadOtherDatabase(w.ctx, jetFile("jet3/RegDaten-leer.mdb")));
    EXPECT_TRUE(w.ctx.udtTippListe.empty() && w.ctx.blnDBGeladen);
}

// Sizes that no tip database has, each at its bound and beyond it, in time that grows with the size only.
TEST(LoadDB, hostileSizes) {
    const auto rows = [](int count, const std::string& insert, const std::string& from = "n") {
        return "with recursive n(i) as (select 1 union all select i+1 from n where i<" + std::to_string(count) + ") insert into " + insert + " from " + from + ";";
    };
    const auto groups = [&](int count) { return rows(count, "Gruppennamen select 'G'||i, 100+i, ''"); };
    const auto tips = [&](int count, const std::string& index) {
        return "create temp table t as select * from RegDaten where \"Index\"=1; update t set Gruppen='1', NeuInVersion='1.0.0'; delete from RegDaten;" +
               rows(count, "RegDaten select t.*", "n, t") + "update RegDaten set \"Index\"=" + index + ";";
    };
    const auto nested = [&](int levels) { return groups(levels) + "delete from Treebaum;" + rows(levels, "Treebaum select i, i, i, 100+i, i"); };
    struct Case {
        std::string name, sql, refusal;   // empty: it is read
    };
    const std::string inTree = "Der Baum hat zu viele Einträge, erlaubt sind 500000.";
    const Case cases[] = {
        {"100 levels", nested(100), ""},
        {"101 levels", nested(101), "Der Baum hat 101 Ebenen, erlaubt sind 100."},
        {"30000 levels", nested(30'000), "Der Baum hat 30000 Ebenen, erlaubt sind 100."},
        {"levels below one number", groups(300) + "delete from Treebaum;" + rows(300, "Treebaum select i, 2, 1, 100+i, i"), "Der Baum hat 300 Ebenen, erlaubt sind 100."},
        {"100000 groups", groups(100'000) + rows(100'000, "Treebaum select i, 1, 1, 100+i, 1000+i"), ""},
        {"100000 groups of one number", rows(100'000, "Gruppennamen select 'G'||i, 100, ''") + rows(100'000, "Treebaum select i, 1, 1, 100, 1000+i"), ""},
        {"group numbers at the bound", "update RegDaten set Gruppen=substr(hex(zeroblob(70000)),1,131072) where \"Index\"=5", ""},
        {"8 MB of group numbers", "update RegDaten set Gruppen=replace(hex(zeroblob(2000000)),'00','1,7,') where \"Index\"=5",
         "Tabelle RegDaten, Index 5, Spalte Gruppen: ein Text von 8000000 Bytes, erlaubt sind 131072."},
        {"many groups in many Tips", "update RegDaten set Gruppen=replace(hex(zeroblob(30000)),'00','1,1,')", inTree},
        {"a group named again and again", tips(1'000, "rowid") + rows(1'000, "Treebaum select i, 1, 1, 1, 1000+i"), inTree},
        {"Tips of one number", tips(1'000, "7"), inTree},
        {"a version named again and again", tips(1'000, "rowid") + rows(1'000, "Version select '1.0.0', '', '8'"), inTree},
    };
    const TempDir dir;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        World w;
        const fs::path file = bent(dir, c.sql);
        if (!c.refusal.empty()) w.port.expectBox(c.refusal);
        const std::clock_t before = std::clock();
        EXPECT_EQ(loadOtherDatabase(w.ctx, file), c.refusal.empty());
        EXPECT_LT(static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC, 5.0);
        EXPECT_TRUE(w.port.done());
    }
}

TEST(LoadDB, theBuiltInPasswordOpensAProtectedFileAndStaysOutOfTheTrace) {
    for (const char* name : {"jet3/RegDaten-pw.mdb", "jet4/RegDaten-pw.mdb", "jet3/RegDaten-pw-codiert.mdb", "jet4/RegDaten-pw-codiert.mdb"}) {
        World w;
        w.ctx.trace.setFile(w.home / "trace.log");
        w.ctx.trace.setDebug(true);
        w.loadFixture(name);
        EXPECT_EQ(w.ctx.udtTippListe.size(), 27U) << name;
        w.ctx.trace.write("x" + databasePassword(w.ctx));
        EXPECT_THAT(bytesOf(w.home / "trace.log"), testing::Not(HasSubstr(databasePassword(w.ctx))));
    }
    EXPECT_EQ(World{}.ctx.blnDBGeladen, false);
}

TEST(LoadDB, otherPasswordsOpenWithTheirOwn) {
    for (const char* name : {"jet3/RegDaten-pw-umlaut.mdb", "jet4/RegDaten-pw-umlaut.mdb"}) {
        World w;
        const auto connection = w.ctx.objDB.ConnectAccess(w.ctx, jetFile(name), "Grüße-Ärmel-15€");
        EXPECT_EQ(connection->State(), Connection::IsOpen) << name;
    }
}

TEST(LoadDB, whatFollowsAFailedConnection) {
    const std::vector<DatabaseErrorEntry> none, authentication = {{static_cast<std::int32_t>(0x80040E4D), "", "", ""}}, other = {{1, "", "", ""}};
    const auto auth = static_cast<std::int32_t>(0x80040E4D);
    EXPECT_EQ(connectionSequence(auth, authentication, 0), ConnectionSequence::GiveUpSilently);
    EXPECT_EQ(connectionSequence(auth, other, 0), ConnectionSequence::PasswordAsk);
    EXPECT_EQ(connectionSequence(auth, none, 1), ConnectionSequence::PasswordAsk);
    EXPECT_EQ(connectionSequence(auth, none, 2), ConnectionSequence::GiveUp);
    EXPECT_EQ(connectionSequence(3706, none, 0), ConnectionSequence::DriverReport);
    EXPECT_EQ(connectionSequence(430, none, 0), ConnectionSequence::DriverReport);
    EXPECT_EQ(connectionSequence(-2147467259, other, 0), ConnectionSequence::Report);
    for (const char* version : {"2.8", "2.5", "2.50.4403.12"}) EXPECT_TRUE(mdacSuffices(version)) << version;
    for (const char* version : {"2.1", "10.0", "0"}) EXPECT_FALSE(mdacSuffices(version)) << version;   // compared as texts
}

}  // namespace
}  // namespace brenvik::test
