// Values as a person edits them: nothing that is not seen may get lost on the way.
#include <gtest/gtest.h>

#include "TempStore.h"
#include "registry/text/ValueText.h"

using namespace brenvik;
using namespace std::string_literals;

namespace {

Bytes utf16(const std::u16string& units) {
    Bytes bytes;
    for (const char16_t unit : units) bytes.insert(bytes.end(), {static_cast<std::uint8_t>(unit & 0xFF), static_cast<std::uint8_t>(unit >> 8)});
    return bytes;
}

}  // namespace

TEST(WertEingabe, EveryValueIsShownInAFormThatBringsItBack) {
    struct Case {
        const char* name;
        RawValue value;
        Wertform form;
        std::string text;
    };
    const Case cases[] = {
        {"text", {1, utf16(u"Größe\0"s)}, Wertform::Text, "Größe"},
        {"no terminator", {2, utf16(u"%PATH%")}, Wertform::Text, "%PATH%"},
        {"empty", {1, {}}, Wertform::Text, ""},
        {"behind the zero", {1, utf16(u"a\0b\0"s)}, Wertform::Bytewerte, "61 00 00 00 62 00 00 00"},
        {"odd", {1, {'a', 0, 0}}, Wertform::Bytewerte, "61 00 00"},
        {"line end", {1, utf16(u"a\r\nb\0"s)}, Wertform::Bytewerte, "61 00 0D 00 0A 00 62 00 00 00"},
        {"surrogate", {1, {0x00, 0xD8, 0, 0}}, Wertform::Bytewerte, "00 D8 00 00"},
        {"dword", {4, {0xFF, 0xFF, 0xFF, 0xFF}}, Wertform::Dezimal, "-1"},
        {"short dword", {4, {1, 2}}, Wertform::Bytewerte, "01 02"},
        {"list", {7, utf16(u"eins\0zwei\0\0"s)}, Wertform::Zeilen, "eins\nzwei"},
        {"empty list", {7, utf16(u"\0"s)}, Wertform::Zeilen, ""},
        {"empty element", {7, utf16(u"a\0\0b\0\0"s)}, Wertform::Bytewerte, "61 00 00 00 00 00 62 00 00 00 00 00"},
        {"binary", {3, Bytes(18, 0xAB)}, Wertform::Bytewerte, "AB AB AB AB AB AB AB AB AB AB AB AB AB AB AB AB\nAB AB"},
        {"qword", {11, {1, 0, 0, 0, 0, 0, 0, 0}}, Wertform::Bytewerte, "01 00 00 00 00 00 00 00"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(eingabeForm(c.value), c.form) << c.name;
        EXPECT_EQ(eingabeText(c.value, c.form), c.text) << c.name;
        const RawValue back = wertAusEingabe(c.text, c.value.type, c.form);
        EXPECT_EQ(back.type, c.value.type) << c.name;
        const Bytes begin(back.bytes.begin(), back.bytes.begin() + static_cast<std::ptrdiff_t>(c.value.bytes.size()));
        EXPECT_EQ(begin, c.value.bytes) << c.name;
        if (c.form == Wertform::Bytewerte || c.form == Wertform::Dezimal) {
            EXPECT_EQ(back, c.value) << c.name;
        }
    }
    EXPECT_EQ(eingabeText({4, {0x2A, 0, 0, 0x80}}, Wertform::Hexadezimal), "8000002A");
}

TEST(WertEingabe, WhatDoesNotFitIsRefused) {
    struct Case {
        std::string text;
        std::uint32_t type;
        Wertform form;
    };
    for (const Case& c : {Case{"4294967296", 4, Wertform::Dezimal}, {"-2147483649", 4, Wertform::Dezimal}, {"", 4, Wertform::Dezimal},
                          {"12a", 4, Wertform::Dezimal}, {"", 4, Wertform::Hexadezimal}, {"0x", 4, Wertform::Hexadezimal}, {"-1", 4, Wertform::Hexadezimal},
                          {"123456789", 4, Wertform::Hexadezimal}, {"a\n\nb", 7, Wertform::Zeilen}, {"\na", 7, Wertform::Zeilen},
                          {"0G", 3, Wertform::Bytewerte}, {"123", 3, Wertform::Bytewerte}})
        EXPECT_THROW(wertAusEingabe(c.text, c.type, c.form), RegError) << c.text;
    EXPECT_EQ(wertAusEingabe("0xff", 4, Wertform::Hexadezimal).bytes, (Bytes{0xFF, 0, 0, 0}));
    EXPECT_EQ(wertAusEingabe("a\nb\n", 7, Wertform::Zeilen).bytes, utf16(u"a\0b\0\0"s));
    EXPECT_EQ(wertAusEingabe("1,02 3\nff", 5, Wertform::Bytewerte), (RawValue{5, {1, 2, 3, 0xFF}}));
}
