#include <algorithm>
#include <new>
#include <system_error>

#include <gtest/gtest.h>

#include "frame/Reports.h"
#include "support/ScriptedPort.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"

using namespace brenvik;
using Lines = std::vector<std::string>;

namespace {

struct Reports : ::testing::Test {
    test::TempDir dir;
    test::ScriptedPort port;
    test::TestPlatform platform;
    FrameContext ctx{port, platform};
    const std::filesystem::path log = dir / "brenvik.log";
    void SetUp() override {
        ctx.trace.setFile(log);
        ctx.trace.setDebug(true);
    }
    Lines lines() const { return test::traceLines(log); }
};

std::string reportText(const std::string& procedure, const std::string& number) {
    return "Es ist ein Fehler in der Funktion: " + procedure + " aufgetreten mit der Fehlernummer: " + number +
           "\r\n\r\nWenn der Fehler noch mal auftritt, führen Sie Bitte die Schritte in der Hilfe unter \"BVK Debug-Modus\" aus.";
}

}  // namespace

TEST_F(Reports, TraceForms) {
    {
        ProcTrace trace(ctx.trace, "Aussen");
        trace.p("HKCU\\Ä").p(-5).p(true);
        {
            ProcTrace inner(ctx.trace, "Innen");
            inner.noEnd();
        }
        trace.note("Lösche Wert: x").r(std::int16_t{7}).r(std::string("zwei\r\nZeilen\0!", 14));
    }
    EXPECT_EQ(lines(), (Lines{"Prozedur: Aussen -Start-", "--- P: HKCU\\Ä", "--- P: -5", "--- P: True", "Prozedur: Innen -Start-", "--- Lösche Wert: x", "--- R: 7",
                              "--- R: zwei␍␊Zeilen␀!", "Prozedur: Aussen -Ende-"}));
    std::string stamp = test::bytesOf(log).substr(0, 24);
    std::replace_if(stamp.begin(), stamp.end(), [](char c) { return c >= '0' && c <= '9'; }, '0');
    EXPECT_EQ(stamp, "0000-00-00 00:00:00.000 ");
}

TEST_F(Reports, NothingIsKeptWithoutTheFlag) {
    ctx.trace.setDebug(false);
    ProcTrace(ctx.trace, "X").p(1);
    ctx.trace.write("--- x");
    EXPECT_FALSE(std::filesystem::exists(log));
}

TEST_F(Reports, SecretsAreMasked) {
    ctx.trace.hide("geheim");
    ctx.trace.hide("geheimnis");
    ctx.trace.hide("");
    ctx.trace.write("--- P: /PW:geheimnis und geheim");
    ctx.trace.write("geheimgeheim");
    EXPECT_EQ(lines(), (Lines{"--- P: /PW:***** und *****", "**********"}));
}

TEST_F(Reports, RotatesBySizeAndLosesNoLine) {
    const std::string filler(100'000, 'x');
    for (int k = 0; k < 210; ++k) ctx.trace.write(std::to_string(k) + " " + filler);
    EXPECT_EQ(dir.names(), (Lines{"brenvik.log", "brenvik.log.1", "brenvik.log.2", "brenvik.log.3"}));
    int expected = 209;
    for (const char* name : {"brenvik.log", "brenvik.log.1", "brenvik.log.2", "brenvik.log.3"}) {
        EXPECT_LE(std::filesystem::file_size(dir / name), 4u << 20);
        auto kept = test::traceLines(dir / name);
        for (auto line = kept.rbegin(); line != kept.rend(); ++line) ASSERT_EQ(line->substr(0, line->find(' ')), std::to_string(expected--));
    }
    EXPECT_LT(expected, 90);
}

TEST_F(Reports, AFailingLogIsReportedOnceWithItsProcedure) {
    ctx.trace.setFile(dir / "fehlt" / "brenvik.log");
    port.expectBox("Funktion: Tun aufgetreten mit der Fehlernummer: 75");
    {
        ProcTrace trace(ctx.trace, "Tun");
        trace.p(1);
    }
    EXPECT_EQ(port.boxes.size(), 1u);
    std::filesystem::create_directory(dir / "fehlt");
    ctx.trace.write("--- wieder da");
    EXPECT_EQ(test::traceLines(dir / "fehlt" / "brenvik.log"), Lines{"--- wieder da"});
    std::filesystem::remove_all(dir / "fehlt");
    TraceLog bare;
    bare.setDebug(true);
    bare.setFile(dir / "fehlt" / "brenvik.log");
    EXPECT_THROW(bare.write("x"), NumberedError);
}

TEST_F(Reports, AFailingLogOutsideOfAllProceduresNamesItsFolder) {
    ctx.homePath = dir.path();
    ctx.trace.setFile(dir / "fehlt" / "brenvik.log");
    port.expectBox("Das Protokoll brenvik.log kann nicht geschrieben werden");
    ctx.trace.write("x");
    EXPECT_TRUE(port.boxes.at(0).text.ends_with(dir.path().string()));
}

TEST_F(Reports, FehlerMeldung) {
    port.expectBox(reportText("DatenRead", "13"));
    std::string name = "DatenRead";
    FehlerMeldung(ctx, name, "13");
    EXPECT_EQ(name, reportText("DatenRead", "13"));
    const MessageBox& shown = port.boxes.at(0);
    EXPECT_EQ(shown.title + shown.helpFile + std::to_string(shown.helpContext) + "," + std::to_string(shown.flags), "Programmfehler!\\BRENVIK.hlp6," + std::to_string(16 + 0x4000));
    EXPECT_EQ(lines().at(0).substr(0, 50), ("Fehler: " + name).substr(0, 50));
}

TEST_F(Reports, EachFailingStepIsReportedAndTheNextRuns) {
    port.lenient = true;
    int ran = 0;
    const std::vector<std::pair<std::function<void()>, std::string>> steps = {
        {[] { throw NumberedError(6, "x"); }, "6"},
        {[] { throw RegError(regerr::NoKey, "x"); }, "-2147220990"},
        {[] { throw std::bad_alloc(); }, "7"},
        {[] { throw std::out_of_range("x"); }, "9"},
        {[] { throw std::system_error(std::make_error_code(std::errc::no_space_on_device)); }, "61"},
        {[] { throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory)); }, "53"},
        {[] { throw std::runtime_error("x"); }, "51"}};
    for (const auto& [step, number] : steps) {
        EXPECT_FALSE(reportAndGoOn(ctx, "Schritt", step));
        EXPECT_EQ(port.lastBox(), reportText("Schritt", number));
    }
    EXPECT_TRUE(reportAndGoOn(ctx, "Schritt", [&] { ++ran; }));
    EXPECT_EQ(ran, 1);
    EXPECT_EQ(port.boxes.size(), steps.size());
}

