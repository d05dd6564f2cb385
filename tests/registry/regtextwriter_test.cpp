// Writing REG files: the exact text, and every value byte for byte on the way back.
#include <gtest/gtest.h>

#include <random>

#include "TempStore.h"
#include "frame/text/Codepage.h"
#include "registry/Wtf8.h"
#include "registry/search/Comparison.h"
#include "registry/text/RegText.h"
#include "registry/text/RegTextWriter.h"

using namespace brenvik;
using namespace brenvik::test;

namespace {

void fill(SqliteStore& store) {
    const auto set = [&](const std::string& key, const std::string& name, const RawValue& value) { store.setValue(Root::CurrentUser, key, ValueName::named(name), value); };
    set("A", "", sz("Standard \"ä\" \\"));
    set("A", "a\\\"b", dword(0xFFFFFFF0));
    set("A\\[x]", "bin", {3, {0, 1, 0xFE}});
    set("A\\[x]", "leer", {3, {}});
    set("A\\[x]", "multi", fromText(std::string("eins\0zwei", 9), 7));
    set("A\\[x]", "qword", {11, {1, 2, 3, 4, 5, 6, 7, 8}});
    set("A\\[x]", "zeilen", sz("a\r\nb"));
    set("A\\[x]", "kurz", {4, {1, 2}});
    set("A\\[x]", "ohne Ende", {1, {'a', 0}});
    store.createKey(Root::CurrentUser, "A\\leer");
}

}  // namespace

TEST(RegTextWriter, Version5) {
    TempStore t;
    fill(t.store);
    RegTextWriter writer(RegTextWriter::Format::Version5);
    writer.deleteKey(Root::LocalMachine, "B");
    writer.tree(t.store, Root::CurrentUser, "A");
    writer.deleteValue(ValueName::unnamed());
    EXPECT_EQ(writer.bytes(), "\xFF\xFE" + utf16LeFromUtf8(
        "Windows Registry Editor Version 5.00\r\n\r\n[-HKEY_LOCAL_MACHINE\\B]\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n@=\"Standard \\\"ä\\\" \\\\\"\r\n"
        "\"a\\\\\\\"b\"=dword:fffffff0\r\n\r\n[HKEY_CURRENT_USER\\A\\leer]\r\n\r\n[HKEY_CURRENT_USER\\A\\[x]]\r\n\"bin\"=hex:00,01,fe\r\n\"leer\"=hex:\r\n"
        "\"multi\"=hex(7):65,00,69,00,6e,00,73,00,00,00,7a,00,77,00,65,00,69,00,00,00,00,\\\r\n  00\r\n\"qword\"=hex(b):01,02,03,04,05,06,07,08\r\n"
        "\"zeilen\"=hex(1):61,00,0d,00,0a,00,62,00,00,00\r\n\"kurz\"=hex(4):01,02\r\n\"ohne Ende\"=hex(1):61,00\r\n@=-\r\n\r\n"));
    EXPECT_EQ(writer.lost(), 0u);
}

TEST(RegTextWriter, Regedit4) {
    RegTextWriter writer(RegTextWriter::Format::Regedit4);
    writer.key(Root::Users, "Ä");
    writer.value(ValueName::named("€"), sz("ß"));
    writer.value(ValueName::named("e"), fromText("%a%", 2));
    EXPECT_EQ(writer.bytes(), "REGEDIT4\r\n\r\n[HKEY_USERS\\\xC4]\r\n\"\x80\"=\"\xDF\"\r\n\"e\"=hex(2):25,61,25,00\r\n\r\n");
    EXPECT_EQ(writer.lost(), 0u);
    writer.value(ValueName::named("Ω"), sz("x"));
    writer.value(ValueName::named("x"), sz("Ω"));
    writer.value(ValueName::named("y"), fromText("Ω", 2));
    writer.value(ValueName::named("z"), {2, {1, 2, 3}});
    EXPECT_EQ(writer.lost(), 4u);
    writer.key(Root::Users, "Ω");
    writer.value(ValueName::named("verloren mit ihm"), dword(1));
    writer.key(Root::Users, "B");
    writer.deleteValue(ValueName::named("Ω"));
    EXPECT_EQ(writer.bytes(), "REGEDIT4\r\n\r\n[HKEY_USERS\\\xC4]\r\n\"\x80\"=\"\xDF\"\r\n\"e\"=hex(2):25,61,25,00\r\n\r\n[HKEY_USERS\\B]\r\n\r\n");
    std::string omitted;
    for (const auto& entry : writer.omitted()) omitted += entry.key + (entry.value ? "|" + entry.value->text() : std::string()) + ";";
    EXPECT_EQ(omitted, "Ä|Ω;Ä|x;Ä|y;Ä|z;Ω;B|Ω;");
}

// A line end in a key's name would begin a line of its own, with whatever stands behind it.
TEST(RegTextWriter, KeysWithLineEndsAreLeftOutWithAllBelow) {
    TempStore t;
    for (const char* key : {"A\\vorher", "A\\x]\r\n[-HKEY_LOCAL_MACHINE\\Software\\tief", "A\\z"}) t.store.setValue(Root::CurrentUser, key, ValueName::named("v"), dword(1));
    RegTextWriter writer(RegTextWriter::Format::Version5);
    writer.tree(t.store, Root::CurrentUser, "A");
    EXPECT_EQ(writer.bytes(), "\xFF\xFE" + utf16LeFromUtf8("Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n\r\n[HKEY_CURRENT_USER\\A\\vorher]\r\n"
        "\"v\"=dword:00000001\r\n\r\n[HKEY_CURRENT_USER\\A\\z]\r\n\"v\"=dword:00000001\r\n\r\n"));
    ASSERT_EQ(writer.omitted().size(), 1u);
    EXPECT_EQ(writer.omitted()[0].key, "A\\x]\r\n[-HKEY_LOCAL_MACHINE");
    EXPECT_EQ(writer.lost(), 1u);
}

TEST(RegTextWriter, ComesBack) {
    TempStore from, to;
    fill(from.store);
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        RawValue value{static_cast<std::uint32_t>(random() % 12), Bytes(random() % 200)};
        for (auto& byte : value.bytes) byte = static_cast<std::uint8_t>(random() % 3 == 0 ? 0 : random());
        from.store.setValue(Root::CurrentUser, "A\\R" + std::to_string(i % 7), ValueName::named(fromUtf16(std::u16string(1 + random() % 3, static_cast<char16_t>(1 + random() % 0xFFFE)))), value);
    }
    RegTextWriter writer(RegTextWriter::Format::Version5);
    writer.tree(from.store, Root::CurrentUser, "A");
    const RegText read = parseRegText(writer.bytes());
    ASSERT_TRUE(read.ok()) << read.problems.front().line << read.problems.front().message;
    applyOperations(to.store, read.operations);
    compare({&from.store, Root::CurrentUser, "A"}, {&to.store, Root::CurrentUser, "A"}, [](const Difference& u) { ADD_FAILURE() << u.key << " " << u.name.text(); });
}
