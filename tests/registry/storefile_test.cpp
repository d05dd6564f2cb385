// Store files that cannot be used: one clear message, and the file stays as it is.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <map>

#include "TempStore.h"
#include "registry/RegOperations.h"

using namespace brenvik;
using namespace brenvik::test;
namespace fs = std::filesystem;

namespace {

constexpr int OpenForWriting = 2 | 4;   // SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE

void makeStore(const fs::path& file) {
    SqliteStore store(file);
    store.transaction([&] {
        for (int i = 0; i < 2000; ++i) store.setValue(Root::LocalMachine, "S\\K" + std::to_string(i), ValueName::named("v"), sz("text"));
    });
}

// Takes the rights of root away for a while: root may write everywhere.
class AsNobody {
public:
    AsNobody() : was_(::geteuid()) {
        if (was_ == 0 && ::seteuid(65534) != 0) ADD_FAILURE();
    }
    ~AsNobody() {
        if (was_ == 0 && ::seteuid(0) != 0) ADD_FAILURE();
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

private:
    uid_t was_;
};

// No file of this process may grow: what a full disk answers.
class FullDisk {
public:
    FullDisk() {
        ::getrlimit(RLIMIT_FSIZE, &was_);
        rlimit none = was_;
        none.rlim_cur = 0;
        handler_ = std::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &was_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit was_{};
    void (*handler_)(int);
};

// What the engine needs beside a store and cannot fill may stay there empty.
std::map<std::string, std::size_t> contentsOf(const fs::path& folder) {
    std::map<std::string, std::size_t> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.file_size() > 0) files[entry.path().filename().string()] = std::hash<std::string>()(bytesOf(entry.path()));
    }
    return files;
}

struct Deaf final : TreeSink {
    void enter(std::string_view, const KeyDetails&) override {}
    void value(std::string_view, const RawValue&) override {}
    void leave() override {}
};

std::string openMessage(const fs::path& file) {
    StoreOptions options;
    options.busyTimeoutMs = 50;
    try {
        SqliteStore store(file, options);
    } catch (const StoreOpenError& error) {
        EXPECT_EQ(static_cast<std::uint32_t>(error.number), 0x80040204u);
        EXPECT_EQ(error.file, file);
        return error.what();
    }
    return "<opened>";
}

}  // namespace

TEST(StoreFile, BadFiles) {
    struct Case {
        const char* what;
        std::function<void(const fs::path&)> make;
        const char* message;   // a part of it
    };
    const Case cases[] = {
        {"text", [](const fs::path& f) { writeFile(f, std::string(5000, 'x')); }, "ist keine Registry dieses Programms. Benennen Sie"},
        {"empty", [](const fs::path& f) { writeFile(f, ""); }, "ist leer. Spielen Sie eine Sicherung"},
        {"folder", [](const fs::path& f) { fs::create_directories(f / "sub"); }, "ist ein Ordner dieses Namens da. Benennen Sie"},
        {"truncated", [](const fs::path& f) { makeStore(f); fs::resize_file(f, fs::file_size(f) / 2 + 100); }, "ist beschädigt. Spielen Sie eine Sicherung"},
        {"foreign database", [](const fs::path& f) { sqlite::Database(f.string(), OpenForWriting).execute("CREATE TABLE t(x)"); }, "ist keine Registry dieses Programms. Benennen Sie"},
        {"schema lost", [](const fs::path& f) { makeStore(f); sqlite::Database(f.string(), OpenForWriting).execute("DROP TABLE value"); }, "ist beschädigt. Spielen Sie eine Sicherung"},
        {"trigger", [](const fs::path& f) { makeStore(f); sqlite::Database(f.string(), OpenForWriting).execute("CREATE TRIGGER evil AFTER INSERT ON value BEGIN DELETE FROM key; END"); }, "enthält etwas, das nicht von diesem Programm stammt, und wird nicht benutzt (trigger \"evil\")"},
        {"view for a table", [](const fs::path& f) { makeStore(f); sqlite::Database(f.string(), OpenForWriting).execute("ALTER TABLE value RENAME TO old; CREATE VIEW value AS SELECT * FROM old"); }, "nicht von diesem Programm stammt"},
        {"another column", [](const fs::path& f) { makeStore(f); sqlite::Database(f.string(), OpenForWriting).execute("ALTER TABLE key ADD COLUMN more AS (length(name))"); }, "nicht von diesem Programm stammt"},
        {"circle of keys", [](const fs::path& f) { makeStore(f); sqlite::Database(f.string(), OpenForWriting).execute("INSERT INTO key(id, parent, folded, name) VALUES (0, 1, x'00', 'x')"); }, "ist beschädigt. Spielen Sie eine Sicherung"},
        {"newer", [](const fs::path& f) { makeStore(f); sqlite::Database(f.string(), OpenForWriting).execute("PRAGMA user_version = 99"); }, "stammt von einer neueren Version"},
        {"dangling link", [](const fs::path& f) { fs::create_symlink(f.parent_path() / "nowhere" / "x.db", f); }, "kann nicht geöffnet werden. Prüfen Sie"},
    };
    for (const Case& c : cases) {
        TempDir folder;
        const fs::path file = folder / "registry.db";
        c.make(file);
        const std::string before = fs::is_regular_file(file) ? bytesOf(file) : "";
        const std::string message = openMessage(file);
        EXPECT_NE(message.find(c.message), std::string::npos) << c.what << ": " << message;
        EXPECT_NE(message.find("\"" + file.string() + "\""), std::string::npos) << c.what << ": " << message;
        EXPECT_EQ(fs::is_regular_file(file) ? bytesOf(file) : "", before) << c.what;
    }
}

