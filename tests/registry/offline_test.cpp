// A Windows that is not running, in a folder: which hives it has, where they stand, and that changes arrive in their files.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "TempStore.h"
#include "hive/HiveTestSupport.h"
#include "registry/RegPath.h"
#include "registry/machine/LocalMachines.h"
#include "registry/machine/OfflineWindows.h"
#include "registry/search/Comparison.h"
#include "registry/search/Search.h"
#include "registry/store/MemoryStore.h"
#include "registry/store/RegLinks.h"
#include "registry/store/RegTree.h"
#include "registry/text/RegTextWriter.h"

using namespace brenvik;
using namespace brenvik::test;
namespace fs = std::filesystem;
using hivetest::load;
using Lines = std::vector<std::string>;

namespace {

constexpr const char* Anna = "S-1-5-21-1-2-3-1001";
constexpr const char* Bert = "S-1-5-21-1-2-3-1002";

RawValue expandSz(const std::string& text) { return fromText(text, regtype::ExpandSz); }

// One line for each key and value, with whole paths.
class Listing final : public TreeSink {
public:
    explicit Listing(std::string_view top) : path_(top) {}
    void enter(std::string_view name, const KeyDetails& details) override {
        lengths_.push_back(path_.size());
        if (lengths_.size() > 1) path_ = joinKey(path_, name);
        else if (!path_.empty() && name != lastKeyName(path_)) ADD_FAILURE() << name << " for " << path_;
        key(path_, details);
    }
    void value(std::string_view name, const RawValue& value) override { lines.push_back(path_ + "|" + std::string(name) + "=" + bytesText(value.bytes)); }
    void leave() override {
        path_.resize(lengths_.back());
        lengths_.pop_back();
    }
    void unreadable(std::string_view name, const RegError&) override { lines.push_back(joinKey(path_, name) + " unlesbar"); }
    void key(const std::string& path, const KeyDetails& details) { lines.push_back(path + " " + std::to_string(details.written) + " " + std::to_string(details.descriptor.size())); }
    // The same, key by key.
    void list(RegStore& store, Root root, const std::string& path) {
        const auto details = store.details(root, path);
        if (!details) return;
        key(path, *details);
        for (const NamedValue& v : store.values(root, path)) lines.push_back(path + "|" + v.name.text() + "=" + bytesText(v.value.bytes));
        for (const std::string& child : store.subKeys(root, path)) {
            EXPECT_TRUE(store.keyExists(root, joinKey(path, child))) << joinKey(path, child);
            if (!store.isLink(root, joinKey(path, child))) list(store, root, joinKey(path, child));
        }
    }
    Lines lines;

private:
    std::string path_;
    std::vector<std::size_t> lengths_;
};

void expectWalkLikeKeys(RegStore& store, const std::string& what, std::initializer_list<std::pair<Root, const char*>> tops, std::size_t atLeast) {
    std::size_t count = 0;
    for (const auto& [root, top] : tops) {
        Listing told(top), listed(top);
        store.walk(root, top, told);
        listed.list(store, root, top);
        const auto [t, l] = std::mismatch(told.lines.begin(), told.lines.end(), listed.lines.begin(), listed.lines.end());
        EXPECT_TRUE(t == told.lines.end() && l == listed.lines.end())
            << what << ", " << longRootName(root) << "\\" << top << ": " << (t == told.lines.end() ? "<end>" : *t) << " but " << (l == listed.lines.end() ? "<end>" : *l);
        count += told.lines.size();
    }
    EXPECT_GE(count, atLeast) << what;
}

class OfflineTest : public testing::Test {
protected:
    void SetUp() override { build("WINDOWS/system32/CONFIG", "Dokumente und Einstellungen", "Lokale Einstellungen/Anwendungsdaten/Microsoft/Windows/USRCLASS.DAT"); }

    static void write(const fs::path& file, const Hive& hive) {
        fs::create_directories(file.parent_path());
        hivetest::save(file, writeHive(hive));
    }
    static void profile(Hive& software, const std::string& sid, const std::string& path) {
        software.findPath("Microsoft")->ensure("Windows NT").ensure("CurrentVersion").ensure("ProfileList").ensure(sid).set("ProfileImagePath", expandSz(path));
    }
    static Hive withValue(const std::string& name, const std::string& text) {
        Hive hive;
        hive.root.name = "R";
        hive.root.ensure("Software").set(name, sz(text));
        return hive;
    }

