// Registry files of the 9x family: what is read, what a change does to the bytes, what is refused, and what strangers read then.
#include <algorithm>
#include <random>
#include <set>
#include <sstream>

#include "CregSeed.h"
#include "hive/HiveTestSupport.h"
#include "registry/creg/CregChecker.h"
#include "registry/creg/CregReader.h"

using namespace brenvik;
using namespace brenvik::hivetest;
using namespace brenvik::cregfmt;

namespace {

Hive treeOf(const Bytes& file) { return readCreg(file).hive; }
Bytes changed(const Bytes& file, const std::function<void(HiveKey&)>& change) {
    Hive hive = treeOf(file);
    change(hive.root);
    return writeCreg(file, hive, Western);
}
HiveKey& at(HiveKey& key, const std::string& path) { return path.empty() ? key : at(key.ensure(path.substr(0, path.find('\\'))), path.find('\\') == std::string::npos ? "" : path.substr(path.find('\\') + 1)); }

Bytes sample(std::uint16_t sums) {
    return changed(emptyCreg(sums), [](HiveKey& root) {
        HiveKey& key = at(root, "Software\\Brenvik");
        key.set("", fromText("Standard", regtype::Sz));
        key.set("Zahl", {regtype::Dword, {1, 0, 0, 0}});
        key.set("Gr\xC3\xB6\xC3\x9F" "e", fromText("\xC3\xA4\xE2\x82\xAC", regtype::Sz));
        key.set("Pfad", fromText("%windir%\\a", regtype::ExpandSz));
        key.set("Bytes", {regtype::Binary, pattern(700, 3)});
        key.set("Fremd", {0x80000007, {9}});
        at(root, "System\\Eins");
        at(root, "System\\Zwei");
    });
}

std::size_t differing(const Bytes& l, const Bytes& r) {
    std::size_t count = l.size() == r.size() ? 0 : 1000;
    for (std::size_t i = 0; i < std::min(l.size(), r.size()); ++i) count += l[i] != r[i];
    return count;
}

std::string failure(const std::function<void()>& work) {
    try {
        work();
    } catch (const RegError& error) {
        return error.what();
    }
    return {};
}

// The form in which the judges tell a file.
void tell(const HiveKey& key, const std::string& path, std::set<std::string>& lines) {
    const auto name = [](const std::string& text) { return hex(cregValueName(text, Western)); };
    lines.insert("K " + path);
    for (const HiveValue& v : key.values) lines.insert("V " + path + "|" + name(v.name) + "|" + std::to_string(v.data.type) + "|" + hex(cregBytes(v.data, Western)));
    for (const HiveKey& child : key.subKeys) tell(child, path + (path.empty() ? "" : "5c") + name(child.name), lines);
}

void expectJudges(const Bytes& file, const std::string& what) {
    const test::TempDir folder;
    save(folder.path() / "f", file);
    std::set<std::string> ours;
    tell(treeOf(file).root, "", ours);
    for (const char* judge : {"/usr/bin/python3 '" BRENVIK_SOURCE_DIR "/tests/registry/creg/judge.py' ", "perl '" BRENVIK_SOURCE_DIR "/tests/registry/creg/judge.pl' "}) {
        FILE* const pipe = popen((judge + ("'" + (folder.path() / "f").string() + "' 2>/dev/null")).c_str(), "r");
        std::string text(1 << 16, 0);
        std::ostringstream all;
        for (std::size_t n; (n = fread(text.data(), 1, text.size(), pipe)) > 0;) all << text.substr(0, n);
        ASSERT_EQ(pclose(pipe), 0) << what << ": " << judge;
        std::set<std::string> theirs;
        std::istringstream in(all.str());
        for (std::string line; std::getline(in, line);) theirs.insert(line);
        EXPECT_TRUE(ours == theirs) << what << ": " << judge << ours.size() << " and " << theirs.size() << " lines";
    }
}

bool judgesInstalled() { return std::system("/usr/bin/python3 -c 'import pycreg' 2>/dev/null && perl -MParse::Win32Registry -e 1 2>/dev/null") == 0; }

// One random change to the tree; big enough values make every way of finding room be taken.
void mutate(HiveKey& root, std::mt19937& random) {
    const auto upTo = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    HiveKey* key = &root;
    for (std::size_t depth = upTo(4); depth > 0 && !key->subKeys.empty(); --depth) key = &key->subKeys[upTo(key->subKeys.size())];
    const std::size_t kind = upTo(10);
    if (kind < 3 || key == &root) {
        for (std::size_t n = 1 + upTo(kind == 0 ? 60 : 3); n > 0; --n) key->ensure(std::string(1 + upTo(12), static_cast<char>('a' + upTo(26))) + (upTo(3) == 0 ? "" : std::to_string(upTo(500))));
    } else if (kind == 3) {
        if (!key->subKeys.empty()) key->subKeys.erase(key->subKeys.begin() + static_cast<std::ptrdiff_t>(upTo(key->subKeys.size())));
    } else if (kind == 4 && !key->values.empty()) {
        key->values.erase(key->values.begin() + static_cast<std::ptrdiff_t>(upTo(key->values.size())));
    } else {
        const std::size_t size = upTo(20) == 0 ? upTo(9000) : upTo(60);
        RawValue value = upTo(2) == 0 ? fromText(std::string(size, 'x') + "\xC3\xBC", regtype::Sz) : RawValue{static_cast<std::uint32_t>(3 + upTo(2)), pattern(size, static_cast<unsigned>(size))};
        key->set(upTo(5) == 0 ? "" : "W" + std::to_string(upTo(6)), value);
    }
}

}  // namespace

