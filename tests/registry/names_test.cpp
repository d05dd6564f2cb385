// Upper case of names and the road between UTF-8 and UTF-16.
#include <gtest/gtest.h>

#include "registry/Upcase.h"
#include "registry/Wtf8.h"

using namespace brenvik;

// Stores and hives are ordered by this table: it may never change.
TEST(Upcase, TableIsFixed) {
    std::uint32_t hash = 2166136261u;
    for (std::uint32_t unit = 0; unit < 0x10000; ++unit) hash = (hash ^ upcase(static_cast<char16_t>(unit))) * 16777619u;
    EXPECT_EQ(hash, 0x6621D9C4u);
}

TEST(Upcase, Order) {
    const std::pair<const char*, const char*> ascending[] = {
        {"", "a"}, {"a", "B"}, {"A", "aa"}, {"ss1", "SS3"}, {"SS3", "ß2"}, {"z", "_"}, {"zzz", "ä"}, {"ö", "Ü"}, {"\xF0\x9F\x98\x80", "\xEF\xBC\xA1"},
    };
    for (const auto& [left, right] : ascending) {
        EXPECT_LT(compareNames(std::string_view(left), std::string_view(right)), 0) << left << " " << right;
        EXPECT_GT(compareNames(std::string_view(right), std::string_view(left)), 0) << left << " " << right;
    }
    EXPECT_TRUE(sameName("Größe ΑΣ", "GRÖßE ας"));
    EXPECT_FALSE(sameName("Straße", "STRASSE"));
}

TEST(Wtf8, EveryUnitComesBack) {
    std::u16string units;
    for (std::uint32_t unit = 0; unit < 0x10000; ++unit) units += static_cast<char16_t>(unit);
    EXPECT_EQ(toUtf16(fromUtf16(units)), units);
    EXPECT_EQ(fromUtf16(u"\xD83D\xDE00"), "\xF0\x9F\x98\x80");
}

TEST(Wtf8, WhatIsNoUtf8BecomesReplacements) {
    const std::pair<const char*, std::u16string> cases[] = {
        {"a\x80z", u"a\uFFFDz"}, {"\xC0\xAF", u"\uFFFD\uFFFD"}, {"\xE2\x82", u"\uFFFD\uFFFD"},
        {"\xF5\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"}, {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD"}, {"\xF0\x9F\x98", u"\uFFFD\uFFFD\uFFFD"},
    };
    for (const auto& [text, units] : cases) EXPECT_EQ(toUtf16(text), units);
}