    void build(const std::string& config, const std::string& users, const std::string& classes) {
        Hive software;
        software.minorVersion = 5;
        software.root.ensure("Microsoft").ensure("Windows NT").ensure("CurrentVersion").set("SystemRoot", sz("D:\\WINDOWS"));
        HiveKey& machineClasses = software.root.ensure("Classes").ensure(".txt");
        machineClasses.set("", sz("maschine"));
        machineClasses.set("nur Maschine", sz("m"));
        profile(software, "S-1-5-18", "%systemroot%\\system32\\config\\systemprofile");
        profile(software, Bert, "D:\\" + users + "\\BERT");
        profile(software, Anna, "%SystemDrive%\\" + users + "\\Anna");
        profile(software, "S-1-5-21-1-2-3-1003", "E:\\fort");
        profile(software, "S-1-5-21-1-2-3-1004", "%SystemDrive%\\..\\..\\geheim");
        profile(software, std::string(Anna) + ".bak", "D:\\" + users + "\\Anna");
        write(disk / config / "software", software);

        Hive system;
        system.root.ensure("Select").set("Current", dword(2));
        for (const char* set : {"ControlSet001", "ControlSet002"}) {
            HiveKey& control = system.root.ensure(set);
            control.ensure("Control").ensure("ComputerName").ensure("ComputerName").set("ComputerName", sz(std::string("PC-") + set));
            control.ensure("Control").ensure("IDConfigDB").set("CurrentConfig", dword(12));
            control.ensure("Hardware Profiles").ensure("0012").ensure("System").set("w", sz(set));
        }
        write(disk / config / "SYSTEM", system);
        write(disk / config / "default", withValue("wer", "default"));
        Hive sam;
        sam.root.ensure("SAM");
        write(disk / config / "SAM", sam);

        Hive anna = withValue("wer", "Anna");
        anna.root.ensure("Software").ensure("Classes").ensure("verdeckt").set("", sz("nicht zu erreichen"));
        write(disk / users / "Anna/ntuser.dat", anna);
        Hive userClasses;
        userClasses.root.ensure(".txt").set("", sz("Anna"));
        userClasses.root.ensure(".nur");
        write(disk / users / "Anna" / classes, userClasses);
        Hive bert = withValue("wer", "Bert");
        bert.root.ensure("Software").ensure("Classes").ensure(".bert").set("", sz("b"));
        write(disk / users / "Bert/NTUSER.DAT", bert);
    }
    // All files of the folder, with their bytes.
    std::map<std::string, Bytes> files() const {
        std::map<std::string, Bytes> all;
        for (const auto& entry : fs::recursive_directory_iterator(disk)) {
            if (entry.is_regular_file()) all[fs::relative(entry.path(), disk).string()] = load(entry.path());
        }
        return all;
    }

    TempDir folder;
    const fs::path disk = folder / "c";
};

}  // namespace