TEST(Creg, SmallChangesChangeFewBytesAndGoBack) {
    for (const std::uint16_t sums : {std::uint16_t{0}, checksumValid}) {
        const Bytes file = sample(sums);
        EXPECT_EQ(lines(checkCreg(file)), std::vector<std::string>());
        EXPECT_EQ(writeCreg(file, treeOf(file), Western), file);
        const auto number = [](std::uint8_t n) { return [n](HiveKey& root) { at(root, "Software\\Brenvik").set("Zahl", {regtype::Dword, {n, n, n, n}}); }; };
        const Bytes other = changed(file, number(0x7E));
        EXPECT_LE(differing(file, other), sums == 0 ? 4u : 8u);
        EXPECT_EQ(changed(other, [](HiveKey& root) { at(root, "Software\\Brenvik").set("Zahl", {regtype::Dword, {1, 0, 0, 0}}); }), file);
        const Hive tree = treeOf(file);
        EXPECT_EQ(toText(tree.findPath("software\\brenvik")->value("gr\xC3\xB6\xC3\x9F" "e")->data), "\xC3\xA4\xE2\x82\xAC");
    }
}

TEST(Creg, RandomChangesKeepEveryRuleAndTheTree) {
    for (const unsigned seed : {1u, 2u, 3u}) {
        std::mt19937 random(seed);
        Bytes file = emptyCreg(seed % 2 == 0 ? checksumValid : 0, seed == 3 ? 4096 : 8192);
        for (int i = 0; i < 70; ++i) {
            Hive wanted = treeOf(file);
            mutate(wanted.root, random);
            file = writeCreg(file, wanted, Western);
            ASSERT_EQ(lines(checkCreg(file)), std::vector<std::string>()) << seed << " " << i;
            std::set<std::string> now, expected;
            tell(treeOf(file).root, "", now);
            tell(wanted.root, "", expected);
            ASSERT_EQ(now, expected) << seed << " " << i;
        }
        if (judgesInstalled()) expectJudges(file, std::to_string(seed));
    }
}

TEST(Creg, TheGivenFolderReadsAsTheJudgesDo) {
    const auto archive = genuineFolder().parent_path() / "creg" / "windows98.tar.xz";
    if (!std::filesystem::exists(archive) || !judgesInstalled()) GTEST_SKIP() << "no files or no judges";
    const test::TempDir folder;
    ASSERT_EQ(std::system(("tar xJf '" + archive.string() + "' -C '" + folder.path().string() + "'").c_str()), 0);
    for (const char* name : {"SYSTEM.DAT", "USER.DAT", "Profiles/anna/USER.DAT"}) {
        const Bytes file = load(folder.path() / "WINDOWS" / name);
        EXPECT_EQ(lines(checkCreg(file)), std::vector<std::string>()) << name;
        EXPECT_EQ(writeCreg(file, treeOf(file), Western), file) << name;
        expectJudges(file, name);
    }
}

