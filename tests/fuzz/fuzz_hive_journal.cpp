// Whatever lies beside a hive as the journal of a change: it is understood or not, and what is understood is what would be written.
#include <cstdio>
#include <cstdlib>

#include "TimeBound.h"
#include "registry/hive/HiveLog.h"
#include "registry/hivefile/HiveJournal.h"

using namespace brenvik;

// The last line is a check of all in front of it, which no random change would keep.
static std::string checked(std::string text) {
    char line[18];
    std::snprintf(line, sizeof line, "%016llx\n", static_cast<unsigned long long>(logHash({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()})));
    return text += line;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const fuzz::Bound bound(5, 512);
    for (const std::string& candidate : {std::string(text), checked(std::string(text)), checked("Brenvik-Hives 1\n" + std::string(text))}) {
        const auto record = readJournal(candidate);
        if (record && readJournal(writeJournal(*record)) != record) std::abort();
    }
    // Lines of the input as the fields of a record.
    HiveJournalRecord record;
    for (std::string_view rest = text; !rest.empty() && record.entries.size() < 70;) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        record.entries.push_back({std::string(rest.substr(0, end)), "x", end, size});
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    const auto again = readJournal(writeJournal(record));
    const bool fits = !record.entries.empty() && record.entries.size() <= 64;
    if (again && !(*again == record)) std::abort();
    if (!again && fits && size < 32768) std::abort();
    return 0;
}
