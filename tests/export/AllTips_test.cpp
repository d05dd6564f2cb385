// Every shipped Tip in every form, its texts and the names of its groups turned into attacks on the file they go into: each
// form, read by a reader of its own, must hold exactly the values that the Tip's registry has.
#include <gmock/gmock.h>

#include "AdmxCheck.h"
#include "ExportFixture.h"
#include "FormReaders.h"
#include "export/AdmxTemplate.h"
#include "export/CheckedFormat.h"
#include "export/PolicyFile.h"
#include "export/Preset.h"
#include "export/RegAddScript.h"
#include "registry/store/MemoryStore.h"
#include "registry/text/RegImport.h"
#include "tipengine/Program.h"

namespace brenvik::test {
namespace {

class AllTipsExport : public ::testing::Test {
protected:
    AllTipsExport() : program(port, platform, ProgramOptions{dir.path(), std::filesystem::path(BRENVIK_PROGRAMM_DIR)}, observer, recorder) {
        program.loadSettings();
        program.detectSystem();
        ctx().intBS = 6;
        EXPECT_TRUE(program.loadDatabase());
        poison();
        ctx().strDBVersion += Attack;
        engine().tree().TreeEinlesen();
    }

    static constexpr const char* Attack =
        "\r\n[-HKEY_CURRENT_USER\\Software]\r\n\"Run\"=\"x\"\n@=-\x0C\x1A\x7F --> ]]> <b> & | > nul %PATH% \" END POLICY END CATEGORY ' \\\n[[tipp]]\nnummer = 1\r";

    // What people read, in a copy of the database; values keep theirs.
    void poison() {
        std::filesystem::copy_file(std::filesystem::path(BRENVIK_PROGRAMM_DIR) / "RegDaten.mdb", dir / "feindlich.mdb");
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open((dir / "feindlich.mdb").c_str(), &db), SQLITE_OK);
        for (const char* text : {"UPDATE RegDaten SET \"Überschrift\" = \"Überschrift\" || %Q", "UPDATE RegDaten SET Beschreibung = Beschreibung || %Q",
                                 "UPDATE RegDaten SET Anzeigetext = Anzeigetext || %Q WHERE Ausgabeart IN (1, 2, 3)", "UPDATE Gruppennamen SET Gruppenname = Gruppenname || %Q"}) {
            char* sql = sqlite3_mprintf(text, Attack);
            EXPECT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
            EXPECT_GT(sqlite3_changes(db), 0);
            sqlite3_free(sql);
        }
        sqlite3_close(db);
        ASSERT_EQ(LoadDB(ctx(), dir / "feindlich.mdb"), LoadResult::Loaded);
    }
    Context& ctx() { return program.context(); }
    TipEngine& engine() { return program.engine(); }

    TippListEintrag collect(std::int32_t number) {
        engine().inspectTip(number);
        EXPECT_TRUE(engine().collectForExport());
        TippListEintrag entry = listEntry(ctx().aktuellerTipp, engine().collectedValues());
        takeTexts(entry);
        return entry;
    }
    std::optional<RawValue> stored(const TipListValue& value) {
        ctx().objBVKReg.SetPath("", value.Hauptschluessel + "\\" + value.Unterschluessel + "\\" + value.Wertname);
        return ctx().objBVKReg.ReadRaw();
    }

