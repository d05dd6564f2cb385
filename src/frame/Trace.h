#pragma once
// The trace log. Lines are kept only while the debug flag is on, one plain line each with a time stamp in front,
// flushed line by line, in brenvik.log in the program's home (UTF-8, rotated by size). Passwords must not reach it:
// a secret registered with hide() is written as "*****".
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

class TraceLog {
public:
    TraceLog();
    ~TraceLog();
    TraceLog(const TraceLog&) = delete;
    TraceLog& operator=(const TraceLog&) = delete;

    void setFile(std::filesystem::path logFile);   // opened at the first kept line
    void setDebug(bool on) { debug_ = on; }
    bool debug() const { return debug_; }
    void write(std::string_view line);             // cheap while the flag is off
    void hide(std::string secret);

private:
    struct File;
    bool debug_ = false;
    std::filesystem::path path_;
    std::vector<std::string> secrets_;
    std::unique_ptr<File> file_;
};

std::string traceText(bool value);                 // "True" / "False"
std::string traceText(std::int64_t value);
inline std::string traceText(int value) { return traceText(static_cast<std::int64_t>(value)); }
inline std::string traceText(std::string_view value) { return std::string(value); }
inline std::string traceText(const std::string& value) { return value; }
inline std::string traceText(const char* value) { return value; }

// Start line on construction, end line on destruction; P and R lines in between.
class ProcTrace {
public:
    ProcTrace(TraceLog& log, std::string_view procedure);
    ~ProcTrace();
    ProcTrace(const ProcTrace&) = delete;
    ProcTrace& operator=(const ProcTrace&) = delete;
    template <class T> ProcTrace& p(const T& value) { return line("--- P: ", traceText(value)); }
    template <class T> ProcTrace& r(const T& value) { return line("--- R: ", traceText(value)); }
    ProcTrace& note(std::string_view text) { return line("--- ", text); }
    void noEnd() { end_ = false; }                 // for the few exits that write no closing line

private:
    ProcTrace& line(std::string_view prefix, std::string_view text);
    TraceLog& log_;
    std::string name_;
    bool end_ = true;
};

}  // namespace brenvik