TEST_F(OfflineTest, EveryHiveStandsAtItsPlace) {
    const auto before = files();
    OfflineWindows windows(disk);
    EXPECT_EQ(joined(windows.subKeys(Root::LocalMachine, "")), "SAM|Software|System");
    EXPECT_EQ(joined(windows.subKeys(Root::Users, "")),
              std::string(".DEFAULT|S-1-5-18|") + Anna + "|" + Anna + "_Classes|" + Bert);
    EXPECT_EQ(joined(windows.subKeys(Root::LocalMachine, "System")), "ControlSet001|ControlSet002|CurrentControlSet|Select");
    EXPECT_EQ(storedComputerName(windows), "PC-ControlSet002");
    const struct {
        Root root;
        std::string key, name, expected;
    } cases[] = {
        {Root::CurrentUser, "Software", "wer", "Anna"},
        {Root::Users, std::string(Bert) + "\\SOFTWARE", "wer", "Bert"},
        {Root::Users, ".Default\\Software", "wer", "default"},
        {Root::Users, "S-1-5-18\\Software", "wer", "default"},
        {Root::CurrentConfig, "System", "w", "ControlSet002"},
        {Root::LocalMachine, "SYSTEM\\currentcontrolset\\Hardware Profiles\\0012\\System", "w", "ControlSet002"},
        {Root::ClassesRoot, ".txt", "", "Anna"},
        {Root::ClassesRoot, ".txt", "nur Maschine", "m"},
        {Root::CurrentUser, "Software\\Classes\\.txt", "", "Anna"},
        {Root::Users, std::string(Anna) + "_Classes\\.txt", "", "Anna"},
        {Root::DynData, "Software", "wer", "<none>"},
    };
    for (const auto& c : cases) EXPECT_EQ(textOf(windows, c.root, c.key, c.name), c.expected) << c.key;
    EXPECT_EQ(joined(windows.subKeys(Root::ClassesRoot, "")), ".nur|.txt");
    const struct {
        Root root;
        std::string key;
        RealKey real;
    } places[] = {{Root::CurrentUser, "Software", {Root::Users, std::string(Anna) + "\\Software"}},
                  {Root::Users, "S-1-5-18\\Software", {Root::Users, ".DEFAULT\\Software"}},
                  {Root::CurrentConfig, "System", {Root::LocalMachine, "System\\ControlSet002\\Hardware Profiles\\0012\\System"}},
                  {Root::ClassesRoot, ".txt", {Root::Users, std::string(Anna) + "_Classes\\.txt"}},
                  {Root::CurrentUser, "Software\\Classes\\.neu", {Root::Users, std::string(Anna) + "_Classes\\.neu"}},
                  {Root::ClassesRoot, ".neu", {Root::LocalMachine, "Software\\Classes\\.neu"}},
                  {Root::DynData, "x", {Root::DynData, "x"}}};
    for (const auto& c : places) {
        EXPECT_EQ(windows.realKey(c.root, c.key).key, c.real.key);
        EXPECT_EQ(windows.realKey(c.root, c.key).root, c.real.root) << c.key;
        EXPECT_EQ(windows.realKey(c.real.root, c.real.key), c.real) << c.key;
    }

    std::string users;
    for (const TargetProfile& p : windows.profiles()) users += p.userName + (p.missing.empty() ? " " : "- ");
    EXPECT_EQ(users, "Anna BERT fort- geheim- ");
    EXPECT_FALSE(windows.userIsPlain());
    EXPECT_TRUE(windows.chooseUser("bert"));
    EXPECT_TRUE(windows.userIsPlain());
    EXPECT_FALSE(windows.chooseUser("S-1-5-21-1-2-3-1003"));
    EXPECT_EQ(textOf(windows, Root::CurrentUser, "Software", "wer"), "Bert");
    EXPECT_EQ(textOf(windows, Root::ClassesRoot, ".bert", ""), "b");
    EXPECT_EQ(windows.notes().size(), 3u);   // SECURITY, the profile of another drive, the one outside of the folder
    EXPECT_EQ(files(), before);
    EXPECT_EQ(joined(OfflineWindows(disk / "WINDOWS").subKeys(Root::Users, "")), joined(windows.subKeys(Root::Users, "")));
}