TEST_F(Reports, RegFehlermeldungen) {
    const std::vector<std::pair<std::uint32_t, std::string>> cases = {
        {0x80040202, "Es wurde kein gültiger Schlüssel angegeben"},
        {0x80040205, "Der Schlüssel wurde nicht angelegt"},
        {0x8004020C, "Falsche Binärdaten"},
        {0x8004020F, "Der Schlüssel konnte nicht angelegt werden\r\n"},
        {0x80040206, "Es ist ein unbekannter Fehler aufgetreten. Fehlernummer: -2147220986"},
        {13, "Es ist ein unbekannter Fehler aufgetreten. Fehlernummer: 13"}};
    for (const auto& [number, text] : cases) {
        port.expectBox(text);
        RegFehlermeldungen(ctx, static_cast<std::int32_t>(number));
        EXPECT_EQ(port.boxes.back().text, text);
        EXPECT_EQ(port.boxes.back().flags, 16);
        EXPECT_EQ(port.boxes.back().title, "Folgender Fehler ist aufgetreten:");
    }
    const Lines last = lines();
    EXPECT_EQ(Lines(last.end() - 3, last.end()),
              (Lines{"Prozedur: RegFehlermeldungen -Start-", "--- Fehler: " + cases.back().second, "Prozedur: RegFehlermeldungen -Ende-"}));
}

TEST_F(Reports, DatabaseReport) {
    clsGSError none;
    ADOFehlerAnzeigen(ctx, none, {}, "bvkADO.ConnectAccess", "");
    EXPECT_TRUE(port.boxes.empty());

    clsGSError error;
    error.Number = -2147467259;
    error.Description = "Zweiter";
    error.Source = "JET";
    const std::vector<DatabaseErrorEntry> list = {{3265, "Erster", "ADO", ""}, {-1, "Anderer", "JET", "HY000"}};
    const std::string first = "Cnn.Errors(0) :    3265 [&hCC1]\r\nErster\r\n\r\nSource: ADO\n\r\nCnn.Errors(1) :    -1 [&hFFFFFFFF]\r\nAnderer\r\n\r\nSource: JET\r\nSQL-State: HY000";
    const std::string second = "\n\r\nErr : -2147467259    [&h80004005]\r\nZweiter\r\n\r\nSource: JET";
    const std::string question = "\r\n\r\n\r\nWollen Sie diese Fehlermeldung in die Zwischenablage kopieren?";
    port.expectBox("", Answer::Yes);
    ADOFehlerAnzeigen(ctx, error, list, "LoadDB", "RS.Source: x");
    EXPECT_EQ(port.boxes.back().text, "LoadDB" + first + second + "\r\nRS.Source: x" + question);
    EXPECT_EQ(port.boxes.back().flags, 52);
    EXPECT_EQ(port.boxes.back().title, "Brenvik");
    EXPECT_EQ(port.clipboard, Lines{"Brenvik: LoadDB\r\n" + first + second + "\r\nRS.Source: x\r\n"});

    error.Description = "Erster";  // told already by the connection
    port.expectBox("", Answer::No);
    ADOFehlerAnzeigen(ctx, error, list, "LoadDB", "");
    EXPECT_EQ(port.boxes.back().text, "LoadDB" + first + question);
    EXPECT_EQ(port.clipboard.size(), 1u);
}