// Rows that no program of ours writes: told as damage, walked and deleted within bounds.
TEST(StoreFile, HostileRows) {
    const struct {
        const char* what;
        const char* sql;
        const char* message;   // of walking through HKLM
    } cases[] = {
        {"300,000 levels", "WITH RECURSIVE n(i) AS (VALUES (10000) UNION ALL SELECT i + 1 FROM n WHERE i < 310000) "
                           "INSERT INTO key(id, parent, folded, name) SELECT i, CASE i WHEN 10000 THEN 1 ELSE i - 1 END, x'004B', 'k' FROM n",
         "Der Schlüsselpfad hat mehr als 512 Ebenen."},
        {"separator in a name", "INSERT INTO key(parent, folded, name) VALUES (1, x'0041005C0042', 'a\\b')", "ist beschädigt"},
        {"empty name", "INSERT INTO key(parent, folded, name) VALUES (1, x'', '')", "ist beschädigt"},
        {"name under another's order", "INSERT INTO key(parent, folded, name) VALUES (1, x'0041', 'b')", "ist beschädigt"},
        {"bytes that are no text", "INSERT INTO key(parent, folded, name) VALUES (1, x'FFFD', CAST(x'FF' AS TEXT))", "ist beschädigt"},
        {"type that is none", "UPDATE value SET type = 4294967296", "ist beschädigt"},
        {"value that is too large", "UPDATE value SET bytes = zeroblob(17000000) WHERE id = 1", "ist beschädigt"},
        {"value that fills the memory", "UPDATE value SET bytes = zeroblob(900000000) WHERE id = 1", "enthält einen Eintrag, der größer ist, als er sein darf."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        TempDir folder;
        const fs::path file = folder / "registry.db";
        makeStore(file);
        sqlite::Database(file.string(), OpenForWriting).execute(c.sql);
        SqliteStore store(file);
        Deaf nothing;
        const std::string message = messageOf([&] { store.walk(Root::LocalMachine, "", nothing); });
        EXPECT_NE(message.find(c.message), std::string::npos) << message;
        if (std::string(c.message).find("512") == std::string::npos) continue;
        EXPECT_EQ(messageOf([&] { deleteTree(store, Root::LocalMachine, "k"); }), c.message);
        RegOperation remove;
        remove.kind = RegOperation::Kind::DeleteKey;
        remove.key = "k";
        applyOperations(store, {remove});
        EXPECT_EQ(joined(store.subKeys(Root::LocalMachine, "")), "S");
        EXPECT_EQ(messageOf([&] { store.walk(Root::LocalMachine, "", nothing); }), "<none>");
    }
}

TEST(StoreFile, Locked) {
    TempDir folder;
    makeStore(folder / "registry.db");
    sqlite::Database other((folder / "registry.db").string(), OpenForWriting);
    other.execute("PRAGMA locking_mode = EXCLUSIVE");
    other.execute("BEGIN EXCLUSIVE");
    const std::string message = openMessage(folder / "registry.db");
    EXPECT_NE(message.find("wird von einem anderen Programm gesperrt. Beenden Sie"), std::string::npos) << message;
}

TEST(StoreFile, NoRights) {
    TempDir folder;
    makeStore(folder / "registry.db");
    fs::permissions(folder.path(), fs::perms(0755));
    fs::permissions(folder / "registry.db", fs::perms::none);
    const AsNobody nobody;
    EXPECT_NE(openMessage(folder / "registry.db").find("Prüfen Sie, ob Sie die Datei und ihren Ordner lesen"), std::string::npos);
}

TEST(StoreFile, IsReadWhereItCannotBeWritten) {
    enum class How { NoRightAtAll, NoRightInFolder, NoRightOnFile, Full };
    const struct {
        How how;
        bool withLog;   // the last values are in the engine's log only
        const char* reason;
    } cases[] = {
        {How::NoRightAtAll, false, "weil Ihnen das Recht dazu fehlt"},    {How::NoRightAtAll, true, "weil Ihnen das Recht dazu fehlt"},
        {How::NoRightInFolder, false, "weil Ihnen das Recht dazu fehlt"}, {How::NoRightInFolder, true, "weil Ihnen das Recht dazu fehlt"},
        {How::NoRightOnFile, false, "weil Ihnen das Recht dazu fehlt"},   {How::Full, false, "weil der Datenträger voll ist"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.how) * 10 + (c.withLog ? 1 : 0));
        TempDir folder;
        const fs::path home = folder / "heim", file = home / "registry.db";
        {
            const fs::path source = c.withLog ? folder / "erst/registry.db" : file;
            makeStore(source);
            SqliteStore writer(source);
            writer.setValue(Root::LocalMachine, "S", ValueName::named("zuletzt"), sz("hier"));
            fs::create_directories(home);
            for (const char* ending : {"", "-wal"}) {
                if (c.withLog) fs::copy_file(source.string() + ending, file.string() + ending);
            }
        }
        fs::permissions(folder.path(), fs::perms(0755));
        fs::permissions(file, fs::perms(c.how == How::NoRightAtAll || c.how == How::NoRightOnFile ? 0444 : 0666));
        fs::permissions(home, fs::perms(c.how == How::NoRightAtAll || c.how == How::NoRightInFolder ? 0555 : 0777));
        const auto before = contentsOf(home);
        {
            std::optional<AsNobody> nobody;
            std::optional<FullDisk> full;
            if (c.how == How::Full) full.emplace();
            else nobody.emplace();
            SqliteStore store(file);
            EXPECT_FALSE(store.writable());
            EXPECT_NE(store.whyReadOnly().find(c.reason), std::string::npos) << store.whyReadOnly();
            EXPECT_NE(store.whyReadOnly().find("\"" + file.string() + "\" kann nicht geschrieben werden"), std::string::npos) << store.whyReadOnly();
            EXPECT_EQ(textOf(store, Root::LocalMachine, "S", "zuletzt"), "hier");
            EXPECT_EQ(store.subKeys(Root::LocalMachine, "S").size(), 2000u);
            EXPECT_FALSE(store.canOpen(Root::LocalMachine, "S", KEY_ALL_ACCESS_MASK));
            EXPECT_EQ(messageOf([&] { store.createKey(Root::LocalMachine, "S\\Neu"); }), store.whyReadOnly());
        }
        if (c.how != How::NoRightOnFile) {   // there the engine may keep its index beside
            EXPECT_EQ(contentsOf(home), before);
        }
        fs::permissions(home, fs::perms(0777));
        EXPECT_TRUE(SqliteStore(file).writable());
    }
}

