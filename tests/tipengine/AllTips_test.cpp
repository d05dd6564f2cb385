// Every shipped Tip through the engine: shown on a registry that has its values, on an empty one and on one with foreign
// values; set to each of its values, saved, read back, set to the default, undone. This is the test that finds wrong rows.
#include <map>
#include <set>

#include "registry/Upcase.h"
#include "registry/ValueOperations.h"
#include "registry/machine/FirstStart.h"
#include "support/ScriptedPort.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"
#include "tipengine/EngineFixture.h"
#include "tipengine/Program.h"

namespace brenvik::test {
namespace {

using Dump = std::map<std::string, RawValue>;   // HKLM\...\name of all values

void dumpKey(RegStore& store, Root root, const std::string& prefix, const std::string& key, Dump& out) {
    for (NamedValue& v : store.values(root, key)) out[prefix + "\\" + key + "\\" + v.name.text()] = std::move(v.value);
    for (const std::string& sub : store.subKeys(root, key))
        if (sub != "CurrentControlSet") dumpKey(store, root, prefix, key.empty() ? sub : key + "\\" + sub, out);
}

Dump dumpOf(RegStore& store) {
    Dump out;
    dumpKey(store, Root::LocalMachine, "HKLM", "", out);
    dumpKey(store, Root::Users, "HKU", "", out);
    return out;
}

class AllTips : public ::testing::Test {
protected:
    void start(bool filled) {
        const std::filesystem::path shipped = BRENVIK_PROGRAMM_DIR;
        if (!filled) SqliteStore(dir / "registry.db").createKey(Root::Users, std::string(Sid) + "\\Software");
        port.onWindow("frmBVK_OSErkennung", [](WindowRequest&) {});   // an empty registry names no system
        program = std::make_unique<Program>(port, platform, ProgramOptions{dir.path(), shipped}, observer, recorder);
        program->loadSettings();
        program->detectSystem();
        ctx().intBS = 6;
        ctx().einstellungen.BSSystemAktiv = false;   // Tips for older systems are shown too
        ctx().einstellungen.SoundOn = false;
        ctx().einstellungen.LöschenAktiv = true;
        ASSERT_TRUE(program->loadDatabase());
        engine().tree().TreeEinlesen();
        port.onWindow("frmBVK_Datentyp", [this](WindowRequest&) { ++conflicts; });
        port.onWindow("frmBVK_BootINI", [](WindowRequest& w) { dynamic_cast<BootINIRequest&>(w).reply = BootINIRequest::Reply::Overwrite; });
    }
    Context& ctx() { return program->context(); }
    TipEngine& engine() { return program->engine(); }
    std::int16_t entries() { return static_cast<std::int16_t>(ctx().aktuellerTipp.lastEntry()); }

    bool save() {
        const bool ini = ctx().aktuellerTipp.INITipp;
        if (!ini) port.expectBox("geändert/angelegt");
        return engine().DatenRead() && (ini ? engine().SaveINITipp(false) : engine().RegWerteSchreiben());
    }

    bool keyListOf(std::int16_t i) {   // keys, not values
        const TipEntry& e = ctx().aktuellerTipp.Eintrag[static_cast<std::size_t>(i)];
        return e.Wertname.empty() && (e.Ausgabeart == art::Liste || e.Ausgabeart == art::Kontext);
    }

    // The texts that the panel of an entry can be set to.
    std::vector<std::string> choices(std::int16_t i) {
        const Panel* panel = nullptr;
        for (const Panel& p : ctx().frmBVK_Prog.panels)
            if (std::find(p.entries.begin(), p.entries.end(), i) != p.entries.end()) panel = &p;
        if (panel == nullptr) return {};
        switch (panel->Ausgabeart) {
            case art::Liste:
                if (keyListOf(i)) return {};
                return {"on", "off", "on"};
            case art::CheckBox: return {"on", "off", "on"};
            case art::ZahlenWerte: return {std::to_string(panel->Min), std::to_string(panel->Max)};
            case art::AuswahlBox: case art::OptionsAuswahl: return panel->selection;
            case art::TextWerte: return {ctx().aktuellerTipp.Eintrag[static_cast<std::size_t>(i)].Datentyp == 4 ? "1A" :
                                         ctx().aktuellerTipp.Eintrag[static_cast<std::size_t>(i)].Datentyp == 3 ? "01 02 0A" : "Prüfung"};
            case art::Drive: return {"C:\\Prüfung"};
            case art::Farbe: return {"1 20 255"};
            case art::BitMaske: return {std::string(panel->schalter.size(), '1'), std::string(panel->schalter.size(), '0')};
            default: return {};
        }
    }

