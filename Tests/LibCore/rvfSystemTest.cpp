#include "LibCore/rvfSystem.h"

#include <gtest/gtest.h>

#include <string>

using rvf::System;

namespace {

struct CopyCase {
    size_t destinationSize;
    size_t count;
    std::string expected;
};

class SystemMemcpy : public testing::TestWithParam<CopyCase> {};

TEST_P(SystemMemcpy, NeverWritesBeyondTheDestination) {
    const CopyCase& row = GetParam();
    std::string buffer = "......";
    System::memcpy(buffer.data(), row.destinationSize, "abcdef", row.count);
    EXPECT_EQ(buffer, row.expected);
}

INSTANTIATE_TEST_SUITE_P(All, SystemMemcpy,
                         testing::Values(CopyCase{6, 6, "abcdef"}, CopyCase{6, 2, "ab...."}, CopyCase{3, 6, "abc..."},
                                         CopyCase{3, 3, "abc..."}, CopyCase{0, 6, "......"}, CopyCase{6, 0, "......"}));

TEST(System, MemcpyTakesNullWhenThereIsNothingToCopy) {
    char byte = 'x';
    System::memcpy(nullptr, 0, &byte, 1);
    System::memcpy(&byte, 1, nullptr, 0);
    EXPECT_EQ(byte, 'x');
}

TEST(System, SwprintfFormatsAndCounts) {
    wchar_t buffer[16];
    EXPECT_EQ(System::swprintf(buffer, 16, L"%d %ls", 42, L"abc"), 6);
    EXPECT_EQ(std::wstring(buffer), L"42 abc");
}

TEST(System, SwprintfFillsTheBufferToTheLastCharacter) {
    wchar_t buffer[4];
    EXPECT_EQ(System::swprintf(buffer, 4, L"%ls", L"abc"), 3);
    EXPECT_EQ(std::wstring(buffer), L"abc");
}

TEST(System, SwprintfRefusesWhatDoesNotFitAndKeepsTheBorder) {
    wchar_t buffer[5] = {L'.', L'.', L'.', L'.', L'#'};
    EXPECT_LT(System::swprintf(buffer, 4, L"%ls", L"abcd"), 0);
    EXPECT_NE(std::wstring_view(buffer, 4).find(L'\0'), std::wstring_view::npos);
    EXPECT_EQ(buffer[4], L'#');
}

TEST(System, SwprintfWritesNothingIntoNoBuffer) {
    EXPECT_LT(System::swprintf(nullptr, 0, L"a"), 0);
}

} // namespace
