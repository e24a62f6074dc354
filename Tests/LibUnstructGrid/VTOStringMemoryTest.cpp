#include "LibUnstructGrid/VTOString.h"

#include "LibUnstructGrid/VTOArrayString.h"
#include "Tests/LibUnstructGrid/VTOStringSupport.h"

#include <gtest/gtest.h>

#include <cstddef>

using orvtest::AssertRecorder;
using orvtest::failedIn;
using orvtest::text;

namespace {

// The linker sends the calls of malloc() and realloc() in this program through the functions below.
bool outOfMemory = false;
int allocations = 0;

class NoMemory {
public:
    NoMemory() {
        outOfMemory = true;
    }
    ~NoMemory() {
        outOfMemory = false;
    }
};

} // namespace

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_realloc(void* block, std::size_t size);

void* __wrap_malloc(std::size_t size) {
    ++allocations;
    return outOfMemory ? nullptr : __real_malloc(size);
}

void* __wrap_realloc(void* block, std::size_t size) {
    ++allocations;
    return outOfMemory ? nullptr : __real_realloc(block, size);
}
}

namespace {

TEST(VTOStringMemory, AssignAssertsAndGivesNull) {
    AssertRecorder recorder;
    VTString sText(L"abc");
    {
        NoMemory none;
        sText.Assign(L"longer", -1);
    }
    EXPECT_EQ(recorder.take(), failedIn("VTOString", {"m_pdata"}));
    EXPECT_TRUE(sText.IsNull());
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTOStringMemory, SetBufferLengthAnswersFalse) {
    AssertRecorder recorder;
    VTString sText(L"abc");
    bool bDone = true;
    {
        NoMemory none;
        bDone = sText.SetBufferLength(10);
    }
    EXPECT_FALSE(bDone);
    EXPECT_EQ(text(sText), L"abc");
    EXPECT_EQ(sText.GetBufferLength(), 4);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTOStringMemory, PadAnswersFalse) {
    AssertRecorder recorder;
    VTString sText(L"abc");
    bool bDone = true;
    {
        NoMemory none;
        bDone = sText.Pad(10, L'*', true, true);
    }
    EXPECT_FALSE(bDone);
    EXPECT_EQ(text(sText), L"abc");
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTOStringMemory, PlusAssertsAndGivesNull) {
    AssertRecorder recorder;
    const VTString sFirst(L"ab");
    const VTString sSecond(L"cd");
    outOfMemory = true;
    const VTString sSum = sFirst + sSecond;
    outOfMemory = false;
    EXPECT_EQ(recorder.take(), failedIn("VTOString", {"tmpstr"}));
    EXPECT_TRUE(sSum.IsNull());
}

TEST(VTOStringMemory, AppendAssertsAndKeepsTheText) {
    AssertRecorder recorder;
    VTString sText(L"ab");
    {
        NoMemory none;
        sText += L"cd";
    }
    EXPECT_EQ(recorder.take(), failedIn("VTOString", {"tmpstr"}));
    EXPECT_EQ(text(sText), L"ab");
    EXPECT_EQ(sText.Length(), 2);
}

TEST(VTOStringMemory, TokenAssertsAndIsNull) {
    AssertRecorder recorder;
    VTString sText(L"ab,c");
    bool bNull = false;
    {
        NoMemory none;
        bNull = sText.GetFirstToken(L',').IsNull();
    }
    EXPECT_TRUE(bNull);
    const auto failed = recorder.take();
    ASSERT_EQ(failed.size(), 2u);
    EXPECT_EQ(failed[0], failedIn("VTOString", {"m_pdata"})[0]);
    EXPECT_EQ(failed[1], failedIn("VTOStringParse", {"!sStr.IsNull()"})[0]);
    // The walk goes on behind the token that is lost.
    EXPECT_EQ(text(sText.GetNextToken(L',')), L"c");
}

TEST(VTOStringMemory, WalksAllocateWhatTheyReturnAlone) {
    VTString sText(L"alpha,beta,gamma delta");
    allocations = 0;
    sText.GetFirstWord();
    sText.GetNextWord();
    EXPECT_EQ(allocations, 2);
    sText.GetFirstToken(L',');
    sText.GetNextToken(L',');
    sText.GetNextToken(L',');
    EXPECT_EQ(allocations, 5);
    sText.GetNextToken(L',');
    EXPECT_EQ(allocations, 5);
    const VTString sSeparator(L", ");
    allocations = 0;
    sText.GetFirstToken(sSeparator);
    sText.GetFirstToken(L',', L'"', L'"');
    EXPECT_EQ(allocations, 2);
}

TEST(VTOStringMemory, AppendAllocatesOnlyWithoutRoom) {
    const VTString sPiece(L"piece");
    VTString sText;
    sText.SetBufferLength(101);
    allocations = 0;
    for (int i = 0; i < 20; ++i) {
        sText += sPiece;
    }
    EXPECT_EQ(allocations, 0);
    EXPECT_EQ(sText.Length(), 100);
    sText += sPiece;
    EXPECT_EQ(allocations, 1);
}

// The empty text it begins with, and the room for all.
TEST(VTOStringMemory, JoinedTextsTakeTheirRoomAtOnce) {
    VTStringArray asPieces;
    asPieces.Alloc(20, -1, true);
    asPieces.SetAllItems(L"piece");
    const VTString sSeparator(L", ");
    allocations = 0;
    const VTString sText = asPieces.GetAsString(sSeparator);
    EXPECT_EQ(allocations, 2);
    EXPECT_EQ(sText.Length(), 20 * 5 + 19 * 2);
}

TEST(VTOStringMemory, NarrowTextGivesNull) {
    NoMemory none;
    EXPECT_TRUE(VTString("abc").IsNull());
    EXPECT_TRUE(VTString(12).IsNull());
}

} // namespace
