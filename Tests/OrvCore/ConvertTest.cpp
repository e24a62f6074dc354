#include "OrvCore/Convert.h"

#include <gtest/gtest.h>

using orv::Convert;
using orv::Str;

namespace {

TEST(Convert, CarriesTextsBothWays) {
    for (const std::wstring& text : {std::wstring(), std::wstring(L"abc"), std::wstring(L"\u00E4\u20AC\U0001F600")}) {
        EXPECT_EQ(std::wstring(Convert::toRvfString(Str(text)).c_str()), text);
        EXPECT_EQ(Convert::toStr(rvf::String(text)).toStdWString(), text);
    }
}

TEST(Convert, DecodesNothing) {
    // The two bytes of a UTF-8 "a umlaut" were widened one by one, and stay two characters.
    EXPECT_EQ(Convert::toStr(rvf::String("\xC3\xA4")).toStdWString(), (std::wstring{0xC3, 0xA4}));
    EXPECT_EQ(Convert::toRvfString(Str("\xC3\xA4")).size(), 1u);
}

TEST(Convert, KeepsZerosAndSurrogates) {
    std::wstring text{L'a', L'\0', wchar_t(0xD800), L'z'};
    EXPECT_EQ(Convert::toStr(Convert::toRvfString(Str(text))).toStdWString(), text);
    EXPECT_EQ(Convert::toRvfString(Str(text)).size(), 4u);
}

} // namespace
