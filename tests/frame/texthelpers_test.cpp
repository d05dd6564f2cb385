#include <algorithm>

#include <gtest/gtest.h>

#include "frame/Errors.h"
#include "frame/text/Codepage.h"
#include "frame/text/Conversions.h"

using namespace brenvik;

TEST(Letters, CaseFollowsWindows1252) {
    EXPECT_EQ(upperCase("äöüß éçÿœšž €µ÷×ł1a"), "ÄÖÜß ÉÇŸŒŠŽ €µ÷×ł1A");
    EXPECT_EQ(lowerCase("ÄÖÜß ÉÇŸŒŠŽ €µ÷×Ł1A"), "äöüß éçÿœšž €µ÷×Ł1a");
    EXPECT_EQ(upperCase("a\xFF\xC3"), "A\xFF\xC3");  // bytes that are no text stay
    for (int byte = 0; byte < 256; ++byte) {
        const std::string letter = utf8FromAnsi(std::string(1, static_cast<char>(byte)));
        EXPECT_TRUE(fitsAnsi(upperCase(letter)) && fitsAnsi(lowerCase(letter))) << byte;
        EXPECT_EQ(lowerCase(upperCase(letter)), lowerCase(letter)) << byte;
    }
}

TEST(Letters, OrderAndSortKeyAgree) {
    const std::vector<std::string> sorted = {"",     " a",   "[b",    "_a",   "1",     "10",   "2",       "a",    "ä",  "Ab",   "äb", "Apfel", "Äpfel",
                                             "Birne", "Strasse", "Straße", "Strauß", "u", "Übung", "Zebra", "Zebra2", "Ωmega"};
    for (std::size_t l = 0; l < sorted.size(); ++l)
        for (std::size_t r = 0; r < sorted.size(); ++r) {
            const int wanted = l < r ? -1 : l > r ? 1 : 0;
            EXPECT_EQ(compareText(sorted[l], sorted[r]), wanted) << sorted[l] << " | " << sorted[r];
            const int byKey = sortKey(sorted[l]).compare(sortKey(sorted[r]));
            EXPECT_EQ((byKey > 0) - (byKey < 0), wanted) << sorted[l] << " | " << sorted[r];
        }
    EXPECT_TRUE(equalText("ÜBUNG", "übung"));
    EXPECT_EQ(sortKey("ÜBUNG"), sortKey("übung"));
    EXPECT_FALSE(equalText("Ubung", "Übung"));
    EXPECT_FALSE(equalText("Strasse", "Straße"));
}

TEST(TextPieces, Split) {
    using Pieces = std::vector<std::string>;
    EXPECT_EQ(Split("", "#"), Pieces{});
    EXPECT_EQ(Split("#", "#"), (Pieces{"", ""}));
    EXPECT_EQ(Split("a##b#", "#"), (Pieces{"a", "", "b", ""}));
    EXPECT_EQ(Split("a\r\nb\nc", "\r\n"), (Pieces{"a", "b\nc"}));
    EXPECT_EQ(Split("abc", ""), Pieces{"abc"});
}

TEST(TextPieces, PositionsCountCharacters) {
    EXPECT_EQ(InStr("Grüße", "ß"), 4u);
    EXPECT_EQ(InStr("Grüße", "SS"), 0u);
    EXPECT_EQ(InStr(3, "üaüa", "a"), 4u);
    EXPECT_EQ(InStr("", ""), 0u);
    EXPECT_EQ(InStr("a", ""), 1u);
    EXPECT_EQ(InStr(5, "abc", "c"), 0u);
    EXPECT_THROW(InStr(0, "a", "a"), NumberedError);
    EXPECT_EQ(textLength("Grüße€"), 6u);
    EXPECT_EQ(Left("Grüße", 3) + "|" + Right("Grüße", 2) + "|" + Mid("Grüße", 3, 2) + "|" + Mid("Grüße", 9) + "|" + Left("ab", 9) + "|" + Right("ab", 9), "Grü|ße|üß||ab|ab");
    EXPECT_EQ(Trim("  a b \t "), "a b \t");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Replace("aXbXX", "X", "--"), "a--b----");
    EXPECT_EQ(ReplaceFirst("aXbX", "X", "X-"), "aX-bX");
    EXPECT_EQ(Replace("abc", "", "x"), "abc");
    EXPECT_EQ(SQLString("a\"b'c\r\nd"), "a\"\"b''c\r\r\n\nd");
}

TEST(Codepage, EveryAnsiByteComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    const std::string text = utf8FromAnsi(all);
    EXPECT_TRUE(isUtf8(text));
    std::size_t missing = 0;
    EXPECT_EQ(ansiFromUtf8(text, &missing), all);
    EXPECT_EQ(missing, 0u);
    EXPECT_EQ(utf8FromAnsi("\x80\xE4\x9F"), "€äŸ");
    EXPECT_EQ(ansiFromUtf8("aŁ→b\xFF\xC3", &missing), "a??b??");
    EXPECT_EQ(missing, 4u);
}

TEST(Codepage, Utf16KeepsEveryUnit) {
    std::string units;
    for (const int unit : {0x41, 0xDC00, 0xD800, 0xD83D, 0xDE00, 0x0, 0xD800, 0x20AC, 0xFFFF, 0xDBFF}) units += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    EXPECT_EQ(utf16LeFromUtf8(utf8FromUtf16Le(units)), units);
    EXPECT_EQ(utf8FromUtf16Le(units + "x"), utf8FromUtf16Le(units));
    EXPECT_EQ(utf8FromUtf16Le(std::string("\x3D\xD8\x00\xDE", 4)), "😀");
    EXPECT_EQ(utf8FromUtf16(u"ä€"), "ä€");
    EXPECT_EQ(utf16FromUtf8("a\xFF\xE2\x82"), u"a\xFFFD\xFFFD\xFFFD");
    for (const std::string bad : {"\xC0\x80", "\xE0\x80\x80", "\xF4\x90\x80\x80", "\xED\xA0\x80", "\x80", "\xF8\x88\x80\x80\x80"}) EXPECT_FALSE(isUtf8(bad));
}
