// An independent judge of the export files: Wine's regedit, reg and cmd read them into a fresh prefix, and what stands there
// afterwards is compared with the registry the Tips came from. Skipped where Wine is not installed.
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>

#include "export/Exportdateien.h"
#include "export/GeprueftesFormat.h"
#include "export/RegAddSkript.h"
#include "export/RegDatei.h"
#include "frame/Codepage.h"
#include "registry/MemoryStore.h"
#include "registry/RegImport.h"
#include "support/Kommando.h"
#include "export/Exportprobe.h"
#include "tipengine/Programm.h"

namespace brenvik::test {
namespace {

std::filesystem::path winePath() {
    if (const char* own = std::getenv("BRENVIK_WINE")) return own;
    for (const char* place : {"/usr/lib/wine/wine64", "/usr/bin/wine64", "/usr/bin/wine"})
        if (std::filesystem::exists(place)) return place;
    return {};
}

// A fresh prefix of one's own, without a display.
class Prefix {
public:
    Prefix() { wine({"wineboot", "-i"}); }
    ~Prefix() { wine({"wineboot", "-k"}); }

    Ergebnis wine(const std::vector<std::string>& arguments) const {
        return run(winePath(), arguments,
                   {"WINEPREFIX=" + (dir / "prefix").string(), "WINEDEBUG=-all", "WINEARCH=win64", "DISPLAY=", "WINEDLLOVERRIDES=mscoree=;mshtml=;winemenubuilder.exe="});
    }
    std::string file(const std::string& name, const std::string& bytes) const { return windows(dir.put(name, bytes)); }
    static std::string windows(const std::filesystem::path& file) {
        std::string path = "Z:" + file.string();
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    }
    // What stands in the prefix now, as Wine's own export tells it.
    std::unique_ptr<MemoryStore> registry() const {
        auto store = std::make_unique<MemoryStore>();
        for (const char* root : {"HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE", "HKEY_USERS", "HKEY_CURRENT_CONFIG", "HKEY_CLASSES_ROOT"}) {
            std::filesystem::remove(dir / "aus.reg");
            wine({"regedit", "/E", windows(dir / "aus.reg"), root});
            std::vector<RegOperation> operations = parseRegText(bytesOf(dir / "aus.reg")).operations;
            EXPECT_FALSE(operations.empty()) << root;
            for (const RegOperation& operation : operations) {
                try {
                    applyOperations(*store, {operation});
                } catch (const RegError&) {   // something of Wine's own that our stores refuse
                }
            }
        }
        return store;
    }

