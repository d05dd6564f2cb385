#include <gtest/gtest.h>

#include "frame/Errors.h"
#include "frame/program/Cipher.h"

using namespace brenvik;

namespace {

struct CipherCase {
    std::string key, text, letters;
};

}  // namespace

TEST(Cipher, KnownTexts) {
    for (const CipherCase& v : {CipherCase{"0123456789abcdef", "Hello World", "ngbkejgoapdnbkjpjjelob"}, {"Qz7w#4k1!", "True", "hajdmmmj"},
                            {"Weide7Bach!Ufer", "Kranich-Teich-9", "bppegjdomiggipieikdmnahpjeanjl"}, {"beliebig", "", ""}}) {
        EXPECT_EQ(EncryptText(v.text, v.key), v.letters);
        EXPECT_EQ(DecryptText(v.letters, v.key), v.text);
    }
}

TEST(Cipher, KeysAreFilledWithBlanksToTheirForm) {
    EXPECT_EQ(EncryptText("Text", "abc"), EncryptText("Text", "abc       "));
    EXPECT_EQ(EncryptText("Text", "abcdefghijk"), EncryptText("Text", "abcdefghijk     "));
    EXPECT_NE(EncryptText("Text", "abcdefghij"), EncryptText("Text", "abcdefghij "));  // 10 and 11 characters: two forms
    EXPECT_EQ(DecryptText(EncryptText("Größe €ß", "Schlüssel-Übung"), "Schlüssel-Übung"), "Größe €ß");
    EXPECT_EQ(EncryptText("ÄÖÜ", "k").size(), 6u);
    EXPECT_NO_THROW(EncryptText("x", "ÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄ"));  // 16 characters, more bytes
}

TEST(Cipher, BadInput) {
    for (const auto& [text, key] : std::vector<std::pair<std::string, std::string>>{{"abc", "k"}, {"aq", "k"}, {"a\xFF", "k"}, {"AB", "k"}, {"", "12345678901234567"}})
        EXPECT_THROW(DecryptText(text, key), NumberedError) << text;
    try {
        EncryptText("x", "12345678901234567");
        ADD_FAILURE();
    } catch (const NumberedError& error) {
        EXPECT_STREQ(error.what(), "Die maximale Länge beträgt 16 Zeichen.");
    }
}
