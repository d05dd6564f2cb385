// Single values by path: results, boxes and the trace, line for line.
#include <gtest/gtest.h>

#include "RegistryWorld.h"
#include "hive/HiveTestSupport.h"
#include "registry/hivefile/HiveStore.h"

using namespace brenvik;
using namespace brenvik::test;

namespace {

const char* const NoRootText = "Es wurde kein gültiger Hauptschlüssel angegeben";
const char* const NoAccessText =
    "Auf den Schlüssel konnte nicht zugegriffen werden. Entweder ist der Schlüssel nicht vorhanden oder Sie haben nicht die nötigen Rechte um auf "
    "den Schlüssel zuzugreifen.";

using Lines = std::vector<std::string>;

}  // namespace

TEST(ValueOperations, Read) {
    RegistryWorld w;
    w.store.setValue(Root::CurrentUser, "S", ValueName::named("v"), sz("Wert"));
    w.store.setValue(Root::CurrentUser, "S", ValueName::named("leer"), sz(""));
    EXPECT_EQ(ReadRegistryKey(w.ctx, "HKCU\\S\\v", "vorgabe"), "Wert");
    EXPECT_EQ(w.lines(), (Lines{"Prozedur: ReadRegistryKey -Start-", "--- P: HKCU\\S\\v", "--- P: vorgabe", "--- P: BRENVIK-PC", "--- R: Wert", "Prozedur: ReadRegistryKey -Ende-"}));
    EXPECT_EQ(ReadRegistryKey(w.ctx, "HKCU\\S\\x", KeyNotThere, ""), "<Key nicht vorhanden>");
    EXPECT_EQ(w.lines(), (Lines{"Prozedur: ReadRegistryKey -Start-", "--- P: HKCU\\S\\x", "--- P: <Key nicht vorhanden>", "--- P: ", "--- R: <Key nicht vorhanden>", "Prozedur: ReadRegistryKey -Ende-"}));
    EXPECT_EQ(ReadRegistryKey(w.ctx, "HKCU\\S\\leer", "vorgabe"), "");
    EXPECT_EQ(ReadRegistryKey(w.ctx, "HKCU\\S\\", "vorgabe"), "");   // the key is there, its unnamed value is not
    w.lines();
    w.port.expectBox(NoRootText);
    EXPECT_EQ(ReadRegistryKey(w.ctx, "HKXX\\S\\v", "vorgabe"), "");
    EXPECT_EQ(w.lines(), (Lines{"Prozedur: ReadRegistryKey -Start-", "--- P: HKXX\\S\\v", "--- P: vorgabe", "--- P: BRENVIK-PC", "Prozedur: RegFehlermeldungen -Start-",
                                std::string("--- Fehler: ") + NoRootText, "Prozedur: RegFehlermeldungen -Ende-"}));
    w.port.expectBox(NoAccessText);
    EXPECT_EQ(ReadRegistryKey(w.ctx, "HKCU\\S\\v", "vorgabe", "FERN"), "");
    EXPECT_TRUE(w.port.done());
    EXPECT_EQ(w.port.boxes[0].flags, box::Critical);
    EXPECT_EQ(w.port.boxes[0].title, "Folgender Fehler ist aufgetreten:");
}

