#include "LibUnstructGrid/VTORvfConvertApi.h"

#include "LibCore/rvfString.h"
#include "Tests/LibUnstructGrid/VTOStringSupport.h"

#include <gtest/gtest.h>

using orvtest::text;

namespace {

TEST(VTRvfConvertApi, CarriesTextBothWays) {
    const VTString sText(L"a\u00E5\U0001F600");
    const rvf::String coreText = VTRvfConvertApi::toString(sText);
    EXPECT_EQ(std::wstring(coreText.c_str()), L"a\u00E5\U0001F600");
    EXPECT_EQ(text(VTRvfConvertApi::toVTString(coreText)), L"a\u00E5\U0001F600");
}

TEST(VTRvfConvertApi, NullTextsArriveEmpty) {
    EXPECT_TRUE(VTRvfConvertApi::toString(VTString()).isEmpty());
    EXPECT_TRUE(VTRvfConvertApi::toVTString(rvf::String()) == VTString(L""));
}

TEST(VTRvfConvertApi, TextEndsAtAZeroInside) {
    EXPECT_EQ(text(VTRvfConvertApi::toVTString(rvf::String(std::wstring(L"ab\0cd", 5)))), L"ab");
}

} // namespace