    TempDir dir;
    ScriptedPort port;
    TestPlatform platform;
    WindowObserver observer;
    Recorder recorder;
    std::unique_ptr<Program> program;
    int conflicts = 0;
};

// Puts every value of a change back as it was.
void undo(Context& ctx, const std::vector<Change>& changes) {
    for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
        for (auto value = change->values.rbegin(); value != change->values.rend(); ++value) {
            ctx.objBVKReg.SetPath(value->machine, value->path);
            if (value->alt) ctx.objBVKReg.WriteRaw(*value->alt);
            else ctx.objBVKReg.DeleteValue();
        }
    }
}

TEST_F(AllTips, SetsSavesReadsAndTakesBack) {
    start(true);
    for (const auto& tipp : std::vector(ctx().udtTippListe)) {
        SCOPED_TRACE(std::to_string(tipp.Index) + " " + tipp.Überschrift);
        const Dump before = dumpOf(program->localStore());
        recorder.ended.clear();
        ASSERT_TRUE(engine().tree().showTipByHeading(tipp.Überschrift));
        EXPECT_FALSE(ctx().frmBVK_Prog.panels.empty());
        for (std::int16_t i = 1; ctx().aktuellerTipp.WinXP && i <= entries(); ++i)
            EXPECT_NE(engine().statusOf(i).text, "[Aktueller Wert wird ignoriert]") << ctx().aktuellerTipp.Eintrag[static_cast<std::size_t>(i)].Wertname;
        EXPECT_EQ(dumpOf(program->localStore()), before);
        std::set<std::string> names;
        for (std::int16_t i = 1; i <= entries(); ++i) {
            names.insert(ctx().aktuellerTipp.Eintrag[static_cast<std::size_t>(i)].Wertname);
            for (const std::string& text : choices(i)) {
                ASSERT_EQ(engine().setEntryFromText(i, text), "");
                ASSERT_TRUE(save()) << text << ": " << port.lastBox();
                EXPECT_EQ(engine().shownText(i), text) << "entry " << i;
            }
        }
        if (ctx().frmBVK_Prog.Default && ctx().aktuellerTipp.Eintrag[1].Ausgabeart < art::BootINI) {
            const auto& rows = ctx().aktuellerTipp.Eintrag;
            const bool known = std::any_of(rows.begin(), rows.end(), [](const TipEntry& e) { return !e.Standardwert.empty(); });
            if (known) port.expectBox("Windows Standardwerte", Answer::Yes);
            if (!known) port.expectBox("kein Windows-Standardwert bekannt");
            else if (!ctx().aktuellerTipp.INITipp) port.expectBox("geändert/angelegt");
            EXPECT_EQ(engine().Default_Einstellungen(), known);
            for (std::int16_t i = 1; i <= entries(); ++i) {
                const TipEntry& e = ctx().aktuellerTipp.Eintrag[static_cast<std::size_t>(i)];
                if (e.Standardwert.empty() || ctx().aktuellerTipp.INITipp) continue;
                EXPECT_EQ(e.Standardwert == DelKey, !ctx().values[static_cast<std::size_t>(i)].gefunden) << e.Wertname;
                EXPECT_NE(engine().statusOf(i).text, "[Aktueller Wert wird ignoriert]") << e.Wertname << ", Standard " << e.Standardwert;
            }
        }
        const Dump after = dumpOf(program->localStore());
        for (const auto& [path, value] : before)
            if (!after.count(path) || !(after.at(path) == value)) {
                EXPECT_TRUE(names.count(path.substr(path.find_last_of('\\') + 1))) << "changed neighbour: " << path;
            }
        undo(ctx(), recorder.ended);
        EXPECT_EQ(dumpOf(program->localStore()), before);
    }
}

TEST_F(AllTips, AnEmptyAndAForeignRegistryAreNotChanged) {
    start(false);
    for (const auto& tipp : std::vector(ctx().udtTippListe)) {
        SCOPED_TRACE(std::to_string(tipp.Index) + " " + tipp.Überschrift);
        engine().tree().showTipByHeading(tipp.Überschrift);
        if (ctx().aktuellerTipp.INITipp) continue;
        for (std::int16_t i = 1; i <= entries(); ++i) {
            const TipEntry& e = ctx().aktuellerTipp.Eintrag[static_cast<std::size_t>(i)];
            EXPECT_TRUE(keyListOf(i) || !ctx().values[static_cast<std::size_t>(i)].gefunden) << e.Wertname;
            ctx().objBVKReg.SetValuePath("", NetzRegPfad(ctx(), e.Hauptschlüssel) + "\\" + e.Schlüssel, e.Wertname);
            ctx().objBVKReg.WriteRaw({e.Datentyp == 3 ? regtype::Dword : regtype::Binary, {9, 8, 7, 6}});
        }
        const Dump before = dumpOf(program->localStore());
        engine().reloadTip();
        if (ctx().frmBVK_Prog.KeySave && ctx().aktuellerTipp.Eintrag[1].Ausgabeart != art::Kontext) {
            EXPECT_TRUE(save());
        }
        EXPECT_EQ(dumpOf(program->localStore()), before);
        for (std::int16_t i = 1; i <= entries(); ++i) {   // the next Tip may look at the same value
            const TipEntry& e = ctx().aktuellerTipp.Eintrag[static_cast<std::size_t>(i)];
            ctx().objBVKReg.SetPath("", NetzRegPfad(ctx(), e.Hauptschlüssel) + "\\" + e.Schlüssel + "\\" + e.Wertname);
            ctx().objBVKReg.DeleteValue();
        }
    }
    EXPECT_GT(conflicts, 100);
}

}  // namespace
}  // namespace brenvik::test
