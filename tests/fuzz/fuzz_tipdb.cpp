// Whatever a database file holds: its tables are read or refused, and statements over them end.
#include "TimeBound.h"
#include "frame/Errors.h"
#include "tipdb/DatabaseErrors.h"
#include "tipdb/DatabaseSource.h"
#include "tipdb/jet/JetFile.h"
#include "tipdb/sql/SqlEngine.h"

using namespace brenvik;

namespace {

const std::vector<std::string> tables{"RegDaten", "Treebaum", "Gruppennamen", "Version"};

void ask(Records data) {
    SqlEngine engine(std::move(data));
    for (const char* sql : {"Select * From RegDaten", "Select * From Treebaum Order By Reihenfolge", "Select * From Version",
                            "Select * From RegDaten Where Index = 301"}) {
        try {
            engine.query(sql);
        } catch (const DatabaseErrors&) {
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Bound bound(30, 1500);
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    try {
        ask(jet::JetFile::looksLikeJet(bytes) ? readJetDatabase(bytes, "geheim", tables) : readSqliteDatabase(bytes, tables));
    } catch (const DatabaseErrors&) {
    }
    return 0;
}
