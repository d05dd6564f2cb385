// Path texts and the service's operations on them.
#include <gtest/gtest.h>

#include <map>

#include "TempStore.h"
#include "registry/BVKRegistry.h"
#include "registry/machine/LocalMachines.h"

using namespace brenvik;
using namespace brenvik::test;

namespace {

struct Service {
    TempStore t;
    LocalMachines machines{t.store};
    TraceLog log;
    BVKRegistry reg{log, machines};

    BVKRegistry& at(const std::string& path, const std::string& machine = "") {
        reg.SetPath(machine, path);
        return reg;
    }
};

}  // namespace

TEST(RegPath, Forms) {
    struct Case {
        std::string path;
        const char* parsed;   // root|key|name|"key" if it means the key
    };
    const Case cases[] = {
        {"HKCU\\Software\\Brenvik\\Wert", "HKCU|Software\\Brenvik|Wert|"},
        {"HKEY_CURRENT_USER\\Software\\", "HKCU|Software||key"},
        {"hkey_Local_machine\\S\\v", "HKLM|S|v|"},
        {"hklm\\S\\v", "HKLM|S|v|"},
        {"HKEY_USERS\\", "HKU|||key"},
        {"HKU\\.Default", "HKU||.Default|"},
        {"HKDD\\a\\b", "HKDD|a|b|"},
        {"HKEY_DYN_DATA\\a\\", "HKDD|a||key"},
        {"HKCC\\v", "HKCC||v|"},
        {"HKEY_CURRENT_CONFIG\\v", "HKCC||v|"},
        {"HKCR\\.txt\\", "HKCR|.txt||key"},
        {"HKEY_CLASSES_ROOT\\.txt\\x", "HKCR|.txt|x|"},
        {"HKCU\\\\Software\\\\Foo\\v", "HKCU|Software\\Foo|v|"},     // keys written with a backslash at either end
        {"HKCU\\\\Software\\Foo\\\\", "HKCU|Software\\Foo||key"},
        {"HKCU\\Software\\Foo\\ ", "HKCU|Software\\Foo| |"},
        {"HKCU\\Größe\\Ä", "HKCU|Größe|Ä|"},
    };
    for (const Case& c : cases) {
        const RegPath path = parseRegPath(c.path);
        EXPECT_EQ(std::string(shortRootName(path.root)) + "|" + path.key + "|" + path.name.text() + "|" + (path.isKey ? "key" : ""), c.parsed) << c.path;
    }
    const std::pair<const char*, std::uint32_t> bad[] = {
        {"", 0x80040202u}, {"\\", 0x80040203u}, {"HKXX\\a\\b", 0x80040203u}, {"HKCU2\\a", 0x80040203u}, {" HKCU\\a", 0x80040203u}, {"a", 0x80040203u}};
    for (const auto& [path, number] : bad) EXPECT_EQ(errorOf([&] { parseRegPath(path); }), number) << path;
}

