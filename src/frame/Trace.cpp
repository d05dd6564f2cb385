#include "frame/Trace.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <system_error>

#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/platform/HostFile.h"

namespace brenvik {
namespace {

constexpr std::uintmax_t RotateAt = 4u << 20;
constexpr int KeptFiles = 3;

std::string stamp() {
    const auto now = std::chrono::system_clock::now();
    const auto part = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    const std::tm local = host::localTime(std::chrono::system_clock::to_time_t(now));
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}.{:03} ", local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                       local.tm_hour, local.tm_min, local.tm_sec, part);
}

// A line stays one line: control characters become their Unicode pictures, so that no text can forge a line.
void appendPlain(std::string& out, std::string_view text) {
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7F) out += c;
        else out += {'\xE2', '\x90', static_cast<char>(byte == 0x7F ? 0xA1 : 0x80 + byte)};
    }
}

constexpr std::string_view Hidden = "*****";

// Whoever hands a password over on the command line finds it nowhere in the log: not even where it stuck to another switch.
void hideSwitch(std::string& line) {
    constexpr std::string_view Switch = "/pw:";
    const auto same = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b; };
    for (auto place = line.begin(); (place = std::search(place, line.end(), Switch.begin(), Switch.end(), same)) != line.end();) {
        const auto start = place + static_cast<std::ptrdiff_t>(Switch.size()), end = std::find(start, line.end(), ' ');
        const auto at = start - line.begin();
        if (start != end) line.replace(start, end, Hidden);
        place = line.begin() + at;
    }
}

}  // namespace

struct TraceLog::File {
    std::FILE* handle = nullptr;
    std::uintmax_t size = 0;
    ~File() { if (handle != nullptr) std::fclose(handle); }
};

TraceLog::TraceLog() = default;
TraceLog::~TraceLog() = default;

void TraceLog::setFile(std::filesystem::path logFile) {
    path_ = std::move(logFile);
    file_.reset();
}

void TraceLog::hide(std::string secret) {
    if (secret.empty()) return;
    // Longest first, so that a secret that begins with another one leaves no rest behind.
    const auto longer = [&](const std::string& other) { return other.size() < secret.size(); };
    const auto place = std::find_if(secrets_.begin(), secrets_.end(), longer);
    secrets_.insert(place, std::move(secret));
}

bool TraceLog::open() {
    std::error_code error;
    // A link would have foreign files written, a pipe would be waited for.
    if (const auto kind = std::filesystem::symlink_status(path_, error); std::filesystem::exists(kind) && !std::filesystem::is_regular_file(kind)) return false;
    host::makePrivate(path_);   // where that is not possible the log is as good as it can be
    file_ = std::make_unique<File>();
    file_->handle = host::openFile(path_, "ab");
    if (file_->handle == nullptr) return file_.reset(), false;
    file_->size = std::filesystem::file_size(path_, error);
    if (error) file_->size = 0;
    return true;
}

void TraceLog::rotate() {
    file_.reset();
    const auto kept = [&](int number) {
        auto name = path_;
        return name += "." + std::to_string(number);
    };
    std::error_code ignored;  // a file that cannot be moved away only means that the log grows on
    std::filesystem::remove(kept(KeptFiles), ignored);
    for (int number = KeptFiles - 1; number >= 1; --number) std::filesystem::rename(kept(number), kept(number + 1), ignored);
    std::filesystem::rename(path_, kept(1), ignored);
}

bool TraceLog::put(std::string_view line) {
    if (path_.empty()) return true;
    std::string masked(line);
    hideSwitch(masked);
    for (const std::string& secret : secrets_)
        for (std::size_t place = 0; (place = masked.find(secret, place)) != std::string::npos; place += Hidden.size())
            masked.replace(place, secret.size(), Hidden);
    std::string out = stamp();
    appendPlain(out, masked);
    out += '\n';
    if (file_ == nullptr && !open()) return false;
    if (file_->size > 0 && file_->size + out.size() > RotateAt) {
        rotate();
        if (!open()) return false;
    }
    if (std::fwrite(out.data(), 1, out.size(), file_->handle) != out.size() || std::fflush(file_->handle) != 0)
        return file_.reset(), false;
    file_->size += out.size();
    return true;
}

bool TraceLog::tryWrite(std::string_view line) noexcept {
    if (!debug_) return true;
    try {
        if (put(line)) return failed_ = false, true;
    } catch (...) {
    }
    return false;
}

void TraceLog::write(std::string_view line) {
    if (!debug_ || tryWrite(line) || failed_) return;
    failed_ = true;
    if (!failureReport_) throw NumberedError(errnum::PathFileAccess, "Fehler beim Zugriff auf Pfad/Datei");
    failureReport_(procedures_.empty() ? std::string() : procedures_.back(), errnum::PathFileAccess);
}

void TraceLog::enter(std::string_view procedure) {
    procedures_.emplace_back(procedure);
    if (debug_) write("Prozedur: " + std::string(procedure) + " -Start-");
}

void TraceLog::leave(bool endLine) noexcept {
    try {
        if (endLine && debug_ && !procedures_.empty()) tryWrite("Prozedur: " + procedures_.back() + " -Ende-");
    } catch (...) {  // out of memory while unwinding: the next written line reports it
    }
    if (!procedures_.empty()) procedures_.pop_back();
}

std::string traceText(bool value) { return value ? "True" : "False"; }

std::string traceValue(std::string_view name, std::string_view text) {
    constexpr std::string_view Secret = "password";
    const std::string_view last = name.substr(name.rfind('\\') + 1);   // npos + 1 is 0
    const auto same = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b; };
    const bool hidden = std::search(last.begin(), last.end(), Secret.begin(), Secret.end(), same) != last.end();
    return std::string(hidden ? std::string_view("*****") : text);
}

ProcTrace::ProcTrace(TraceLog& log, std::string_view procedure) : log_(log) { log_.enter(procedure); }

ProcTrace::~ProcTrace() { log_.leave(end_); }

ProcTrace& ProcTrace::line(std::string_view prefix, std::string_view text) {
    log_.write(std::string(prefix).append(text));
    return *this;
}

}  // namespace brenvik