    TempDir dir;
};

class Wine : public ::testing::Test {
protected:
    void SetUp() override {
        if (winePath().empty()) GTEST_SKIP() << "Wine is not installed";
        prefix = std::make_unique<Prefix>();
    }
    // Names the values that do not stand in the prefix as the set has them.
    void expectArrived(const Exportsatz& satz) {
        const auto there = prefix->registry();
        for (const Exporttipp& tipp : satz.tipps)
            for (const Exportwert& value : tipp.werte) EXPECT_EQ(there->value(value.root, value.key, value.name), value.wert) << tipp.TippNr << " " << value.pfad();
    }
    std::unique_ptr<Prefix> prefix;
};

// What is hard to write: quotes, backslashes, percent signs, line ends, other alphabets, odd bytes.
Exportsatz hard() {
    std::vector<TippListWert> values;
    const std::string key = "Software\\Brenvik Probe [ä]";
    int number = 0;
    for (const std::string text : {"", "C:\\Programme\\", "\"q\"", "100% %TEMP% %%", "a&b|c<d>e^f(g)!h", "\"a\" & \"b\" | %x% ^ !y!", "Größe €", "\\\"", "'; \t", "a\\\\b\\\"c\\\\"})
        for (const std::int32_t type : {1, 2}) values.push_back(listenwert(key, type, "Text " + std::to_string(++number) + " \"\\%", text));
    for (const char* number32 : {"0", "1", "-1", "2147483648"}) values.push_back(listenwert(key, 4, std::string("Zahl ") + number32, number32));
    values.push_back(listenwert(key, 1, "", "ohne Namen"));
    values.push_back(listenwert(key, 3, "Bytes", "00 0A FF"));
    values.push_back(listenwert(key, 3, "lange Bytes", bytesText(Bytes(300, 0xAB))));
    values.push_back(listenwert(key, 7, "Liste", std::string("eins\0zwei \"x\"\0C:\\0", 18)));
    values.push_back(listenwert(key, 1, "Weg", "<delkey>"));
    return exportwerte({listentipp(1, "Schwierig & mehr", values)});
}

TEST_F(Wine, SchwierigeWerteGeprueft) {
    Exportsatz satz = hard();
    prefix->file("vorher.reg", "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Brenvik Probe [\xE4]]\r\n\"Weg\"=\"da\"\r\n");
    for (const auto format : {RegTextWriter::Format::Version5, RegTextWriter::Format::Regedit4}) {
        prefix->wine({"reg", "delete", "HKCU\\Software\\Brenvik Probe [ä]", "/f"});
        prefix->wine({"regedit", "/C", prefix->windows(prefix->dir / "vorher.reg")});
        const std::string file = prefix->file("geprueft.reg", GeprueftesFormat(satz, format, {"; Kopf"}).bytes);
        EXPECT_EQ(prefix->wine({"reg", "import", file}).code, 0);
        expectArrived(satz);
    }
    auto other = listenwert("Software\\Brenvik Probe [ä]", 1, "日本", "Ωμέγα 😀\r\nzweite Zeile");
    Exportsatz unicode = exportwerte({listentipp(1, "T", {other})});
    prefix->wine({"regedit", prefix->file("unicode.reg", GeprueftesFormat(unicode, RegTextWriter::Format::Version5, {}).bytes)});
    expectArrived(unicode);
}

TEST_F(Wine, SchwierigeWerteAlsBefehlsdatei) {
    prefix->wine({"regedit", prefix->file("vorher.reg", "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Brenvik Probe [\xE4]]\r\n\"Weg\"=\"da\"\r\n")});
    const RegAddSkript script = regAddSkript(hard(), {"; Kopf & mehr"});
    ASSERT_TRUE(script.hindernisse.empty());
    const Ergebnis result = prefix->wine({"cmd", "/c", prefix->file("werte.cmd", script.bytes)});
    EXPECT_EQ(result.code, 0) << result.out << result.err;
    expectArrived(hard());
}

// All shipped Tips on the registry of a first start.
class WineTipps : public Wine {
protected:
    void SetUp() override {
        Wine::SetUp();
        if (IsSkipped()) return;
        programm = std::make_unique<Programm>(port, platform, ProgrammOptionen{home.path(), std::filesystem::path(BRENVIK_PROGRAMM_DIR)}, observer, recorder);
        programm->loadSettings();
        programm->detectSystem();
        ctx().intBS = 6;
        ASSERT_TRUE(programm->loadDatabase());
        programm->maschine().TreeEinlesen();
        for (const auto& tipp : std::vector(ctx().udtTippListe)) {
            programm->maschine().inspectTipp(tipp.Index);
            if (ctx().aktuellerTipp.INITipp) continue;
            programm->maschine().collectForExport();
            list.push_back(listeneintrag(ctx().aktuellerTipp, programm->maschine().collectedValues()));
            uebernehmeTexte(list.back());
        }
    }
    Context& ctx() { return programm->context(); }

    TempDir home;
    ScriptedPort port;
    TestPlatform platform;
    WindowObserver observer;
    Recorder recorder;
    std::unique_ptr<Programm> programm;
    TippListe list;
};

TEST_F(WineTipps, GeprueftesFormatJederWert) {
    const Exportsatz satz = exportwerte(list);
    EXPECT_GT(satz.anzahl(), 150u);
    EXPECT_EQ(prefix->wine({"reg", "import", prefix->file("alle.reg", GeprueftesFormat(satz, RegTextWriter::Format::Version5, dateikopf(ctx())).bytes)}).code, 0);
    expectArrived(satz);
}

TEST_F(WineTipps, BefehlsdateiJederWert) {
    const Exportsatz satz = exportwerte(list);
    const RegAddSkript script = regAddSkript(satz, dateikopf(ctx()));
    const Ergebnis result = prefix->wine({"cmd", "/c", prefix->file("alle.cmd", script.bytes)});
    EXPECT_EQ(result.code, 0) << result.out << result.err;
    expectArrived(satz);
}

// What our own reader takes from the told form as it should be, Wine must take so too; the rest is what the form is known for.
TEST_F(WineTipps, ToldFormWherePossible) {
    const Exportsatz satz = exportwerte(list);
    for (const bool classic : {true, false}) {
        AnsiText out;
        for (const std::string& line : RegFileKopf(ctx(), classic)) out.line(line);
        for (const TippListEintrag& entry : list) RegFileTippSchreiben(out, entry, classic);
        MemoryStore expected;
        for (const RegOperation& operation : parseRegText(out.bytes()).operations) applyOperations(expected, {operation});
        prefix->wine({"regedit", prefix->file("told.reg", out.bytes())});
        const auto there = prefix->registry();
        std::size_t right = 0, wrong = 0;
        for (const Exporttipp& tipp : satz.tipps)
            for (const Exportwert& value : tipp.werte) {
                const bool canBe = expected.value(value.root, value.key, value.name) == value.wert;
                ++(canBe ? right : wrong);
                if (canBe) EXPECT_EQ(there->value(value.root, value.key, value.name), value.wert) << tipp.TippNr << " " << value.pfad();
            }
        RecordProperty(classic ? "klassisch" : "neu", std::to_string(right) + " right, " + std::to_string(wrong) + " not");
        EXPECT_GT(right, 100u);
        prefix = std::make_unique<Prefix>();
    }
}

}  // namespace
}  // namespace brenvik::test