TEST(Creg, ManyKeysAndFullKeys) {
    const Bytes file = sample(checksumValid);
    const Bytes many = changed(file, [](HiveKey& root) {
        for (int i = 0; i < 6000; ++i) at(root, "System").ensure("Taste" + std::to_string(i));
    });
    const Bytes fewer = changed(many, [](HiveKey& root) { at(root, "System").subKeys.resize(7); });
    const Bytes full = changed(file, [](HiveKey& root) {
        for (const char* name : {"1", "2", "3"}) at(root, "Voll").set(name, {regtype::Binary, pattern(16000, 1)});
    });
    for (const Bytes& grown : {many, fewer, full}) {
        EXPECT_EQ(lines(checkCreg(grown)), std::vector<std::string>());
        if (judgesInstalled()) expectJudges(grown, "grown");
    }
    const struct {
        const char* what;
        std::function<void(HiveKey&)> change;
        CregCodepage codepage = Western;
    } refused[] = {
        {"a fourth value", [](HiveKey& root) { at(root, "Voll").set("4", {regtype::Binary, pattern(16000, 1)}); }},
        {"a value too large", [](HiveKey& root) { at(root, "Voll").set("1", {regtype::Binary, Bytes(16301)}); }},
        {"a long value name", [](HiveKey& root) { at(root, "Voll").set(std::string(256, 'n'), {regtype::Binary, {}}); }},
        {"a long key name", [](HiveKey& root) { root.ensure(std::string(256, 'n')); }},
        {"a key beyond ASCII", [](HiveKey& root) { root.ensure("\xC3\xA4"); }},
        {"a value of the root", [](HiveKey& root) { root.set("x", {regtype::Dword, {1, 0, 0, 0}}); }},
        {"a character that the code page lacks", [](HiveKey& root) { at(root, "Voll").set("t", fromText("\xD0\x96", regtype::Sz)); }},
        {"half a character", [](HiveKey& root) { at(root, "Voll").set("t", {regtype::Sz, {65, 0, 65}}); }},
        {"a text in another code page", [](HiveKey& root) { at(root, "Voll").set("t", fromText("a", regtype::Sz)); }, {1251}},
        {"a text in an unknown code page", [](HiveKey& root) { at(root, "Voll").set("t", fromText("\xC3\xA4", regtype::Sz)); }, {0}},
    };
    for (const auto& [what, change, codepage] : refused) {
        Hive wanted = treeOf(full);
        change(wanted.root);
        EXPECT_NE(failure([&, &page = codepage] { writeCreg(full, wanted, page); }), "") << what;
    }
    Hive wanted = treeOf(full);
    at(wanted.root, "Voll").set("t", fromText("a", regtype::Sz));
    EXPECT_EQ(failure([&] { writeCreg(full, wanted, {0}); }), "");
    at(wanted.root, "Voll").eraseValue("t");
    at(wanted.root, "Voll").set("d", {regtype::Dword, {1, 2, 3, 4}});
    EXPECT_EQ(failure([&] { writeCreg(full, wanted, {1251}); }), "");
}