    TempDir dir;
    ScriptedPort port;
    TestPlatform platform;
    WindowObserver observer;
    Recorder recorder;
    Program program;
};

// The told form says more and less than the values, but nothing that is not the Tip's own.
std::vector<std::string> toldLines(const TippListEintrag& entry, const std::string& head) {
    std::vector<std::string> lines{head};
    const TipListValue* last = nullptr;
    for (const TipListValue& value : entry.Values) {
        const std::string key = "[" + value.Hauptschluessel + "\\" + value.Unterschluessel + "]";
        if (last == nullptr || last->Hauptschluessel + last->Unterschluessel != value.Hauptschluessel + value.Unterschluessel) lines.push_back(key);
        last = &value;
        if (value.Datentyp != 0) lines.push_back("\"" + value.Wertname + "\"=");
    }
    return lines;
}

TEST_F(AllTipsExport, EveryFormHasExactlyTheValues) {
    std::size_t values = 0;
    for (const auto& tipp : std::vector(ctx().udtTippListe)) {
        SCOPED_TRACE(std::to_string(tipp.Index) + " " + tipp.Überschrift);
        const TippListEintrag entry = collect(tipp.Index);
        if (ctx().aktuellerTipp.INITipp) continue;
        const ExportRecord item = exportValues({entry});
        EXPECT_TRUE(item.obstacles.empty());
        for (const auto format : {RegTextWriter::Format::Version5, RegTextWriter::Format::Regedit4}) {
            const CheckedFile file = CheckedFormat(item, format, fileHeader(ctx()));
            EXPECT_TRUE(file.missing.empty());
            MemoryStore target;
            const auto problems = replay(target, RegTextFile(file.bytes));
            EXPECT_TRUE(problems.empty()) << problems[0].message;
            for (const TipListValue& value : entry.Values) {
                const auto root = rootByName(value.Hauptschluessel);
                if (!root || value.PanelArt >= art::BootINI || (value.PanelArt == art::Liste && value.Wertname.empty())) continue;
                EXPECT_EQ(target.value(*root, value.Unterschluessel, ValueName::named(value.Wertname)), stored(value)) << value.Wertname;
                ++values;
            }
        }
        for (const RegForm form : {RegForm::Classic, RegForm::Neu}) {
            const ExportFile told = regFileExport(ctx(), {entry}, false, form);
            EXPECT_EQ(told.missingCharacters, 0u);
            const auto lines = actingLines(utf8FromAnsi(told.bytes)), wanted = toldLines(entry, form == RegForm::Neu ? "Windows Registry Editor Version 5.00" : "REGEDIT4");
            ASSERT_EQ(lines.size(), wanted.size()) << told.bytes;
            for (std::size_t k = 0; k < lines.size(); ++k) EXPECT_EQ(lines[k].substr(0, wanted[k].size()), wanted[k]);
        }
        const RegAddScript script = regAddScript(item, fileHeader(ctx()));
        EXPECT_TRUE(script.obstacles.empty()) << script.obstacles[0];
        EXPECT_EQ(readCommandFile(utf8FromAnsi(script.bytes)), wantedValues(item));
        for (const Root root : {Root::CurrentUser, Root::LocalMachine}) {
            const PolicyFile file = policyFile(item, root);
            EXPECT_TRUE(file.obstacles.empty()) << file.obstacles[0];
            EXPECT_EQ(readPolicyFile(file.bytes, root), wantedValues(item, root));
        }
    }
    EXPECT_GT(values, 600u);
}

// A list of all Tips, written, read and applied: nothing to change where it came from, everything on a registry without values.
TEST_F(AllTipsExport, AListOfAllTips) {
    TipList list;
    for (const auto& tipp : std::vector(ctx().udtTippListe)) {
        TippListEintrag entry = collect(tipp.Index);
        if (!ctx().aktuellerTipp.INITipp) list.push_back(std::move(entry));
    }
    const PresetFile file = presetFile(ctx(), list);
    EXPECT_EQ(file.obstacle, "");
    ctx().einstellungen.BSSystemAktiv = false;
    const PresetList loaded = ladePreset(engine(), file.text);
    ASSERT_TRUE(loaded.problems.empty()) << loaded.problems[0];
    const Application plan = application(engine(), loaded.liste);
    EXPECT_TRUE(plan.problems.empty());
    for (const Change& change : plan.changes) ADD_FAILURE() << change.tippIndex << " " << change.values[0].path;
    EXPECT_GT(exportValues(loaded.liste).anzahl(), 150u);
    EXPECT_EQ(wantedValues(exportValues(loaded.liste)), wantedValues(exportValues(list)));
    EXPECT_EQ(presetFile(ctx(), loaded.liste).text, file.text);
}

TEST_F(AllTipsExport, TheTemplateHasTheStructureDemanded) {
    TipList list;
    std::size_t values = 0;
    for (const auto& tipp : std::vector(ctx().udtTippListe)) {
        TippListEintrag entry = collect(tipp.Index);
        if (!ctx().aktuellerTipp.ADMExport) continue;
        values += entry.Values.size();
        list.push_back(std::move(entry));
    }
    const ExportFile adm = admFile(ctx(), list);
    EXPECT_EQ(adm.missingCharacters, 0u);
    const auto policies = readAdm(utf8FromAnsi(adm.bytes));
    const std::set<std::string> unsaid(adm.differing.begin(), adm.differing.end());
    for (const TippListEintrag& entry : list)
        for (const TipListValue& value : entry.Values)
            if (unsaid.count(value.pfad()) == 0) {
                EXPECT_THAT(policies, ::testing::Contains((value.Hauptschluessel == "HKEY_CURRENT_USER" ? "USER\\" : "MACHINE\\") + value.Unterschluessel + "\\" + value.Wertname));
            }
    EXPECT_GT(policies.size(), 40u);
    EXPECT_LE(policies.size(), values);
    const AdmxTemplate files = admxTemplate(list, ctx().udtGruppen, "1");
    EXPECT_EQ(files.policies + files.leftOut.size(), values);
    EXPECT_GT(files.policies, 80u);
    const std::vector<std::string> sound;
    EXPECT_EQ(AdmxCheck::faultsOf(files.admx, files.adml), sound);

    // The check itself sees what is broken.
    const struct {
        const char *file, *from, *to, *complaint;
    } breaks[] = {{"admx", "<parentCategory ref=\"Gruppe_1\"", "<parentCategory ref=\"Gruppe_77\"", "category: Gruppe_77"},
                  {"admx", "<supportedOn ref=\"Windows\" />\n", "", "policies/policy holds parentCategory"},
                  {"admx", " class=\"User\"", "", "class="},
                  {"admx", "<resources minRequiredRevision=\"1.0\" />\n", "", "/policyDefinitions holds"},
                  {"admx", " key=\"", " key=\"HKEY_CURRENT_USER\\", "has a root in its key"},
                  {"admx", "_Hilfe)\"", "_Hulfe)\"", "string missing"},
                  {"admx", " maxValue=\"", " maxValue=\"4294967296\" x=\"", "maxValue=4294967296"},
                  {"admx", "<decimal id=", "<multiText id=", "multiText"},
                  {"adml", "<string id=\"", "<string id=\"Brenvik\">x</string>\n<string id=\"", "string twice: Brenvik"},
                  {"adml", " refId=\"", " refId=\"x", "has no field of its kind"},
                  {"adml", "<decimalTextBox refId", "<textBox refId", "expected > at: /decimalTextBox"},
                  {"adml", "<presentation id=\"Tipp", "<presentation id=\"Tip", "presentation missing"},
                  {"adml", "</description>", " & mehr</description>", "entity"}};
    for (const auto& b : breaks) {
        std::string admx = files.admx, adml = files.adml;
        std::string& changed = std::string(b.file) == "admx" ? admx : adml;
        const std::size_t at = changed.find(b.from);
        ASSERT_NE(at, std::string::npos) << b.from;
        changed.replace(at, std::string(b.from).size(), b.to);
        EXPECT_THAT(AdmxCheck::faultsOf(admx, adml), ::testing::Contains(::testing::HasSubstr(b.complaint))) << b.from;
    }
}

}  // namespace
}  // namespace brenvik::test