TEST(ValueOperations, Save) {
    RegistryWorld w;
    EXPECT_TRUE(SaveRegistryKey(w.ctx, "HKCU\\S\\v", "-1", 4));
    EXPECT_EQ(w.lines(), (Lines{"Prozedur: SaveRegistryKey -Start-", "--- P: HKCU\\S\\v", "--- P: -1", "--- P: 4", "--- P: BRENVIK-PC", "--- R: True", "Prozedur: SaveRegistryKey -Ende-"}));
    EXPECT_EQ(w.store.value(Root::CurrentUser, "S", ValueName::named("v")), dword(0xFFFFFFFF));
    EXPECT_TRUE(SaveRegistryKey(w.ctx, "HKCU\\S\\v", "<delkey>", 4));
    EXPECT_FALSE(w.store.hasValue(Root::CurrentUser, "S", ValueName::named("v")));
    EXPECT_TRUE(SaveRegistryKey(w.ctx, "HKCU\\S\\v", "<delkey>", 4));     // it is gone already
    EXPECT_TRUE(SaveRegistryKey(w.ctx, "HKCU\\S\\w", "<Key nicht vorhanden>", 1));
    EXPECT_EQ(textOf(w.store, Root::CurrentUser, "S", "w"), "<Key nicht vorhanden>");
    w.lines();
    struct Case {
        const char* path;
        const char* value;
        std::int16_t type;
        const char* box;
    };
    const Case cases[] = {
        {"HKCU\\S\\d", "1e3", 4, "Keine Zuweisung möglich"},
        {"HKCU\\S\\b", "xyz", 3, "Falsche Binärdaten"},
        {"HKDD\\S\\b", "1", 1, NoAccessText},
        {"HKXX\\S\\b", "<delkey>", 1, NoRootText},
        {"", "1", 1, "Es wurde kein gültiger Schlüssel angegeben"},
    };
    for (const Case& c : cases) {
        w.port.expectBox(c.box);
        EXPECT_FALSE(SaveRegistryKey(w.ctx, c.path, c.value, c.type)) << c.path;
        const Lines lines = w.lines();
        EXPECT_EQ(lines.back(), "Prozedur: RegFehlermeldungen -Ende-") << c.path;
    }
    EXPECT_TRUE(w.port.done());
    EXPECT_FALSE(w.store.hasValue(Root::CurrentUser, "S", ValueName::named("d")));
}

TEST(ValueOperations, AValueNameMayHoldABackslash) {
    RegistryWorld w;
    BVKRegistry& registry = w.ctx.objBVKReg;
    w.store.setValue(Root::CurrentUser, "S\\a", ValueName::named("b"), sz("anderer"));
    registry.SetValuePath("", "HKEY_CURRENT_USER\\S", "a\\b");
    EXPECT_FALSE(registry.Exists(KEY_QUERY_VALUE_MASK));
    EXPECT_TRUE(registry.WriteValue("x", 1));
    EXPECT_EQ(textOf(w.store, Root::CurrentUser, "S", "a\\b"), "x");
    EXPECT_EQ(registry.ReadValue(false), "x");
    EXPECT_TRUE(registry.Delete());
    EXPECT_FALSE(w.store.hasValue(Root::CurrentUser, "S", ValueName::named("a\\b")));
    registry.SetValuePath("", "HKEY_CURRENT_USER\\S", "ende\\");
    EXPECT_TRUE(registry.WriteValue("y", 1));
    EXPECT_EQ(textOf(w.store, Root::CurrentUser, "S", "ende\\"), "y");
    // The others mean what the told path means.
    registry.SetValuePath("", "HKCU\\S\\a", "b");
    EXPECT_EQ(registry.ReadValue(false), "anderer");
    registry.SetValuePath("", "HKCU\\S\\Neu", "");
    EXPECT_TRUE(registry.WriteValue("", 0));
    EXPECT_EQ(joined(w.store.subKeys(Root::CurrentUser, "S")), "a|Neu");
    EXPECT_TRUE(registry.Delete());
}

TEST(ValueOperations, RootsOnOtherMachines) {
    RegistryWorld w;
    w.ctx.strUserSID = "S-1-5-21-9";
    const std::tuple<bool, const char*, const char*> cases[] = {
        {true, "HKEY_CURRENT_USER", "HKEY_CURRENT_USER"}, {false, "HKEY_CURRENT_USER", "HKEY_USERS\\S-1-5-21-9"},
        {false, "HKCU", "HKCU"}, {false, "HKEY_LOCAL_MACHINE", "HKEY_LOCAL_MACHINE"}};
    for (const auto& [local, root, path] : cases) {
        w.ctx.blnLokal = local;
        EXPECT_EQ(NetzRegPfad(w.ctx, root), path);
        EXPECT_EQ(w.lines(), (Lines{"Prozedur: NetzRegPfad -Start-", std::string("--- P: ") + root, std::string("--- R: ") + path, "Prozedur: NetzRegPfad -Ende-"}));
    }
}

