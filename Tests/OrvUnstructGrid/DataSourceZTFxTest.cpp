#include "OrvUnstructGrid/DataSourceZTFx.h"

#include "OrvUnstructGrid/Error.h"

#include <gtest/gtest.h>

using namespace orv::ug;

namespace {

class OpenedZTFx : public DataSourceZTFx {
public:
    OpenedZTFx() : DataSourceZTFx(1) {}
    using DataSourceZTFx::readResult;
};

class DataSourceZTFxTest : public testing::Test {
protected:
    DataSourceZTFxTest() : source(new OpenedZTFx) {}

    std::string openCase(const char* filename, std::size_t index) {
        Error error;
        EXPECT_FALSE(source->openCase(filename, index, &error));
        return error.message().toStdString();
    }

    std::string openCaseById(const char* filename, int id) {
        Error error;
        EXPECT_FALSE(source->openCaseById(filename, id, &error));
        return error.message().toStdString();
    }

    orv::PtrRef<OpenedZTFx> source;
};

TEST_F(DataSourceZTFxTest, SaysWhichCaseWasAskedForAndHow) {
    EXPECT_EQ(openCase("a.ztfx", 0), "a.ztfx: this version has no reader for ZTFx files (case 0 was asked for)");
    EXPECT_EQ(openCaseById("a.ztfx|3", 3),
              "a.ztfx|3: this version has no reader for ZTFx files (case id 3 was asked for)");
    EXPECT_EQ(openCaseById("a.ztfx", -1),
              "a.ztfx: this version has no reader for ZTFx files (case id -1 was asked for)");
    EXPECT_FALSE(source->openCase("a.ztfx", 0, nullptr));
    EXPECT_FALSE(source->openCaseById("a.ztfx", 0, nullptr));
}

TEST_F(DataSourceZTFxTest, SaysWhetherThereIsAPasswordButNotWhich) {
    source->setPassword("secret");
    EXPECT_EQ(openCase("a.ztfx", 2),
              "a.ztfx: this version has no reader for ZTFx files (case 2 was asked for, with a password)");
    source->setPassword("");
    EXPECT_EQ(openCase("a.ztfx", 2), "a.ztfx: this version has no reader for ZTFx files (case 2 was asked for)");
}

TEST_F(DataSourceZTFxTest, HasNoValues) {
    Error error;
    EXPECT_FALSE(source->readResult(ResultInfo(SCALAR, 1, "p", PER_NODE), nullptr, &error));
    EXPECT_EQ(error.message(), "Result 'p' cannot be read: no ZTFx file is open");
}

} // namespace
