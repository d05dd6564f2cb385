#include <array>

#include <gtest/gtest.h>

#include "frame/files/FileSystem.h"
#include "frame/files/INIFile.h"
#include "frame/files/ProfileFile.h"
#include "support/ScriptedPort.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"

using namespace brenvik;
using Lines = std::vector<std::string>;

namespace {

// Windows-1252 with every kind of line that has to survive.
const std::string sample =
    "; Kopf\r\n\r\n[ Fenster ]\r\n  Breite = 100  \r\nTitel=\"Gr\xF6\xDF" "e\"\r\n;Breite=7\r\nohneGleich\r\nleer=\r\n\r\n[zweite]\n\tkey\t=\t' x '\n"
    "halb=\"offen\r\nBREITE=5\r\n[fenster]\r\nBreite=999\r\nNur=hier\r\n[\xD6l]\r\nk=v";

std::string without(const std::string& text, const std::string& part) {
    const auto place = text.find(part);
    EXPECT_NE(place, std::string::npos);
    return std::string(text).erase(place, part.size());
}

std::string with(const std::string& text, const std::string& part, const std::string& by) {
    const auto place = text.find(part);
    EXPECT_NE(place, std::string::npos);
    return std::string(text).replace(place, part.size(), by);
}

std::string set(std::string_view section, std::string_view key, std::string_view value, const std::string& bytes = sample) {
    ProfileFile profile(bytes);
    profile.setValue(section, key, value);
    return profile.bytes();
}

std::string setLines(std::string_view section, const Lines& lines, const std::string& bytes) {
    ProfileFile profile(bytes);
    profile.setSectionLines(section, lines);
    return profile.bytes();
}

std::string shown(const std::optional<std::string>& value) { return value ? *value : "<nichts>"; }

}  // namespace

TEST(ProfileFile, Reads) {
    const ProfileFile profile(sample);
    struct Case {
        const char *section, *key;
        std::string value, raw;
    };
    for (const Case& c : {Case{"Fenster", "Breite", "100", " 100  "}, {" FENSTER", "breite ", "100", " 100  "}, {"fenster", "titel", "Größe", "\"Größe\""}, {"fenster", "leer", "", ""},
                          {"fenster", "ohneGleich", "<nichts>", "<nichts>"}, {"fenster", ";Breite", "<nichts>", "<nichts>"}, {"fenster", "Nur", "<nichts>", "<nichts>"},
                          {"zweite", "KEY", " x ", "\t' x '"}, {"zweite", "halb", "\"offen", "\"offen"}, {"zweite", "Breite", "5", "5"}, {"öl", "K", "v", "v"}, {"fehlt", "k", "<nichts>", "<nichts>"}}) {
        EXPECT_EQ(shown(profile.value(c.section, c.key)), c.value) << c.section << '/' << c.key;
        EXPECT_EQ(shown(profile.rawValue(c.section, c.key)), c.raw) << c.section << '/' << c.key;
    }
    EXPECT_EQ(profile.sections(), (Lines{"Fenster", "zweite", "fenster", "Öl"}));
    EXPECT_EQ(profile.sectionLines("fenster"), (Lines{"Breite = 100", "Titel=\"Größe\"", "ohneGleich", "leer="}));
    EXPECT_FALSE(profile.hasSection("fehlt"));
}

TEST(ProfileFile, CutsLongValuesOnReadingOnly) {
    const std::string text = std::string(300, '\xE4');
    const ProfileFile profile("[s]\r\nk=" + text + "\r\nq=\"" + text + "\"\r\n");
    EXPECT_EQ(profile.value("s", "k")->size(), 255u * 2);
    EXPECT_EQ(profile.value("s", "q")->substr(0, 2), "ä");
    EXPECT_EQ(profile.value("s", "k", 11)->size(), 20u);
    EXPECT_EQ(profile.value("s", "k", 0)->size(), 600u);
    ProfileFile back(profile.bytes());
    back.setValue("s", "k", *profile.rawValue("s", "k"));
    EXPECT_EQ(back.bytes(), profile.bytes());
}

