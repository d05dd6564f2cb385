// Faults planted in a good file, one at a time: each must be noticed, and most must keep the strict reader from reading.
#include <functional>

#include "HiveTestSupport.h"
#include "registry/hive/HiveCells.h"

namespace brenvik {
namespace {

using namespace hivetest;
using namespace hivefmt;

// Positions in a written file of the cells by signature; pointers are to the cells' content.
class Image {
public:
    explicit Image(Bytes bytes) : file(std::move(bytes)) {
        HiveFindings findings(HiveMode::Strict);
        HiveCells cells(file, findings);
        cells.listAllocated();
        for (const std::uint32_t at : cells.allocated()) {
            const ByteSpan cell = cells.cell(at);
            for (const char* signature : {"nk", "vk", "lh", "lf", "sk", "ri"}) {
                if (std::memcmp(cell.data(), signature, 2) == 0) places_.push_back({signature, at});
            }
        }
    }

    std::uint32_t offset(const std::string& signature, std::size_t index = 0) const {
        for (const auto& [found, at] : places_) {
            if (found == signature && index-- == 0) return at;
        }
        throw std::out_of_range(signature);
    }
    std::uint8_t* cell(std::uint32_t offset) { return file.data() + headerSize + offset + 4; }
    std::uint8_t* at(const std::string& signature, std::size_t index = 0) { return cell(offset(signature, index)); }
    std::uint8_t* key(const std::string& name) { return cell(keyOffset(name)); }
    std::uint32_t keyOffset(const std::string& name) {
        for (const auto& [found, at] : places_) {
            const std::uint8_t* const c = cell(at);
            if (found == "nk" && get16(c + nk::NameSize) == name.size() && std::equal(name.begin(), name.end(), c + nk::Name)) return at;
        }
        throw std::out_of_range(name);
    }
    std::uint8_t* list(const std::string& keyName) { return cell(get32(key(keyName) + nk::SubKeyList)); }
    std::uint8_t* value(const std::string& keyName, std::size_t index) { return cell(get32(cell(get32(key(keyName) + nk::ValueList)) + 4 * index)); }
    void seal() { put32(file.data() + header::Checksum, headerChecksum(file.data())); }
    void add(std::uint8_t* field, std::uint32_t difference) { put32(field, get32(field) + difference); }
    std::uint32_t freeCell() const {   // the rest of the last bin
        for (std::uint32_t at = 0, last = 0;; at += 8) {
            if (headerSize + at >= file.size()) return last;
            const std::uint32_t size = get32(file.data() + headerSize + at);
            if (size >= 24 && size < 4096 && headerSize + at + size == file.size()) last = at;
        }
    }

