#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "frame/Errors.h"
#include "lists/ListFile.h"
#include "support/TempDir.h"

using namespace brenvik;
using namespace brenvik::test;
using Lines = std::vector<std::string>;

TEST(ListFile, ReadsEveryLineEnd) {
    const struct {
        std::string bytes;
        Lines lines;
        std::string again;   // as it is written back
    } cases[] = {
        {"", {}, ""},
        {"a\r\nb\r\n", {"a", "b"}, "a\r\nb\r\n"},
        {"a\rb\nc", {"a", "b", "c"}, "a\r\nb\r\nc\r\n"},
        {"a\r\n\r\r\nb", {"a", "", "", "b"}, "a\r\n\r\n\r\nb\r\n"},
        {"\xFC\x80#\xC3\xA4\r\n", {"ü€#Ã¤"}, "\xFC\x80#\xC3\xA4\r\n"},                      // ANSI stays ANSI, whatever it looks like
        {"\xEF\xBB\xBF\xC3\xA4\xE6\x97\xA5\r\n", {"ä日"}, "\xEF\xBB\xBF\xC3\xA4\xE6\x97\xA5\r\n"},   // UTF-8 with its mark stays that
        {std::string("a\0b\r\n", 5), {std::string("a\0b", 3)}, std::string("a\0b\r\n", 5)},
        {std::string(10000, '#') + "\r\n", {std::string(10000, '#')}, std::string(10000, '#') + "\r\n"},
    };
    for (const auto& c : cases) {
        TempDir dir;
        ListFile file(dir.put("l.txt", c.bytes));
        const Lines lines = file.read();
        EXPECT_EQ(lines, c.lines);
        file.write({lines.begin(), lines.end()});
        EXPECT_EQ(bytesOf(dir / "l.txt"), c.again);
    }
}

TEST(ListFile, WhatCannotBeReadStaysAsItIs) {
    TempDir dir;
    for (const std::string& utf16 : {std::string("\xFF\xFE" "a\0\r\0\n\0", 8), std::string("\xFE\xFF" "\0a\0\r\0\n", 8), std::string("a\0b\0\r\0\n\0", 8)}) {
        ListFile wide(dir.put("w.txt", utf16));
        EXPECT_THROW(wide.read(), NumberedError);
        EXPECT_EQ(bytesOf(dir / "w.txt"), utf16);
    }
    ListFile big(dir.put("g.txt", std::string(ListFile::Bound + 1, 'x')));
    EXPECT_THROW(big.read(), NumberedError);
}

TEST(ListFile, KnowsChangesOfOthers) {
    TempDir dir;
    ListFile file(dir.put("l.txt", "a\r\nb\r\nb\r\n"));
    file.read();
    EXPECT_TRUE(file.foreignChanges().dazu.empty());
    dir.put("l.txt", "b\r\nc\r\nd\r\n");
    auto foreign = file.foreignChanges();
    EXPECT_EQ(foreign.dazu, (Lines{"c", "d"}));
    EXPECT_EQ(foreign.weg, (Lines{"a", "b"}));
    EXPECT_TRUE(file.foreignChanges().weg.empty());   // once is enough
    std::filesystem::remove(dir / "l.txt");
    EXPECT_EQ(file.foreignChanges().weg, (Lines{"b", "c", "d"}));
}

// As on a full disk: the new file cannot be written whole.
TEST(ListFile, AFullDiskLeavesTheOldFile) {
    TempDir dir;
    ListFile file(dir.put("l.txt", "alt\r\n"));
    file.read();
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{1000, before.rlim_max};
    const auto handler = ::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::string large(5000, 'x');
    EXPECT_THROW(file.write({large}), NumberedError);
    ::setrlimit(RLIMIT_FSIZE, &before);
    ::signal(SIGXFSZ, handler);
    EXPECT_EQ(bytesOf(dir / "l.txt"), "alt\r\n");
    EXPECT_EQ(dir.names(), (Lines{"l.txt"}));
}

// A writer is killed again and again; the file is always one of the whole ones.
TEST(ListFile, AfterAnAbortTheFileIsWhole) {
    TempDir dir;
    const auto content = [](std::uint32_t step) { return "Stand " + std::to_string(step) + std::string(200'000, 'x'); };
    const auto path = dir.put("l.txt", content(0) + "\r\nEnde\r\n");
    std::uint32_t step = 0;
    for (int round = 0; round < 50; ++round) {
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            ListFile file(path);
            file.read();
            for (std::uint32_t next = step + 1;; ++next) {
                file.write({content(next), "Ende"});
                if (::write(ends[1], &next, sizeof next) != sizeof next) _exit(2);
            }
        }
        ::close(ends[1]);
        std::uint32_t last = 0, read = 0;
        ASSERT_EQ(::read(ends[0], &last, sizeof last), static_cast<ssize_t>(sizeof last));
        ::usleep(static_cast<useconds_t>(round * 311 % 9000));
        ::kill(child, SIGKILL);
        while (::read(ends[0], &read, sizeof read) == sizeof read) last = read;
        ::close(ends[0]);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
        const Lines lines = ListFile(path).read();
        ASSERT_EQ(lines.size(), 2u);
        ASSERT_TRUE(lines[0] == content(last) || lines[0] == content(last + 1)) << "round " << round;
        ASSERT_EQ(lines[1], "Ende");
        step = last + 1;
    }
}
