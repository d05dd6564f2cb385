// Whatever stands in a journal, it is read, shown, compared and taken back within bounds, and nothing outside of the home is touched.
// The bytes are the file itself if they begin like one; else they are rows for tables of the right form.
#include <fuzzer/FuzzedDataProvider.h>
#include <sqlite3.h>

#include <cstdlib>

#include "frame/files/FileSystem.h"
#include "lists/ListWindows.h"
#include "lists/undo/Drift.h"
#include "lists/undo/Undo.h"
#include "registry/machine/LocalMachines.h"
#include "registry/store/MemoryStore.h"

using namespace brenvik;

namespace {

class SilentPort final : public UserPort {
public:
    Answer messageBox(const MessageBox&) override { return Answer::Yes; }
    std::optional<std::string> chooseFile(const FileChoice&) override { return std::nullopt; }
    std::optional<std::string> chooseFolder(std::string_view, std::string_view) override { return std::nullopt; }
    std::optional<Rgb> chooseColour(Rgb) override { return std::nullopt; }
    void showWindow(WindowRequest& request) override {
        if (auto* conflicts = dynamic_cast<UndoConflictsRequest*>(&request)) {
            for (auto& row : conflicts->rows) row.restore = true;
            conflicts->proceed = true;
        }
    }
    void setClipboard(std::string_view) override {}
    DateTime now() override { return {2002, 11, 9, 12, 30, 0}; }
    void sleepMs(int) override {}
    void letEventsRun() override {}
    void playSound(const std::string&) override {}
    void waitPointer(bool) override {}
    bool startProgram(const std::string&, const std::vector<std::string>&) override { return false; }
    bool openAddress(const std::string&) override { return false; }
    void showHelp(const std::string&, int) override {}
};

const char* const Places[] = {"HKEY_CURRENT_USER\\Software\\A", "HKCR\\x\\y", "HKEY_LOCAL_MACHINE\\System\\CurrentControlSet\\Z\\", "\\\\", "", "C:\\WINDOWS\\win.ini",
                              "C:\\..\\..\\..\\aussen.txt", "/tmp/aussen.txt", "HKU", "HKEY_USERS\\S-1-5-21-1-2-3-1003\\K"};

void makeRows(sqlite3* db, FuzzedDataProvider& input) {
    const auto text = [&] { return input.ConsumeBool() ? std::string(Places[input.ConsumeIntegralInRange<std::size_t>(0, std::size(Places) - 1)]) : input.ConsumeRandomLengthString(40); };
    const struct {
        const char* sql;
        const char* columns;   // n number, t text, b bytes, l long bytes
    } tables[] = {{"INSERT OR REPLACE INTO aenderung VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)", "ntttttnnttnnnnnn"}, {"INSERT OR REPLACE INTO wert VALUES(?,?,?,?,?,?,?,?,?,?)", "nntnnbnbnt"},
                  {"INSERT OR REPLACE INTO paar VALUES(?,?,?)", "nnt"},           {"INSERT INTO neuerschluessel VALUES(?,?)", "nt"},
                  {"INSERT OR REPLACE INTO schluessel VALUES(?,?,?,?,?,?)", "nntnnn"}, {"INSERT OR REPLACE INTO unterschluessel VALUES(?,?,?,?,?,?,?,?,?)", "nnntbnbnn"},
                  {"INSERT OR REPLACE INTO unterwert VALUES(?,?,?,?,?,?,?)", "nnnttnb"}, {"INSERT OR REPLACE INTO datei VALUES(?,?,?,?,?,?,?)", "nntnbbn"}};
    for (int row = 0; row < 60 && input.remaining_bytes() > 0; ++row) {
        const auto& table = tables[input.ConsumeIntegralInRange<std::size_t>(0, std::size(tables) - 1)];
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(db, table.sql, -1, &statement, nullptr) != SQLITE_OK) std::abort();
        for (int column = 1; table.columns[column - 1] != '\0'; ++column) {
            const char kind = table.columns[column - 1];
            if (kind == 'n') {
                sqlite3_bind_int64(statement, column, input.ConsumeBool() ? input.ConsumeIntegralInRange<int>(-2, 9) : input.ConsumeIntegral<std::int64_t>());
            } else {
                const std::string value = text();
                kind == 'b' ? sqlite3_bind_blob(statement, column, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT)
                            : sqlite3_bind_text(statement, column, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
            }
        }
        sqlite3_step(statement);
        sqlite3_finalize(statement);
    }
}

void use(Context& ctx, Journal& journal) {
    History history(ctx, journal);
    UndoAnswer exactly(ctx, journal, history);
    journal.withoutLine(), journal.linesThatWent(), journal.linesToCome(), journal.keysOfUndone(), journal.lastTakenBack();
    drift(ctx, journal);
    for (const JournalHeader& head : journal.heads()) {
        exactly.undo(head.nummer);
        exactly.restore(head.nummer);
    }
    for (const std::int64_t nummer : journal.unfinished())
        if (const auto entry = journal.entry(nummer)) exactly.isDone(*entry);
    drift(ctx, journal);
    if (const auto heads = journal.heads(); !heads.empty()) journal.forget({heads.front().nummer});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::filesystem::path top = [] {
        std::string name = (std::filesystem::temp_directory_path() / "fuzz_journal_XXXXXX").string();
        return std::filesystem::path(::mkdtemp(name.data()));
    }();
    static const auto platform = makeNativePlatform();
    const auto home = top / "heim", outside = top / "aussen.txt";
    std::filesystem::remove_all(home);
    std::filesystem::create_directories(home / "drive_c/WINDOWS");
    writeFileAtomic(outside, "aussen");
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    SilentPort port;
    MemoryStore store;
    LocalMachines machines(store, "PC");
    Context ctx(port, *platform, machines);
    ctx.homePath = ctx.programPath = home;
    ctx.strLokalerRechner = ctx.strRechnername = "PC";
    ctx.strEigeneSID = "S-1-5-21-1-2-3-1003";
    const auto file = home / "journal.db";
    try {
        if (bytes.starts_with("SQLite format 3")) {
            writeFileAtomic(file, bytes);
        } else {
            Journal(file).heads();
            sqlite3* db = nullptr;
            sqlite3_open(file.c_str(), &db);
            FuzzedDataProvider input(data, size);
            makeRows(db, input);
            sqlite3_close(db);
        }
        Journal journal(file);
        use(ctx, journal);
    } catch (const NumberedError&) {
    }
    if (readFile(outside) != "aussen") std::abort();
    return 0;
}