// On every store a walk tells the keys that the single questions name, under the same names.
TEST_F(OfflineTest, AWalkTellsWhatTheKeysName) {
    TempStore embedded;
    MemoryStore memory;
    for (RegStore* const store : {static_cast<RegStore*>(&embedded.store), static_cast<RegStore*>(&memory)}) {
        for (const char* key : {"System\\ControlSet002\\Control", "System\\CurrentControlSetX", "Software\\Classes\\.txt\\Shell", "Software\\Z"})
            store->setValue(Root::LocalMachine, key, ValueName::named("v"), sz(key));
        store->setValue(Root::LocalMachine, "System\\Select", ValueName::named("Current"), dword(2));
        for (const char* key : {"Software\\Classes\\.TXT\\Open", "Software\\Classes\\.own"}) store->setValue(Root::CurrentUser, key, ValueName::named("v"), sz(key));
        store->createKey(Root::Users, ".DEFAULT\\Software");
    }
    const auto everything = {std::pair{Root::LocalMachine, ""}, {Root::LocalMachine, "System"}, {Root::LocalMachine, "SYSTEM\\CurrentControlSet"},
                             {Root::Users, ""}, {Root::CurrentUser, ""}, {Root::CurrentUser, "Software"}, {Root::CurrentUser, "Software\\Classes"},
                             {Root::ClassesRoot, ""}, {Root::CurrentConfig, ""}, {Root::DynData, ""}};
    expectWalkLikeKeys(embedded.store, "embedded", everything, 40);
    expectWalkLikeKeys(memory, "memory", everything, 20);
    OfflineWindows windows(disk);
    expectWalkLikeKeys(windows, "mounted", everything, 80);
    for (const char* top : {"S-1-5-18", Anna, Bert}) expectWalkLikeKeys(windows, top, {{Root::Users, top}}, 3);
    EXPECT_EQ(joined(windows.subKeys(Root::CurrentUser, "Software")), "Classes");
    EXPECT_EQ(joined(windows.linksOut(Root::CurrentUser, "")), "Software\\Classes");
    EXPECT_EQ(joined(windows.linksOut(Root::Users, std::string(Anna) + "\\SOFTWARE")), std::string(Anna) + "\\Software\\Classes");
    // So does a comparison: each difference once, under its own name.
    TempDir dir;
    fs::copy(disk, dir / "b", fs::copy_options::recursive);
    OfflineWindows changed(dir / "b");
    changed.chooseUser(Anna);
    changed.createKey(Root::Users, ".DEFAULT\\Neu");
    changed.createKey(Root::Users, std::string(Anna) + "\\Software\\Classes\\.neu");
    changed.createKey(Root::LocalMachine, "System\\CurrentControlSet\\Neu");
    Lines told;
    const auto tell = [&](const Difference& difference) { told.push_back(difference.key); };
    for (const Root root : {Root::Users, Root::CurrentUser, Root::LocalMachine}) compare({&windows, root, ""}, {&changed, root, ""}, tell);
    EXPECT_EQ(joined(told), ".DEFAULT\\Neu|" + std::string(Anna) + "_Classes\\.neu|Software\\Classes\\.neu|System\\ControlSet002\\Neu");
    EXPECT_EQ(joined(windows.linksOut(Root::Users, Bert)) + joined(windows.linksOut(Root::Users, "")) + joined(windows.linksOut(Root::LocalMachine, "")), "");
    const auto single = openHiveFile(disk / "WINDOWS/system32/CONFIG/SYSTEM");
    expectWalkLikeKeys(*single, "one hive", {{Root::LocalMachine, ""}, {Root::LocalMachine, "Select"}}, 20);
}

TEST_F(OfflineTest, AWalkOfGenuineHivesToo) {
    if (hivetest::genuineFolder().empty()) GTEST_SKIP() << "BRENVIK_TESTDATA is not set";
    const std::string archive = (hivetest::genuineFolder() / "windows-folder.tar.xz").string();
    ASSERT_EQ(std::system(("tar -xJf '" + archive + "' -C '" + folder.path().string() + "' --no-same-permissions --no-same-owner").c_str()), 0);
    OfflineWindows windows(folder.path());
    ASSERT_FALSE(windows.currentUserSid().empty());
    expectWalkLikeKeys(windows, "genuine", {{Root::LocalMachine, "Software"}, {Root::LocalMachine, "Security"}, {Root::Users, ".DEFAULT"}}, 5000);
    expectWalkLikeKeys(windows, "genuine user", {{Root::Users, windows.currentUserSid().c_str()}}, 1000);
    // Into one store and out again: nothing of one user falls into another's place.
    MemoryStore copy;
    copyTree(windows, Root::Users, "", copy, Root::Users, "");
    EXPECT_EQ(copy.subKeys(Root::Users, "").size(), windows.subKeys(Root::Users, "").size() - 1);   // S-1-5-18 is .DEFAULT
}

