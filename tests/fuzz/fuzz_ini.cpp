// Whatever an INI file holds: all of it can be asked for, writing back what stands there changes nothing, and what is written
// can be read.
#include <cstdlib>

#include "frame/Errors.h"
#include "frame/files/ProfileFile.h"

using namespace brenvik;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    ProfileFile file(bytes);
    if (file.bytes() != bytes) std::abort();
    for (const std::string& section : file.sections()) {
        for (const std::string& line : file.sectionLines(section)) {
            const std::string key = line.substr(0, line.find('='));
            const auto raw = file.rawValue(section, key);
            file.value(section, key);
            if (!raw) continue;
            try {
                ProfileFile same(bytes);
                same.setValue(section, key, *raw);
                if (same.bytes() != bytes) std::abort();
                same.setValue(section, key, "neuer Wert");
                if (same.value(section, key) != "neuer Wert") std::abort();
                same.removeKey(section, key);
            } catch (const NumberedError&) {   // a name that cannot be written
            }
        }
    }
    try {
        file.setValue("Probe", "Name", "Wert");
        if (file.value("probe", "NAME") != "Wert" || !file.removeKey("Probe", "Name")) std::abort();
        file.setSectionLines("Probe", {"a=1", "b=2"});
        if (file.value("Probe", "b") != "2") std::abort();
    } catch (const NumberedError&) {
        if (file.isAnsi()) std::abort();
    }
    return 0;
}
