// An independent judge of the export files: Wine's regedit, reg and cmd read them into a fresh prefix, and what stands there
// afterwards is compared with the registry the Tips came from. Skipped where Wine is not installed.
#include <cstdlib>
#include <map>
#include <tuple>

#include "export/CheckedFormat.h"
#include "export/ExportFiles.h"
#include "export/ExportFixture.h"
#include "export/RegAddScript.h"
#include "export/RegFile.h"
#include "frame/text/Codepage.h"
#include "registry/Upcase.h"
#include "registry/text/RegText.h"
#include "support/CommandRun.h"
#include "tipengine/Program.h"

namespace brenvik::test {
namespace {

std::filesystem::path winePath() {
    if (const char* own = std::getenv("BRENVIK_WINE")) return own;
    for (const char* place : {"/usr/lib/wine/wine64", "/usr/bin/wine64", "/usr/bin/wine"})
        if (std::filesystem::exists(place)) return place;
    return {};
}

// Values by place, whatever the letters' case.
using Stock = std::map<std::tuple<Root, std::u16string, std::u16string>, RawValue>;

auto placeOf(Root root, const std::string& key, const ValueName& name) { return std::tuple(root, foldName(key), foldName(name.text())); }

std::optional<RawValue> valueIn(const Stock& values, const ExportValue& value) {
    const auto found = values.find(placeOf(value.root, value.key, value.name));
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

// The values that a REG file sets, on top of what is there; false if it has none.
bool addTo(Stock& values, const std::string& regFile) {
    const RegText text = parseRegText(regFile);
    for (const RegOperation& operation : text.operations) {
        if (operation.kind == RegOperation::Kind::SetValue) values[placeOf(operation.root, operation.key, operation.name)] = operation.value;
        if (operation.kind == RegOperation::Kind::DeleteValue) values.erase(placeOf(operation.root, operation.key, operation.name));
    }
    return !text.operations.empty();
}

// A fresh prefix of one's own, without a display.
class Prefix {
public:
    Prefix() { wine({"wineboot", "-i"}); }
    ~Prefix() { wine({"wineboot", "-k"}); }

    CommandRun wine(const std::vector<std::string>& arguments) const {
        std::vector<std::string> words{"300", winePath().string()};
        words.insert(words.end(), arguments.begin(), arguments.end());
        return run("timeout", words,
                   {"WINEPREFIX=" + (dir / "prefix").string(), "WINEDEBUG=-all", "WINEARCH=win64", "DISPLAY=", "WINEDLLOVERRIDES=mscoree=;mshtml=;winemenubuilder.exe="});
    }
    std::string file(const std::string& name, const std::string& bytes) const { return windows(dir.put(name, bytes)); }
    static std::string windows(const std::filesystem::path& file) {
        std::string path = "Z:" + file.string();
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    }
    // What stands in the prefix now, as Wine's own export tells it.
    Stock registry() const {
        Stock values;
        for (const char* root : {"HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE", "HKEY_USERS", "HKEY_CURRENT_CONFIG", "HKEY_CLASSES_ROOT"}) {
            std::filesystem::remove(dir / "aus.reg");
            wine({"regedit", "/E", windows(dir / "aus.reg"), root});
            EXPECT_TRUE(addTo(values, bytesOf(dir / "aus.reg"))) << root;
        }
        return values;
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
    void expectArrived(const ExportRecord& item) {
        const auto there = prefix->registry();
        for (const ExportTip& tipp : item.tipps)
            for (const ExportValue& value : tipp.values) EXPECT_EQ(valueIn(there, value), value.wert) << tipp.TippNr << " " << value.pfad();
    }
    std::unique_ptr<Prefix> prefix;
};

// What is hard to write: quotes, backslashes, percent signs, umlauts, many bytes.
ExportRecord hard(const std::string& key) {
    std::vector<TipListValue> values;
    int number = 0;
    for (const std::string text : {"", "C:\\Programme\\", "\"q\"", "100% %TEMP% %%", "a&b|c<d>e^f(g)!h", "\"a\" & \"b\" | %x% ^ !y!", "Größe €", "\\\"", "'; \t", "a\\\\b\\\"c\\\\"})
        for (const std::int32_t type : {1, 2}) values.push_back(listValue(key, type, "Text " + std::to_string(++number) + " \"\\%", text));
    for (const char* number32 : {"0", "1", "-1", "2147483648"}) values.push_back(listValue(key, 4, std::string("Zahl ") + number32, number32));
    values.push_back(listValue(key, 1, "", "ohne Namen"));
    values.push_back(listValue(key, 3, "Bytes", "00 0A FF"));
    values.push_back(listValue(key, 3, "lange Bytes", bytesText(Bytes(300, 0xAB))));
    values.push_back(listValue(key, 7, "Liste", std::string("eins\0zwei \"x\"\0C:\\0", 18)));
    values.push_back(listValue(key, 1, "Weg", "<delkey>"));
    values.push_back(listValue(key + "\\Unter", 1, "", "<delkey>"));
    return exportValues({listTip(1, "Schwierig & mehr", values)});
}

TEST_F(Wine, DifficultValuesInTheCheckedFormat) {
    const ExportRecord item = hard("Software\\Brenvik Probe [ä]");
    prefix->file("vorher.reg", "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Brenvik Probe [\xE4]]\r\n\"Weg\"=\"da\"\r\n"
                                   "[HKEY_CURRENT_USER\\Software\\Brenvik Probe [\xE4]\\Unter]\r\n@=\"da\"\r\n");
    for (const auto format : {RegTextWriter::Format::Version5, RegTextWriter::Format::Regedit4}) {
        prefix->wine({"reg", "delete", "HKCU\\Software\\Brenvik Probe [ä]", "/f"});
        prefix->wine({"regedit", "/C", prefix->windows(prefix->dir / "vorher.reg")});
        const std::string file = prefix->file("geprueft.reg", CheckedFormat(item, format, {"; Kopf"}).bytes);
        EXPECT_EQ(prefix->wine({"reg", "import", file}).code, 0);
        expectArrived(item);
    }
    auto other = listValue("Software\\Brenvik Probe [ä]", 1, "日本", "Ωμέγα 😀");
    ExportRecord unicode = exportValues({listTip(1, "T", {other})});
    prefix->wine({"regedit", prefix->file("unicode.reg", CheckedFormat(unicode, RegTextWriter::Format::Version5, {}).bytes)});
    expectArrived(unicode);
}

// Wine's cmd has no code page without a console, so that it is asked about ASCII only.
ExportRecord asciiOnly(ExportRecord item) {
    const auto ascii = [](const std::string& text) { return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }); };
    for (ExportTip& tipp : item.tipps) {
        if (!ascii(tipp.Titel)) tipp.Titel = "Titel";
        std::erase_if(tipp.values, [&](const ExportValue& value) { return !ascii(value.pfad()) || (value.wert && value.wert->type != regtype::Dword && !ascii(toText(*value.wert))); });
    }
    return item;
}

TEST_F(Wine, DifficultValuesAsACommandFile) {
    prefix->wine({"regedit", prefix->file("vorher.reg", "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Brenvik Probe]\r\n\"Weg\"=\"da\"\r\n"
                                                             "[HKEY_CURRENT_USER\\Software\\Brenvik Probe\\Unter]\r\n@=\"da\"\r\n")});
    const ExportRecord item = asciiOnly(hard("Software\\Brenvik Probe"));
    const RegAddScript script = regAddScript(item, {"; Kopf & mehr"});
    ASSERT_TRUE(script.obstacles.empty());
    const CommandRun result = prefix->wine({"cmd", "/c", prefix->file("werte.cmd", script.bytes)});
    EXPECT_EQ(result.code, 0) << result.out << result.err;
    expectArrived(item);
}

// All shipped Tips on the registry of a first start.
class WineTips : public Wine {
protected:
    void SetUp() override {
        Wine::SetUp();
        if (IsSkipped()) return;
        program = std::make_unique<Program>(port, platform, ProgramOptions{home.path(), std::filesystem::path(BRENVIK_PROGRAMM_DIR)}, observer, recorder);
        program->loadSettings();
        program->detectSystem();
        ctx().intBS = 6;
        ASSERT_TRUE(program->loadDatabase());
        program->engine().tree().TreeEinlesen();
        for (const auto& tipp : std::vector(ctx().udtTippListe)) {
            program->engine().inspectTip(tipp.Index);
            if (ctx().aktuellerTipp.INITipp) continue;
            program->engine().collectForExport();
            list.push_back(listEntry(ctx().aktuellerTipp, program->engine().collectedValues()));
            takeTexts(list.back());
        }
    }
    Context& ctx() { return program->context(); }