TEST(Creg, EveryBrokenRuleIsNamedAndNothingIsWritten) {
    const Bytes good = sample(checksumValid);
    const std::size_t t = cregfmt::headerSize, b = t + get32(good.data() + t + table::Size), r = b + block::headerSize;
    const std::size_t top = t + table::root, first = t + get32(good.data() + top + slot::Child), hole = t + get32(good.data() + t + table::FirstFree);
    const std::size_t free = b + get32(good.data() + b + block::FirstFree);
    const struct {
        std::size_t place;
        std::uint32_t bits;   // of the number there
        const char* named;
    } rules[] = {
        {header::Version, 1, "Versionsnummer"}, {header::FirstBlock, 4, "schließt nicht"}, {header::Checksum, 1, "Dateikopfs stimmt"}, {header::Blocks, 2, "Hier fehlt ein Block"},
        {header::Flags, 0x40, "unbekannte Kennzeichen"}, {header::Minor, 1, "unbekannte Werte"}, {header::Reserved, 1, "nicht leer"},
        {t + table::Size, 16, "fehlt ein Block"}, {t + table::Root, 0x1C, "nicht am Anfang"}, {t + table::FirstFree, 0x2000, "führt aus"}, {t + table::FirstFree, 4, "führt aus"},
        {t + table::Flags, 0x10, "Schlüsseltabelle hat unbekannte"}, {t + table::Checksum, 1, "Schlüsseltabelle stimmt nicht"},
        {hole, 1, "nicht als frei"}, {hole + slot::FreeSize, 4, "Größe eines freien"}, {hole + slot::NextFree, 0xFFFFFFFF ^ table::root, "schon vergeben"},
        {first, 0x80000000, "als frei gekennzeichnet"}, {first + slot::Parent, 0x40, "verweist nicht"}, {first + slot::Child, 0x10, "kommt zweimal vor"},
        {first + slot::Next, 0xFFFFFFFF, "kommt zweimal vor"}, {first + slot::Id, 0x80, "Datensatz dieses Schlüssels fehlt"}, {top + slot::Next, 0xFFFF, "steht ein weiterer"},
        {b, 1, "fehlt ein Block"}, {b + block::Size, 4, "Block"}, {b + block::FreeBytes, 4, "freien Bytes"}, {b + block::Flags, 0x100, "Block hat unbekannte"},
        {b + block::Number, 1, "Nummer des Blocks"}, {b + block::FirstFree, 4, "freien Datensätze"}, {b + block::HighestId, 0x7, "größte Nummer"},
        {b + block::LowestFreeId, 1, "kleinste freie"}, {b + block::Checksum, 1, "Blocks stimmt nicht"},
        {r, 0x80000000, "Größe des Datensatzes"}, {r + record::Id, 1, "dieselbe Nummer"}, {r + record::Block, 1, "Blocknummer"}, {r + record::Used, 1, "benutzte Größe"},
        {r + record::NameSize, 0x4000, "ragt über"}, {r + record::Values, 1, "ragt über"}, {free + record::Used, 0xFFFFFFFF ^ 0x20, "freien Datensätze"}, {free + record::Block, 1, "falsch gekennzeichnet"},
    };
    for (const auto& [place, bits, named] : rules) {
        Bytes bad = good;
        put32(bad.data() + place, get32(bad.data() + place) ^ bits);
        const std::vector<HiveFinding> found = checkCreg(bad);
        EXPECT_TRUE(std::any_of(found.begin(), found.end(), [&, &text = named](const HiveFinding& f) { return f.fault && f.text.find(text) != std::string::npos; }))
            << place << " " << named << ": " << testing::PrintToString(lines(found));
        Hive wanted = treeOf(good);
        EXPECT_NE(failure([&] { writeCreg(bad, wanted, Western); }), "") << named;
    }
    Bytes longer = good, damaged = sample(0);
    longer.push_back(0);
    EXPECT_NE(whyNotWritten(longer), "");
    damaged[first + slot::Hash] ^= 1;   // of one key only: its neighbours can be written
    EXPECT_EQ(whyNotWritten(damaged), "");
    const std::string name = treeOf(damaged).findPath("Software") != nullptr ? cregName(ByteSpan(damaged).subspan(r + record::headerSize, 8)) : "";
    EXPECT_NE(failure([&] { changed(damaged, [&](HiveKey& root) { at(root, name + "\\Neu"); }); }), "") << name;
    EXPECT_NE(failure([&] { changed(damaged, [&](HiveKey& root) { root.erase(name); }); }), "");
    EXPECT_EQ(failure([&] { changed(damaged, [&](HiveKey& root) { at(root, "Neu"); }); }), "");
}

TEST(Creg, HostileBytesAreReadOrRefused) {
    const Bytes good = sample(0);
    std::mt19937 random(7);
    for (int i = 0; i < 4000; ++i) {
        Bytes bad(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(i % 4 == 0 ? random() % good.size() : good.size()));
        for (std::size_t n = random() % 6 + 1; n > 0 && !bad.empty(); --n) {
            const std::size_t place = std::min<std::size_t>(bad.size() - 1, random() % 3 == 0 ? random() % bad.size() : random() % 3 == 0 ? random() % 64 : 8224 + random() % 300);
            bad[place] = random() % 2 == 0 ? 0xFF : static_cast<std::uint8_t>(random());
        }
        const bool sound = whyNotWritten(bad).empty();
        for (const HiveMode mode : {HiveMode::Strict, HiveMode::Salvage}) {
            const std::string why = failure([&] { readCreg(bad, mode); });
            EXPECT_TRUE(why.empty() || !sound) << i << why;
        }
    }
}
