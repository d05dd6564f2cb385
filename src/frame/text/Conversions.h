#pragma once
// Conversions between texts and numbers, and the text helpers that depend on letters. Texts are UTF-8; positions and
// lengths count characters, not bytes. Failures are NumberedErrors: 6 overflow, 13 no number, 5 bad argument.
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

struct FrameContext;

// --- numbers from texts ---
double Val(std::string_view text);              // reads up to the first unfit character (blanks skipped, "&H" and "&O" known); never fails
double toDbl(std::string_view text);            // whole text a number ("." as decimal point, blanks at the ends, "&H"), else 13
bool isNumeric(std::string_view text);
double roundHalfEven(double value);
std::int16_t toInt(double value);               // 16 bits; rounds half to even
std::int16_t toInt(std::string_view text);
std::int32_t toLng(double value);               // 32 bits
std::int32_t toLng(std::string_view text);
bool toBool(std::string_view text);             // True/False, Wahr/Falsch, or a number

// --- texts from numbers ---
std::string numberText(double value);           // at most 15 digits, ".", no exponent between 1e-15 and 1e15
template <std::integral T> std::string numberText(T value) { return std::to_string(value); }
std::string boolText(bool value);               // "True" / "False"
std::string format00(std::int64_t value);       // at least two digits
std::string format0000(std::int64_t value);     // at least four digits

// --- number systems. The forms with a context write trace lines and report a failure under their own name. ---
std::string Dec2Hex(std::int32_t number);                       // upper case, no padding; -1 is "FFFFFFFF"
std::string Dec2Hex(FrameContext& ctx, std::int32_t number);
std::string Hex2Dec(std::string_view text);                     // "A" -> "10", "5" -> "05"; up to four digits are 16-bit signed
std::string Hex2Dec(FrameContext& ctx, std::string_view text);  // empty text after a failure
std::string DecimalToBinary(std::int32_t number);               // empty for 0 and below
std::int32_t BinaryToDecimal(std::string_view text);            // error 6 beyond 32 bits
std::int32_t BinaryToDecimal(FrameContext& ctx, std::string_view text);  // after a failure: what was summed until then
// First the part at FF0000, then FF00, then FF; in the platform's byte order of colours that is blue, green, red.
void RGBSplit(std::int32_t colour, std::uint8_t& first, std::uint8_t& second, std::uint8_t& third);
void RGBSplit(FrameContext& ctx, std::int32_t colour, std::uint8_t& first, std::uint8_t& second, std::uint8_t& third);

// --- letters: the letters of Windows-1252 have two cases, ß and all else stay as they are ---
std::string upperCase(std::string_view text);
std::string lowerCase(std::string_view text);
// Ignores case. Signs before digits before letters, letters with marks behind their base letter; 0 exactly for
// texts that differ in case alone.
int compareText(std::string_view left, std::string_view right);
inline bool equalText(std::string_view left, std::string_view right) { return compareText(left, right) == 0; }
std::string sortKey(std::string_view text);     // its bytes order as compareText does

// --- pieces ---
std::size_t textLength(std::string_view text);
std::string Left(std::string_view text, std::size_t count);
std::string Right(std::string_view text, std::size_t count);
std::string Mid(std::string_view text, std::size_t start);                      // start counts from 1
std::string Mid(std::string_view text, std::size_t start, std::size_t count);
std::size_t InStr(std::string_view text, std::string_view wanted);              // exact; 0: not there
std::size_t InStr(std::size_t start, std::string_view text, std::string_view wanted);
std::string Replace(std::string_view text, std::string_view wanted, std::string_view by);       // all, exact
std::string ReplaceFirst(std::string_view text, std::string_view wanted, std::string_view by);
std::string Trim(std::string_view text);        // blanks (U+0020) only
std::string LTrim(std::string_view text);
std::string RTrim(std::string_view text);
std::vector<std::string> Split(std::string_view text, std::string_view separator);  // no piece for the empty text; empty pieces stay
std::string SQLString(std::string_view text);   // doubles " ' CR LF

// Sorts [first, last] (counted from 0) in place, ignoring case; bad bounds are reported, and nothing is sorted.
void SelectionSort(FrameContext& ctx, std::vector<std::string>& texts, std::int16_t first, std::int16_t last);

}  // namespace brenvik
