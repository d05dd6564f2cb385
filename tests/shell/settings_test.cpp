// The window's own settings, from the registry and back.
#include <gtest/gtest.h>

#include "registry/LocalMachines.h"
#include "registry/SqliteStore.h"
#include "registry/ValueOperations.h"
#include "shell/FensterEinstellungen.h"
#include "support/ScriptedPort.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"

namespace brenvik::test {

class WindowSettings : public testing::Test {
protected:
    WindowSettings() {
        store.createKey(Root::Users, "S-1-5-21-1-2-3-1003\\Software");
        store.createKey(Root::LocalMachine, "SOFTWARE");
    }
    TempDir dir;
    ScriptedPort port;
    TestPlatform platform;
    SqliteStore store{dir / "registry.db"};
    LocalMachines machines{store};
    RegistryContext ctx{port, platform, machines};
};

TEST_F(WindowSettings, AFirstStartGivesTheDefaults) {
    const FensterEinstellungen read = loadWindowSettings(ctx);
    EXPECT_EQ(read.MainLeft, 1000);
    EXPECT_EQ(read.MainWidth, 9000);
    EXPECT_EQ(read.MainHeight, 9100);
    EXPECT_EQ(read.SplitterVLeft, 3350);
    EXPECT_EQ(read.SplitterHTop, 6000);
    EXPECT_EQ(read.Band[0].Width, 4005);
    EXPECT_TRUE(read.Band[2].NewRow);
}

TEST_F(WindowSettings, ComeBackAsTheyWereSaved) {
    FensterEinstellungen own;
    own.MainLeft = -150.5;
    own.MainWidth = 12345;
    own.SplitterHTop = 5000;
    own.Band[1] = {false, 2000, 1000, 400, true};
    Save_BVKEinstellungen(ctx, own);
    const std::string base = "HKCU\\Software\\Brenvik\\Einstellungen\\";
    EXPECT_EQ(ReadRegistryKey(ctx, base + "MainLeft", ""), "-150.5");
    EXPECT_EQ(ReadRegistryKey(ctx, base + "Toolbar\\Band2_Visible", ""), "False");
    EXPECT_EQ(ReadRegistryKey(ctx, base + "Toolbar\\Band1_NewRow", "fehlt"), "fehlt") << "the first band has none";
    EXPECT_EQ(ReadRegistryKey(ctx, base + "SoundOn", ""), "True") << "the core's settings are saved too";
    const FensterEinstellungen read = loadWindowSettings(ctx);
    EXPECT_EQ(read.MainLeft, -150.5);
    EXPECT_EQ(read.MainWidth, 12345);
    EXPECT_EQ(read.SplitterHTop, 5000);
    EXPECT_FALSE(read.Band[1].Visible);
    EXPECT_EQ(read.Band[1].MinHeight, 400);
    EXPECT_TRUE(read.Band[1].NewRow);
}

TEST_F(WindowSettings, NonsenseCountsAsMissing) {
    const std::string base = "HKCU\\Software\\Brenvik\\Einstellungen\\";
    for (const char* nonsense : {"abc", "1e9", "-5", "", "nan", "12 34"}) {
        SaveRegistryKey(ctx, base + "MainWidth", nonsense, 1);
        EXPECT_EQ(loadWindowSettings(ctx).MainWidth, 9000) << nonsense;
    }
    SaveRegistryKey(ctx, base + "Toolbar\\Band1_Visible", "vielleicht", 1);
    EXPECT_TRUE(loadWindowSettings(ctx).Band[0].Visible);
}

}  // namespace brenvik::test
