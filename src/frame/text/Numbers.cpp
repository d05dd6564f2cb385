// Numbers from texts and texts from numbers.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/Reports.h"
#include "frame/text/Conversions.h"
#include "frame/text/HexDigit.h"

namespace brenvik {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

[[noreturn]] void overflow() { throw NumberedError(errnum::Overflow, "Überlauf"); }
[[noreturn]] void mismatch() { throw NumberedError(errnum::TypeMismatch, "Typen unverträglich"); }

struct Radix {
    double value = 0;
    std::size_t digits = 0;       // without zeros in front of a number of more than eight digits
    std::size_t end = 0;          // behind the last character that was read
};

// The digits behind "&H" or "&O". Up to four hexadecimal digits are 16-bit signed, up to eight 32-bit signed;
// a "&" behind them asks for 32 bits.
Radix readRadix(std::string_view digits, int radix) {
    Radix result;
    std::size_t zeros = 0;
    for (; result.end < digits.size(); ++result.end) {
        const int digit = hexDigit(digits[result.end]);
        if (digit < 0 || digit >= radix) break;
        result.value = result.value * radix + digit;
        if (result.value == 0) ++zeros;
    }
    result.digits = result.end > 8 ? result.end - zeros : result.end;
    bool longForm = result.digits > 4;
    if (result.end > 0 && result.end < digits.size() && digits[result.end] == '&') longForm = true, ++result.end;
    if (radix == 16 && !longForm && result.value > 0x7FFF) result.value -= 0x10000;
    if (radix == 16 && longForm && result.digits <= 8 && result.value > 0x7FFFFFFF) result.value -= 4294967296.0;
    return result;
}

// Length of the decimal number at the front: sign, digits, point, exponent. 0: none.
std::size_t decimalLength(std::string_view text) {
    std::size_t place = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    std::size_t digits = 0;
    for (; place < text.size() && isDigit(text[place]); ++place) ++digits;
    if (place < text.size() && text[place] == '.')
        for (++place; place < text.size() && isDigit(text[place]); ++place) ++digits;
    if (digits == 0) return 0;
    if (place < text.size() && (text[place] == 'e' || text[place] == 'E')) {
        std::size_t exponent = place + 1;
        if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) ++exponent;
        if (exponent < text.size() && isDigit(text[exponent]))
            for (place = exponent; place < text.size() && isDigit(text[place]);) ++place;
    }
    return place;
}

// A text that decimalLength measured. Nothing: beyond the range of a double.
std::optional<double> readDecimal(std::string_view text) {
    if (text.front() == '+') text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    static_cast<void>(end);
    if (error != std::errc::result_out_of_range) return value;
    const std::size_t exponent = text.find_first_of("eE");
    const bool tiny = exponent != std::string_view::npos ? text[exponent + 1] == '-' : text.find_first_of("123456789") > text.find('.');
    if (tiny) return 0.0;
    return std::nullopt;
}

int radixOf(std::string_view text) {
    if (text.size() < 2 || text[0] != '&') return 0;
    return text[1] == 'H' || text[1] == 'h' ? 16 : text[1] == 'O' || text[1] == 'o' ? 8 : 0;
}

std::optional<double> wholeNumber(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    if (const int radix = radixOf(text); radix != 0) {
        const Radix number = readRadix(text.substr(2), radix);
        if (number.end == 0 || number.end != text.size() - 2) return std::nullopt;
        if (number.digits > 8) overflow();
        return number.value;
    }
    if (text.empty() || decimalLength(text) != text.size()) return std::nullopt;
    const auto value = readDecimal(text);
    if (!value) overflow();
    return value;
}

template <class Integer> Integer checkedRound(double value) {
    const double rounded = roundHalfEven(value);
    if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max())) overflow();
    return static_cast<Integer>(rounded);
}

struct BinarySum {
    std::int32_t sum = 0;
    bool overflow = false;
};

BinarySum sumBinary(std::string_view text) {
    BinarySum result;
    std::int64_t sum = 0;
    std::size_t weight = 0;
    for (auto place = text.rbegin(); place != text.rend(); ++place, ++weight) {
        if (*place != '1') continue;
        if (weight > 30) return result.overflow = true, result;
        sum += std::int64_t{1} << weight;
        result.sum = static_cast<std::int32_t>(sum);
    }
    return result;
}

}  // namespace

double Val(std::string_view text) {
    std::string compact;  // blanks, tabs and line ends count nowhere
    for (const char c : text) {
        if (c == ' ' || c == '\t' || c == '\n' || c == '\r') continue;
        if (!isDigit(c) && hexDigit(c) < 0 && std::string_view("+-.&HhOo").find(c) == std::string_view::npos) break;
        compact += c;
    }
    if (const int radix = radixOf(compact); radix != 0) return readRadix(std::string_view(compact).substr(2), radix).value;
    std::replace_if(compact.begin(), compact.end(), [](char c) { return c == 'd' || c == 'D'; }, 'E');
    const std::size_t length = decimalLength(compact);
    if (length == 0) return 0;
    const double limit = std::numeric_limits<double>::max();
    return readDecimal(std::string_view(compact).substr(0, length)).value_or(compact[0] == '-' ? -limit : limit);
}

