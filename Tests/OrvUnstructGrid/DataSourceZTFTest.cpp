#include "OrvUnstructGrid/DataSourceZTF.h"

#include "OrvUnstructGrid/Error.h"

#include <gtest/gtest.h>

using namespace orv::ug;

namespace {

class OpenedZTF : public DataSourceZTF {
public:
    OpenedZTF() : DataSourceZTF(1) {}
    using DataSourceZTF::readResult;
};

TEST(DataSourceZTF, SaysThatItReadsNothingYet) {
    orv::PtrRef<DataSourceZTF> source(new DataSourceZTF(1));
    Error error;
    EXPECT_EQ(source->id(), 1);
    EXPECT_FALSE(source->openFile("a.ztf", &error));
    EXPECT_EQ(error.message(), "a.ztf: this version has no reader for ZTF files");
    EXPECT_FALSE(source->openFile("a.ztf", nullptr));
    EXPECT_EQ(source->stateCount(), 0u);
}

TEST(DataSourceZTF, HasNoValues) {
    orv::PtrRef<OpenedZTF> source(new OpenedZTF);
    Error error;
    EXPECT_FALSE(source->readResult(ResultInfo(SCALAR, 1, "p", PER_NODE), nullptr, &error));
    EXPECT_EQ(error.message(), "Result 'p' cannot be read: no ZTF file is open");
}

} // namespace
