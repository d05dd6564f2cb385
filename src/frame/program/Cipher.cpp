#include "frame/program/Cipher.h"

#include <array>
#include <cstdint>

#include "frame/Errors.h"
#include "frame/Messages.h"
#include "frame/text/Codepage.h"

namespace brenvik {
namespace {

constexpr std::size_t ShortKey = 10, LongKey = 16;  // bytes of the 80-bit and the 128-bit form

class Pc1 {
public:
    explicit Pc1(std::string_view key) {
        const std::string bytes = ansiFromUtf8(key);
        if (bytes.size() > LongKey) throw NumberedError(errnum::InvalidCall, messages::KeyTooLong);
        size_ = bytes.size() > ShortKey ? LongKey : ShortKey;
        key_.fill(' ');
        for (std::size_t i = 0; i < bytes.size(); ++i) key_[i] = static_cast<std::uint8_t>(bytes[i]);
    }

    // The mask of the next character.
    std::uint8_t mask() {
        std::uint16_t joined = 0;
        for (std::size_t i = 0; i < size_ / 2; ++i) {
            const std::uint32_t word = (key_[2 * i] << 8 | key_[2 * i + 1]) ^ (i > 0 ? words_[i - 1] : 0U);
            const std::uint32_t product = 346 * word;
            sum_ = static_cast<std::uint16_t>(20021U * (sum_ + static_cast<std::uint32_t>(i)) + product + carry_);
            carry_ = static_cast<std::uint16_t>(product);
            words_[i] = static_cast<std::uint16_t>(20021U * word + 1);
            joined = static_cast<std::uint16_t>(joined ^ words_[i] ^ sum_);
        }
        return static_cast<std::uint8_t>(joined >> 8 ^ (joined & 0xFF));
    }

    // Both directions change the key with the plain character.
    void feed(std::uint8_t plain) {
        for (std::size_t i = 0; i < size_; ++i) key_[i] ^= plain;
    }

private:
    std::array<std::uint8_t, LongKey> key_{};
    std::array<std::uint16_t, LongKey / 2> words_{};
    std::size_t size_ = ShortKey;
    std::uint16_t carry_ = 0, sum_ = 0;
};

std::uint8_t halfOf(char letter) {
    if (letter < 'a' || letter > 'p') throw NumberedError(errnum::InvalidCall, "Der verschlüsselte Text ist beschädigt.");
    return static_cast<std::uint8_t>(letter - 'a');
}

}  // namespace

std::string EncryptText(std::string_view text, std::string_view key) {
    Pc1 cipher(key);
    std::string letters;
    for (const char c : ansiFromUtf8(text)) {
        const auto plain = static_cast<std::uint8_t>(c);
        const auto masked = static_cast<std::uint8_t>(plain ^ cipher.mask());
        cipher.feed(plain);
        letters += static_cast<char>('a' + (masked >> 4));
        letters += static_cast<char>('a' + (masked & 0xF));
    }
    return letters;
}

std::string DecryptText(std::string_view text, std::string_view key) {
    Pc1 cipher(key);
    if (text.size() % 2 != 0) throw NumberedError(errnum::InvalidCall, "Der verschlüsselte Text ist beschädigt.");
    std::string bytes;
    for (std::size_t k = 0; k < text.size(); k += 2) {
        const auto plain = static_cast<std::uint8_t>((halfOf(text[k]) * 16 + halfOf(text[k + 1])) ^ cipher.mask());
        cipher.feed(plain);
        bytes += static_cast<char>(plain);
    }
    return utf8FromAnsi(bytes);
}

}  // namespace brenvik
