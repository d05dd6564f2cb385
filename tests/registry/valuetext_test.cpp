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

TEST(ValueText, EveryValueIsShownInAFormThatBringsItBack) {
    struct Case {
        const char* name;
        RawValue value;
        ValueForm form;
        std::string text;
    };
    const Case cases[] = {
        {"text", {1, utf16(u"Größe\0"s)}, ValueForm::Text, "Größe"},
        {"no terminator", {2, utf16(u"%PATH%")}, ValueForm::Text, "%PATH%"},
        {"empty", {1, {}}, ValueForm::Text, ""},
        {"behind the zero", {1, utf16(u"a\0b\0"s)}, ValueForm::ByteValues, "61 00 00 00 62 00 00 00"},
        {"odd", {1, {'a', 0, 0}}, ValueForm::ByteValues, "61 00 00"},
        {"line end", {1, utf16(u"a\r\nb\0"s)}, ValueForm::ByteValues, "61 00 0D 00 0A 00 62 00 00 00"},
        {"surrogate", {1, {0x00, 0xD8, 0, 0}}, ValueForm::ByteValues, "00 D8 00 00"},
        {"dword", {4, {0xFF, 0xFF, 0xFF, 0xFF}}, ValueForm::Decimal, "-1"},
        {"short dword", {4, {1, 2}}, ValueForm::ByteValues, "01 02"},
        {"list", {7, utf16(u"eins\0zwei\0\0"s)}, ValueForm::Lines, "eins\nzwei"},
        {"empty list", {7, utf16(u"\0"s)}, ValueForm::Lines, ""},
        {"empty element", {7, utf16(u"a\0\0b\0\0"s)}, ValueForm::ByteValues, "61 00 00 00 00 00 62 00 00 00 00 00"},
        {"binary", {3, Bytes(18, 0xAB)}, ValueForm::ByteValues, "AB AB AB AB AB AB AB AB AB AB AB AB AB AB AB AB\nAB AB"},
        {"qword", {11, {1, 0, 0, 0, 0, 0, 0, 0}}, ValueForm::ByteValues, "01 00 00 00 00 00 00 00"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(inputForm(c.value), c.form) << c.name;
        EXPECT_EQ(inputText(c.value, c.form), c.text) << c.name;
        const RawValue back = valueFromInput(c.text, c.value.type, c.form);
        EXPECT_EQ(back.type, c.value.type) << c.name;
        const Bytes begin(back.bytes.begin(), back.bytes.begin() + static_cast<std::ptrdiff_t>(c.value.bytes.size()));
        EXPECT_EQ(begin, c.value.bytes) << c.name;
        if (c.form == ValueForm::ByteValues || c.form == ValueForm::Decimal) {
            EXPECT_EQ(back, c.value) << c.name;
        }
    }
    EXPECT_EQ(inputText({4, {0x2A, 0, 0, 0x80}}, ValueForm::Hexadecimal), "8000002A");
}

TEST(ValueText, WhatDoesNotFitIsRefused) {
    struct Case {
        std::string text;
        std::uint32_t type;
        ValueForm form;
    };
    for (const Case& c : {Case{"4294967296", 4, ValueForm::Decimal}, {"-2147483649", 4, ValueForm::Decimal}, {"", 4, ValueForm::Decimal},
                          {"12a", 4, ValueForm::Decimal}, {"", 4, ValueForm::Hexadecimal}, {"0x", 4, ValueForm::Hexadecimal}, {"-1", 4, ValueForm::Hexadecimal},
                          {"123456789", 4, ValueForm::Hexadecimal}, {"a\n\nb", 7, ValueForm::Lines}, {"\na", 7, ValueForm::Lines},
                          {"0G", 3, ValueForm::ByteValues}, {"123", 3, ValueForm::ByteValues}})
        EXPECT_THROW(valueFromInput(c.text, c.type, c.form), RegError) << c.text;
    EXPECT_EQ(valueFromInput("0xff", 4, ValueForm::Hexadecimal).bytes, (Bytes{0xFF, 0, 0, 0}));
    EXPECT_EQ(valueFromInput("a\nb\n", 7, ValueForm::Lines).bytes, utf16(u"a\0b\0\0"s));
    EXPECT_EQ(valueFromInput("1,02 3\nff", 5, ValueForm::ByteValues), (RawValue{5, {1, 2, 3, 0xFF}}));
}
