#include "OrvImportVtk/VtkMessages.h"

#include <gtest/gtest.h>

#include <vtkOutputWindow.h>
#include <vtkSetGet.h>

using orv::imp::cae::VtkMessages;

namespace {

TEST(VtkMessages, NothingIsThereAtFirst) {
    const VtkMessages messages;
    EXPECT_FALSE(messages.hasErrors());
    EXPECT_EQ(messages.errors(), "");
}

TEST(VtkMessages, ErrorsAreKeptOffTheConsole) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    {
        const VtkMessages messages;
        vtkGenericWarningMacro("only a warning");
        EXPECT_FALSE(messages.hasErrors());
        vtkOutputWindowDisplayErrorText("ERROR: In x.cxx, line 5\nvtkReader (0x55d0): Cannot read\n this.\n\n");
        EXPECT_TRUE(messages.hasErrors());
        EXPECT_EQ(messages.errors(), "Cannot read  this");
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(VtkMessages, TheFirstOnesAreTold) {
    const VtkMessages messages;
    for (const char* text : {"vtkA (0x1): one", "vtkA (0x1): two", "vtkB (0x2): one", "three", "four"}) {
        vtkOutputWindowDisplayErrorText(text);
    }
    EXPECT_EQ(messages.errors(), "one; two; three");
}

TEST(VtkMessages, ThatAnAlgorithmFailedIsNoReason) {
    const VtkMessages messages;
    vtkOutputWindowDisplayErrorText("vtkExecutive (0x1): Algorithm vtkReader (0x2) returned failure for request");
    EXPECT_TRUE(messages.hasErrors());
    EXPECT_EQ(messages.errors(), "");
}

TEST(VtkMessages, WarningsAreNoErrors) {
    const VtkMessages messages;
    vtkGenericWarningMacro("cannot be read");
    EXPECT_FALSE(messages.hasErrors());
    EXPECT_EQ(messages.errors(), "");
}

TEST(VtkMessages, TheLatestGetsThem) {
    vtkOutputWindow* before = vtkOutputWindow::GetInstance();
    {
        const VtkMessages outer;
        {
            const VtkMessages inner;
            vtkOutputWindowDisplayErrorText("one");
            EXPECT_TRUE(inner.hasErrors());
        }
        EXPECT_FALSE(outer.hasErrors());
        vtkOutputWindowDisplayErrorText("two");
        EXPECT_EQ(outer.errors(), "two");
    }
    EXPECT_EQ(vtkOutputWindow::GetInstance(), before);
}

} // namespace
