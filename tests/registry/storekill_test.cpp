// A process that is killed while it writes loses at most the write under way. The one test that handles processes.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

#include "TempStore.h"

using namespace brenvik;
using namespace brenvik::test;

namespace {

constexpr int ValueCount = 40;

std::string nameOf(std::uint32_t step) { return "v" + std::to_string(step % ValueCount); }

// Writes rising numbers to changing values, now and then as a transaction with a key of its own, and acknowledges each.
[[noreturn]] void writeForEver(const std::filesystem::path& file, std::uint32_t first, int pipe) {
    try {
        SqliteStore store(file);
        for (std::uint32_t step = first;; ++step) {
            const auto write = [&] { store.setValue(Root::CurrentUser, "Software\\Kill\\Test", ValueName::named(nameOf(step)), dword(step)); };
            if (step % 7 == 0) {
                store.transaction([&] {
                    store.setValue(Root::LocalMachine, "Software\\Pairs\\K" + std::to_string(step), ValueName::named("a"), dword(step));
                    store.setValue(Root::LocalMachine, "Software\\Pairs\\K" + std::to_string(step), ValueName::named("b"), dword(step));
                    write();
                });
            } else {
                write();
            }
            if (::write(pipe, &step, sizeof step) != sizeof step) _exit(2);
        }
    } catch (...) {
        _exit(3);
    }
}

// Lets a child write for a while and kills it; the last step it acknowledged.
std::uint32_t runAndKill(const std::filesystem::path& file, std::uint32_t first, int microseconds) {
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        writeForEver(file, first, ends[1]);
    }
    ::close(ends[1]);
    std::uint32_t step = 0, last = 0;
    EXPECT_EQ(::read(ends[0], &last, sizeof last), static_cast<ssize_t>(sizeof last));   // it has begun
    ::usleep(static_cast<useconds_t>(microseconds));
    ::kill(child, SIGKILL);
    while (::read(ends[0], &step, sizeof step) == sizeof step) last = step;
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "the child ended by itself: " << WEXITSTATUS(status);
    return last;
}

}  // namespace

TEST(StoreKill, AcknowledgedWritesAreThere) {
    TempDir folder;
    const std::filesystem::path file = folder / "registry.db";
    { SqliteStore store(file); }
    std::uint32_t first = 1;
    for (int round = 0; round < 50; ++round) {
        const std::uint32_t last = runAndKill(file, first, 500 + round * 311 % 9000);
        ASSERT_GE(last, first);
        SqliteStore store(file);
        for (std::uint32_t step = last < ValueCount ? 1 : last - ValueCount + 1; step <= last; ++step) {
            const auto value = store.value(Root::CurrentUser, "Software\\Kill\\Test", ValueName::named(nameOf(step)));
            ASSERT_TRUE(value) << "round " << round << " step " << step;
            const std::uint32_t found = static_cast<std::uint32_t>(std::stoul(toText(*value)));
            // The write under way at the kill may have arrived without its acknowledgement.
            const bool arrivedUnacknowledged = found == last + 1 && nameOf(found) == nameOf(step);
            ASSERT_TRUE(found == step || arrivedUnacknowledged) << "round " << round << " step " << step << " found " << found;
        }
        for (const std::string& pair : store.subKeys(Root::LocalMachine, "Software\\Pairs")) {
            const std::string key = "Software\\Pairs\\" + pair;
            ASSERT_EQ("K" + textOf(store, Root::LocalMachine, key, "a"), pair);
            ASSERT_EQ("K" + textOf(store, Root::LocalMachine, key, "b"), pair);
        }
        first = last + 1;
    }
    sqlite::Database database(file.string(), 1);
    EXPECT_EQ(database.text("PRAGMA integrity_check"), "ok");
}