TEST(StoreFile, AReaderWithoutRightsSeesWhatOthersWrite) {
    TempDir folder;
    const fs::path file = folder / "heim/registry.db";
    SqliteStore writer(file);
    writer.createKey(Root::LocalMachine, "S");
    fs::permissions(folder.path(), fs::perms(0755));
    fs::permissions(folder / "heim", fs::perms(0555));
    const AsNobody nobody;
    SqliteStore reader(file);
    for (const char* text : {"eins", "zwei"}) {
        writer.setValue(Root::LocalMachine, "S", ValueName::named("v"), sz(text));
        EXPECT_EQ(textOf(reader, Root::LocalMachine, "S", "v"), text);
    }
    EXPECT_FALSE(reader.writable());
}

TEST(StoreFile, DamageFoundLater) {
    TempDir folder;
    const fs::path file = folder / "registry.db";
    makeStore(file);
    std::string content = bytesOf(file);
    for (std::size_t page = content.size() / 4096 * 3 / 4 * 4096; page < content.size(); page += 4096) content.replace(page, 64, 64, '\xEE');
    writeFile(file, content);
    SqliteStore store(file);
    int failed = 0;
    for (int i = 0; i < 2000; i += 50) {
        const std::string message = messageOf([&] { EXPECT_EQ(textOf(store, Root::LocalMachine, "S\\K" + std::to_string(i), "v"), "text"); });
        failed += message.find("ist beschädigt") != std::string::npos;
    }
    EXPECT_GT(failed, 0);
}

