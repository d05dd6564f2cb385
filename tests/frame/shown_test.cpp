#include <gtest/gtest.h>

#include <sstream>

#include "frame/text/ShownOutput.h"
#include "frame/text/ShownText.h"

using namespace brenvik;

TEST(ShownText, WhatNobodySeesGetsAMark) {
    const struct {
        std::string text, line, lines;
    } cases[] = {
        {"Größe „x“ 漢 \U0001F600 e\u0301", "Größe „x“ 漢 \U0001F600 e\u0301", "Größe „x“ 漢 \U0001F600 e\u0301"},
        {"\x1B[2J\a\x7F", "␛[2J␇␡", "␛[2J␇␡"},
        {"a\r\nb\nc\td\re", "a␍␊b␊c␉d␍e", "a\nb\nc\td␍e"},
        {"\u009B3m\u202Efdp.exe\u2069\u200B", "‹U+009B›3m‹U+202E›fdp.exe‹U+2069›‹U+200B›", "‹U+009B›3m‹U+202E›fdp.exe‹U+2069›‹U+200B›"},
        {"\u2028x\U000E0041\uFEFF", "‹U+2028›x‹U+E0041›‹U+FEFF›", "‹U+2028›x‹U+E0041›‹U+FEFF›"},
        {"\x9B" "1\xED\xA0\x80\xC3", "‹0x9B›1‹U+D800›‹0xC3›", "‹0x9B›1‹U+D800›‹0xC3›"},
        {std::string("a\0b", 3), "a␀b", "a␀b"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(shownLine(c.text), c.line);
        EXPECT_EQ(shownText(c.text, ShownAs::Lines), c.lines);
    }
    EXPECT_EQ(shownLine("äöü", 3), "äöü");
    EXPECT_EQ(shownLine("abäöü", 3), "abä…");
    EXPECT_EQ(shownLine("a\x1B" "bc", 3), "a␛b…");
    EXPECT_EQ(shownText("a\r\nb", ShownAs::Lines, 2), "a\n…");
    EXPECT_EQ(shownLine("abc", 0), "…");
}

TEST(ShownOutput, StandsBeforeAStreamAndLetsBytesPassThatAreMeant) {
    std::ostringstream stream;
    std::string expected;
    {
        const ShownOutput guard(stream);
        stream << "a\x1B" << 'b' << "\tä\r\n";
        ShownOutput::putRaw(stream, "\x1B\xFF");
        for (int i = 0; i < 20'000; ++i) stream << "€" << "x\r\n";    // a full buffer ends within none of them
        expected = "a␛b\tä\n\x1B\xFF";
        for (int i = 0; i < 20'000; ++i) expected += "€x\n";
    }
    EXPECT_EQ(stream.str(), expected);
    ShownOutput::putRaw(stream, "\x1B");
    EXPECT_EQ(stream.str(), expected + "\x1B");
    std::ostream broken(nullptr);
    broken.clear();
    std::stringbuf readOnly(std::ios::in);
    broken.rdbuf(&readOnly);
    const ShownOutput guard(broken);
    broken << "x" << std::flush;
    EXPECT_FALSE(broken.good());
}
