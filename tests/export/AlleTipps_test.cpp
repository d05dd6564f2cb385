// Every shipped Tip in every form: the checked REG file, read into an empty registry, must bring exactly the values that
// the Tip's registry has; the other new forms must hold each of them too, and templates keep the structure that their
// format demands.
#include <gmock/gmock.h>

#include "AdmxPruefung.h"
#include "Exportprobe.h"
#include "export/AdmxVorlage.h"
#include "export/GeprueftesFormat.h"
#include "export/Preset.h"
#include "export/RegAddSkript.h"
#include "export/Richtliniendatei.h"
#include "registry/MemoryStore.h"
#include "registry/RegImport.h"
#include "tipengine/Programm.h"

namespace brenvik::test {
namespace {

class AlleTippsExport : public ::testing::Test {
protected:
    AlleTippsExport() : programm(port, platform, ProgrammOptionen{dir.path(), std::filesystem::path(BRENVIK_PROGRAMM_DIR)}, observer, recorder) {
        programm.loadSettings();
        programm.detectSystem();
        ctx().intBS = 6;
        EXPECT_TRUE(programm.loadDatabase());
        engine().TreeEinlesen();
    }
    Context& ctx() { return programm.context(); }
    TippMaschine& engine() { return programm.maschine(); }

    TippListEintrag collect(std::int32_t number) {
        engine().inspectTipp(number);
        EXPECT_TRUE(engine().collectForExport());
        TippListEintrag entry = listeneintrag(ctx().aktuellerTipp, engine().collectedValues());
        uebernehmeTexte(entry);
        return entry;
    }
    std::optional<RawValue> stored(const TippListWert& value) {
        ctx().objBVKReg.SetPath("", value.Hauptschluessel + "\\" + value.Unterschluessel + "\\" + value.Wertname);
        return ctx().objBVKReg.ReadRaw();
    }

    TempDir dir;
    ScriptedPort port;
    TestPlatform platform;
    WindowObserver observer;
    Recorder recorder;
    Programm programm;
};

TEST_F(AlleTippsExport, GeprueftKommtGenauSoAn) {
    std::size_t values = 0;
    for (const auto& tipp : std::vector(ctx().udtTippListe)) {
        SCOPED_TRACE(std::to_string(tipp.Index) + " " + tipp.Überschrift);
        const TippListEintrag entry = collect(tipp.Index);
        if (ctx().aktuellerTipp.INITipp) continue;
        const Exportsatz satz = exportwerte({entry});
        EXPECT_TRUE(satz.hindernisse.empty());
        for (const auto format : {RegTextWriter::Format::Version5, RegTextWriter::Format::Regedit4}) {
            const GepruefteDatei file = GeprueftesFormat(satz, format, dateikopf(ctx()));
            EXPECT_EQ(file.verloren, 0u);
            const RegText text = parseRegText(file.bytes);
            EXPECT_TRUE(text.ok()) << text.problems[0].message;
            MemoryStore target;
            EXPECT_TRUE(einspielen(target, text.operations).empty());
            EXPECT_EQ(abweichungen(file.bytes, satz), 0u);
            for (const TippListWert& value : entry.Werte) {
                const auto root = rootByName(value.Hauptschluessel);
                if (!root || value.PanelArt >= art::BootINI || (value.PanelArt == art::Liste && value.Wertname.empty())) continue;
                EXPECT_EQ(target.value(*root, value.Unterschluessel, ValueName::named(value.Wertname)), stored(value)) << value.Wertname;
                ++values;
            }
        }
        for (const RegForm form : {RegForm::Klassisch, RegForm::Neu}) {
            const Exportdatei told = regDatei(ctx(), {entry}, false, form);
            EXPECT_EQ(told.fehlendeZeichen, 0u);
            EXPECT_NE(told.bytes.find("; ------ Ende ------\r\n"), std::string::npos);
        }
        const RegAddSkript script = regAddSkript(satz, {});
        EXPECT_TRUE(script.hindernisse.empty()) << script.hindernisse[0];
        for (const Root root : {Root::CurrentUser, Root::LocalMachine}) {
            const Richtliniendatei file = richtliniendatei(satz, root);
            EXPECT_TRUE(file.hindernisse.empty()) << file.hindernisse[0];
        }
    }
    EXPECT_GT(values, 600u);
}

// A list of all Tips, written, read and applied: nothing to change where it came from, everything on a registry without values.
TEST_F(AlleTippsExport, ListeAllerTipps) {
    TippListe list;
    for (const auto& tipp : std::vector(ctx().udtTippListe)) {
        TippListEintrag entry = collect(tipp.Index);
        if (!ctx().aktuellerTipp.INITipp) list.push_back(std::move(entry));
    }
    const Presetdatei file = presetDatei(ctx(), list);
    EXPECT_EQ(file.hindernis, "");
    ctx().einstellungen.BSSystemAktiv = false;
    const Presetliste loaded = ladePreset(engine(), file.text);
    ASSERT_TRUE(loaded.probleme.empty()) << loaded.probleme[0];
    const Anwendung plan = anwendung(engine(), loaded.liste);
    EXPECT_TRUE(plan.probleme.empty());
    for (const Aenderung& change : plan.changes) ADD_FAILURE() << change.tippIndex << " " << change.werte[0].path;
    EXPECT_GT(exportwerte(loaded.liste).anzahl(), 150u);
    EXPECT_EQ(presetDatei(ctx(), loaded.liste).text, file.text);
}

TEST_F(AlleTippsExport, VorlageHatDenVerlangtenAufbau) {
    TippListe list;
    std::size_t values = 0;
    for (const auto& tipp : std::vector(ctx().udtTippListe)) {
        TippListEintrag entry = collect(tipp.Index);
        if (!ctx().aktuellerTipp.ADMExport) continue;
        values += entry.Werte.size();
        list.push_back(std::move(entry));
    }
    const Exportdatei adm = admDatei(ctx(), list);
    EXPECT_EQ(adm.fehlendeZeichen, 0u);
    const AdmxVorlage files = admxVorlage(list, ctx().udtGruppen, "1");
    EXPECT_EQ(files.richtlinien + files.weggelassen.size(), values);
    EXPECT_GT(files.richtlinien, 80u);
    const std::vector<std::string> sound;
    EXPECT_EQ(AdmxPruefung::fehler(files.admx, files.adml), sound);

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
        EXPECT_THAT(AdmxPruefung::fehler(admx, adml), ::testing::Contains(::testing::HasSubstr(b.complaint))) << b.from;
    }
}

}  // namespace
}  // namespace brenvik::test