TEST(Service, WhatAPathAddresses) {
    Service s;
    EXPECT_TRUE(s.at("HKCU\\A\\B\\v").WriteValue("text", 1));
    EXPECT_TRUE(s.at("HKCU\\A\\B\\").WriteValue("unnamed", 1));
    EXPECT_TRUE(s.at("HKCU\\A\\B\\Sub\\").WriteValue("", 0));      // a key alone
    EXPECT_TRUE(s.at("HKCU\\A\\B\\none").WriteValue("", 0));       // a value of type 0
    struct Case {
        const char* path;
        bool exists;
        std::int32_t type;
        const char* text;
    };
    const Case cases[] = {
        {"HKCU\\A\\B\\v", true, 1, "text"},
        {"HKEY_CURRENT_USER\\a\\b\\V", true, 1, "text"},
        {"HKCU\\A\\B\\", true, 1, "unnamed"},
        {"HKCU\\A\\B\\none", true, 0, ""},
        {"HKCU\\A\\B\\Sub", false, 1, ""},       // a key is no value
        {"HKCU\\A\\B\\Sub\\", true, 1, ""},      // the key is there, its unnamed value is not
        {"HKCU\\A\\", true, 1, ""},
        {"HKCU\\A\\B\\x", false, 1, ""},
        {"HKCU\\X\\B\\v", false, 1, ""},
        {"HKCU\\X\\", false, 1, ""},
        {"HKEY_USERS\\", true, 1, ""},
        {"HKDD\\X\\", false, 1, ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(s.at(c.path).Exists(1), c.exists) << c.path;
        EXPECT_EQ(s.at(c.path).Exists(0xF003F), c.exists) << c.path;
        EXPECT_EQ(s.at(c.path).ReadType(1), c.type) << c.path;
        EXPECT_EQ(s.at(c.path).ReadValue(false), c.text) << c.path;
    }
    EXPECT_EQ(s.at("HKCU\\A\\B\\v").ReadValue(true), "unnamed");
    EXPECT_FALSE(s.at("HKCU\\A\\B\\Sub\\").ReadRaw());
    EXPECT_FALSE(s.at("HKCU\\A\\B\\Sub").Delete());
    EXPECT_FALSE(s.at("HKCU\\A\\B\\").Delete());                   // it has a sub key
    EXPECT_TRUE(s.at("HKCU\\A\\B\\").DeleteValue());
    EXPECT_TRUE(s.at("HKCU\\A\\B\\").Exists(1));
    EXPECT_TRUE(s.at("HKCU\\A\\B\\Sub\\").Delete());
    EXPECT_TRUE(s.at("HKCU\\A\\B\\v").Delete());
    EXPECT_FALSE(s.at("HKCU\\A\\B\\v").Delete());
    EXPECT_TRUE(s.at("HKCU\\A\\B\\").Delete());
    EXPECT_FALSE(s.at("HKCU\\A\\B\\").Exists(1));
    EXPECT_FALSE(s.at("HKCU\\").Delete());
}

TEST(Service, Errors) {
    Service s;
    s.t.store.setValue(Root::CurrentUser, "RO", ValueName::named("v"), sz("x"));
    s.t.store.setReadOnly(Root::CurrentUser, "RO", true);
    const std::string longKey = "HKCU\\" + std::string(256, 'k') + "\\v";
    const std::tuple<const char*, std::function<void()>, std::uint32_t> cases[] = {
        {"nothing selected", [&] { s.reg.Exists(1); }, 0x80040202u},
        {"unknown root", [&] { s.at("HKXX\\a\\b").Exists(1); }, 0x80040203u},
        {"unknown root, write", [&] { s.at("HKXX\\a\\b").WriteValue("1", 1); }, 0x80040203u},
        {"bare root, write", [&] { s.at("HKCU").WriteValue("1", 1); }, 0x80040202u},
        {"bare root, delete", [&] { s.at("HKCU").Delete(); }, 0x80040202u},
        {"long key", [&] { s.at(longKey).WriteValue("1", 1); }, 0x80040202u},
        {"bad dword", [&] { s.at("HKCU\\a\\b").WriteValue("x", 4); }, 0x80040207u},
        {"bad binary", [&] { s.at("HKCU\\a\\b").WriteValue("x", 3); }, 0x8004020Cu},
        {"negative type", [&] { s.at("HKCU\\a\\b").WriteValue("", -1); }, 0x80040207u},
        {"dynamic data", [&] { s.at("HKDD\\a\\b").WriteValue("1", 1); }, 0x80040204u},
        {"read-only key", [&] { s.at("HKCU\\RO\\v").WriteValue("1", 1); }, 0x80040204u},
        {"unknown machine", [&] { s.at("HKCU\\a\\b", "FERN").Exists(1); }, 0x80040204u},
    };
    for (const auto& [what, call, number] : cases) EXPECT_EQ(errorOf(call), number) << what;
    EXPECT_FALSE(s.at("HKCU\\a\\").Exists(1));   // nothing was made on the way
    EXPECT_TRUE(s.at("HKCU\\RO\\v").Exists(1));
    EXPECT_FALSE(s.at("HKCU\\RO\\v").Exists(0xF003F));
    EXPECT_FALSE(s.at("HKCU\\RO\\v").CheckAccess(0xF003F));
    EXPECT_TRUE(s.at("HKCU\\RO\\v").CheckAccess(1));
}

TEST(Service, Lists) {
    Service s;
    s.at("HKCU\\A\\b\\").WriteValue("", 0);
    s.at("HKCU\\A\\C\\").WriteValue("", 0);
    s.at("HKCU\\A\\z").WriteValue("-5", 4);
    s.at("HKCU\\A\\").WriteValue("u", 2);
    s.at("HKCU\\A\\broken").WriteRaw({4, {1, 2}});
    for (const char* path : {"HKCU\\A\\", "HKCU\\A"}) {
        EXPECT_EQ(joined(s.at(path).EnumSubKeys()), "b|C") << path;
        std::int16_t count = 99;
        std::vector<std::string> names{"old"}, data;
        std::vector<std::int32_t> types;
        s.at(path).ListSubKeys(count, names);
        EXPECT_EQ(count, 2);
        EXPECT_EQ(joined(names), "|b|C");
        s.at(path).ListValues(count, names, types, data);
        EXPECT_EQ(count, 3);
        EXPECT_EQ(joined(names), "|z||broken");
        EXPECT_EQ(types, (std::vector<std::int32_t>{0, 4, 2, 4}));
        EXPECT_EQ(joined(data), "|-5|u|01 02");
    }
    EXPECT_EQ(joined(s.at("HKEY_USERS").EnumSubKeys()), s.t.store.currentUserSid());
    EXPECT_TRUE(s.at("HKCU\\Absent\\").EnumSubKeys().empty());
}

TEST(Service, CountsAreOf16Bits) {
    Service s;
    s.t.store.transaction([&] {
        for (int i = 0; i < 32767; ++i) s.t.store.createKey(Root::CurrentUser, "Many\\k" + std::to_string(i));
    });
    std::int16_t count = 0;
    std::vector<std::string> names;
    s.at("HKCU\\Many").ListSubKeys(count, names);
    EXPECT_EQ(count, 32767);
    EXPECT_EQ(names.size(), 32768u);
    s.at("HKCU\\Many\\x\\").WriteValue("", 0);
    EXPECT_EQ(errorOf([&] { s.reg.SetPath("", "HKCU\\Many"), s.reg.ListSubKeys(count, names); }), 6u);
    EXPECT_EQ(s.reg.EnumSubKeys().size(), 32768u);
}

TEST(Service, Machines) {
    Service s;
    TempStore other;
    EXPECT_EQ(s.reg.GetComputerName(), "BRENVIK-PC");
    s.at("HKLM\\System\\CurrentControlSet\\Control\\ComputerName\\ComputerName\\ComputerName").WriteValue("ZUHAUSE", 1);
    EXPECT_EQ(s.reg.GetComputerName(), "ZUHAUSE");
    RegistryTarget far([&]() -> RegStore& { return other.store; }, TargetFiles::none({}));
    s.machines.setFinder([&](const std::string& name) {
        if (name == "ZU") throw RegError(regerr::NoAccess, "zu");
        return name == "FERN" ? &far : nullptr;
    });
    const std::pair<const char*, std::int32_t> codes[] = {{"", 0}, {"zuhause", 0}, {"FERN", 0}, {"ZU", 5}, {"NIRGENDS", 53}};
    for (const auto& [name, code] : codes) EXPECT_EQ(s.reg.ConnectRemote(name, 0x80000002u), code) << name;
    s.at("HKLM\\S\\v", "FERN").WriteValue("there", 1);
    EXPECT_EQ(textOf(other.store, Root::LocalMachine, "S", "v"), "there");
    EXPECT_FALSE(s.at("HKLM\\S\\v", "Zuhause").Exists(1));
    EXPECT_TRUE(s.reg.EnablePrivileges("Zuhause"));
    EXPECT_FALSE(s.reg.EnablePrivileges("NIRGENDS"));
    s.t.store.setValue(Root::LocalMachine, "Software\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList\\S-1-5-21-7", ValueName::named("ProfileImagePath"),
                       fromText("%SystemDrive%\\Dokumente und Einstellungen\\Anna", regtype::ExpandSz));
    EXPECT_EQ(storedUserName(s.t.store, "S-1-5-21-7"), "Anna");
    EXPECT_EQ(storedUserName(s.t.store, "S-1-5-21-8"), "");
}

