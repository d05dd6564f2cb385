// What we write reads back unit for unit and byte for byte, and is laid out as Windows wants it.
#include <functional>

#include "HiveTestSupport.h"

namespace brenvik {
namespace {

using namespace hivetest;
using namespace hivefmt;

TEST(HiveWriter, EverythingComesBackInBothVersions) {
    for (const std::uint32_t minor : {3u, 5u}) {
        for (const int many : {0, 1, 500, 501, 5003}) {
            SCOPED_TRACE(std::to_string(minor) + " " + std::to_string(many));
            const Hive hive = sampleHive(minor, many);
            const Bytes file = writeHive(hive);
            EXPECT_EQ(lines(checkHive(file)), std::vector<std::string>());
            const Hive again = readHive(file).hive;
            EXPECT_EQ(dump(again), dump(hive));
            EXPECT_EQ(again.minorVersion, minor);
            EXPECT_EQ(again.sequence, hive.sequence + 1);
            EXPECT_EQ(again.lastWritten, hive.lastWritten);
            EXPECT_EQ(writeHive(again).size(), file.size());
        }
    }
}

std::size_t cellsWith(const Bytes& file, const char* signature) {
    std::size_t found = 0;
    for (std::size_t at = headerSize; at + 8 <= file.size(); at += 8) {
        if (file[at + 3] >= 0x80 && file[at + 4] == signature[0] && file[at + 5] == signature[1]) ++found;
    }
    return found;
}

TEST(HiveWriter, UsesTheListsAndCellsOfEachVersion) {
    const Bytes old = writeHive(sampleHive(3)), recent = writeHive(sampleHive(5));
    const auto cells = [](const Bytes& file) {
        std::vector<std::size_t> counts;
        for (const char* signature : {"lf", "lh", "li", "ri", "db", "sk"}) counts.push_back(cellsWith(file, signature));
        return counts;
    };
    EXPECT_EQ(cells(old), (std::vector<std::size_t>{2, 0, 2, 1, 0, 2}));
    EXPECT_EQ(cells(recent), (std::vector<std::size_t>{0, 4, 0, 1, 4, 2}));
}

TEST(HiveWriter, HashesAreThoseOfTheUpperCasedUnits) {
    const auto hash = [](std::string_view bytes, bool latin1) {
        return nameHash({{reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, latin1});
    };
    EXPECT_EQ(hash("ab", true), 65u * 37 + 66);
    EXPECT_EQ(hash("AB", true), hash("ab", true));
    EXPECT_EQ(hash("\xE4", true), 0xC4u);
    EXPECT_EQ(hash("\xDF", true), 0xDFu);
    EXPECT_EQ(hash("\xFF", true), 0x178u);
    EXPECT_EQ(hash(std::string_view("\x36\x04\x61\0", 4), false), 0x416u * 37 + 65);
}

TEST(HiveWriter, UnknownHeaderFieldsAreKept) {
    Hive hive = sampleHive(5, 1);
    hive.header = Bytes(headerSize);
    hive.header[112] = 0xAB;
    hive.header[4090] = 0xCD;
    HiveWriteOptions options;
    options.fileName = "C:\\Dokumente und Einstellungen\\Brenvik\\ntuser.dat";
    options.lastWritten = 0x01D0000000000001;
    const Bytes file = writeHive(hive, options);
    EXPECT_EQ(file[112], 0xAB);
    EXPECT_EQ(file[4090], 0xCD);
    std::string name;
    for (std::size_t i = header::FileName; file[i] != 0; i += 2) name += static_cast<char>(file[i]);
    EXPECT_EQ(name, "instellungen\\Brenvik\\ntuser.dat");
    EXPECT_EQ(readHive(file).hive.lastWritten, options.lastWritten);
}

TEST(HiveWriter, KeysWithoutDescriptorGetOneFromAbove) {
    Hive hive;
    hive.root.name = "r";
    hive.root.ensure("a").ensure("b");
    const std::uint32_t own = [&] {
        Bytes descriptor = defaultDescriptor();
        descriptor[2] = 0x14;
        return hive.addDescriptor(descriptor);
    }();
    hive.root.ensure("c").security = own;
    hive.root.ensure("c").ensure("d").security = HiveKey::NoSecurity;
    const Bytes file = writeHive(hive);
    EXPECT_EQ(lines(checkHive(file)), std::vector<std::string>());
    const Hive again = readHive(file).hive;
    EXPECT_EQ(again.descriptors.at(again.findPath("A\\B")->security), defaultDescriptor());
    EXPECT_EQ(again.findPath("c\\d")->security, again.findPath("c")->security);
    EXPECT_EQ(again.descriptors.size(), 2u);
}

TEST(HiveWriter, PredefinedKeysKeepTheirHandle) {
    Hive hive = sampleHive(5, 1);
    HiveKey& key = hive.root.ensure("009");
    key.flags = nk::Predefined;
    key.predefinedHandle = 0x80000050;
    const Hive again = readHive(writeHive(hive)).hive;
    EXPECT_EQ(again.findPath("009")->predefinedHandle, 0x80000050u);
    EXPECT_TRUE(again.findPath("009")->values.empty());
}

TEST(HiveWriter, DeepestTreeThatIsAllowed) {
    Hive hive;
    deepKey(hive, deepest).set("unten", {4, {1, 0, 0, 0}});
    const Bytes file = writeHive(hive);
    EXPECT_EQ(count(readHive(file).hive.root), (HiveCounts{deepest, 1}));
    deepKey(hive, deepest + 1);
    EXPECT_THROW(writeHive(hive), HiveError);
}

TEST(HiveWriter, RefusesWhatNoHiveCanHold) {
    const std::pair<const char*, std::function<void(Hive&)>> table[] = {
        {"doppelter Schlüssel", [](Hive& h) { h.root.subKeys.resize(2); h.root.subKeys[0].name = "\xC3\xA4"; h.root.subKeys[1].name = "\xC3\x84"; }},
        {"leerer Schlüsselname", [](Hive& h) { h.root.subKeys.resize(1); }},
        {"Schrägstrich", [](Hive& h) { h.root.ensure("a\\b"); }},
        {"langer Schlüsselname", [](Hive& h) { h.root.ensure(std::string(256, 'x')); }},
        {"langer Wertname", [](Hive& h) { h.root.set(std::string(16384, 'x'), {}); }},
        {"doppelter Wert", [](Hive& h) { h.root.values = {{"a", {}}, {"b", {}}, {"A", {}}}; }},
        {"Version", [](Hive& h) { h.minorVersion = 2; }},
    };
    for (const auto& [what, spoil] : table) {
        Hive hive;
        spoil(hive);
        EXPECT_THROW(writeHive(hive), HiveError) << what;
    }
}

TEST(HiveWriter, OthersReadWhatWeMade) {
    const test::TempDir folder;
    for (const std::uint32_t minor : {3u, 5u}) {
        Hive hive = sampleHive(minor, 1200);
        hive.root.find("Namen")->erase("\xED\xA0\x80");   // other readers refuse lone surrogates
        const HiveCounts counts = count(hive.root);
        save(folder / "h", writeHive(hive));
        if (!installed("reglookup") || !installed("hivexml")) GTEST_SKIP() << "reglookup or hivexml is not installed";
        const auto occurrences = [](const std::string& text, const std::string& part) {
            std::uint64_t n = 0;
            for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
            return n;
        };
        const std::string looked = othersView("reglookup", folder / "h");
        EXPECT_EQ(occurrences(looked, "\n"), 1 + counts.keys + counts.values);
        const std::string xml = othersView("hivexml", folder / "h");
        EXPECT_EQ(occurrences(xml, "<node "), counts.keys);
        EXPECT_EQ(occurrences(xml, "<value "), counts.values);
    }
}

}  // namespace
}  // namespace brenvik
