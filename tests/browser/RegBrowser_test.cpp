// The registry browser without its window: what it lists, what it changes, refuses and records.
#include <gtest/gtest.h>

#include "browser/RegBrowser.h"
#include "tipengine/EngineFixture.h"

namespace brenvik::test {
namespace {

constexpr const char* Key = "HKEY_CURRENT_USER\\Software\\Probe";

class BrowserFixture : public testing::Test {
protected:
    BrowserFixture() : probe(std::vector<Zeile>{{.Überschrift = "Tipp"}}), browser(makeRegBrowser(*probe.ctx, probe.recorder)) {
        probe.put(std::string(Key) + "\\Text", 1, "grün");
        probe.put(std::string(Key) + "\\Zahl", 4, "-1");
        probe.put(std::string(Key) + "\\Daten", 3, "00 FF");
        probe.put(std::string(Key) + "\\Unten\\Tief\\Wert", 1, "Nadel");
    }
    ScriptedPort& port() { return probe.port; }
    std::string get(const std::string& below) { return probe.get(std::string(Key) + "\\" + below); }
    static RawValue text(const char* content) { return fromText(content, regtype::Sz); }
    EngineFixture probe;
    std::unique_ptr<RegBrowser> browser;
};

TEST_F(BrowserFixture, AValueIsWrittenAndRecorded) {
    EXPECT_TRUE(browser->writeValue(Key, "Text", text("grün"), text("grün")));
    EXPECT_TRUE(probe.recorder.begun.empty()) << "nothing to do, nothing recorded";
    EXPECT_TRUE(browser->writeValue(Key, "Text", text("grün"), text("rot")));
    EXPECT_EQ(get("Text"), "1:rot");
    EXPECT_TRUE(browser->writeValue(Key, "Neu", std::nullopt, fromText("01", 3)));
    EXPECT_EQ(get("Neu"), "3:01");
    ASSERT_EQ(probe.recorder.ended.size(), 2u);
    const ValueChange& first = probe.recorder.ended[0].values.at(0);
    EXPECT_EQ(first.path, std::string(Key) + "\\Text");
    EXPECT_EQ(first.alt, text("grün"));
    EXPECT_EQ(first.neu, text("rot"));
    EXPECT_TRUE(first.written);
    EXPECT_FALSE(probe.recorder.begun[0].values.at(0).written);
    EXPECT_EQ(probe.recorder.ended[1].values.at(0).alt, std::nullopt);
    EXPECT_TRUE(browser->changedAnything());
}

TEST_F(BrowserFixture, WhatSomebodyElseWroteIsNotLostUnasked) {
    port().expectBox("Dort steht jetzt:\r\n\r\ngrün", Answer::No);
    EXPECT_FALSE(browser->writeValue(Key, "Text", text("alt"), text("rot")));
    EXPECT_EQ(get("Text"), "1:grün");
    port().expectBox("Probe\\text ist schon vorhanden");
    EXPECT_FALSE(browser->writeValue(Key, "text", std::nullopt, text("rot")));
    port().expectBox("inzwischen geändert", Answer::Yes);
    EXPECT_TRUE(browser->writeValue(Key, "Text", text("alt"), text("rot")));
    EXPECT_EQ(probe.recorder.ended.at(0).values.at(0).alt, text("grün")) << "what is overwritten, not what was seen";
}

TEST_F(BrowserFixture, ValuesAreRenamedAndDeleted) {
    EXPECT_TRUE(browser->renameValue(Key, "Daten", "Bytes"));
    EXPECT_EQ(get("Daten"), "-");
    EXPECT_EQ(get("Bytes"), "3:00 FF");
    EXPECT_EQ(probe.recorder.ended.at(0).values.size(), 2u);
    port().expectBox("Probe\\ZAHL ist schon vorhanden");
    EXPECT_FALSE(browser->renameValue(Key, "Text", "ZAHL"));
    EXPECT_TRUE(browser->renameValue(Key, "Text", "TEXT"));
    EXPECT_EQ(get("text"), "1:grün");
    EXPECT_EQ(probe.recorder.ended.at(1).values.size(), 1u) << "taking it back in any order must not delete it";
    EXPECT_TRUE(browser->renameValue(Key, "Text", "C:\\x"));      // belongs to the name
    EXPECT_TRUE(browser->writeValue(Key, "C:\\x", text("grün"), text("rot")));
    EXPECT_EQ(browser->value(Key, "C:\\x"), text("rot"));
    EXPECT_FALSE(browser->exists(std::string(Key) + "\\C:"));
    const ValueChange& apart = probe.recorder.ended.at(3).values.at(0);
    EXPECT_EQ(apart.path + "|" + apart.name.value_or("-"), std::string(Key) + "|C:\\x");
    EXPECT_TRUE(browser->renameValue(Key, "C:\\x", "Text"));

    port().expectBox("Der Wert " + std::string(Key) + "\\Zahl wird gelöscht", Answer::No).expectBox("wird gelöscht", Answer::Yes);
    EXPECT_FALSE(browser->deleteValue(Key, "Zahl"));
    EXPECT_EQ(get("Zahl"), "4:-1");
    EXPECT_TRUE(browser->deleteValue(Key, "Zahl"));
    EXPECT_EQ(get("Zahl"), "-");
    EXPECT_EQ(probe.recorder.ended.back().values.at(0).alt, fromText("-1", 4));
    probe.ctx->einstellungen.LöschenAktiv = false;
    port().expectBox("nicht erlaubt").expectBox("nicht erlaubt");
    EXPECT_FALSE(browser->deleteValue(Key, "Text"));
    EXPECT_FALSE(browser->deleteKey(Key));
    EXPECT_EQ(get("Text"), "1:rot");
}

TEST_F(BrowserFixture, KeysAreMadeRenamedAndDeleted) {
    const std::string lowerKey = std::string(Key) + "\\Unten", upperKey = std::string(Key) + "\\Oben";
    EXPECT_TRUE(browser->newKey(Key, "Leer"));
    EXPECT_TRUE(browser->exists(std::string(Key) + "\\Leer"));
    EXPECT_TRUE(probe.recorder.ended.at(0).key.at(0).created);
    port().expectBox("ist schon vorhanden").expectBox("darf nicht leer sein").expectBox("darf nicht leer sein");
    EXPECT_FALSE(browser->newKey(Key, "leer"));
    EXPECT_FALSE(browser->newKey(Key, ""));
    EXPECT_FALSE(browser->newKey(Key, "a\\b"));

    EXPECT_TRUE(browser->renameKey(lowerKey, "Oben"));
    EXPECT_EQ(get("Oben\\Tief\\Wert"), "1:Nadel");
    EXPECT_FALSE(browser->exists(lowerKey));
    EXPECT_TRUE(browser->renameKey(upperKey, "OBEN"));
    EXPECT_EQ(browser->subKeys(Key), (std::vector<std::string>{"Leer", "OBEN"}));
    port().expectBox("ist schon vorhanden");
    EXPECT_FALSE(browser->renameKey(upperKey, "Leer"));

    port().expectBox("\r\n" + upperKey + "\r\n\r\nwird gelöscht, mit 1 Unterschlüsseln und 1 Werten", Answer::Yes);
    EXPECT_TRUE(browser->deleteKey(upperKey));
    EXPECT_FALSE(browser->exists(upperKey));
    const KeyImage& whole = probe.recorder.ended.back().key.at(0);
    EXPECT_TRUE(whole.geloescht);
    EXPECT_EQ(whole.unterschluessel, (std::vector<std::string>{"", "\\Tief"}));
    EXPECT_EQ(whole.values.at(0).wert.value, text("Nadel"));
    EXPECT_TRUE(probe.recorder.begun.back().key.at(0).geloescht);   // else nobody would know after an interruption
}

TEST_F(BrowserFixture, RootsAndKeysOfTheSystemStay) {
    probe.store->createKey(Root::LocalMachine, "SOFTWARE\\Classes\\.txt");
    const std::string sid = std::string("HKEY_USERS\\") + Sid;
    for (const std::string& key : {std::string("HKEY_CURRENT_USER"), std::string("HKEY_LOCAL_MACHINE"), std::string("HKEY_LOCAL_MACHINE\\system"),
                                   std::string("HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet"), sid, std::string("HKEY_CURRENT_USER\\Software\\Classes")}) {
        port().expectBox("gehört fest zum System").expectBox("gehört fest zum System");
        EXPECT_FALSE(browser->deleteKey(key)) << key;
        EXPECT_FALSE(browser->renameKey(key, "Anders")) << key;
    }
    EXPECT_TRUE(browser->exists("HKEY_LOCAL_MACHINE\\SYSTEM\\ControlSet001"));
    port().expectBox("\r\nHKEY_CLASSES_ROOT\\.txt\r\n", Answer::Yes);
    EXPECT_TRUE(browser->deleteKey("HKEY_CLASSES_ROOT\\.txt"));
    EXPECT_FALSE(browser->exists("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\.txt"));
}

TEST_F(BrowserFixture, FindsKeysNamesAndData) {
    const auto find = [&](const std::string& key, BrowserSearch wanted, int keysUntilStop = 1'000) {
        std::string hits;
        browser->search(key, wanted, [&](BrowserHit hit) { hits += hit.key + (hit.name ? "|" + *hit.name + "=" + hit.text : "") + "\n"; },
                        [&](const std::string&) { return --keysUntilStop < 0; });
        return hits;
    };
    EXPECT_EQ(find("HKEY_CURRENT_USER", {"tief"}), std::string(Key) + "\\Unten\\Tief\n");
    EXPECT_EQ(find(Key, {"nadel", true, true, false}), "");
    EXPECT_EQ(find(Key, {"Zahl", true, false, true}), "");
    EXPECT_EQ(find(Key, {"Nadel"}, 2), "");
    EXPECT_EQ(find(Key, {""}), "");
}

// A value that cannot be read as its type must not hide the others, and more values than the service counts are shown too.
TEST_F(BrowserFixture, OddAndManyValuesAreListed) {
    RegStore& store = *probe.store;
    store.setValue(Root::CurrentUser, "Software\\Probe", ValueName::named("kurz"), {regtype::Dword, {1, 2}});
    EXPECT_EQ(browser->values(Key).back().Wert, "01 02");
    store.transaction([&] {
        for (int i = 0; i < 33'000; ++i) store.setValue(Root::CurrentUser, "Software\\Viele", ValueName::named("w" + std::to_string(i)), fromText("x", regtype::Sz));
    });
    EXPECT_EQ(browser->values("HKEY_CURRENT_USER\\Software\\Viele").size(), 33'001u);
}

}  // namespace
}  // namespace brenvik::test
