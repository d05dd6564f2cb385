// The text forms of values at the service boundary.
#include <gtest/gtest.h>

#include "TempStore.h"

using namespace brenvik;
using namespace brenvik::test;
using namespace std::string_literals;

TEST(RawValueText, FromBytes) {
    struct Case {
        std::uint32_t type;
        Bytes bytes;
        std::string text;
    };
    const Case cases[] = {
        {1, {'a', 0, 0, 0, 'b', 0, 0, 0}, "a"},          // shown up to the first zero
        {1, {'a', 0, 'b'}, "a"},                         // odd length
        {1, {}, ""},
        {2, {'%', 0, 0x3D, 0xD8, 0x00, 0xDE, 0, 0}, "%\xF0\x9F\x98\x80"},
        {4, {0, 0, 0, 0x80}, "-2147483648"},
        {4, {1, 2, 0, 0}, "513"},
        {5, {0, 0, 0, 1}, "00 00 00 01"},
        {7, {'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0}, "a\0b"s},
        {7, {'a', 0, 0, 0, 0, 0, 'b', 0, 0, 0, 0, 0}, "a\0\0b"s},   // an empty element within
        {7, {0, 0}, ""},
        {7, {0, 0, 0, 0}, ""},
        {0xFFFF0001, {7}, "07"},
    };
    for (const Case& c : cases) EXPECT_EQ(toText({c.type, c.bytes}), c.text) << c.type << " " << c.text;
    for (const std::size_t size : {0, 3, 5}) EXPECT_EQ(errorOf([&] { toText({4, Bytes(size)}); }), 0x80040208u) << size;
}

TEST(RawValueText, ToBytes) {
    struct Case {
        std::uint32_t type;
        std::string text;
        Bytes bytes;
    };
    const Case cases[] = {
        {1, "", {0, 0}},
        {2, "€", {0xAC, 0x20, 0, 0}},
        {3, "  1  0a FF ", {1, 0x0A, 0xFF}},
        {3, "", {}},
        {4, "-2147483648", {0, 0, 0, 0x80}},
        {4, "4294967295", {0xFF, 0xFF, 0xFF, 0xFF}},
        {4, "0007", {7, 0, 0, 0}},
        {7, "a\0b"s, {'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0}},
        {7, "a\0\0b"s, {'a', 0, 0, 0, 0, 0, 'b', 0, 0, 0, 0, 0}},
        {7, "", {0, 0}},
        {5, "0 0 0 1", {0, 0, 0, 1}},
        {11, "1", {1}},
    };
    for (const Case& c : cases) EXPECT_EQ(fromText(c.text, c.type), (RawValue{c.type, c.bytes})) << c.type << " " << c.text;
}

TEST(RawValueText, Refused) {
    for (const std::string text : {"", " ", "-2147483649", "4294967296", "1.5", "1e3", "0x10", "abc", "1 ", " 1", "--1", "99999999999999999999"}) {
        EXPECT_EQ(errorOf([&] { fromText(text, 4); }), 0x80040207u) << text;
    }
    for (const std::string text : {"123", "G1", "1,2", "-1", "0x", "+1", "1\t2"}) {
        for (const std::uint32_t type : {0u, 3u, 5u, 6u, 8u, 9u, 10u, 11u}) EXPECT_EQ(errorOf([&] { fromText(text, type); }), 0x8004020Cu) << text;
    }
    EXPECT_EQ(errorOf([&] { fromText("a\0b"s, 1); }), 0x80040207u);
    EXPECT_EQ(errorOf([&] { fromText("a\xFFz", 1); }), 0x80040207u);
}
