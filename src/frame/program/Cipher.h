#pragma once
// The PC1 stream cipher behind the stored passwords. Texts and keys are UTF-8 outside and Windows-1252 bytes inside
// (a character outside it counts as "?"). It hides a password from a glance, nothing more.
#include <string>
#include <string_view>

namespace brenvik {

// Twice as many letters "a" to "p" as the text has characters. Keys of up to 10 characters take the 80-bit form,
// of 11 to 16 the 128-bit form; a longer one is error 5 with the message that the user sees.
std::string EncryptText(std::string_view text, std::string_view key);
// The inverse. Error 5 too for an odd number of letters and for others than "a" to "p".
std::string DecryptText(std::string_view text, std::string_view key);

}  // namespace brenvik
