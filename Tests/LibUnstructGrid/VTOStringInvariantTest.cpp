#include "LibUnstructGrid/VTOString.h"

#include "Tests/LibUnstructGrid/VTOStringSupport.h"

#include <gtest/gtest.h>

using orvtest::AssertRecorder;
using orvtest::failedIn;
using orvtest::text;

namespace {

// The invariants cannot be broken from outside, so their tests reach the fields by the one legal way: the arguments of
// an explicit instantiation are not checked for access.
template <class Tag, typename Tag::Type Field>
struct Expose {
    friend typename Tag::Type fieldOf(Tag) {
        return Field;
    }
};

struct BufferLength {
    using Type = int VTString::*;
    friend Type fieldOf(BufferLength);
};
struct StringLength {
    using Type = int VTString::*;
    friend Type fieldOf(StringLength);
};

template struct Expose<BufferLength, &VTString::m_iBufferLength>;
template struct Expose<StringLength, &VTString::m_iStringLength>;

std::vector<orvtest::FailedAssert> failed(std::initializer_list<const char*> expressions) {
    return failedIn("VTOString", expressions);
}

TEST(VTOStringInvariant, IsNullChecksItsFields) {
    AssertRecorder recorder;
    VTString sText(L"abc");
    sText.*fieldOf(BufferLength()) = 0;
    EXPECT_FALSE(sText.IsNull());
    EXPECT_EQ(recorder.take(), failed({"m_iBufferLength > 0"}));
    sText.*fieldOf(BufferLength()) = 4;
    sText.*fieldOf(StringLength()) = -2;
    EXPECT_FALSE(sText.IsNull());
    EXPECT_EQ(recorder.take(), failed({"m_iStringLength >= -1"}));
    sText.*fieldOf(StringLength()) = -1;
    EXPECT_FALSE(sText.IsNull());
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTOStringInvariant, IsNullChecksTheFieldsOfANullString) {
    AssertRecorder recorder;
    VTString sText;
    sText.*fieldOf(BufferLength()) = 1;
    EXPECT_TRUE(sText.IsNull());
    EXPECT_EQ(recorder.take(), failed({"m_iBufferLength == 0"}));
    sText.*fieldOf(BufferLength()) = 0;
    sText.*fieldOf(StringLength()) = 1;
    EXPECT_TRUE(sText.IsNull());
    EXPECT_EQ(recorder.take(), failed({"m_iStringLength == 0 || m_iStringLength == -1"}));
    sText.*fieldOf(StringLength()) = -1;
    EXPECT_TRUE(sText.IsNull());
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTOStringInvariant, LengthOfBothFormsComesFromTheCache) {
    VTString sText(L"abcdef");
    wchar_t* pBuffer = sText.GetBuffer();
    EXPECT_EQ(static_cast<const VTString&>(sText).Length(), 6);
    EXPECT_EQ(sText.*fieldOf(StringLength()), -1);
    EXPECT_EQ(sText.Length(), 6);
    EXPECT_EQ(sText.*fieldOf(StringLength()), 6);
    pBuffer[2] = L'\0';
    EXPECT_EQ(sText.Length(), 6);
    EXPECT_EQ(static_cast<const VTString&>(sText).Length(), 6);
}

TEST(VTOStringInvariant, UpdateStringLengthCountsAnew) {
    AssertRecorder recorder;
    VTString sText(L"abcdef");
    wchar_t* pBuffer = sText.GetBuffer();
    sText.UpdateStringLength();
    pBuffer[2] = L'\0';
    EXPECT_EQ(sText.Length(), 6);
    sText.UpdateStringLength();
    EXPECT_EQ(sText.Length(), 2);
    VTString sNull;
    sNull.UpdateStringLength();
    EXPECT_EQ(sNull.Length(), 0);
    EXPECT_TRUE(recorder.take().empty());
    // A buffer that were smaller than its text.
    sText.*fieldOf(BufferLength()) = 2;
    sText.UpdateStringLength();
    EXPECT_EQ(recorder.take(), failed({"m_iStringLength == 0 || m_iStringLength < m_iBufferLength"}));
}

TEST(VTOStringInvariant, ZeroTerminateOfABufferWithoutLength) {
    AssertRecorder recorder;
    VTString sText(L"abc");
    sText.*fieldOf(BufferLength()) = 0;
    EXPECT_EQ(sText.ZeroTerminate(), -1);
    EXPECT_EQ(recorder.take(), failed({"m_iBufferLength > 0"}));
}

TEST(VTOStringInvariant, StripCharacterChecksItsBuffer) {
    AssertRecorder recorder;
    VTString sText(L"abcab");
    sText.*fieldOf(BufferLength()) = 5;
    EXPECT_EQ(sText.StripCharacter(L'a'), 2);
    EXPECT_EQ(recorder.take(), failedIn("VTOStringEdit", {"iSrc < m_iBufferLength"}));
    EXPECT_EQ(text(sText), L"bcb");
}

} // namespace