TEST_F(OfflineTest, ADamagedHiveIsPassedOver) {
    hivetest::save(disk / "Dokumente und Einstellungen/Bert/NTUSER.DAT", Bytes(5000, 7));
    OfflineWindows windows(disk);
    std::string hits, trouble;
    const auto pattern = makeTextMuster("wer");
    SearchTarget target{[&](const Hits& hit) { hits += std::string(hit.key) + ";"; }, {}, {}, {}};
    EXPECT_EQ(errorOf([&] { suchen(windows, Root::Users, "", *pattern, {}, target); }), 0x80040208u);
    hits.clear();
    target.unreadable = [&](std::string_view key, const RegError&) { trouble += std::string(key) + ";"; };
    suchen(windows, Root::Users, "", *pattern, {}, target);
    EXPECT_EQ(hits, std::string(".DEFAULT\\Software;") + Anna + "\\Software;");
    EXPECT_EQ(trouble, std::string(Bert) + ";");
    RegTextWriter writer(RegTextWriter::Format::Regedit4);
    writer.tree(windows, Root::Users, "");
    EXPECT_EQ(writer.unreadable(), 1u);
    const std::string text = writer.bytes();
    EXPECT_NE(text.find(std::string("; Nicht lesbar und ausgelassen: HKEY_USERS\\") + Bert + "\r\n"), std::string::npos);
    EXPECT_NE(text.find(std::string("[HKEY_USERS\\") + Anna + "_Classes\\.nur]"), std::string::npos);
    EXPECT_EQ(errorOf([&] { copyTree(windows, Root::Users, "", windows, Root::CurrentUser, "Kopie"); }), 0x80040208u);
}

TEST_F(OfflineTest, ChangesArriveInTheirFilesOnly) {
    auto expected = files();
    const std::string annasFile = "Dokumente und Einstellungen/Anna/ntuser.dat", software = "WINDOWS/system32/CONFIG/software";
    OfflineWindows windows(disk);
    EXPECT_TRUE(windows.chooseUser("anna"));
    windows.transaction([&] {
        windows.setValue(Root::CurrentUser, "Control Panel\\Desktop", ValueName::named("MenuShowDelay"), sz("200"));
        windows.setValue(Root::LocalMachine, "Software\\Neu", ValueName::unnamed(), sz("x"));
        windows.setValue(Root::ClassesRoot, ".txt", ValueName::named("a"), sz("bei Anna"));
        windows.setValue(Root::ClassesRoot, ".neu", ValueName::unnamed(), sz("bei allen"));
    });
    const std::string classes = "Dokumente und Einstellungen/Anna/Lokale Einstellungen/Anwendungsdaten/Microsoft/Windows/USRCLASS.DAT";
    auto now = files();
    for (const std::string& changed : {annasFile, software, classes}) {
        EXPECT_EQ(hivetest::lines(checkHive(now.at(changed))), Lines()) << changed;
        EXPECT_EQ(now.at(changed + ".bvk"), expected.at(changed)) << changed;
        for (auto* map : {&now, &expected}) map->erase(changed), map->erase(changed + ".bvk");
    }
    EXPECT_EQ(now, expected);

    OfflineWindows again(disk);
    EXPECT_EQ(textOf(again, Root::Users, std::string(Anna) + "\\Control Panel\\Desktop", "menushowdelay"), "200");
    EXPECT_EQ(textOf(again, Root::LocalMachine, "Software\\Neu", ""), "x");
    EXPECT_EQ(textOf(again, Root::Users, std::string(Anna) + "_Classes\\.txt", "a"), "bei Anna");
    EXPECT_EQ(textOf(again, Root::LocalMachine, "Software\\Classes\\.neu", ""), "bei allen");
    EXPECT_EQ(errorOf([&] { again.setValue(Root::LocalMachine, "Hardware\\X", ValueName::unnamed(), sz("")); }), 0x80040204u);
    EXPECT_EQ(errorOf([&] { again.createKey(Root::Users, "S-1-5-21-9"); }), 0x80040204u);
    EXPECT_FALSE(again.deleteKey(Root::LocalMachine, "System\\CurrentControlSet"));
    EXPECT_FALSE(again.deleteKey(Root::LocalMachine, "SAM"));
}

