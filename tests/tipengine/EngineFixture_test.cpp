#include "tipengine/EngineFixture.h"

namespace brenvik::test {

void EngineFixture::writeDatabase(const std::vector<Zeile>& lines, const std::vector<TreeRow>& baum, int gruppen) {
    sqlite3* db = nullptr;
    sqlite3_open((dir / "RegDaten.mdb").c_str(), &db);
    const auto run = [&](const std::string& sql) {
        char* error = nullptr;
        sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error);
        EXPECT_EQ(error, nullptr) << (error != nullptr ? error : "") << sql;
        sqlite3_free(error);
    };
    const auto q = [](const char* text) {
        if (text == nullptr) return std::string("NULL");
        char* quoted = sqlite3_mprintf("%Q", text);
        std::string result = quoted;
        sqlite3_free(quoted);
        return result;
    };
    run("BEGIN");
    run("CREATE TABLE Version(Version TEXT, Datum TEXT, Format TEXT)");
    run("INSERT INTO Version VALUES('1.0.0','01.01.2002','8'),('1.2.18','09.11.2002','8')");
    run("CREATE TABLE Gruppennamen(Gruppenname TEXT, Gruppe INTEGER, Beschreibung TEXT)");
    for (int g = 1; g <= gruppen; ++g)
        run("INSERT INTO Gruppennamen VALUES('Gruppe " + std::to_string(g) + "'," + std::to_string(g) + ",'Text " + std::to_string(g) + "')");
    run("CREATE TABLE Treebaum(Nummer INTEGER, \"Vorgänger\" INTEGER, Ebene INTEGER, Gruppe INTEGER, Nachfolger INTEGER)");
    for (std::size_t k = 0; k < baum.size(); ++k)
        run("INSERT INTO Treebaum VALUES(" + std::to_string(k) + "," + std::to_string(baum[k].Vorgänger) + "," + std::to_string(baum[k].Ebene) + "," +
            std::to_string(baum[k].Gruppe) + "," + std::to_string(k) + ")");
    run("CREATE TABLE RegDaten(\"Index\" INTEGER, Gruppen TEXT, \"Hauptschlüssel\" TEXT, \"Schlüssel\" TEXT, \"SchlüsselNT\" TEXT, Wertname TEXT, "
        "Datentyp INTEGER, Ausgabeart INTEGER, \"Überschrift\" TEXT, Reserve9 TEXT, Beschreibung TEXT, HilfeNummer INTEGER, AnzahlWerte INTEGER, "
        "Reserve13 INTEGER, WertEin TEXT, Anzeigetext TEXT, WertAus TEXT, Werteliste TEXT, Standardwert TEXT, TypAnpassen INTEGER, Symbol INTEGER, "
        "Verweis INTEGER, Win95 INTEGER, Win98 INTEGER, WinME INTEGER, WinNT INTEGER, Win2000 INTEGER, NeuInVersion TEXT, Neustart INTEGER, "
        "INITipp INTEGER, Beschriftung TEXT, WinXP INTEGER, ADMExport INTEGER, HauptIndex INTEGER)");
    for (const Zeile& z : lines) {
        const std::string systems = std::string(",") + z.Systems + ",";
        const auto has = [&](const char* name) { return systems.find("," + std::string(name) + ",") == std::string::npos ? "0" : "1"; };
        const auto n = [](int number) { return std::to_string(number); };
        run("INSERT INTO RegDaten VALUES(" + n(z.Index) + "," + q(z.Gruppen) + "," + q(z.Hauptschlüssel) + "," + q(z.Schlüssel) + "," + q(z.SchlüsselNT) +
            "," + q(z.Wertname) + "," + n(z.Datentyp) + "," + n(z.Ausgabeart) + "," + q(z.Überschrift) + ",NULL,'Beschreibung',NULL," +
            n(z.AnzahlWerte) + ",NULL," + q(z.WertEin) + "," + q(z.Anzeigetext) + "," + q(z.WertAus) + "," + q(z.Werteliste) + "," +
            q(z.Standardwert) + "," + n(z.TypAnpassen) + ",2,NULL," + has("95") + "," + has("98") + "," + has("ME") + "," + has("NT") + "," +
            has("2000") + "," + q(z.NeuInVersion) + "," + n(z.Neustart) + "," + (z.INITipp ? "1" : "0") + "," + q(z.Beschriftung) + "," + has("XP") + ",1," +
            n(z.HauptIndex) + ")");
    }
    run("COMMIT");
    sqlite3_close(db);
}

}  // namespace brenvik::test
