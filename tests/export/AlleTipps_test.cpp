// Every shipped Tip in every form: the checked REG file, read into an empty registry, must bring exactly the values that
// the Tip's registry has; the other new forms must hold each of them too, and templates keep the structure that their
// format demands.
#include <cstdlib>
#include <fstream>
#include <map>
#include <regex>
#include <set>

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

std::vector<std::string> all(const std::string& text, const std::string& pattern) {
    std::vector<std::string> found;
    const std::regex expression(pattern);
    for (std::sregex_iterator it(text.begin(), text.end(), expression), end; it != end; ++it) found.push_back((*it)[1]);
    return found;
}

// The children of an element come in the order that the schema lists.
void expectOrder(const std::string& text, const std::vector<std::string>& names) {
    std::size_t last = 0;
    for (const std::string& name : names) {
        const std::size_t at = text.find("<" + name);
        if (at == std::string::npos) continue;
        EXPECT_GE(at, last) << name;
        last = at;
    }
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
    if (const char* folder = std::getenv("BRENVIK_ADMX"))
        for (const auto& [name, content] : {std::pair{"brenvik.admx", &files.admx}, std::pair{"brenvik.adml", &files.adml}}) std::ofstream(std::filesystem::path(folder) / name) << *content;

    expectOrder(files.admx, {"policyNamespaces", "resources", "supportedOn>", "categories", "policies"});
    expectOrder(files.adml, {"displayName", "description", "resources", "stringTable", "presentationTable"});
    const auto ids = all(files.adml, "<string id=\"([^\"]+)\""), presentations = all(files.adml, "<presentation id=\"([^\"]+)\"");
    const std::set<std::string> known(ids.begin(), ids.end()), shown(presentations.begin(), presentations.end());
    EXPECT_EQ(known.size(), ids.size());
    for (const std::string& id : all(files.admx, "\\$\\(string\\.([^)]+)\\)")) EXPECT_TRUE(known.count(id)) << id;
    const auto used = all(files.admx, "\\$\\(presentation\\.([^)]+)\\)");
    EXPECT_EQ(std::set<std::string>(used.begin(), used.end()), shown);
    const auto categories = all(files.admx, "<category name=\"([^\"]+)\""), names = all(files.admx, "<policy name=\"([^\"]+)\"");
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
    for (const std::string& parent : all(files.admx, "<parentCategory ref=\"([^\"]+)\"")) EXPECT_EQ(std::count(categories.begin(), categories.end(), parent), 1) << parent;
    const auto elements = all(files.admx, "<(?:text|decimal|multiText) id=\"([^\"]+)\""), fields = all(files.adml, "refId=\"([^\"]+)\"");
    EXPECT_EQ(elements, fields);
    for (const std::string& policy : all(files.admx, "<policy ([^]*?)</policy>")) {
        expectOrder(policy, {"parentCategory", "supportedOn", "enabledValue", "disabledValue", "elements"});
        EXPECT_NE(policy.find("<elements>") == std::string::npos, policy.find("<enabledValue>") == std::string::npos) << policy;
        EXPECT_EQ(policy.find("presentation=") == std::string::npos, policy.find("<elements>") == std::string::npos) << policy;
    }
}

}  // namespace
}  // namespace brenvik::test
