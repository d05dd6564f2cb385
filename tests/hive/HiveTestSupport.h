#pragma once
// Trees made for the tests, comparable texts of trees, genuine files and other people's readers.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "registry/hive/HiveChecker.h"
#include "registry/hive/HiveReader.h"
#include "registry/hive/HiveWriter.h"
#include "support/TempDir.h"

namespace brenvik::hivetest {

inline Bytes load(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

inline void save(const std::filesystem::path& file, const Bytes& bytes) {
    std::ofstream(file, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

// Folder of the genuine hives, or empty.
inline std::filesystem::path genuineFolder() {
    const char* const root = std::getenv("BRENVIK_TESTDATA");
    if (root == nullptr || *root == 0) return {};
    return std::filesystem::path(root) / "hives";
}

inline std::string hex(const Bytes& bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

// Everything that must survive, one line for each key and value.
inline void dump(const Hive& hive, const HiveKey& key, const std::string& parent, std::vector<std::string>& lines) {
    const std::string path = parent + "\\" + key.name;
    lines.push_back(path + "|class=" + key.className + "|time=" + std::to_string(key.lastWrite) + "|flags=" + std::to_string(key.flags) +
                    "|user=" + std::to_string(key.userFlags) + "|access=" + std::to_string(key.accessBits) + "|security=" +
                    (key.security == HiveKey::NoSecurity ? "none" : hex(hive.descriptors.at(key.security))));
    for (const HiveValue& value : key.values) lines.push_back(path + "|" + value.name + "|" + std::to_string(value.data.type) + "|" + hex(value.data.bytes));
    for (const HiveKey& subKey : key.subKeys) dump(hive, subKey, path, lines);
}

inline std::vector<std::string> dump(const Hive& hive) {
    std::vector<std::string> lines;
    dump(hive, hive.root, "", lines);
    return lines;
}

inline std::vector<std::string> lines(const std::vector<HiveFinding>& findings) {
    std::vector<std::string> texts;
    for (const HiveFinding& finding : findings) texts.push_back(finding.line());
    return texts;
}

inline Bytes pattern(std::size_t size, unsigned seed) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>((i * 131 + seed * 29 + (i >> 8)) & 0xFF);
    return bytes;
}

inline HiveKey& put(HiveKey& parent, const std::string& name, std::uint32_t security) {
    HiveKey& key = parent.ensure(name);
    key.security = security;
    key.lastWrite = 0x01C1000000000000 + name.size();
    return key;
}

// A bit of everything: names in ASCII, Latin-1 and UTF-16 with a lone surrogate, empty and large data, class names, flags.
inline Hive sampleHive(std::uint32_t minor, int manyKeys = 600) {
    Hive hive;
    hive.minorVersion = minor;
    hive.sequence = 41;
    hive.lastWritten = 0x01C1234500000000;
    const std::uint32_t usual = hive.addDescriptor(defaultDescriptor());
    Bytes shorter = defaultDescriptor();
    shorter[2] = 0x14;
    const std::uint32_t other = hive.addDescriptor(shorter);
    hive.root.name = "Wurzel";
    hive.root.security = usual;
    hive.root.flags = 8;
    hive.root.lastWrite = 7;
    HiveKey& texts = put(hive.root, "Texte", other);
    texts.className = "Klasse \xC3\xA4 \xE2\x82\xAC";
    texts.userFlags = 0x0102;
    texts.accessBits = 2;
    texts.set("", {1, {'a', 0, 0, 0}});
    texts.set("Gr\xC3\xB6\xC3\x9F" "e", {4, {1, 2, 3, 4}});
    texts.set("\xD0\xB0\xD0\xB1", {7, pattern(10, 1)});
    texts.set("leer", {1, {}});
    texts.set("mit\\Strich", {0xFFFF0011, pattern(5, 2)});
    texts.set(std::string(16383, 'n'), {3, {9}});
    HiveKey& large = put(hive.root, "Gro\xC3\x9F", usual);
    for (const std::size_t size : {16343, 16344, 16345, 32688, 32689, 70000}) large.set(std::to_string(size), {3, pattern(size, 3)});
    HiveKey& names = put(hive.root, "Namen", usual);
    for (const char* name : {"_", "a", "B", "\xC3\xA4", "\xC3\x84x", "\xC3\x9F", "\xC5\xBD", "\xD0\x96\xD0\xB6", "\xED\xA0\x80", "\xF0\x9F\x98\x80", "zz"}) {
        put(names, name, other).flags = 0x10;
    }
    put(names, std::string(255, 'k'), usual);
    HiveKey& many = put(hive.root, "Viele", usual);
    for (int i = 0; i < manyKeys; ++i) put(many, "Schl\xC3\xBCssel " + std::to_string(i), i % 3 == 0 ? other : usual).set("w", {4, pattern(4, static_cast<unsigned>(i))});
    return hive;
}

inline HiveKey& deepKey(Hive& hive, std::size_t levels) {
    HiveKey* key = &hive.root;
    for (std::size_t level = 1; level < levels; ++level) key = &key->ensure("t");
    return *key;
}

// What another reader prints about a file, run as a child with a time limit; empty if it fails.
inline std::string othersView(const std::string& command, const std::filesystem::path& file) {
    const std::filesystem::path out = file.string() + ".out";
    const std::string line = "timeout 30 " + command + " '" + file.string() + "' > '" + out.string() + "' 2>/dev/null";
    const int code = std::system(line.c_str());
    const Bytes bytes = load(out);
    std::filesystem::remove(out);
    return code == 0 ? std::string(bytes.begin(), bytes.end()) : std::string();
}

inline bool installed(const std::string& tool) { return std::system(("command -v " + tool + " >/dev/null 2>&1").c_str()) == 0; }

}  // namespace brenvik::hivetest
