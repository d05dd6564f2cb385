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

using host::makeEinzelinstanz;
using Stand = host::Einzelinstanz::Stand;
using namespace std::chrono_literals;

namespace {

// Answers calls like the program's event loop, until it goes.
class Answering {
public:
    explicit Answering(host::Einzelinstanz& first) : thread_([this, &first] {
        while (!stop_) {
            if (const auto token = first.abholen()) tokens.push_back(*token);
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

TEST(Einzelinstanz, TheSecondCallsTheFirst) {
    const TempDir home;
    const auto first = makeEinzelinstanz(home.path());
    ASSERT_EQ(first->anmelden(1s, ""), Stand::Erste);
    EXPECT_GE(first->wakeHandle(), 0);
    EXPECT_EQ(first->abholen(), std::nullopt);
    Answering loop(*first);
    EXPECT_EQ(makeEinzelinstanz(home.path())->anmelden(5s, "token-17"), Stand::AndereGerufen);
    EXPECT_EQ(makeEinzelinstanz(home.path())->anmelden(5s, "not printable\n"), Stand::AndereGerufen);
    EXPECT_EQ(makeEinzelinstanz(home.path())->anmelden(5s, std::string(10000, 'x')), Stand::AndereGerufen);
    loop.end();
    ASSERT_FALSE(loop.tokens.empty());
    EXPECT_EQ(loop.tokens.front(), "token-17");
    for (std::size_t i = 1; i < loop.tokens.size(); ++i) EXPECT_EQ(loop.tokens[i], "") << "what is no token is left out";
    const TempDir other;
    EXPECT_EQ(makeEinzelinstanz(other.path())->anmelden(1s, ""), Stand::Erste) << "another home is another program";
}

TEST(Einzelinstanz, AFirstThatHangsIsWaitedForNoLongerThanAsked) {
    const TempDir home;
    const auto first = makeEinzelinstanz(home.path());
    ASSERT_EQ(first->anmelden(1s, ""), Stand::Erste);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(makeEinzelinstanz(home.path())->anmelden(300ms, ""), Stand::AndereAntwortetNicht);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s);
    Answering loop(*first);     // who gave up meanwhile does no harm
    EXPECT_EQ(makeEinzelinstanz(home.path())->anmelden(5s, "a"), Stand::AndereGerufen);
}

TEST(Einzelinstanz, ALeftOverSocketIsNoInstance) {
    const TempDir home;
    home.put("instanz.socket", "left by a crash");
    home.put("instanz.lock", "");
    auto first = makeEinzelinstanz(home.path());
    EXPECT_EQ(first->anmelden(1s, ""), Stand::Erste);
    first.reset();
    EXPECT_EQ(home.names(), std::vector<std::string>{"instanz.lock"});
    EXPECT_EQ(makeEinzelinstanz(home.path())->anmelden(1s, ""), Stand::Erste);
}

TEST(Einzelinstanz, WhoEndsMakesRoomForWhoWaits) {
    const TempDir home;
    auto first = makeEinzelinstanz(home.path());
    ASSERT_EQ(first->anmelden(1s, ""), Stand::Erste);
    Stand second{};
    std::thread waiting([&] { second = makeEinzelinstanz(home.path())->anmelden(10s, ""); });
    std::this_thread::sleep_for(50ms);
    first.reset();
    waiting.join();
    EXPECT_EQ(second, Stand::Erste);
}

TEST(Einzelinstanz, NonsenseCallersAreDropped) {
    const TempDir home;
    const auto first = makeEinzelinstanz(home.path());
    ASSERT_EQ(first->anmelden(1s, ""), Stand::Erste);
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    std::strncpy(place.sun_path, (home / "instanz.socket").c_str(), sizeof place.sun_path - 1);
    for (const std::string& text : {std::string("GET / HTTP/1.0\r\n\r\n"), std::string(4000, 'x'), std::string("nach vorn ohne Ende")}) {
        const int caller = ::socket(AF_UNIX, SOCK_STREAM, 0);
        ASSERT_EQ(::connect(caller, reinterpret_cast<sockaddr*>(&place), sizeof place), 0);
        ASSERT_EQ(::send(caller, text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
        EXPECT_EQ(first->abholen(), std::nullopt) << text.substr(0, 20);
        ::close(caller);
    }
}

TEST(Einzelinstanz, DeepHomesAndMissingOnes) {
    const TempDir home;
    const auto deep = home / std::string(100, 'a') / std::string(100, 'b');
    std::filesystem::create_directories(deep);
    const auto first = makeEinzelinstanz(deep);
    ASSERT_EQ(first->anmelden(1s, ""), Stand::Erste);
    Answering loop(*first);
    EXPECT_EQ(makeEinzelinstanz(deep)->anmelden(5s, ""), Stand::AndereGerufen);
    EXPECT_EQ(makeEinzelinstanz(home / "nirgends")->anmelden(1s, ""), Stand::Unbekannt);
}

}  // namespace brenvik::test
