// The window's own settings, from the registry and back.
#include <gtest/gtest.h>

#include "registry/ValueOperations.h"
#include "registry/machine/LocalMachines.h"
#include "registry/store/SqliteStore.h"
#include "shell/main/WindowSettings.h"
#include "support/ScriptedPort.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"

namespace brenvik::test {

constexpr const char* Base = "HKCU\\Software\\Brenvik\\Einstellungen\\";

class WindowSettings : public testing::Test {
protected:
    WindowSettings() {
        store.createKey(Root::Users, "S-1-5-21-1-2-3-1003\\Software");
        store.createKey(Root::LocalMachine, "SOFTWARE");
    }
    std::string dump(const std::string& key) {
        ctx.objBVKReg.SetPath("", Base + key);
        std::string text;
        for (const NamedValue& value : ctx.objBVKReg.ListRaw()) text += value.name.text() + "=" + std::to_string(value.value.type) + ":" + toText(value.value) + " ";
        return text;
    }
    TempDir dir;
    ScriptedPort port;
    TestPlatform platform;
    SqliteStore store{dir / "registry.db"};
    LocalMachines machines{store};
    RegistryContext ctx{port, platform, machines};
};

TEST_F(WindowSettings, AFirstStartHasTheDefaultsAndWritesThemUnderTheirNames) {
    saveWindowSettings(ctx, loadWindowSettings(ctx));
    EXPECT_EQ(dump(""), "MainLeft=1:1000 MainTop=1:1000 MainWidth=1:9000 MainHeight=1:9100 MainMaximiert=1:False SplitterVLeft=1:3350 SplitterHTop=1:6000 ");
    EXPECT_EQ(dump("Toolbar\\"),
              "tbrBVKNav=1: tbrFavoriten=1: tbrFiles=1: "
              "Band1_Visible=1:True Band1_Width=1:4005 Band1_MinWidth=1:2505 Band1_MinHeight=1:330 "
              "Band2_Visible=1:True Band2_Width=1:2205 Band2_MinWidth=1:2205 Band2_MinHeight=1:330 Band2_NewRow=1:False "
              "Band3_Visible=1:True Band3_Width=1:5550 Band3_MinWidth=1:3000 Band3_MinHeight=1:375 Band3_NewRow=1:True "
              "Band4_Visible=1:True Band4_Width=1:900 Band4_MinWidth=1:900 Band4_MinHeight=1:330 Band4_NewRow=1:False ");
}

TEST_F(WindowSettings, ARegistryThatTakesNothingIsReportedOnce) {
    saveWindowSettings(ctx, {});
    store.setReadOnly(Root::Users, "S-1-5-21-1-2-3-1003\\Software\\Brenvik\\Einstellungen", true);
    for (int i = 0; i < 7; ++i) port.expectBox("Auf den Schlüssel konnte nicht zugegriffen werden");     // the tool bars have a key of their own
    EXPECT_TRUE(saveWindowSettings(ctx, {}));
    store.setReadOnly(Root::Users, "S-1-5-21-1-2-3-1003\\Software\\Brenvik\\Einstellungen\\Toolbar", true);
    port.expectBox("Auf den Schlüssel konnte nicht zugegriffen werden").expectBox("Die Einstellungen des Programms konnten nicht gespeichert werden");
    Save_BVKEinstellungen(ctx, {});
    EXPECT_TRUE(port.done());
}

}  // namespace brenvik::test
