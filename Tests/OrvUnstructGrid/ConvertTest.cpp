#include "OrvUnstructGrid/Convert.h"

#include <gtest/gtest.h>

using orv::Str;
using orv::ug::Convert;

namespace {

TEST(UgConvert, CarriesTextBothWays) {
    const Str text(L"a\u00E5\U0001F600");
    const VTString sText = Convert::toVTString(text);
    EXPECT_EQ(std::wstring(~sText), L"a\u00E5\U0001F600");
    EXPECT_TRUE(Convert::toStr(sText) == text);
}

TEST(UgConvert, NullTextsArriveEmpty) {
    EXPECT_TRUE(Convert::toStr(VTString()).isEmpty());
    EXPECT_TRUE(Convert::toVTString(Str()) == VTString(L""));
}

TEST(UgConvert, TextEndsAtAZeroInside) {
    EXPECT_EQ(std::wstring(~Convert::toVTString(Str(std::wstring(L"ab\0cd", 5)))), L"ab");
}

} // namespace
