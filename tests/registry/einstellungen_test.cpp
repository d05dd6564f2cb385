// The start password between the registry and the settings.
#include <gtest/gtest.h>

#include "TempStore.h"
#include "frame/Startpasswort.h"
#include "registry/Einstellungen.h"
#include "registry/LocalMachines.h"
#include "registry/ValueOperations.h"
#include "support/ScriptedPort.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"

namespace brenvik::test {
namespace {

constexpr DateTime Moment{2002, 11, 9, 12, 30, 0};

struct Welt {
    Welt() {
        store.createKey(Root::Users, "S-1-5-21-1-2-3-1003\\Software");
        store.createKey(Root::LocalMachine, "SOFTWARE");
        ctx.trace.setFile(dir / "log");
        ctx.trace.setDebug(true);
    }
    std::string stored(const char* name) { return ReadRegistryKey(ctx, std::string(MaschinenEinstellungenPfad) + name, "-"); }
    TempDir dir;
    ScriptedPort port;
    TestPlatform platform;
    SqliteStore store{dir / "registry.db"};
    LocalMachines machines{store};
    RegistryContext ctx{port, platform, machines};
};

TEST(StartpasswortEinstellungen, NeedAdministrativeRightsToBeSaved) {
    Welt w;
    setzeStartPasswort(w.ctx.einstellungen, true, "geheim", Moment);
    const Settings own = w.ctx.einstellungen;
    saveCoreSettings(w.ctx);
    EXPECT_EQ(w.stored("BVKOPT1"), "-");
    w.ctx.blnAdmin = true;
    saveCoreSettings(w.ctx);
    EXPECT_EQ(w.stored("BVKOPT1"), "hajdmmmj");
    w.ctx.einstellungen = {};
    loadCoreSettings(w.ctx);
    EXPECT_TRUE(w.ctx.einstellungen.blnPasswortAktiv);
    EXPECT_EQ(w.ctx.einstellungen.strPasswortWert, own.strPasswortWert);
    EXPECT_EQ(w.ctx.einstellungen.strPasswortSalz, own.strPasswortSalz);
    const std::string log = bytesOf(w.dir / "log");
    EXPECT_NE(log.find("BVKOPT2"), std::string::npos);
    EXPECT_EQ(log.find(own.strPasswortWert), std::string::npos) << "whoever gets the log could unscramble it";
}

TEST(StartpasswortEinstellungen, AMissingOrDamagedSwitchMeansOff) {
    for (const char* bad : {"", "hajdmmm", "False", "zzzz", "aaaaaaaa"}) {
        Welt w;
        if (*bad) SaveRegistryKey(w.ctx, std::string(MaschinenEinstellungenPfad) + "BVKOPT1", bad, 1);
        w.ctx.einstellungen.blnPasswortAktiv = true;
        loadCoreSettings(w.ctx);
        EXPECT_FALSE(w.ctx.einstellungen.blnPasswortAktiv) << bad;
        EXPECT_EQ(bytesOf(w.dir / "log").find("BVKOPT1 ist unbrauchbar") != std::string::npos, *bad != '\0') << bad;
    }
}

}  // namespace
}  // namespace brenvik::test