double toDbl(std::string_view text) {
    const auto value = wholeNumber(text);
    if (!value) mismatch();
    return *value;
}

bool isNumeric(std::string_view text) {
    try {
        return wholeNumber(text).has_value();
    } catch (const NumberedError&) {
        return false;
    }
}

double roundHalfEven(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest != 0.5) return rest < 0.5 ? below : below + 1;
    return std::fmod(below, 2.0) == 0 ? below : below + 1;
}

std::int16_t toInt(double value) { return checkedRound<std::int16_t>(value); }
std::int16_t toInt(std::string_view text) { return toInt(toDbl(text)); }
std::int32_t toLng(double value) { return checkedRound<std::int32_t>(value); }
std::int32_t toLng(std::string_view text) { return toLng(toDbl(text)); }

bool toBool(std::string_view text) {
    const std::string word = lowerCase(Trim(text));
    if (word == "true" || word == "wahr") return true;
    if (word == "false" || word == "falsch") return false;
    return toDbl(word) != 0;
}

std::string numberText(double value) {
    if (!std::isfinite(value)) overflow();
    if (value == 0) return "0";
    std::string text = fmt::format("{:.15g}", value);
    const std::size_t mark = text.find('e');
    if (mark == std::string::npos) return text;
    const int exponent = static_cast<int>(Val(std::string_view(text).substr(mark + 1)));
    if (exponent > 0 || exponent < -15) return text[mark] = 'E', text;
    text = fmt::format("{:.{}f}", value, 14 - exponent);
    return text.erase(text.find_last_not_of('0') + 1);
}

std::string boolText(bool value) { return value ? "True" : "False"; }

std::string format00(std::int64_t value) { return fmt::format("{:0{}}", value, value < 0 ? 3 : 2); }
std::string format0000(std::int64_t value) { return fmt::format("{:0{}}", value, value < 0 ? 5 : 4); }

std::string Dec2Hex(std::int32_t number) { return fmt::format("{:X}", static_cast<std::uint32_t>(number)); }

std::string Dec2Hex(FrameContext& ctx, std::int32_t number) {
    ProcTrace trace(ctx.trace, "Dec2Hex");
    trace.p(number);
    const std::string result = Dec2Hex(number);
    trace.r(result);
    return result;
}

std::string Hex2Dec(std::string_view text) {
    std::string digits;
    for (const char c : text)
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r') digits += c;
    const Radix number = readRadix(digits, 16);
    if (number.digits > 8) overflow();
    return (number.value < 10 ? "0" : "") + numberText(number.value);
}

std::string Hex2Dec(FrameContext& ctx, std::string_view text) {
    ProcTrace trace(ctx.trace, "Hex2Dec");
    trace.p(text);
    std::string result;
    reportAndGoOn(ctx, "Hex2Dec", [&] { result = Hex2Dec(text); });
    trace.r(result);
    return result;
}

// The first weight is 2^31 - 1 and not a power of two, so the largest number has a first digit of its own.
std::string DecimalToBinary(std::int32_t number) {
    if (number <= 0) return {};
    if (number == std::numeric_limits<std::int32_t>::max()) return "1" + std::string(31, '0');
    return fmt::format("{:b}", number);
}

std::int32_t BinaryToDecimal(std::string_view text) {
    const BinarySum result = sumBinary(text);
    if (result.overflow) overflow();
    return result.sum;
}

std::int32_t BinaryToDecimal(FrameContext& ctx, std::string_view text) {
    const BinarySum result = sumBinary(text);
    if (result.overflow) reportAndGoOn(ctx, "BinaryToDecimal", overflow);
    return result.sum;
}

void RGBSplit(std::int32_t colour, std::uint8_t& first, std::uint8_t& second, std::uint8_t& third) {
    const auto bits = static_cast<std::uint32_t>(colour);
    first = static_cast<std::uint8_t>(bits >> 16 & 0xFF);
    second = static_cast<std::uint8_t>(bits >> 8 & 0xFF);
    third = static_cast<std::uint8_t>(bits & 0xFF);
}

void RGBSplit(FrameContext& ctx, std::int32_t colour, std::uint8_t& first, std::uint8_t& second, std::uint8_t& third) {
    ProcTrace trace(ctx.trace, "RGBSplit");
    trace.p(colour);
    RGBSplit(colour, first, second, third);
    trace.r(fmt::format("{},{},{}", first, second, third));
}

}  // namespace brenvik
