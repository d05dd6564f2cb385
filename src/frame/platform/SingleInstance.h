#pragma once
// One running program per home. The first one holds the home; every later one asks it to come to the front and ends. A hold
// ends with its process, however that ends.
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace brenvik::host {

class SingleInstance {
public:
    enum class Stand {
        First,                  // this process holds the home now
        OtherCalled,          // another one does, and answered that it comes to the front
        OtherDoesNotAnswer,   // another one does, but gave no answer in time
        Unknown,              // it cannot be told here, for instance in a home without write permission
    };
    virtual ~SingleInstance() = default;

    // token: what the desktop gave this process for coming to the front (printable, at most MaxToken characters; else it
    // is left out).
    virtual Stand logOn(std::chrono::milliseconds patience, const std::string& token) = 0;

    // For the first one: becomes ready when somebody calls (a descriptor to read from, on Windows an event); -1: none.
    virtual std::intptr_t wakeHandle() const = 0;
    // Answers all who called meanwhile; the last one's token (empty without one), nothing if nobody called. Does not wait.
    virtual std::optional<std::string> fetch() = 0;

    static constexpr std::size_t MaxToken = 256;
};

std::unique_ptr<SingleInstance> makeSingleInstance(const std::filesystem::path& home);

}  // namespace brenvik::host