TEST(ProfileFile, ChangesOneLineAndNoOtherByte) {
    EXPECT_EQ(set("FENSTER", "breite", "200"), with(sample, "  Breite = 100  \r\n", "  Breite =200\r\n"));
    EXPECT_EQ(set("fenster", "Titel", "Öl €"), with(sample, "\"Gr\xF6\xDF" "e\"", "\xD6l \x80"));
    EXPECT_EQ(set("zweite", "key", "neu"), with(sample, "\t' x '\n", "neu\n"));
    EXPECT_EQ(set("fenster", "Neu", "1"), with(sample, "leer=\r\n", "leer=\r\nNeu=1\r\n"));
    EXPECT_EQ(set("öl", "Neu", "1"), sample + "\r\nNeu=1\r\n");
    EXPECT_EQ(set("ganz neu", "k", ""), sample + "\r\n[ganz neu]\r\nk=\r\n");
    EXPECT_EQ(set("s", "k", "v", ""), "[s]\r\nk=v\r\n");
    EXPECT_EQ(set("s", "k", "v", "[s]"), "[s]\r\nk=v\r\n");
    EXPECT_EQ(set("s", "k", "v", "[s]\r\n\r\n\r\n[t]\r\n"), "[s]\r\nk=v\r\n\r\n\r\n[t]\r\n");
    for (const char* same : {" 100  ", "100"}) EXPECT_EQ(set("fenster", "Breite", same), sample);
    EXPECT_EQ(set("fenster", "Titel", "\"Größe\""), sample);
    EXPECT_EQ(set("fenster", "Titel", "Größe"), without(without(sample, "\""), "\""));
}

TEST(ProfileFile, WritesSectionsLineByLine) {
    const std::string boot = "[boot loader]\r\ntimeout=30\r\n[operating systems]\r\n  a = 1 \r\n; Bemerkung\r\nb=2\r\n\r\nc=3\r\n\r\n[ende]\r\nx=1\r\n";
    const Lines present = ProfileFile(boot).sectionLines("Operating Systems");
    EXPECT_EQ(present, (Lines{"a = 1", "b=2", "c=3"}));
    struct Case {
        Lines lines;
        std::string from, to;
    };
    for (const Case& c : {Case{present, "", ""}, {{"a = 1", "b=22", "c=3"}, "b=2\r\n", "b=22\r\n"}, {{"a = 1", "b=2", "c=3", "d=\xC3\xA4"}, "c=3\r\n", "c=3\r\nd=\xE4\r\n"},
                          {{"b=2", "c=3"}, "  a = 1 \r\n", ""}, {{"a = 1", "c=3"}, "b=2\r\n", ""}, {{"n=0", "a = 1", "b=2", "c=3"}, "systems]\r\n", "systems]\r\nn=0\r\n"},
                          {{"a = 1", "x=9", "b=2", "c=3"}, "  a = 1 \r\n", "  a = 1 \r\nx=9\r\n"}, {{"a = 1", "b=2", "c=4", "d=5"}, "c=3\r\n", "c=4\r\nd=5\r\n"},
                          {{}, "  a = 1 \r\n; Bemerkung\r\nb=2\r\n\r\nc=3\r\n", "; Bemerkung\r\n\r\n"}})
        EXPECT_EQ(setLines("operating systems", c.lines, boot), with(boot, c.from, c.to)) << c.from << " -> " << c.to;
    EXPECT_EQ(setLines("operating systems", {"a = 1", "b=9", "e=5", "c=3"}, boot), with(boot, "b=2\r\n", "b=9\r\ne=5\r\n"));
    EXPECT_EQ(setLines("s", {"x=1", "y"}, "[r]"), "[r]\r\n[s]\r\nx=1\r\ny\r\n");
    EXPECT_EQ(setLines("s", {"k=1", "l=2"}, "[s]\r\nk=1"), "[s]\r\nk=1\r\nl=2\r\n");
}

TEST(ProfileFile, RefusesWhatAFileCannotHold) {
    const std::vector<std::array<std::string, 3>> cases = {{"s", "k", "a\r\nb=1"}, {"s", "k", std::string("a\0b", 3)}, {"s", "k", "Łódź"}, {"s", "a=b", "1"}, {"s", "", "1"},
                                                           {"s", "[k", "1"}, {"s", ";k", "1"}, {"a]b", "k", "1"}, {"s\r\n[t]", "k", "1"}};
    for (const auto& [section, key, value] : cases) {
        ProfileFile profile(sample);
        EXPECT_THROW(profile.setValue(section, key, value), NumberedError) << section << key << value;
        EXPECT_EQ(profile.bytes(), sample);
    }
    for (const std::string line : {"[x]", "", "a\nb", "Ł"}) {
        ProfileFile profile(sample);
        EXPECT_THROW(profile.setSectionLines("fenster", {line}), NumberedError) << line;
        EXPECT_EQ(profile.bytes(), sample);
    }
    ProfileFile wide(std::string("\xFF\xFE[\0s\0]\0", 8));
    EXPECT_FALSE(wide.isAnsi());
    EXPECT_EQ(wide.value("s", "k"), std::nullopt);
    EXPECT_THROW(wide.setValue("s", "k", "v"), NumberedError);
    EXPECT_THROW(wide.setSectionLines("s", {}), NumberedError);
}

