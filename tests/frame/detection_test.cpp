#include <gtest/gtest.h>

#include "frame/program/Detection.h"
#include "support/ScriptedPort.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"

using namespace brenvik;

namespace {

struct Case {
    std::uint32_t platform, major, minor;
    OperatingSystem system;
};

const std::string unknown = "Unbekanntes Betriebssystem";

}  // namespace

TEST(Detection, DecisionTable) {
    for (const Case& c : {Case{2, 4, 0, {3, "Windows NT"}}, {2, 4, 99, {3, "Windows NT"}}, {2, 5, 0, {4, "Windows 2000"}}, {2, 5, 1, {6, "Windows XP"}}, {2, 5, 2, {0, unknown}},
                          {2, 3, 51, {0, unknown}}, {2, 10, 0, {0, unknown}}, {1, 4, 0, {1, "Windows 95"}}, {1, 4, 1, {2, "Windows 98"}}, {1, 4, 10, {2, "Windows 98"}},
                          {1, 4, 89, {2, "Windows 98"}}, {1, 4, 90, {5, "Windows ME"}}, {1, 5, 0, {2, "Windows 98"}}, {1, 5, 90, {5, "Windows ME"}}, {1, 3, 95, {0, unknown}},
                          {0, 3, 1, {0, unknown, true}}, {3, 5, 1, {0, unknown, true}}})
        EXPECT_EQ(determineSystem(c.platform, c.major, c.minor), c.system) << c.platform << ' ' << c.major << '.' << c.minor;
}

TEST(Detection, LaterSystemsAreCalledWhatTheyAre) {
    const struct {
        std::uint32_t platform, major, minor, build;
        const char* shown;
    } cases[] = {{2, 6, 1, 7601, "Unbekanntes Betriebssystem (Windows 7)"}, {2, 10, 0, 19045, "Unbekanntes Betriebssystem (Windows 10)"}, {2, 10, 0, 22000, "Unbekanntes Betriebssystem (Windows 11)"},
                 {2, 6, 3, 9600, "Unbekanntes Betriebssystem (Windows 8.1)"}, {2, 11, 0, 30000, "Unbekanntes Betriebssystem"}, {2, 5, 1, 2600, "Windows XP"}, {1, 6, 1, 0, "Windows 98"}};
    for (const auto& c : cases) {
        test::ScriptedPort port;
        test::TestPlatform platform;
        FrameContext ctx(port, platform);
        OSVERSIONINFO version;
        version.dwPlatformId = c.platform, version.dwMajorVersion = c.major, version.dwMinorVersion = c.minor, version.dwBuildNumber = c.build;
        BSErmitteln(ctx, version);
        EXPECT_EQ(ctx.systemDisplay(), c.shown);
    }
}

TEST(Detection, TracesAndSetsTheContext) {
    test::TempDir dir;
    test::ScriptedPort port;
    test::TestPlatform platform;
    FrameContext ctx(port, platform);
    ctx.trace.setFile(dir / "l");
    ctx.trace.setDebug(true);
    OSVERSIONINFO version;
    version.dwPlatformId = 2, version.dwMajorVersion = 5, version.dwMinorVersion = 2;
    EXPECT_FALSE(BSErmitteln(ctx, version).dialog);
    EXPECT_EQ(test::traceLines(dir / "l"), (std::vector<std::string>{"Prozedur: BSErmitteln -Start-", " BS-Versionsinfo:", " PlatfromID: 2", " MajorVersion: 5", " MinorVersion: 2",
                                                                     "--- R: Unbekanntes Betriebssystem", "--- R: 0", "Prozedur: BSErmitteln -Ende-"}));
    EXPECT_EQ(ctx.intBS, 0);
    ctx.einstellungen.BSErsatz = true;
    EXPECT_EQ(BSErmitteln(ctx, version).intBS, 0);
    EXPECT_EQ(ctx.intBS, 6);
    version.dwMinorVersion = 0;
    BSErmitteln(ctx, version);
    EXPECT_EQ(ctx.intBS, 4);
    EXPECT_EQ(ctx.strBS, "Windows 2000");
}
