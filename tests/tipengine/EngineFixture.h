#pragma once
// A whole engine on a small database and an empty registry, for tests: rows in, panels and registry contents out.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "registry/machine/LocalMachines.h"
#include "registry/store/SqliteStore.h"
#include "support/ScriptedPort.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"
#include "tipdb/LoadDB.h"
#include "tipengine/TipEngine.h"

namespace brenvik::test {

constexpr const char* Sid = "S-1-5-21-1-2-3-1003";

// A row of RegDaten; nullptr is a null column.
struct Zeile {
    int Index = 1;
    const char* Überschrift = nullptr;
    int Ausgabeart = 1;
    int Datentyp = 4;
    const char* Wertname = "Wert";
    const char* WertEin = nullptr;
    const char* WertAus = nullptr;
    const char* Anzeigetext = nullptr;
    const char* Werteliste = nullptr;
    const char* Standardwert = nullptr;
    int HauptIndex = 0;
    int AnzahlWerte = 0;
    int TypAnpassen = 0;
    int Neustart = 0;
    bool INITipp = false;
    const char* Hauptschlüssel = "HKCU";
    const char* Schlüssel = "Software\\Probe";
    const char* SchlüsselNT = nullptr;
    const char* Gruppen = "1";
    const char* NeuInVersion = "1.0.0";
    const char* Systems = "95,98,ME,NT,2000,XP";
    const char* Beschriftung = nullptr;
};

struct TreeRow {
    int Vorgänger = 1, Ebene = 1, Gruppe = 1;
};

class Recorder : public ChangeRecorder {
public:
    void begin(const Change& change) override { begun.push_back(change); }
    void written(const Change&, std::size_t) override {
        if (onWritten) onWritten();
    }
    void finished(const Change& change) override { ended.push_back(change); }
    std::vector<Change> begun, ended;
    std::function<void()> onWritten;
};

class EngineFixture {
public:
    explicit EngineFixture(const std::vector<Zeile>& lines, const std::vector<TreeRow>& baum = {{}}, int gruppen = 1, bool lenient = false)
        : port(lenient), store(std::make_unique<SqliteStore>(dir / "registry.db")) {
        RegStore& s = *store;
        s.createKey(Root::Users, std::string(Sid) + "\\Software\\Probe");
        s.createKey(Root::LocalMachine, "SYSTEM\\Select");
        s.setValue(Root::LocalMachine, "SYSTEM\\Select", ValueName::named("Current"), {regtype::Dword, {1, 0, 0, 0}});
        s.createKey(Root::LocalMachine, "SYSTEM\\ControlSet001");
        machines = std::make_unique<LocalMachines>(*store, "PROBE-PC");
        ctx = std::make_unique<Context>(port, platform, *machines);
        ctx->homePath = dir.path();
        ctx->programPath = dir.path();
        ctx->strLokalerRechner = ctx->strRechnername = "PROBE-PC";
        ctx->intBS = 6;
        ctx->einstellungen.SoundOn = false;
        ctx->einstellungen.LöschenAktiv = true;
        ctx->strProfilSID = ctx->strUserSID = Sid;
        engine = std::make_unique<TipEngine>(*ctx, observer, recorder);
        writeDatabase(lines, baum, gruppen);
        EXPECT_EQ(LoadDB(*ctx, dir / "RegDaten.mdb"), LoadResult::Loaded);
        engine->FrameStartEinstellungen();
        engine->tree().TreeEinlesen();
    }

    // Registry, through the service's texts; "-" for a value that is not there.
    std::string get(const std::string& path) {
        BVKRegistry& reg = ctx->objBVKReg;
        reg.SetPath("", path);
        const auto raw = reg.ReadRaw();
        return raw ? std::to_string(raw->type) + ":" + toText(*raw) : "-";
    }
    void put(const std::string& path, std::uint32_t type, const std::string& text) {
        ctx->objBVKReg.SetPath("", path);
        ctx->objBVKReg.WriteRaw(fromText(text, type));
    }
    // As get tells it.
    void putTyped(const std::string& path, const std::string& typed) {
        if (typed != "-") put(path, static_cast<std::uint32_t>(std::stoul(typed)), typed.substr(typed.find(':') + 1));
    }
    void show(const std::string& heading) { ASSERT_TRUE(engine->tree().showTipByHeading(heading)) << heading; }
    Panel& panel(std::size_t place = 0) { return ctx->frmBVK_Prog.panels.at(place); }
    MainWindow& windows() { return ctx->frmBVK_Prog; }
    void save() { engine->clickRegSave(ctx->frmBVK_Prog.cmdRegSave); }
    // The button's save with the success message it must bring.
    void saveOk() {
        port.expectBox("Der Schlüssel wurde geändert/angelegt !");
        save();
    }

    TempDir dir;
    ScriptedPort port;
    TestPlatform platform;
    std::unique_ptr<SqliteStore> store;
    std::unique_ptr<LocalMachines> machines;
    std::unique_ptr<Context> ctx;
    WindowObserver observer;
    Recorder recorder;
    std::unique_ptr<TipEngine> engine;

private:
    void writeDatabase(const std::vector<Zeile>& lines, const std::vector<TreeRow>& baum, int gruppen);
};

}  // namespace brenvik::test