TEST(ProfileFile, HostileFiles) {
    const std::string huge(2 << 20, '=');
    for (const std::string& bytes : {huge, "[" + huge, "[" + huge + "]", "[s]k=" + huge, "[s]\n" + huge, "[s]\nk=" + huge, std::string(2 << 20, '\0'), std::string(2 << 20, '\n')}) {
        ProfileFile profile(bytes);
        static_cast<void>(profile.value("s", "k"));
        profile.setValue("neu", "k", "v");
        EXPECT_EQ(profile.value("neu", "k"), "v");
        EXPECT_EQ(profile.bytes().substr(0, bytes.size()), bytes);
        EXPECT_LE(profile.bytes().size(), bytes.size() + 20);
    }
    const std::string withNul("[s]\r\nk=ab\0cd\r\n\0=x\r\nm=1\r\n", 24);
    ProfileFile profile(withNul);
    EXPECT_EQ(profile.value("s", "k"), "ab");
    profile.setValue("s", "k", *profile.rawValue("s", "k"));
    profile.setSectionLines("s", profile.sectionLines("s"));
    EXPECT_EQ(profile.bytes(), withNul);
    profile.setValue("s", "m", "2");
    EXPECT_EQ(profile.bytes(), with(withNul, "m=1", "m=2"));
}

namespace {

struct INIDatei : ::testing::Test {
    test::TempDir dir;
    test::ScriptedPort port;
    test::TestPlatform platform;
    FrameContext ctx{port, platform};
    const std::filesystem::path file = dir.put("a.ini", "[s]\r\nk=1\r\n");
    std::string saved() { return test::bytesOf(file); }
};

}  // namespace

TEST_F(INIDatei, TellsTheOutcome) {
    const std::string done = "Änderungen wurden erfolgreich gespeichert", tooLong = "Es können nicht mehr als 255 zeichen gespeichrt werden.";
    port.expectBox(done).expectBox(done).expectBox(tooLong).expectBox(tooLong);
    EXPECT_TRUE(INISchreiben(ctx, file, "s", "k", "2"));
    EXPECT_EQ(saved(), "[s]\r\nk=2\r\n");
    EXPECT_TRUE(INISchreiben(ctx, file, "s", "lang", std::string(255, 'x')));
    const std::string before = saved();
    EXPECT_FALSE(INISchreiben(ctx, file, "s", "k", std::string(256, 'x')));
    EXPECT_FALSE(INISchreiben(ctx, file, "s", std::string(256, 'x'), "1"));
    EXPECT_EQ(saved(), before);

    port.expectBox("Es ist nichts zum löschen angegeben worden.").expectBox("Es ist nichts zum löschen angegeben worden.");
    EXPECT_TRUE(INILoeschen(ctx, file, "s", "LANG"));
    EXPECT_FALSE(INILoeschen(ctx, file, "s", ""));
    EXPECT_FALSE(INILoeschen(ctx, file, "", "k"));
    EXPECT_EQ(saved(), "[s]\r\nk=2\r\n");

    port.expectBox(done);
    EXPECT_TRUE(INISektionSchreiben(ctx, file, "s", {"k=2", "m=3"}));
    EXPECT_EQ(saved(), "[s]\r\nk=2\r\nm=3\r\n");

    setReadOnly(file, true);
    for (int k = 0; k < 3; ++k) port.expectBox("Eintrag konnte nicht geschrieben werden, die Datei ist schreibgeschützt");
    EXPECT_FALSE(INISektionSchreiben(ctx, file, "s", {"k=9"}));
    EXPECT_FALSE(INISchreiben(ctx, file, "s", "k", "9"));
    EXPECT_FALSE(INILoeschen(ctx, file, "s", "k"));
    EXPECT_EQ(saved(), "[s]\r\nk=2\r\nm=3\r\n");
}

TEST_F(INIDatei, FilesThatAreNotThere) {
    EXPECT_EQ(profileValue(dir / "b.ini", "s", "k"), std::nullopt);
    EXPECT_FALSE(deleteProfileKey(dir / "b.ini", "s", "k"));
    EXPECT_FALSE(std::filesystem::exists(dir / "b.ini"));
    writeProfileValue(dir / "b.ini", "s", "k", "v");
    EXPECT_EQ(test::bytesOf(dir / "b.ini"), "[s]\r\nk=v\r\n");
    EXPECT_THROW(writeProfileValue(dir / "fehlt/b.ini", "s", "k", "v"), NumberedError);
    EXPECT_THROW(profileSection(dir.path(), "s"), NumberedError);
}
