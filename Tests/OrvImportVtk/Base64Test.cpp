#include "OrvImportVtk/Base64.h"

#include <gtest/gtest.h>

#include <string>

using namespace orv::imp::cae;

namespace {

// The bytes as a text; "bad" when there are none.
std::string decoded(const std::string& text, std::size_t count) {
    std::string bytes(count, '?');
    return decodeBase64(text.data(), count, reinterpret_cast<unsigned char*>(bytes.data())) ? bytes : "bad";
}

// The examples of RFC 4648.
TEST(Base64, FewAndManyBytesAreDecoded) {
    const struct {
        const char* text;
        const char* bytes;
    } cases[] = {{"", ""},
                 {"Zg==", "f"},
                 {"Zm8=", "fo"},
                 {"Zm9v", "foo"},
                 {"Zm9vYg==", "foob"},
                 {"Zm9vYmE=", "fooba"},
                 {"Zm9vYmFy", "foobar"}};
    for (const auto& [text, bytes] : cases) {
        const std::string expected = bytes;
        EXPECT_EQ(base64Length(expected.size()), std::string(text).size());
        EXPECT_EQ(decoded(text, expected.size()), expected);
    }
}

TEST(Base64, AllSixBitsOfEachCharacterCount) {
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t i = 0; i < alphabet.size(); ++i) {
        const std::string bytes = decoded(std::string(4, alphabet[i]), 3);
        const std::size_t all = i << 18 | i << 12 | i << 6 | i;
        EXPECT_EQ(bytes, (std::string{char(all >> 16), char(all >> 8), char(all)})) << alphabet[i];
    }
}

TEST(Base64, MoreTextThanIsWantedIsLeft) {
    EXPECT_EQ(decoded("Zm9v!!!!", 3), "foo");
    EXPECT_EQ(decoded("Zm9vYmFy", 4), "foob");
    EXPECT_EQ(decoded("Zm9vYmFy", 5), "fooba");
}

TEST(Base64, OtherCharactersAreRefused) {
    for (std::size_t place = 0; place < 8; ++place) {
        for (const char character : {'=', ' ', '\n', '<', '-', '_', '\0', '\x80', '\xff'}) {
            std::string text = "Zm9vYmFy";
            text[place] = character;
            EXPECT_EQ(decoded(text, 6), "bad") << place;
        }
    }
    EXPECT_EQ(decoded("Zg==", 2), "bad");
    EXPECT_EQ(decoded("Z===", 1), "bad");
}

} // namespace
