#pragma once
// Failures travel as exceptions up to the numbered step that reports them; the number is what the
// user's report shows. Registry errors use the service's numbers 0x80040202 to 0x8004020F.
#include <cstdint>
#include <stdexcept>
#include <string>

namespace brenvik {

class NumberedError : public std::runtime_error {
public:
    NumberedError(std::int32_t errorNumber, const std::string& description)
        : std::runtime_error(description), number(errorNumber) {}
    std::int32_t number;
};

// A failure whose description names the place where it lies, which its number alone would not; the reports show it too.
class LocatedError : public NumberedError {
public:
    using NumberedError::NumberedError;
};

// Numbers of the ordinary run-time errors, as the reports show them.
namespace errnum {
inline constexpr std::int32_t InvalidCall = 5, Overflow = 6, OutOfMemory = 7, Subscript = 9, DivisionByZero = 11, TypeMismatch = 13,
                              FileNotFound = 53, PathFileAccess = 75, DiskFull = 61, Permission = 70, PathNotFound = 76,
                              Internal = 51;
}

// Errors that the registry service raises.
namespace regerr {
inline constexpr std::int32_t NoKey = static_cast<std::int32_t>(0x80040202), NoRoot = static_cast<std::int32_t>(0x80040203),
                              NoAccess = static_cast<std::int32_t>(0x80040204), KeyNotCreated = static_cast<std::int32_t>(0x80040205),
                              NoAssignment = static_cast<std::int32_t>(0x80040207), KeyNotRead = static_cast<std::int32_t>(0x80040208),
                              BadBinary = static_cast<std::int32_t>(0x8004020C), KeyCreateFailed = static_cast<std::int32_t>(0x8004020F);
}

class RegError : public NumberedError {
public:
    using NumberedError::NumberedError;
};

}  // namespace brenvik
