// The command line, the start check and the end of the session.
#include <gtest/gtest.h>
#include <unistd.h>

#include "frame/platform/HostTerminal.h"
#include "frame/program/CommandLineText.h"
#include "frame/program/SessionEnd.h"
#include "frame/program/StartCheck.h"
#include "support/ScriptedPort.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"

namespace brenvik::test {
namespace {

using Lines = std::vector<std::string>;

struct Start : testing::Test {
    Start() {
        ctx.trace.setFile(dir / "log");
        ctx.strProgVersion = "1.2.3";
        ctx.programPath = "/programm";
    }
    Lines trace() { return traceLines(dir / "log"); }
    bool start(const std::string& line, bool another = false) {
        return startCheck(ctx, line, [&] { return another; });
    }
    TempDir dir;
    ScriptedPort port;
    TestPlatform platform;
    FrameContext ctx{port, platform};
};

const Lines Head{"Brenvik", "Version: 1.2.3", "Programmverzeichnis: /programm"};
const Lines NoFacts{"--- Überprüfung der Auflösung", "--- Auflösung: Das System macht keine Angabe, die Prüfung entfällt", "--- IE Version überprüfen",
                    "--- IE Version: Das System kennt keine, die Prüfung entfällt"};

Lines operator+(Lines left, const Lines& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

}  // namespace

TEST_F(Start, SwitchesTakeEffectInTheirOrder) {
    const struct {
        const char *line, *pc, *user, *password;
        bool debug;
    } cases[] = {{"", "", "", "", false},
                 {"/DEBUG", "", "", "", true},
                 {"/PC:Server1 /DEBUG", "Server1", "", "", true},
                 {"/DEBUG /PC:Server1", "Server1", "", "", false},
                 {"/pc:Server1", "Server1", "", "", false},
                 {"/U:Admin /PC:Server1", "Server1", "", "", false},
                 {"/PC:a /U:Dom\\B /PW:Geheim /debug", "a", "Dom\\B", "Geheim", true},
                 {"/PW:x /U:y", "", "y", "", false},
                 {"/PC:Büro-ÄÖ /U:Jörg", "Büro-ÄÖ", "Jörg", "", false},
                 {"/PC: /U:x", "", "x", "", false},
                 {"/PC:\"Mein Rechner\"", "\"Mein", "", "", false},
                 {"vorweg/PC:a", "a", "", "", false},
                 {"/PW:/DEBUG", "", "", "/DEBUG", false}};
    for (const auto& c : cases) {
        FrameContext fresh{port, platform};
        fresh.trace.setFile(dir / "log");
        EXPECT_TRUE(startCheck(fresh, c.line, [] { return false; }));
        EXPECT_EQ(fresh.strParamPC, c.pc) << c.line;
        EXPECT_EQ(fresh.strParamUser, c.user) << c.line;
        EXPECT_EQ(fresh.strParamPasswort, c.password) << c.line;
        EXPECT_EQ(fresh.trace.debug(), c.debug) << c.line;
    }
}

TEST_F(Start, TheTraceTellsTheWholeStart) {
    EXPECT_TRUE(start("/PC:Server1 /U:Admin /PW:Geheim /DEBUG"));
    EXPECT_EQ(trace(), (Head + NoFacts + Lines{"Prozedur: ParameterOK -Start-",
        "Prozedur: Param -Start-", "--- P: /PC:", "--- R: Server1", "Prozedur: Param -Ende-",
        "Prozedur: Param -Start-", "--- P: /U:", "--- R: Admin", "Prozedur: Param -Ende-",
        "Prozedur: Param -Start-", "--- P: /PW:", "--- R: *****", "Prozedur: Param -Ende-",
        "--- Debugmodus: Eingeschaltet", "Prozedur: ParameterOK -Ende-", "--- Alles ok, starte Hauptprogramm"}));
}

TEST_F(Start, APasswordReachesNeitherTheTraceNorTheProcessList) {
    EXPECT_TRUE(start("/U:me/PW:geheim /DEBUG"));
    EXPECT_EQ(ctx.strParamUser, "me/PW:geheim") << "a value ends at the first blank";
    ctx.trace.write("--- P: /pc:a /pw:geheim /PW: /Pw:geheim");
    EXPECT_EQ(trace().back(), "--- P: /pc:a /pw:***** /PW: /Pw:*****");
    EXPECT_EQ(bytesOf(dir / "log").find("geheim"), std::string::npos);
    EXPECT_NE(bytesOf(dir / "log").find("--- R: me/PW:*****"), std::string::npos);

    std::string words[] = {"/PW:programm", "/U:me/pw:geheim", "/PC:a", "/PW:"};
    char* arguments[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
    hidePassword(4, arguments);
    EXPECT_EQ(words[0] + " " + words[1] + " " + words[2] + " " + words[3], "/PW:programm /U:me/pw:****** /PC:a /PW:");
}

TEST(Descriptor, GivesItsFirstLine) {
    const std::pair<std::string, std::optional<std::string>> cases[] = {
        {"geheim\nweiter", "geheim"}, {"ge heim\r\n", "ge heim"}, {"ohne Ende", "ohne Ende"}, {"", ""}, {std::string(host::MaxSecret + 1, 'x'), std::nullopt}};
    for (const auto& [text, line] : cases) {
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        EXPECT_EQ(::write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
        ::close(ends[1]);
        EXPECT_EQ(host::readSecretLine(ends[0]), line);
        ::close(ends[0]);
        EXPECT_EQ(host::readSecretLine(ends[0]), std::nullopt) << "a descriptor that is not open";
    }
}

TEST_F(Start, AnEmptyCommandLineEndsTheTrace) {
    EXPECT_TRUE(start(""));
    EXPECT_EQ(trace(), Head + NoFacts + Lines({"--- Parameter: keine", "--- Debugmodus: Ausgeschaltet"}));
}

TEST_F(Start, HelpLeavesTheOtherSwitchesAlone) {
    port.onWindow("frmBVK_Parameter", [](WindowRequest&) {});
    EXPECT_TRUE(start("/PC:Server1 /?"));
    EXPECT_EQ(port.windows, Lines{"frmBVK_Parameter"});
    EXPECT_EQ(ctx.strParamPC, "");
    EXPECT_TRUE(ctx.trace.debug());
    EXPECT_EQ(trace(), Head + NoFacts + Lines({"Prozedur: ParameterOK -Start-", "--- Alles ok, starte Hauptprogramm"}));
}

TEST_F(Start, ASecondStartEndsWithoutFurtherChecks) {
    platform.bits = 1;
    EXPECT_FALSE(start("/DEBUG", true));
    EXPECT_EQ(trace(), Head);
}

TEST_F(Start, ColoursAreCountedByPlanes) {
    const struct {
        std::int16_t bits;
        const char* text;
        bool passes;
    } cases[] = {{1, "2 Farben (Monochrom)", false}, {4, "16 Farben (Indexfarben)", false}, {8, "256 Farben", true}, {16, "65536 Farben (High Color)", true},
                 {24, "", true}, {32, "4294967296 Farben (True Color)", true}, {2, "", false}, {5, "", true}};
    for (const auto& c : cases) {
        platform.bits = c.bits;
        if (!c.passes) port.expectBox(std::string("Sie haben zur Zeit nur: ") + c.text + "\r\nBitte ändern");
        EXPECT_EQ(start(""), c.passes) << c.bits;
        const Lines all = trace();
        EXPECT_NE(std::find(all.begin(), all.end(), std::string("--- Auflösung: ") + c.text + "␍␊"), all.end()) << c.bits;
        if (c.passes) continue;
        EXPECT_EQ(port.boxes.back().title, "Programmabbruch");
        EXPECT_EQ(port.boxes.back().flags, box::Critical);
        EXPECT_EQ(Lines(all.end() - 2, all.end()), (Lines{"--- Anzahl der Farben reicht nicht !!!", "--- Programm beendet"}));
    }
}

TEST_F(Start, TheBrowserComponentMustBeRecent) {
    platform.browser = BrowserComponent{};
    port.expectBox("Es ist kein Internet Explorer installiert, der IE wird aber benötigt !!!");
    EXPECT_FALSE(start(""));
    platform.browser = BrowserComponent{true, 4, 7, 93};
    port.expectBox("Es ist die Version: 4.07.0093 installiert. Benötigt wird aber der IE ab Version 5.x");
    EXPECT_FALSE(start(""));
    EXPECT_EQ(trace().back(), "--- Programm beendet");
    platform.browser = BrowserComponent{true, 6, 0, 2600};
    EXPECT_TRUE(start(""));
    EXPECT_EQ(ctx.intIEBuild, 2600);
    const Lines all = trace();
    const auto place = std::find(all.rbegin(), all.rend(), "Prozedur: GetIEVersion -Start-").base();
    EXPECT_EQ(Lines(place, place + 3), (Lines{"--- R: True", "--- R: 6.0.2600", "Prozedur: GetIEVersion -Ende-"}));
}

struct EndCase {
    std::uint32_t platformId, major;
    std::int16_t kind, mode;
    Lines calls;
};

TEST_F(Start, TheSessionEndsByTheFlagsOfTheSystem) {
    platform.sessionCanEnd = true;
    for (const EndCase& c : {EndCase{2, 5, 1, 0, {"privilege", "exit 1 -1"}}, {2, 5, 2, 0, {"privilege", "exit 3 -1"}}, {2, 5, 4, 0, {"privilege", "exit 0 -1"}},
                             {2, 5, 8, 0, {"privilege", "exit 9 -1"}}, {2, 5, 2, 1, {"privilege", "exit 7 -1"}}, {2, 5, 4, 2, {"privilege", "exit 16 -1"}},
                             {2, 4, 4, 2, {"privilege", "exit 4 -1"}}, {1, 4, 4, 2, {"shell", "exit 4 -1"}}, {1, 4, 4, 1, {"exit 4 -1"}},
                             {1, 4, 2, 2, {"exit 7 -1"}}, {1, 4, 4, 0, {"exit 0 -1"}}, {2, 5, 3, 0, {}}}) {
        platform.sessionCalls.clear();
        ctx.osVersion.dwPlatformId = c.platformId;
        ctx.osVersion.dwMajorVersion = c.major;
        ShutDown(ctx, c.kind, c.mode);
        EXPECT_EQ(platform.sessionCalls, c.calls) << c.platformId << " " << c.major << " " << c.kind << " " << c.mode;
    }
    for (const auto& [system, kind] : {std::pair{1, 2}, {2, 2}, {3, 2}, {4, 4}, {5, 4}, {6, 2}, {0, 2}})
        EXPECT_EQ(newLogonKind(static_cast<std::int16_t>(system)), kind) << system;
    EXPECT_EQ(sessionEndText(ctx, 2), "Der Computer soll neu gestartet werden.");
}

TEST_F(Start, WhereTheSessionCannotEndTheUserIsTold) {
    port.expectBox("wird nicht beendet");
    ShutDown(ctx, 2, 0);
    EXPECT_TRUE(platform.sessionCalls.empty());
    EXPECT_NE(sessionEndText(ctx, 2).find("bleibt bestehen"), std::string::npos);
}

}  // namespace brenvik::test
