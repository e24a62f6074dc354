#include "LibUnstructGrid/VTOString.h"

#include "Tests/LibUnstructGrid/VTOStringSupport.h"

#include <gtest/gtest.h>

#include <cstdarg>

using orvtest::AssertRecorder;
using orvtest::failedIn;
using orvtest::ScopedLocale;
using orvtest::text;

namespace {

std::vector<orvtest::FailedAssert> failed(std::initializer_list<const char*> expressions) {
    return failedIn("VTOStringFormat", expressions);
}

const char* const TOO_LONG = "iNumWritten < (VT_MAX_FORMAT_LENGTH - 10)";

TEST(VTOStringFormat, MakesNumbers) {
    EXPECT_EQ(text(VTString::Make(-42)), L"-42");
    EXPECT_EQ(text(VTString::Make(4294967295u)), L"4294967295");
    EXPECT_EQ(text(VTString::Make(0.1f)), L"0.1");
    EXPECT_EQ(text(VTString::Make(1e-7)), L"1e-07");
    EXPECT_EQ(text(VTString::Make(1234567.0)), L"1.23457e+06");
    EXPECT_EQ(VT_MAX_FORMAT_LENGTH, 4000);
}

TEST(VTOStringFormat, MakesNarrowForms) {
    const VTString sText = VTString::MakeForm("%d-%s-%.2f", 7, "abc", 1.5);
    EXPECT_EQ(text(sText), L"7-abc-1.50");
    EXPECT_EQ(sText.GetBufferLength(), 11);
    EXPECT_TRUE(VTString::MakeForm("%s", "") == VTString(L""));
}

TEST(VTOStringFormat, MakesWideForms) {
    const VTString sText = VTString::MakeFormWide(L"%d-%ls-%.2f", 7, L"ab\u00E5", 1.5);
    EXPECT_EQ(text(sText), L"7-ab\u00E5-1.50");
    EXPECT_EQ(sText.GetBufferLength(), 11);
}

TEST(VTOStringFormat, NarrowFormsFollowTheLocale) {
    {
        ScopedLocale locale("C.UTF-8");
        ASSERT_TRUE(locale.isSet());
        EXPECT_EQ(text(VTString::MakeForm("%s", "\xC3\xA5")), L"\u00E5");
    }
    ScopedLocale locale("C");
    EXPECT_TRUE(VTString::MakeForm("%s", "\xC3\xA5").IsNull());
}

TEST(VTOStringFormat, TextArgumentsAreKeptApart) {
    ScopedLocale locale("C.UTF-8");
    AssertRecorder recorder;
    EXPECT_EQ(text(VTString::MakeForm("%ls", L"x")), L"x");
    EXPECT_EQ(recorder.take(), failed({"VTString(szFormat).Find(\"%ls\") == -1"}));
    EXPECT_EQ(text(VTString::MakeFormWide(L"%s", "x")), L"x");
    EXPECT_EQ(recorder.take(), failed({"VTString(szFormat).Find(\"%s\") == -1"}));
    VTString::MakeForm("%s", "x");
    VTString::MakeFormWide(L"%ls", L"x");
    EXPECT_TRUE(recorder.take().empty());
}

VTString argList(const char* szFormat, ...) {
    va_list args;
    va_start(args, szFormat);
    VTString sText = VTString::MakeFormArgList(szFormat, args);
    va_end(args);
    return sText;
}

VTString argListWide(const wchar_t* szFormat, ...) {
    va_list args;
    va_start(args, szFormat);
    VTString sText = VTString::MakeFormArgListWide(szFormat, args);
    va_end(args);
    return sText;
}

TEST(VTOStringFormat, TakesArgumentLists) {
    EXPECT_EQ(text(argList("%d %s", 3, "x")), L"3 x");
    EXPECT_EQ(text(argListWide(L"%d %ls", 3, L"x")), L"3 x");
}

void formatInto(VTString& sText, const char* szFormat, ...) {
    va_list args;
    va_start(args, szFormat);
    sText.FormatV(szFormat, args);
    va_end(args);
}

void formatIntoWide(VTString& sText, const wchar_t* szFormat, ...) {
    va_list args;
    va_start(args, szFormat);
    sText.FormatV(szFormat, args);
    va_end(args);
}

TEST(VTOStringFormat, FormatVReplacesTheText) {
    VTString sText(L"one two three");
    sText.GetFirstWord();
    formatInto(sText, "%d four", 4);
    EXPECT_EQ(text(sText.GetRest()), L"4 four");
    sText.GetFirstWord();
    formatIntoWide(sText, L"%d five", 5);
    EXPECT_EQ(text(sText.GetRest()), L"5 five");
}

TEST(VTOStringFormat, NarrowTextsAreAssertedBelow3990) {
    AssertRecorder recorder;
    EXPECT_EQ(VTString::MakeForm("%3989d", 1).Length(), 3989);
    EXPECT_TRUE(recorder.take().empty());
    EXPECT_EQ(VTString::MakeForm("%3990d", 1).Length(), 3990);
    EXPECT_EQ(recorder.take(), failed({TOO_LONG}));
    EXPECT_EQ(VTString::MakeForm("%3999d", 1).Length(), 3999);
    EXPECT_EQ(recorder.take(), failed({TOO_LONG}));
    // Cut with room for the terminator.
    EXPECT_EQ(VTString::MakeForm("%5000d", 1).Length(), 3999);
    EXPECT_EQ(recorder.take(), failed({TOO_LONG}));
}

TEST(VTOStringFormat, WideTextsAreAssertedBelow3990) {
    AssertRecorder recorder;
    EXPECT_EQ(VTString::MakeFormWide(L"%3989d", 1).Length(), 3989);
    EXPECT_TRUE(recorder.take().empty());
    EXPECT_EQ(VTString::MakeFormWide(L"%3990d", 1).Length(), 3990);
    EXPECT_EQ(recorder.take(), failed({TOO_LONG}));
    EXPECT_EQ(VTString::MakeFormWide(L"%3999d", 1).Length(), 3999);
    EXPECT_EQ(recorder.take(), failed({TOO_LONG}));
}

TEST(VTOStringFormat, NegativeCountsPass) {
    AssertRecorder recorder;
    // A wide text that does not fit is answered with a negative count.
    EXPECT_LE(VTString::MakeFormWide(L"%5000d", 1).Length(), 3999);
    EXPECT_TRUE(recorder.take().empty());
    ScopedLocale locale("C");
    // A wide text that the locale cannot write fails in the narrow formatter; the list form lets it through.
    EXPECT_FALSE(argList("%ls", L"\u00E5").IsNull());
    EXPECT_TRUE(recorder.take().empty());
}

} // namespace
