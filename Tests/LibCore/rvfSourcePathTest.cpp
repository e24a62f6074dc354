#include "LibCore/rvfSourcePath.h"

#include <gtest/gtest.h>

#include <string>

namespace {

template <rvf::internal::Literal File>
std::string shortened() {
    return rvf::internal::sourcePathOf<File>.text;
}

TEST(SourcePath, IsTheLastFolderAndTheBareFileName) {
    EXPECT_EQ(shortened<"/home/me/build.d/LibCore/rvfAssert.cpp">(), "LibCore/rvfAssert");
    EXPECT_EQ(shortened<"LibCore/rvfAssert.cpp">(), "LibCore/rvfAssert");
    EXPECT_EQ(shortened<"../LibCore/rvfAssert.h">(), "LibCore/rvfAssert");
    EXPECT_EQ(shortened<"OrvApp/../OrvCore/Str.cpp">(), "OrvCore/Str");
    EXPECT_EQ(shortened<"OrvApp/Models_p.cpp">(), "OrvApp/Models_p");
    EXPECT_EQ(shortened<"a/b/c/d.e.cpp">(), "c/d.e");
    EXPECT_EQ(shortened<"a.b/c">(), "a.b/c");
    EXPECT_EQ(shortened<"/file.cpp">(), "/file");
    EXPECT_EQ(shortened<"file.cpp">(), "file");
    EXPECT_EQ(shortened<"">(), "");
}

TEST(SourcePath, TellsThisFile) {
    EXPECT_EQ(std::string(RVF_SOURCE_PATH), "LibCore/rvfSourcePathTest");
}

} // namespace
