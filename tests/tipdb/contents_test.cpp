// What a database file holds must arrive cell for cell: against written-out contents and against the other formats.
#include <gtest/gtest.h>

#include <cmath>
#include <sqlite3.h>

#include "World.h"
#include "frame/text/Conversions.h"
#include "tipdb/DatabaseErrors.h"
#include "tipdb/DatabaseSource.h"

namespace brenvik::test {
namespace {

const std::vector<std::string> Tables = {"Version", "Gruppennamen", "Treebaum", "RegDaten"};

std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == '\\') out += "\\\\";
        else if (c == '\t') out += "\\t";
        else if (c == '\n') out += "\\n";
        else if (c == '\r') out += "\\r";
        else out += c;
    }
    return out;
}

std::string cellText(const Cell& cell) {
    if (cell.art == Cell::Art::Null) return "\\N";
    return cell.art == Cell::Art::Number ? std::to_string(cell.number) : escaped(cell.text());
}

// "T name", "C column", "R values", separated by tabs.
std::string dump(const Records& data) {
    std::string out;
    for (const auto& table : data.tables) {
        out += "T\t" + table->name() + "\n";
        for (const auto& c : table->columns()) out += "C\t" + c.name + "\n";
        for (std::size_t row = 0; row < table->rows(); ++row) {
            out += "R";
            for (std::size_t i = 0; i < table->columns().size(); ++i) out += "\t" + cellText(table->cell(row, i));
            out += "\n";
        }
    }
    return out;
}

// The written-out contents without the types of the columns.
std::string expected(const std::string& name) {
    std::string out;
    for (const std::string& line : Split(bytesOf(jetFile(name)), "\n")) {
        if (line.rfind("C\t", 0) == 0) out += "C\t" + Split(line, "\t")[1] + "\n";
        else if (!line.empty()) out += line + "\n";
    }
    return out;
}

TEST(Contents, everyCellOfEveryFormat) {
    const std::string password = "Kranich-Teich-9";
    const std::pair<const char*, const char*> files[] = {
        {"RegDaten.mdb", "inhalt.tsv"}, {"RegDaten-pw.mdb", "inhalt.tsv"}, {"RegDaten-pw-codiert.mdb", "inhalt.tsv"}, {"RegDaten-luecken.mdb", "inhalt-luecken.tsv"}, {"RegDaten-hauptindex9.mdb", "inhalt-hauptindex9.tsv"}};
    for (const char* format : {"jet3/", "jet4/"})
        for (const auto& [file, content] : files) EXPECT_EQ(dump(readDatabase(jetFile(std::string(format) + file), password, Tables)), expected(content)) << format << file;
    EXPECT_EQ(dump(readDatabase(jetFile("sqlite/RegDaten.mdb"), password, Tables)), expected("inhalt.tsv"));
}

// Bytes bent one after the other: the reader must come back, with the contents or with a DatabaseErrors.
TEST(Contents, bentBytesNeverCrash) {
    for (const char* name : {"jet3/RegDaten.mdb", "jet4/RegDaten.mdb", "jet4/RegDaten-luecken.mdb", "sqlite/RegDaten.mdb"}) {
        const std::string good = bytesOf(jetFile(name));
        const std::string magic = good.substr(0, 20);
        std::uint32_t random = 12345;
        int refused = 0;
        for (int round = 0; round < 400; ++round) {
            std::string bent = good;
            for (int i = 0; i < 8; ++i) {
                random = random * 1664525 + 1013904223;
                const std::size_t at = 24 + (random >> 4) % (bent.size() - 24);
                bent[at] = static_cast<char>(bent[at] ^ (1 << (random & 7)));
            }
            try {
                if (name[0] == 'j') readJetDatabase(bent, "", Tables);
                else readSqliteDatabase(bent, Tables);
            } catch (const DatabaseErrors&) {
                ++refused;
            }
        }
        EXPECT_GT(refused, 0) << name;
    }
}

