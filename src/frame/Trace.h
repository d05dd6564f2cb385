#pragma once
// The trace log. Lines are kept only while the debug flag is on, one plain line each with a time stamp in front
// ("2002-11-09 12:30:00.123 "), flushed line by line, in brenvik.log in the program's home (UTF-8, LF). At 4 MiB the
// file is moved to brenvik.log.1, older ones to .2 and .3. Control characters inside a line are written as their
// Unicode pictures. Passwords must not reach the log: a secret registered with hide() is written as "*****", and so is what stands
// behind "/PW:". The file is its owner's alone.
#include <concepts>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

class TraceLog {
public:
    // Gets the name of the procedure under way and the error number when a line could not be written.
    using FailureReport = std::function<void(const std::string& procedure, std::int32_t errorNumber)>;

    TraceLog();
    ~TraceLog();
    TraceLog(const TraceLog&) = delete;
    TraceLog& operator=(const TraceLog&) = delete;

    void setFile(std::filesystem::path logFile);   // opened at the first kept line
    void setDebug(bool on) { debug_ = on; }
    bool debug() const { return debug_; }
    // Cheap while the flag is off. A failure is reported once until a line gets through again; without a report
    // it is thrown (error 75).
    void write(std::string_view line);
    void hide(std::string secret);
    void setFailureReport(FailureReport report) { failureReport_ = std::move(report); }

private:
    friend class ProcTrace;
    struct File;
    void enter(std::string_view procedure);
    void leave(bool endLine) noexcept;
    bool tryWrite(std::string_view line) noexcept;
    bool put(std::string_view line);
    bool open();
    void rotate();

    bool debug_ = false;
    bool failed_ = false;
    std::filesystem::path path_;
    std::vector<std::string> secrets_;             // longest first
    std::vector<std::string> procedures_;          // under way, innermost last
    std::unique_ptr<File> file_;
    FailureReport failureReport_;
};

std::string traceText(bool value);                 // "True" / "False"
template <std::integral T> std::string traceText(T value) { return std::to_string(value); }
inline std::string traceText(std::string_view value) { return std::string(value); }
inline std::string traceText(const std::string& value) { return value; }
inline std::string traceText(const char* value) { return value; }

// A registry value for the log: "*****" if its name (or the path that ends in it) has "password" in it, whatever the case.
std::string traceValue(std::string_view name, std::string_view text);

// Start line on construction, end line on destruction; P and R lines in between.
class ProcTrace {
public:
    ProcTrace(TraceLog& log, std::string_view procedure);
    ~ProcTrace();
    ProcTrace(const ProcTrace&) = delete;
    ProcTrace& operator=(const ProcTrace&) = delete;
    template <class T> ProcTrace& p(const T& value) { return log_.debug() ? line("--- P: ", traceText(value)) : *this; }
    template <class T> ProcTrace& r(const T& value) { return log_.debug() ? line("--- R: ", traceText(value)) : *this; }
    ProcTrace& note(std::string_view text) { return log_.debug() ? line("--- ", text) : *this; }
    void noEnd() { end_ = false; }                 // for the few exits that write no closing line

private:
    ProcTrace& line(std::string_view prefix, std::string_view text);
    TraceLog& log_;
    bool end_ = true;
};

}  // namespace brenvik