// Whose HKCU it is: nobody writes into a user's registry by chance, and what is not there is no empty registry.
TEST_F(OfflineTest, OneOfSeveralUsersIsWrittenWhenThatIsWanted) {
    auto expected = files();
    std::vector<std::string> asked;
    MountedWindows target(disk);
    bool yes = false;
    target.setAsk([&](const std::string& question) {
        asked.push_back(question);
        return yes;
    });
    RegStore& store = target.store();
    EXPECT_EQ(target.notes().back(), "HKEY_CURRENT_USER ist hier das Profil von Anna (" + std::string(Anna) + "); weitere Benutzer: BERT, fort, geheim. Mit --user wird eines gewählt.");
    const auto set = [&](Root root, const std::string& key) { store.setValue(root, key, ValueName::named("neu"), sz("x")); };
    for (const std::string& key : {std::string("Software"), std::string("Software\\Classes\\.txt")}) EXPECT_EQ(errorOf([&] { set(Root::CurrentUser, key); }), 0x80040204u) << key;
    EXPECT_EQ(errorOf([&] { set(Root::Users, std::string(Anna) + "\\Software"); }), 0x80040204u);
    EXPECT_EQ(asked.size(), 3u);
    EXPECT_EQ(files(), expected);
    set(Root::LocalMachine, "Software");   // of no user
    set(Root::Users, std::string(Bert) + "\\Software");
    EXPECT_EQ(asked.size(), 3u);
    yes = true;
    set(Root::CurrentUser, "Software"), set(Root::CurrentUser, "Software");
    EXPECT_EQ(asked.size(), 4u);           // once is enough
    EXPECT_EQ(textOf(store, Root::Users, std::string(Anna) + "\\Software", "neu"), "x");

    fs::rename(disk / "Dokumente und Einstellungen/Anna", disk / "Dokumente und Einstellungen/Umbenannt");
    MountedWindows renamed(disk);
    EXPECT_EQ(renamed.profile(), Bert);
    EXPECT_EQ(errorOf([&] { renamed.store().setValue(Root::CurrentUser, "Software", ValueName::named("y"), sz("x")); }), 0x80040204u);   // nobody to ask
    EXPECT_EQ(errorOf([&] { renamed.store().value(Root::Users, Anna, ValueName::named("wer")); }), 0x80040208u);
    EXPECT_EQ(errorOf([&] { renamed.store().subKeys(Root::LocalMachine, "SECURITY"); }), 0x80040208u);
    EXPECT_FALSE(renamed.chooseProfile("Anna"));
    EXPECT_TRUE(renamed.chooseProfile(Bert));
    renamed.store().setValue(Root::CurrentUser, "Software", ValueName::named("y"), sz("x"));
}

// Its files are those of its drive, whatever letter that has.
TEST_F(OfflineTest, ItsFilesAreThoseOfItsDrive) {
    MountedWindows target(disk);
    fs::create_directories(disk / "Daten");
    hivetest::save(disk / "Daten/Boot.INI", Bytes(3, 'x'));
    fs::create_symlink("/etc", disk / "hinaus");
    const TargetFiles& files = target.files();
    EXPECT_EQ(files.windowsFolder(), "D:\\WINDOWS");
    EXPECT_EQ(files.find("d:\\DATEN\\boot.ini"), fs::canonical(disk) / "Daten/Boot.INI");
    EXPECT_EQ(files.find("win.ini"), fs::canonical(disk) / "WINDOWS/win.ini");
    EXPECT_FALSE(files.exists("C:\\Daten\\boot.ini"));   // another drive of that machine
    EXPECT_FALSE(files.exists("D:\\hinaus\\passwd"));
    EXPECT_EQ(target.version().dwPlatformId, 0u);
}

TEST_F(OfflineTest, ADamagedHiveLeavesTheOthersReadable) {
    hivetest::save(disk / "WINDOWS/system32/CONFIG/SYSTEM", Bytes(5000, 7));
    hivetest::save(disk / "WINDOWS/system32/CONFIG/software", Bytes(5000, 7));
    OfflineWindows without(disk);
    EXPECT_TRUE(without.profiles().empty());
    EXPECT_EQ(errorOf([&] { without.value(Root::CurrentUser, "Software", ValueName::named("wer")); }), 0x80040208u);
    EXPECT_EQ(without.notes().size(), 2u);
    EXPECT_EQ(textOf(without, Root::Users, ".DEFAULT\\Software", "wer"), "default");
}
