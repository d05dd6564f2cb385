#pragma once
// A program state for tests of the database room: a registry of its own, a scripted user, the test host.
#include <sqlite3.h>

#include <filesystem>

#include "registry/machine/LocalMachines.h"
#include "registry/store/SqliteStore.h"
#include "support/ScriptedPort.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"
#include "tipdb/LoadDB.h"
#include "tipdb/RecordReader.h"

namespace brenvik::test {

inline std::filesystem::path jetFile(const std::string& name) { return std::filesystem::path(BRENVIK_TEST_DATA) / "jet" / name; }

// A database of SQLite, bent by statements: rows and tables that no shipped one has.
inline std::filesystem::path bent(const TempDir& dir, const std::string& sql) {
    const auto file = dir / "bent.mdb";
    std::filesystem::copy_file(jetFile("sqlite/RegDaten.mdb"), file, std::filesystem::copy_options::overwrite_existing);
    sqlite3* db = nullptr;
    sqlite3_open(file.string().c_str(), &db);
    char* error = nullptr;
    if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error) != SQLITE_OK) throw std::runtime_error(error == nullptr ? sql : error);
    sqlite3_close(db);
    return file;
}

struct World {
    explicit World(bool lenient = false) : port(lenient), ctx(port, platform, machines) {
        ctx.homePath = home.path();
        ctx.intBS = 6;
        store.setValue(Root::LocalMachine, "Software\\Microsoft\\DataAccess", ValueName::named("Version"), fromText("2.8", regtype::Sz));
        store.createKey(Root::LocalMachine, "Software\\Microsoft\\Jet");
    }
    bool load(const std::filesystem::path& file) { return LoadDB(ctx, file) == LoadResult::Loaded; }
    void loadFixture(const std::string& name) {
        if (!load(jetFile(name))) throw std::runtime_error("fixture not loaded: " + name);
    }
    // Selects the head row with this number and reads its Tip.
    void readTip(std::int32_t index) {
        ctx.objRS->MoveFirst();
        ctx.objRS->moveToNumber(spalte::Index, index);
        DBTippRead(ctx);
    }

    TempDir home;
    ScriptedPort port;
    TestPlatform platform;
    SqliteStore store{home / "registry.db"};
    LocalMachines machines{store};
    TipdbContext ctx;
};

}  // namespace brenvik::test