TEST(StoreFile, NothingIsLeftBesideANewStore) {
    TempDir folder;
    { SqliteStore store(folder / "home/registry.db"); }
    EXPECT_EQ(joined(folder.names("home")), "registry.db");
    StoreOptions options;
    options.create = false;
    EXPECT_EQ(errorOf([&] { SqliteStore(folder / "other.db", options); }), 0x80040204u);
    EXPECT_FALSE(fs::exists(folder / "other.db"));
}

TEST(StoreFile, OneOfAnEarlierVersionGetsTheFlagsOfKeys) {
    TempDir folder;
    const fs::path file = folder / "registry.db";
    {
        sqlite::Database old(file.string(), OpenForWriting);
        for (const char* sql : {"PRAGMA application_id = 0x42564B52", "PRAGMA user_version = 1",
                                "CREATE TABLE descriptor(id INTEGER PRIMARY KEY, bytes BLOB NOT NULL UNIQUE)",
                                "CREATE TABLE key(\n  id INTEGER PRIMARY KEY AUTOINCREMENT,\n  parent INTEGER NOT NULL,\n  folded BLOB NOT NULL,\n  name TEXT NOT NULL,\n"
                                "  class BLOB,\n  written INTEGER NOT NULL DEFAULT 0,\n  descriptor INTEGER REFERENCES descriptor(id),\n"
                                "  readonly INTEGER NOT NULL DEFAULT 0,\n  UNIQUE(parent, folded))",
                                "CREATE TABLE value(\n  id INTEGER PRIMARY KEY,\n  key INTEGER NOT NULL,\n  folded BLOB NOT NULL,\n  name TEXT NOT NULL,\n"
                                "  type INTEGER NOT NULL,\n  bytes BLOB NOT NULL,\n  UNIQUE(key, folded))",
                                "INSERT INTO key(id, parent, folded, name) VALUES (1, 0, x'01', 'HKEY_LOCAL_MACHINE'), (2, 0, x'02', 'HKEY_USERS')",
                                "INSERT INTO key(id, parent, folded, name, written) VALUES (3, 1, x'0053', 'S', 5)"})
            old.execute(sql);
    }
    StoreOptions reading;
    reading.readOnly = true;
    EXPECT_EQ(SqliteStore(file, reading).details(Root::LocalMachine, "S"), (KeyDetails{{}, 5, {}, false, 0, 0}));
    EXPECT_EQ(errorOf([&] { SqliteStore(file, reading).createKey(Root::LocalMachine, "S\\Neu"); }), 0x80040204u);
    const KeyDetails link{{}, 6, {}, false, 0x10, 3};
    SqliteStore(file).setDetails(Root::LocalMachine, "S", link);
    EXPECT_EQ(SqliteStore(file).details(Root::LocalMachine, "S"), link);
    EXPECT_EQ(SqliteStore(file, reading).details(Root::LocalMachine, "S"), link);
}