TEST(ValueOperations, DeleteWithAllBelow) {
    RegistryWorld w;
    for (const char* key : {"A\\B\\C", "A\\B\\D", "A\\E"}) w.store.setValue(Root::CurrentUser, key, ValueName::named("v"), sz("x"));
    w.store.setValue(Root::CurrentUser, "A", ValueName::named("v"), sz("stays"));
    std::string path = "HKCU\\A\\B";
    DelUnterKey(w.ctx, path, true);
    EXPECT_EQ(path, "HKCU\\A\\B\\");
    EXPECT_EQ(w.lines(), (Lines{
        "Prozedur: DelUnterKey -Start-", "--- P: HKCU\\A\\B", "--- P: True",
        "Prozedur: DelUnterKey -Start-", "--- P: HKCU\\A\\B\\C", "--- P: True", "--- Lösche Schlüssel: HKCU\\A\\B\\C\\", "Prozedur: DelUnterKey -Ende-",
        "Prozedur: DelUnterKey -Start-", "--- P: HKCU\\A\\B\\D", "--- P: True", "--- Lösche Schlüssel: HKCU\\A\\B\\D\\", "Prozedur: DelUnterKey -Ende-",
        "--- Lösche Schlüssel: HKCU\\A\\B\\", "Prozedur: DelUnterKey -Ende-"}));
    EXPECT_EQ(joined(w.store.subKeys(Root::CurrentUser, "A")), "E");
    path = "HKCU\\A";
    DelUnterKey(w.ctx, path, false);
    EXPECT_EQ(joined(w.store.subKeys(Root::CurrentUser, "A")), "");
    EXPECT_EQ(textOf(w.store, Root::CurrentUser, "A", "v"), "stays");
    EXPECT_TRUE(w.port.boxes.empty());
}

TEST(ValueOperations, DeleteFailsKeyByKey) {
    RegistryWorld w;
    for (const char* key : {"A\\1", "A\\2", "A\\3"}) w.store.createKey(Root::CurrentUser, key);
    w.store.setReadOnly(Root::CurrentUser, "A\\2", true);
    w.port.expectBox("Es ist ein Fehler in der Funktion: DelUnterKey aufgetreten mit der Fehlernummer: -2147220988");
    std::string path = "HKCU\\A";
    DelUnterKey(w.ctx, path, true);
    EXPECT_EQ(joined(w.store.subKeys(Root::CurrentUser, "A")), "2");
    // A root is never emptied.
    for (const char* root : {"HKCU", "HKEY_CURRENT_USER\\"}) {
        w.port.expectBox("Es ist ein Fehler in der Funktion: DelUnterKey");
        path = root;
        DelUnterKey(w.ctx, path, false);
    }
    EXPECT_TRUE(w.port.done());
    EXPECT_TRUE(w.store.keyExists(Root::CurrentUser, "A\\2"));
}

TEST(ValueOperations, DeleteOnAnotherMachine) {
    RegistryWorld w;
    TempDir folder;
    Hive hive;
    for (const char* key : {"1", "2", "3"}) hive.root.ensure("A").ensure("B").ensure(key);
    hivetest::save(folder / "fern.hiv", writeHive(hive));
    const auto other = openHiveFile(folder / "fern.hiv");
    RegistryTarget target([&]() -> RegStore& { return *other; }, TargetFiles::none({}));
    w.machines.setFinder([&](const std::string&) { return &target; });
    w.store.createKey(Root::LocalMachine, "A\\B");
    w.ctx.strRechnername = "FERN";
    std::string path = "HKLM\\A";
    const std::uint32_t before = readHive(hivetest::load(folder / "fern.hiv")).hive.sequence;
    DelUnterKey(w.ctx, path, true);
    const Hive after = readHive(hivetest::load(folder / "fern.hiv")).hive;
    EXPECT_EQ(after.root.subKeys.size(), 0u);
    EXPECT_EQ(after.sequence, before + 1) << "written once";
    EXPECT_TRUE(w.store.keyExists(Root::LocalMachine, "A\\B"));
    path = "HKLM\\A";
    DelUnterKey(w.ctx, path, true, "");
    EXPECT_FALSE(w.store.keyExists(Root::LocalMachine, "A"));
}
