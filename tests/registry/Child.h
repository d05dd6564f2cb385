#pragma once
// A process of its own, which tells through a pipe how far it has come.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <vector>

namespace brenvik::test {

class Child {
public:
    explicit Child(const std::function<void(const std::function<void(std::uint32_t)>&)>& work) {
        if (::pipe(ends_) != 0) ADD_FAILURE();
        pid_ = ::fork();
        if (pid_ != 0) {
            ::close(ends_[1]);
            return;
        }
        try {
            work([this](std::uint32_t number) {
                if (::write(ends_[1], &number, sizeof number) != sizeof number) _exit(2);
            });
            _exit(0);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s\n", error.what());
            _exit(3);
        }
    }
    // All that it tells until it ends.
    std::vector<std::uint32_t> told() {
        std::vector<std::uint32_t> all;
        for (std::uint32_t number = 0; ::read(ends_[0], &number, sizeof number) == sizeof number;) all.push_back(number);
        ::close(ends_[0]);
        ::waitpid(pid_, &status, 0);
        return all;
    }
    // Kills it some time after its first word; the last one.
    std::uint32_t killedAfter(int microseconds) {
        std::uint32_t first = 0;
        EXPECT_EQ(::read(ends_[0], &first, sizeof first), static_cast<ssize_t>(sizeof first));
        ::usleep(static_cast<useconds_t>(microseconds));
        ::kill(pid_, SIGKILL);
        const std::vector<std::uint32_t> more = told();
        EXPECT_TRUE(WIFSIGNALED(status)) << "ended by itself: " << WEXITSTATUS(status);
        return more.empty() ? first : more.back();
    }
    int status = -1;

private:
    int ends_[2]{};
    pid_t pid_ = 0;
};

}  // namespace brenvik::test
