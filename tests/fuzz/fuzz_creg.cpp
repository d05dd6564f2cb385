// Whatever a registry file of the 9x family holds: it is read or refused, and one that the checker accepts takes changes and stays sound.
#include <algorithm>
#include <cstdlib>

#include "../registry/creg/CregSeed.h"
#include "TimeBound.h"
#include "registry/creg/CregChecker.h"
#include "registry/creg/CregReader.h"

using namespace brenvik;

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

static Bytes seedCreg(unsigned seed) {
    const Bytes empty = emptyCreg(seed % 2 == 0 ? cregfmt::checksumValid : 0, 4096);
    Hive hive = readCreg(empty).hive;
    for (const char* name : {"alpha", "beta"}) {
        HiveKey& key = hive.root.ensure(name);
        key.set("", {regtype::Sz, {'a', 0, 0, 0}});
        key.set("lang", {regtype::Binary, Bytes(40, 7)});
        key.ensure("unten").set("w", {regtype::Dword, {1, 0, 0, 0}});
    }
    return writeCreg(empty, hive, Western);
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed) {
    if (size < 8192) {
        const Bytes file = seedCreg(seed);
        size = std::min(file.size(), most);
        std::copy_n(file.begin(), size, data);
    }
    size = LLVMFuzzerMutate(data, size, most);
    if (size >= cregfmt::headerSize) cregfmt::put16(data + cregfmt::header::Flags, 0);   // no sum of the header in the way
    return size;
}

// The first bytes choose what is done to the tree.
static void change(HiveKey& root, hivefmt::ByteSpan choices) {
    HiveKey* key = &root;
    for (const std::uint8_t c : choices) {
        if (c % 7 == 0 || key == &root) key = &root.ensure(std::string(1 + c % 9, static_cast<char>('a' + c % 26)));
        else if (c % 7 == 1 && !root.subKeys.empty()) root.subKeys.erase(root.subKeys.begin() + c % static_cast<std::ptrdiff_t>(root.subKeys.size())), key = &root;
        else if (c % 7 == 2 && !key->values.empty()) key->values.pop_back();
        else key->set(std::string(c % 3, 'w'), {regtype::Binary, Bytes(c * (c % 5 == 0 ? 60u : 1u), c)});
    }
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const hivefmt::ByteSpan file{data, size};
    const fuzz::Bound bound(5, 512);
    checkCreg(file);
    for (const HiveMode mode : {HiveMode::Salvage, HiveMode::Strict}) {
        try {
            Hive hive = readCreg(file, mode).hive;
            if (mode == HiveMode::Salvage || !whyNotWritten(file).empty()) continue;
            const Bytes same = writeCreg(file, hive, Western);
            if (!std::equal(same.begin(), same.end(), file.begin(), file.end())) std::abort();
            change(hive.root, file.last(std::min<std::size_t>(size, 12)));
            if (!whyNotWritten(writeCreg(file, hive, Western)).empty()) std::abort();
        } catch (const HiveError&) {
            if (whyNotWritten(file).empty()) std::abort();
        } catch (const RegError&) {
            continue;   // a key that may not be written
        }
    }
    return 0;
}
