#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <functional>
#include <thread>

#include "frame/platform/SingleInstance.h"

namespace brenvik::host {
namespace {

class Handle {
public:
    explicit Handle(HANDLE handle = nullptr) : handle_(handle) {}
    ~Handle() { if (handle_ != nullptr) ::CloseHandle(handle_); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    HANDLE get() const { return handle_; }

private:
    HANDLE handle_;
};

// Three named objects of the session: the hold (a mutex), the call and its answer (events that fall back by themselves).
class SingleInstanceWindows final : public SingleInstance {
public:
    explicit SingleInstanceWindows(const std::filesystem::path& home)
        : name_(L"Local\\Brenvik-" + std::to_wstring(std::hash<std::wstring>()(home.lexically_normal().wstring()))),
          hold_(::CreateMutexW(nullptr, FALSE, (name_ + L"-halten").c_str())), call_(::CreateEventW(nullptr, FALSE, FALSE, (name_ + L"-ruf").c_str())),
          answer_(::CreateEventW(nullptr, FALSE, FALSE, (name_ + L"-antwort").c_str())) {}
    ~SingleInstanceWindows() override { if (holding_) ::ReleaseMutex(hold_.get()); }

    Stand logOn(std::chrono::milliseconds patience, const std::string&) override {
        if (hold_.get() == nullptr || call_.get() == nullptr || answer_.get() == nullptr) return Stand::Unknown;
        const DWORD state = ::WaitForSingleObject(hold_.get(), 0);
        holding_ = state == WAIT_OBJECT_0 || state == WAIT_ABANDONED;
        if (holding_) return Stand::First;
        ::AllowSetForegroundWindow(ASFW_ANY);     // the other one may come to the front in our place
        ::ResetEvent(answer_.get());
        ::SetEvent(call_.get());
        const HANDLE either[] = {answer_.get(), hold_.get()};
        switch (::WaitForMultipleObjects(2, either, FALSE, static_cast<DWORD>(patience.count()))) {
            case WAIT_OBJECT_0: return Stand::OtherCalled;
            case WAIT_OBJECT_0 + 1:               // it ended meanwhile
            case WAIT_ABANDONED_0 + 1: holding_ = true; return Stand::First;
            default: return Stand::OtherDoesNotAnswer;
        }
    }

    std::intptr_t wakeHandle() const override { return reinterpret_cast<std::intptr_t>(call_.get()); }

    // The notifier that watches the event has taken its signal already: being asked means that somebody called.
    std::optional<std::string> fetch() override {
        ::SetEvent(answer_.get());
        return std::string();
    }

private:
    std::wstring name_;
    Handle hold_, call_, answer_;
    bool holding_ = false;
};

}  // namespace

std::unique_ptr<SingleInstance> makeSingleInstance(const std::filesystem::path& home) { return std::make_unique<SingleInstanceWindows>(home); }

}  // namespace brenvik::host
#endif