    Bytes file;

private:
    std::vector<std::pair<std::string, std::uint32_t>> places_;
};

Hive plainHive() {
    Hive hive;
    hive.minorVersion = 5;
    hive.root.name = "r";
    const std::uint32_t usual = hive.addDescriptor(defaultDescriptor());
    Bytes shorter = defaultDescriptor();
    shorter[2] = 0x14;
    const std::uint32_t other = hive.addDescriptor(shorter);
    for (const char* name : {"alpha", "bravo", "charlie", "delta"}) {
        HiveKey& key = put(hive.root, name, name[0] == 'b' ? other : usual);
        for (unsigned i = 0; i < 6; ++i) key.set("wert" + std::to_string(i), {3, pattern(40 + i, i)});
        for (unsigned i = 0; i < 20; ++i) put(key, "kind" + std::to_string(i), usual).set("zahl", {4, pattern(4, i)});
    }
    hive.root.find("delta")->className = "Klasse";
    hive.root.find("alpha")->set("gro\xC3\x9F", {3, pattern(40000, 1)});
    return hive;
}

struct Fault {
    const char* what;
    std::function<void(Image&)> plant;
    bool strictRefuses;
};

const Fault faults[] = {
    {"checksum", [](Image& h) { h.file[header::Checksum] ^= 1; }, true},
    {"sequence numbers", [](Image& h) { h.add(&h.file[header::Sequence1], 1); h.seal(); }, true},
    {"hash in a list", [](Image& h) { h.list("r")[8] ^= 0x55; }, false},
    {"order of a list", [](Image& h) { std::swap_ranges(h.list("r") + 4, h.list("r") + 12, h.list("r") + 12); }, true},
    {"parent", [](Image& h) { put32(h.key("bravo") + nk::Parent, h.keyOffset("alpha")); }, true},
    {"number of sub keys too large", [](Image& h) { h.add(h.key("alpha") + nk::SubKeys, 1); }, true},
    {"number of values too large", [](Image& h) { h.add(h.key("bravo") + nk::Values, 10); }, true},
    {"number of values too small", [](Image& h) { h.add(h.key("bravo") + nk::Values, 0u - 1); }, false},
    {"references to a security cell", [](Image& h) { h.add(h.at("sk") + sk::References, 1); }, false},
    {"ring of security cells, forward", [](Image& h) { put32(h.at("sk") + sk::Next, 0x7F8); }, false},
    {"ring of security cells, backward", [](Image& h) { put32(h.at("sk", 1) + sk::Previous, h.offset("sk", 1)); }, false},
    {"ring without one cell", [](Image& h) { put32(h.at("sk") + sk::Next, h.offset("sk")); put32(h.at("sk") + sk::Previous, h.offset("sk")); }, false},
    {"security of a key missing", [](Image& h) { put32(h.key("bravo") + nk::Security, noCell); }, false},
    {"security of a key is no such cell", [](Image& h) { put32(h.key("bravo") + nk::Security, h.keyOffset("alpha")); }, true},
    {"data longer than their cell", [](Image& h) { h.add(h.value("bravo", 2) + vk::DataSize, 4096); }, true},
    {"size of the second bin", [](Image& h) { h.add(&h.file[headerSize + 4096 + bin::Size], 0x1000); }, true},
    {"place of the second bin", [](Image& h) { h.add(&h.file[headerSize + 4096 + bin::Offset], 0x1000); }, true},
    {"signature of the second bin", [](Image& h) { h.file[headerSize + 4096] = 'x'; }, true},
    {"two values share their data", [](Image& h) { std::copy_n(h.value("bravo", 2) + vk::DataSize, 8, h.value("bravo", 1) + vk::DataSize); }, true},
    {"root not marked", [](Image& h) { put16(h.key("r") + nk::Flags, nk::Latin1Name); }, true},
    {"another key marked as root", [](Image& h) { put16(h.key("bravo") + nk::Flags, nk::Latin1Name | nk::HiveEntry); }, false},
    {"longest name of sub keys", [](Image& h) { put16(h.key("r") + nk::MaxName, 0); }, false},
    {"longest class name of sub keys", [](Image& h) { put32(h.key("r") + nk::MaxClass, 2); }, false},
    {"longest name of values", [](Image& h) { put32(h.key("bravo") + nk::MaxValueName, 0); }, false},
    {"largest data of values", [](Image& h) { put32(h.key("bravo") + nk::MaxData, 5); }, false},
    {"file cut off", [](Image& h) { h.file.resize(h.file.size() - 4096); }, true},
    {"length in the header too small", [](Image& h) { h.add(&h.file[header::BinsSize], 0u - 4096); h.seal(); }, true},
    {"two keys of one name", [](Image& h) { h.key("kind11")[nk::Name + 5] = '0'; }, true},
    {"two values of one name", [](Image& h) { h.value("bravo", 1)[vk::Name + 4] = '0'; }, true},
    {"cell marked as free", [](Image& h) { std::uint8_t* const c = h.value("bravo", 3) - 4; put32(c, 0u - get32(c)); }, true},
    {"kind of name", [](Image& h) { put16(h.key("charlie") + nk::Flags, 0); }, true},
    {"leaked cell", [](Image& h) { std::uint8_t* const c = h.file.data() + headerSize + h.freeCell(); put32(c, 0u - get32(c)); }, false},
    {"list is no cell", [](Image& h) { put32(h.key("alpha") + nk::SubKeyList, 0xFFFFFFF8); }, true},
    {"keys in a loop", [](Image& h) { put32(h.list("alpha") + 4, h.keyOffset("r")); }, true},
    {"list in a loop", [](Image& h) { put32(h.key("alpha") + nk::SubKeyList, get32(h.key("r") + nk::SubKeyList)); }, true},
    {"too few parts of large data", [](Image& h) { put16(h.cell(get32(h.value("alpha", 6) + vk::Data)) + db::Count, 2); }, true},
    {"backslash in a name", [](Image& h) { h.key("alpha")[nk::Name + 4] = '\\'; }, true},
    {"size of a cell", [](Image& h) { h.add(h.key("alpha") - 4, 4); }, true},
    {"class name outside", [](Image& h) { put16(h.key("delta") + nk::ClassSize, 4000); }, true},
    {"version", [](Image& h) { put32(&h.file[header::Minor], 9); h.seal(); }, true},
};

TEST(HiveChecker, NoticesEachPlantedFault) {
    const Bytes good = writeHive(plainHive());
    ASSERT_EQ(lines(checkHive(good)), std::vector<std::string>());
    const HiveCounts all = count(readHive(good).hive.root);
    for (const Fault& fault : faults) {
        SCOPED_TRACE(fault.what);
        Image image(good);
        fault.plant(image);
        ASSERT_TRUE(image.file != good);
        EXPECT_FALSE(checkHive(image.file).empty());
        bool refused = false;
        try {
            readHive(image.file);
        } catch (const HiveError&) {
            refused = true;
        }
        EXPECT_EQ(refused, fault.strictRefuses);
        const HiveReading salvaged = readHive(image.file, HiveMode::Salvage);
        EXPECT_EQ(salvaged.findings.empty(), !fault.strictRefuses);
        EXPECT_LE(count(salvaged.hive.root).keys, all.keys);
        EXPECT_EQ(lines(checkHive(writeHive(salvaged.hive, {.minorVersion = 5}))), std::vector<std::string>()) << "what was salvaged makes a good file";
    }
}

TEST(HiveReader, RefusesWhatIsNoHive) {
    for (const Bytes& file : {Bytes(), Bytes(100, 'r'), Bytes(5000, 0), pattern(9000, 4)}) {
        EXPECT_THROW(readHive(file), HiveError);
        EXPECT_THROW(readHive(file, HiveMode::Salvage), HiveError);
        EXPECT_EQ(checkHive(file).size(), 1u);
    }
}

TEST(HiveReader, KeysDeeperThanAllowedEndTheReading) {
    Hive hive;
    deepKey(hive, deepest - 1).ensure("unten");
    Image image(writeHive(hive));
    std::uint8_t* const deepestKey = image.key("unten");
    put32(deepestKey + nk::SubKeys, 1);
    put32(deepestKey + nk::SubKeyList, get32(image.key("") + nk::SubKeyList));
    try {
        readHive(image.file);
        ADD_FAILURE() << "read without complaint";
    } catch (const HiveError& error) {
        EXPECT_NE(std::string(error.what()).find("zu tief"), std::string::npos) << error.what();
    }
    EXPECT_EQ(count(readHive(image.file, HiveMode::Salvage).hive.root).keys, deepest);
}

}  // namespace
}  // namespace brenvik
