#ifndef _WIN32
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "frame/platform/SingleInstance.h"

namespace brenvik::host {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr const char* LockName = "instanz.lock";
constexpr const char* SocketName = "instanz.socket";
constexpr std::string_view Call = "nach vorn ", Reply = "ja\n";
constexpr milliseconds CallerPatience{200}, Pause{20};
constexpr int Waiting = 8;

class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { reset(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return number_; }
    bool ok() const { return number_ >= 0; }
    void reset(int number = -1) {
        if (number_ >= 0) ::close(number_);
        number_ = number;
    }

private:
    int number_;
};

bool usable(const std::string& token) {
    return !token.empty() && token.size() <= SingleInstance::MaxToken && std::all_of(token.begin(), token.end(), [](char c) { return c > ' ' && c <= '~'; });
}

bool waitFor(int descriptor, short what, Clock::time_point until) {
    const auto left = std::chrono::duration_cast<milliseconds>(until - Clock::now()).count();
    pollfd one{descriptor, what, 0};
    return left > 0 && ::poll(&one, 1, static_cast<int>(left)) == 1;
}

// A line, or what came of it until then. The other side may be anybody who may write into the home: bounded in size and time.
std::string readLine(int descriptor, Clock::time_point until) {
    std::string line;
    std::array<char, 512> buffer{};
    while (line.size() <= buffer.size() && line.find('\n') == std::string::npos && waitFor(descriptor, POLLIN, until)) {
        const ssize_t got = ::recv(descriptor, buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (got <= 0) break;
        line.append(buffer.data(), static_cast<std::size_t>(got));
    }
    return line;
}

bool sendText(int descriptor, std::string_view text) {
    return ::send(descriptor, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT) == static_cast<ssize_t>(text.size());
}

class SingleInstancePosix final : public SingleInstance {
public:
    explicit SingleInstancePosix(std::filesystem::path home) : home_(std::move(home)) {}
    ~SingleInstancePosix() override {
        if (listening_.ok()) ::unlink((home_ / SocketName).c_str());
    }

    Stand logOn(milliseconds patience, const std::string& token) override {
        const auto until = Clock::now() + patience;
        folder_.reset(::open(home_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        lock_.reset(::open((home_ / LockName).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
        if (!folder_.ok() || !lock_.ok()) return Stand::Unknown;
        // The other one may be about to start or to end: what fails is tried again until time is up.
        for (;;) {
            if (::flock(lock_.get(), LOCK_EX | LOCK_NB) == 0) return listen() ? Stand::First : Stand::Unknown;
            if (errno != EWOULDBLOCK && errno != EINTR) return Stand::Unknown;
            if (call(token, until)) return Stand::OtherCalled;
            if (Clock::now() + Pause >= until) return Stand::OtherDoesNotAnswer;
            std::this_thread::sleep_for(Pause);
        }
    }

    std::intptr_t wakeHandle() const override { return listening_.get(); }

    std::optional<std::string> fetch() override {
        std::optional<std::string> token;
        for (;;) {
            const Descriptor caller(::accept4(listening_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
            if (!caller.ok()) return token;
            std::string line = readLine(caller.get(), Clock::now() + CallerPatience);
            if (line.empty() || line.back() != '\n' || line.rfind(Call, 0) != 0) continue;
            line = line.substr(Call.size(), line.size() - Call.size() - 1);
            sendText(caller.get(), Reply);
            if (!token || usable(line)) token = usable(line) ? line : std::string();
        }
    }

private:
    // A socket's address is short; a home that lies deeper is reached through its descriptor.
    sockaddr_un address() const {
        sockaddr_un place{};
        std::string path = (home_ / SocketName).string();
        if (path.size() >= sizeof place.sun_path) path = "/proc/self/fd/" + std::to_string(folder_.get()) + "/" + SocketName;
        place.sun_family = AF_UNIX;
        std::memcpy(place.sun_path, path.c_str(), path.size() + 1);
        return place;
    }

    bool listen() {
        const sockaddr_un place = address();
        ::unlink((home_ / SocketName).c_str());   // of a process that is no more
        listening_.reset(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        const bool ready = listening_.ok() && ::bind(listening_.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0 &&
                           ::chmod((home_ / SocketName).c_str(), 0600) == 0 && ::listen(listening_.get(), Waiting) == 0;
        if (!ready) listening_.reset();
        return ready;
    }

    bool call(const std::string& token, Clock::time_point until) const {
        const sockaddr_un place = address();
        const Descriptor other(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        if (!other.ok() || ::connect(other.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0) return false;
        const std::string text = std::string(Call) + (usable(token) ? token : std::string()) + "\n";
        return sendText(other.get(), text) && readLine(other.get(), until) == Reply;
    }

    std::filesystem::path home_;
    Descriptor folder_, lock_, listening_;
};

}  // namespace

std::unique_ptr<SingleInstance> makeSingleInstance(const std::filesystem::path& home) { return std::make_unique<SingleInstancePosix>(home); }

}  // namespace brenvik::host
#endif
