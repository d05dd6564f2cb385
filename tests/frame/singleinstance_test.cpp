// One running program per home: several holders in this process stand for several processes.
#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <thread>

#include "frame/platform/SingleInstance.h"
#include "support/TempDir.h"

namespace brenvik::test {

using host::makeSingleInstance;
using Stand = host::SingleInstance::Stand;
using namespace std::chrono_literals;

namespace {

// Answers calls like the program's event loop, until it goes.
class Answering {
public:
    explicit Answering(host::SingleInstance& first) : thread_([this, &first] {
        while (!stop_) {
            if (const auto token = first.fetch()) tokens.push_back(*token);
            std::this_thread::sleep_for(5ms);
        }
    }) {}
    ~Answering() { end(); }
    void end() {
        stop_ = true;
        if (thread_.joinable()) thread_.join();
    }
    std::vector<std::string> tokens;

private:
    std::atomic<bool> stop_ = false;
    std::thread thread_;
};

}  // namespace

TEST(SingleInstance, TheSecondCallsTheFirst) {
    const TempDir home;
    const auto first = makeSingleInstance(home.path());
    ASSERT_EQ(first->logOn(1s, ""), Stand::First);
    EXPECT_GE(first->wakeHandle(), 0);
    EXPECT_EQ(first->fetch(), std::nullopt);
    Answering loop(*first);
    EXPECT_EQ(makeSingleInstance(home.path())->logOn(5s, "token-17"), Stand::OtherCalled);
    EXPECT_EQ(makeSingleInstance(home.path())->logOn(5s, "not printable\n"), Stand::OtherCalled);
    EXPECT_EQ(makeSingleInstance(home.path())->logOn(5s, std::string(10000, 'x')), Stand::OtherCalled);
    loop.end();
    ASSERT_FALSE(loop.tokens.empty());
    EXPECT_EQ(loop.tokens.front(), "token-17");
    for (std::size_t i = 1; i < loop.tokens.size(); ++i) EXPECT_EQ(loop.tokens[i], "") << "what is no token is left out";
    const TempDir other;
    EXPECT_EQ(makeSingleInstance(other.path())->logOn(1s, ""), Stand::First) << "another home is another program";
}

TEST(SingleInstance, AFirstThatHangsIsWaitedForNoLongerThanAsked) {
    const TempDir home;
    const auto first = makeSingleInstance(home.path());
    ASSERT_EQ(first->logOn(1s, ""), Stand::First);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(makeSingleInstance(home.path())->logOn(300ms, ""), Stand::OtherDoesNotAnswer);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s);
    Answering loop(*first);     // who gave up meanwhile does no harm
    EXPECT_EQ(makeSingleInstance(home.path())->logOn(5s, "a"), Stand::OtherCalled);
}

TEST(SingleInstance, ALeftOverSocketIsNoInstance) {
    const TempDir home;
    home.put("instanz.socket", "left by a crash");
    home.put("instanz.lock", "");
    auto first = makeSingleInstance(home.path());
    EXPECT_EQ(first->logOn(1s, ""), Stand::First);
    first.reset();
    EXPECT_EQ(home.names(), std::vector<std::string>{"instanz.lock"});
    EXPECT_EQ(makeSingleInstance(home.path())->logOn(1s, ""), Stand::First);
}

TEST(SingleInstance, WhoEndsMakesRoomForWhoWaits) {
    const TempDir home;
    auto first = makeSingleInstance(home.path());
    ASSERT_EQ(first->logOn(1s, ""), Stand::First);
    Stand second{};
    std::thread waiting([&] { second = makeSingleInstance(home.path())->logOn(10s, ""); });
    std::this_thread::sleep_for(50ms);
    first.reset();
    waiting.join();
    EXPECT_EQ(second, Stand::First);
}

TEST(SingleInstance, NonsenseCallersAreDropped) {
    const TempDir home;
    const auto first = makeSingleInstance(home.path());
    ASSERT_EQ(first->logOn(1s, ""), Stand::First);
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    std::strncpy(place.sun_path, (home / "instanz.socket").c_str(), sizeof place.sun_path - 1);
    for (const std::string& text : {std::string("GET / HTTP/1.0\r\n\r\n"), std::string(4000, 'x'), std::string("nach vorn ohne Ende")}) {
        const int caller = ::socket(AF_UNIX, SOCK_STREAM, 0);
        ASSERT_EQ(::connect(caller, reinterpret_cast<sockaddr*>(&place), sizeof place), 0);
        ASSERT_EQ(::send(caller, text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
        EXPECT_EQ(first->fetch(), std::nullopt) << text.substr(0, 20);
        ::close(caller);
    }
}

TEST(SingleInstance, DeepHomesAndMissingOnes) {
    const TempDir home;
    const auto deep = home / std::string(100, 'a') / std::string(100, 'b');
    std::filesystem::create_directories(deep);
    const auto first = makeSingleInstance(deep);
    ASSERT_EQ(first->logOn(1s, ""), Stand::First);
    Answering loop(*first);
    EXPECT_EQ(makeSingleInstance(deep)->logOn(5s, ""), Stand::OtherCalled);
    EXPECT_EQ(makeSingleInstance(home / "nirgends")->logOn(1s, ""), Stand::Unknown);
}

}  // namespace brenvik::test