// The catalogue has two dates; with other types and bytes in their place they stand for all columns of eight bytes.
TEST(Contents, datesAndNumbersOfOtherTypes) {
    constexpr std::size_t Catalogue = 2 * 4096, FirstColumn = 63, ColumnBytes = 25, Date = 4;
    const std::string good = bytesOf(jetFile("jet4/RegDaten.mdb"));
    const auto bytesOfDouble = [](double value) { return std::string(reinterpret_cast<const char*>(&value), sizeof value); };
    const auto bytesOfInt = [](std::int64_t value) { return std::string(reinterpret_cast<const char*>(&value), sizeof value); };
    ASSERT_EQ(good[Catalogue + FirstColumn + Date * ColumnBytes], 8);
    struct Case {
        char type;
        std::string value;
        const char* read;
    };
    const Case cases[] = {{8, bytesOfDouble(37569.5), "09.11.2002 12:00:00"}, {8, bytesOfDouble(37569), "09.11.2002"}, {8, bytesOfDouble(0), "30.12.1899"},
                          {8, bytesOfDouble(60.9999999), "01.03.1900"}, {8, bytesOfDouble(1e300), "1e+300"}, {8, bytesOfDouble(-1.5), "-1.5"},
                          {7, bytesOfDouble(-12), "-12"}, {7, bytesOfDouble(3.5), "3.5"}, {7, bytesOfDouble(std::nan("")), "nan"},
                          {5, bytesOfInt(-120'000), "-12"}, {5, bytesOfInt(125'000), "12.5"}, {6, bytesOfInt(0x40600000), "3.5"}, {6, bytesOfInt(0x41400000), "12"}};
    for (const Case& c : cases) {
        std::string bytes = good;
        bytes[Catalogue + FirstColumn + Date * ColumnBytes] = c.type;
        for (std::size_t at = 0; (at = bytes.find(bytesOfDouble(37569.5), at)) != std::string::npos; ++at) bytes.replace(at, 8, c.value);
        const Records data = readJetDatabase(bytes, "", {"MSysObjects"});
        ASSERT_EQ(data.tables.size(), 1U);
        EXPECT_EQ(cellText(data.tables[0]->cell(5, Date)), c.read) << int(c.type);
    }
}

TEST(Contents, aSqliteFileMayHoldStrangeThings) {
    const TempDir dir;
    const auto make = [&](const std::string& name, const std::string& sql) {
        const auto file = dir / name;
        sqlite3* db = nullptr;
        sqlite3_open(file.string().c_str(), &db);
        char* error = nullptr;
        EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error), SQLITE_OK) << (error == nullptr ? "" : error);
        sqlite3_close(db);
        return file;
    };
    const auto reading = [](const std::filesystem::path& file) { return dump(readDatabase(file, "", {"RegDaten"})); };
    EXPECT_EQ(reading(make("typen.mdb", "create table regdaten(\"Index\" integer, a text, b blob); insert into regdaten values('7', 2.0, 1.5),(8, cast(x'41ff42' as text), null)")),
              "T\tRegDaten\nC\tIndex\nC\ta\nC\tb\nR\t7\t2.0\t1.5\nR\t8\tA\xEF\xBF\xBD" "B\t\\N\n");
    EXPECT_EQ(reading(make("sicht.mdb", "create view RegDaten as with recursive c(x) as (select 1 union all select x+1 from c) select x from c")), "");
    EXPECT_EQ(reading(make("wal.mdb", "pragma journal_mode=wal; create table RegDaten(x integer); insert into RegDaten values(5)")), "T\tRegDaten\nC\tx\nR\t5\n");
    EXPECT_THROW(reading(make("blob.mdb", "create table RegDaten(x blob); insert into RegDaten values(x'00')")), DatabaseErrors);
    EXPECT_THROW(reading(make("endlos.mdb", "create table RegDaten(x integer, y text as (printf('%.*c', 50000000, 'x')));"
                                            "with recursive c(x) as (select 1 union all select x+1 from c where x<100) insert into RegDaten(x) select x from c")),
                 DatabaseErrors);
}

}  // namespace
}  // namespace brenvik::test
