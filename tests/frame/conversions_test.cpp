#include <optional>

#include <gtest/gtest.h>

#include "frame/Reports.h"
#include "frame/text/Conversions.h"
#include "support/ScriptedPort.h"
#include "support/TestPlatform.h"

using namespace brenvik;

namespace {

// The result of a conversion as text, or "Fehler n".
template <class Call> std::string outcome(Call call) {
    try {
        return call();
    } catch (const NumberedError& error) {
        return "Fehler " + std::to_string(error.number);
    }
}

struct Case {
    std::string in, out;
};

template <class Call> void check(const std::vector<Case>& cases, Call call) {
    for (const Case& c : cases) EXPECT_EQ(outcome([&] { return call(c.in); }), c.out) << '"' << c.in << '"';
}

}  // namespace

TEST(Conversions, Hex2Dec) {
    check({{"0A", "10"}, {"9", "09"}, {"5", "05"}, {"10", "16"}, {"FF", "255"}, {"ff", "255"}, {"", "00"}, {"0", "00"}, {"G1", "00"}, {"1G", "01"},
           {"7FFF", "32767"}, {"8000", "0-32768"}, {"FFFF", "0-1"}, {"0FFFF", "65535"}, {"FFFF&", "65535"}, {"10000", "65536"},
           {"7FFFFFFF", "2147483647"}, {"80000000", "0-2147483648"}, {"FFFFFFFF", "0-1"}, {"0FFFFFFFF", "0-1"}, {"100000000", "Fehler 6"},
           {" 1 2", "18"}, {"-5", "00"}},
          [](const std::string& text) { return Hex2Dec(text); });
}

TEST(Conversions, DecimalToBinary) {
    const std::vector<std::pair<std::int32_t, std::string>> cases = {
        {0, ""}, {-1, ""}, {-2147483647 - 1, ""}, {1, "1"}, {2, "10"}, {5, "101"}, {255, "11111111"}, {256, "100000000"},
        {1073741824, "1" + std::string(30, '0')}, {2147483646, std::string(30, '1') + "0"}, {2147483647, "1" + std::string(31, '0')}};
    for (const auto& [number, text] : cases) EXPECT_EQ(DecimalToBinary(number), text) << number;
}

TEST(Conversions, BinaryToDecimal) {
    check({{"", "0"}, {"0", "0"}, {"101", "5"}, {"102", "4"}, {"abc1", "1"}, {std::string(31, '1'), "2147483647"},
           {std::string(40, '0') + "11", "3"}, {"1" + std::string(31, '0'), "Fehler 6"}},
          [](const std::string& text) { return numberText(BinaryToDecimal(text)); });
}

TEST(Conversions, ReportsOverflowAndKeepsTheSum) {
    test::ScriptedPort port;
    test::TestPlatform platform;
    FrameContext ctx(port, platform);
    port.expectBox("Funktion: BinaryToDecimal aufgetreten mit der Fehlernummer: 6").expectBox("Funktion: Hex2Dec aufgetreten mit der Fehlernummer: 6");
    EXPECT_EQ(BinaryToDecimal(ctx, "1" + std::string(29, '0') + "101"), 5);
    EXPECT_EQ(Hex2Dec(ctx, "123456789"), "");
    EXPECT_EQ(Dec2Hex(ctx, 16), "10");
}

TEST(Conversions, Val) {
    check({{"", "0"}, {"abc", "0"}, {"12abc", "12"}, {" 1 2 3", "123"}, {"-4.5x", "-4.5"}, {"+7", "7"}, {".5", "0.5"}, {"5.", "5"}, {"5.5.5", "5.5"}, {"5,7", "5"},
           {"1e3", "1000"}, {"1d2", "100"}, {"1e", "1"}, {"--3", "0"}, {"&H10", "16"}, {"&hFFFF", "-1"}, {"&HFFFF&", "65535"}, {"&O17", "15"}, {"&", "0"}, {"inf", "0"},
           {"nan", "0"}, {"1e-999", "0"}, {"-", "0"}, {".", "0"}},
          [](const std::string& text) { return numberText(Val(text)); });
    EXPECT_GT(Val("1e999"), 1e308);
    EXPECT_LT(Val("-" + std::string(400, '9')), -1e308);
    EXPECT_GT(Val("&H" + std::string(400, 'F')), 1e9);
}

TEST(Conversions, CheckedNumbers) {
    const std::vector<Case> both = {{"", "Fehler 13"}, {"x", "Fehler 13"}, {"1x", "Fehler 13"}, {"5,5", "Fehler 13"}, {"5.5.5", "Fehler 13"}, {"inf", "Fehler 13"}, {"nan", "Fehler 13"},
                                    {"0x10", "Fehler 13"}, {"1 2", "Fehler 13"}, {" 12 ", "12"}, {"0.5", "0"}, {"1.5", "2"}, {"2.5", "2"}, {"-0.5", "0"}, {"-1.5", "-2"},
                                    {"-2.5", "-2"}, {"2.51", "3"}, {"&HFF", "255"}, {"&HFFFF", "-1"}, {"1e2", "100"}, {"1e400", "Fehler 6"}, {"99999999999", "Fehler 6"}};
    auto shorts = both, longs = both;
    shorts.insert(shorts.end(), {{"32767.4", "32767"}, {"32767.5", "Fehler 6"}, {"-32768.5", "-32768"}, {"-32769", "Fehler 6"}, {"40000", "Fehler 6"}});
    longs.insert(longs.end(), {{"40000", "40000"}, {"2147483647.4", "2147483647"}, {"2147483647.5", "Fehler 6"}, {"-2147483648.5", "-2147483648"}, {"2147483648", "Fehler 6"}});
    check(shorts, [](const std::string& text) { return numberText(toInt(text)); });
    check(longs, [](const std::string& text) { return numberText(toLng(text)); });
    EXPECT_FALSE(isNumeric("1e400"));
    EXPECT_TRUE(isNumeric(" -1.25 "));
}

TEST(Conversions, NumberTexts) {
    const std::vector<std::pair<double, std::string>> cases = {
        {0, "0"}, {-0.0, "0"}, {0.5, "0.5"}, {-1.25, "-1.25"}, {0.1 + 0.2, "0.3"}, {100000, "100000"}, {1e14, "100000000000000"}, {4294967295.0, "4294967295"},
        {0.00001, "0.00001"}, {1.0 / 3, "0.333333333333333"}, {0.0000123456, "0.0000123456"}, {123456789012345.0, "123456789012345"}, {1e15, "1E+15"}};
    for (const auto& [value, text] : cases) EXPECT_EQ(numberText(value), text);
    EXPECT_EQ(format00(5) + format00(123) + format00(-5) + format0000(42), "05123-050042");
}

TEST(Conversions, Booleans) {
    EXPECT_EQ(boolText(true) + boolText(false), "TrueFalse");
    check({{"True", "True"}, {" wahr ", "True"}, {"-1", "True"}, {"2", "True"}, {"FALSE", "False"}, {"Falsch", "False"}, {"0", "False"}, {"", "Fehler 13"}, {"ja", "Fehler 13"}},
          [](const std::string& text) { return boolText(toBool(text)); });
}