    TempDir home;
    ScriptedPort port;
    TestPlatform platform;
    WindowObserver observer;
    Recorder recorder;
    std::unique_ptr<Program> program;
    TipList list;
};

TEST_F(WineTips, EveryValueInTheCheckedFormat) {
    const ExportRecord item = exportValues(list);
    EXPECT_GT(item.anzahl(), 150u);
    EXPECT_EQ(prefix->wine({"reg", "import", prefix->file("alle.reg", CheckedFormat(item, RegTextWriter::Format::Version5, fileHeader(ctx())).bytes)}).code, 0);
    expectArrived(item);
}

TEST_F(WineTips, EveryValueAsACommandFile) {
    const ExportRecord item = asciiOnly(exportValues(list));
    EXPECT_GT(item.anzahl(), 150u);
    const RegAddScript script = regAddScript(item, fileHeader(ctx()));
    const CommandRun result = prefix->wine({"cmd", "/c", prefix->file("alle.cmd", script.bytes)});
    EXPECT_EQ(result.code, 0) << result.out << result.err;
    expectArrived(item);
}

// What our own reader takes from the told form as it should be, Wine must take so too; the rest is what the form is known for.
TEST_F(WineTips, ToldFormWherePossible) {
    const ExportRecord item = exportValues(list);
    for (const bool classic : {true, false}) {
        AnsiText out;
        for (const std::string& line : RegFileHeader(ctx(), classic)) out.line(line);
        for (const TippListEintrag& entry : list) RegFileTippSchreiben(out, entry, classic);
        Stock expected;
        addTo(expected, out.bytes());
        prefix->wine({"regedit", prefix->file("told.reg", out.bytes())});
        const auto there = prefix->registry();
        std::size_t right = 0, wrong = 0;
        for (const ExportTip& tipp : item.tipps)
            for (const ExportValue& value : tipp.values) {
                const bool canBe = valueIn(expected, value) == value.wert;
                ++(canBe ? right : wrong);
                if (!canBe) continue;
                EXPECT_EQ(valueIn(there, value), value.wert) << tipp.TippNr << " " << value.pfad();
            }
        RecordProperty(classic ? "klassisch" : "neu", std::to_string(right) + " right, " + std::to_string(wrong) + " not");
        EXPECT_GT(right, 100u);
        prefix = std::make_unique<Prefix>();
    }
}

}  // namespace
}  // namespace brenvik::test
