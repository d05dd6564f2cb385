// Store files that cannot be used: one clear message, and the file stays as it is.
#include <gtest/gtest.h>

#include <functional>

#include "TempStore.h"

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
        {"short text", [](const fs::path& f) { writeFile(f, "abc"); }, "ist keine Registry dieses Programms. Benennen Sie"},
        {"empty", [](const fs::path& f) { writeFile(f, ""); }, "ist leer. Spielen Sie eine Sicherung"},
        {"folder", [](const fs::path& f) { fs::create_directories(f / "sub"); }, "ist ein Ordner dieses Namens da. Benennen Sie"},
        {"truncated", [](const fs::path& f) { makeStore(f); fs::resize_file(f, fs::file_size(f) / 2 + 100); }, "ist beschädigt. Spielen Sie eine Sicherung"},
        {"header only", [](const fs::path& f) { makeStore(f); fs::resize_file(f, 100); }, "ist "},
        {"foreign database", [](const fs::path& f) { sqlite::Database(f.string(), OpenForWriting).execute("CREATE TABLE t(x)"); }, "ist keine Registry dieses Programms. Benennen Sie"},
        {"schema lost", [](const fs::path& f) { makeStore(f); sqlite::Database(f.string(), OpenForWriting).execute("DROP TABLE value"); }, "ist beschädigt. Spielen Sie eine Sicherung"},
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
    fs::permissions(folder / "registry.db", fs::perms::none);
    if (std::ifstream(folder / "registry.db").good()) GTEST_SKIP() << "this user may read every file";
    EXPECT_NE(openMessage(folder / "registry.db").find("Prüfen Sie, ob Sie die Datei und ihren Ordner lesen"), std::string::npos);
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
        try {
            const std::string text = textOf(store, Root::LocalMachine, "S\\K" + std::to_string(i), "v");
            EXPECT_EQ(text, "text");
        } catch (const RegError& error) {
            EXPECT_NE(std::string(error.what()).find("ist beschädigt"), std::string::npos) << error.what();
            ++failed;
        }
    }
    EXPECT_GT(failed, 0);
}

TEST(StoreFile, NothingIsLeftBesideANewStore) {
    TempDir folder;
    { SqliteStore store(folder / "home/registry.db"); }
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder / "home")) names.push_back(entry.path().filename().string());
    EXPECT_EQ(joined(names), "registry.db");
    StoreOptions options;
    options.create = false;
    EXPECT_EQ(errorOf([&] { SqliteStore(folder / "other.db", options); }), 0x80040204u);
    EXPECT_FALSE(fs::exists(folder / "other.db"));
}
