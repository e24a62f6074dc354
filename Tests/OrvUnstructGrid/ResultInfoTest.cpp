#include "OrvUnstructGrid/ResultInfo.h"

#include "Tests/OrvUnstructGrid/CustomResults.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orvtest::sumOf;

namespace {

const ResultInfo temperature(SCALAR, 3, "Temperature", PER_NODE);

TEST(ResultInfo, IsInvalidByDefault) {
    const ResultInfo info;
    EXPECT_FALSE(info.isValid());
    EXPECT_FALSE(info.isCustom());
    EXPECT_EQ(info.id(), -1);
    EXPECT_EQ(info.name(), "");
    EXPECT_EQ(info.type(), NO_RESULT_TYPE);
    EXPECT_EQ(info.resultMapping(), UNKNOWN_MAPPING);
    EXPECT_EQ(info.baseResultId(), -1);
    EXPECT_EQ(info.baseResultType(), NO_RESULT_TYPE);
    EXPECT_TRUE(info.customResultArguments().empty());
    EXPECT_EQ(info.customResultGenerator(), nullptr);
    EXPECT_EQ(info, ResultInfo());
}

TEST(ResultInfo, OfAFileKeepsWhatItIsGiven) {
    EXPECT_TRUE(temperature.isValid());
    EXPECT_FALSE(temperature.isCustom());
    EXPECT_EQ(temperature.id(), 3);
    EXPECT_EQ(temperature.name(), "Temperature");
    EXPECT_EQ(temperature.type(), SCALAR);
    EXPECT_EQ(temperature.resultMapping(), PER_NODE);
    EXPECT_TRUE(ResultInfo(SCALAR, 0, "zero", PER_NODE).isValid());
    EXPECT_FALSE(ResultInfo(SCALAR, -1, "none", PER_NODE).isValid());
}

TEST(ResultInfo, EqualsByTypeAndIdWhateverTheName) {
    EXPECT_EQ(temperature, ResultInfo(SCALAR, 3, "other name", PER_ELEMENT));
    EXPECT_FALSE(temperature == ResultInfo(SCALAR, 4, "Temperature", PER_NODE));
    EXPECT_FALSE(temperature == ResultInfo(VECTOR, 3, "Temperature", PER_NODE));
}

TEST(ResultInfo, CustomKeepsArgumentsAndGenerator) {
    orv::PtrRef<CustomResultGenerator> generator(new CustomResultGenerator(2));
    std::vector<ResultInfo> arguments = {temperature, temperature};
    {
        const ResultInfo info(VECTOR, "a+b", PER_ELEMENT, arguments, generator.get());
        arguments.clear();
        EXPECT_TRUE(info.isValid());
        EXPECT_TRUE(info.isCustom());
        EXPECT_EQ(info.type(), VECTOR);
        EXPECT_EQ(info.name(), "a+b");
        EXPECT_EQ(info.resultMapping(), PER_ELEMENT);
        ASSERT_EQ(info.customResultArguments().size(), 2u);
        EXPECT_EQ(info.customResultArguments()[1], temperature);
        EXPECT_EQ(info.customResultGenerator(), generator.get());
        EXPECT_EQ(generator->refCount(), 2);
    }
    EXPECT_EQ(generator->refCount(), 1);
}

TEST(ResultInfo, CustomWithoutAGeneratorIsStillCustom) {
    std::vector<ResultInfo> none;
    const ResultInfo info(SCALAR, "constant", PER_NODE, none, nullptr);
    EXPECT_TRUE(info.isCustom());
    EXPECT_EQ(info.customResultGenerator(), nullptr);
}

TEST(ResultInfo, CustomIdsCountUpFromTheirOwnRange) {
    const ResultInfo first = sumOf("same", {temperature});
    const ResultInfo second = sumOf("same", {temperature});
    EXPECT_GE(first.id(), 1 << 30);
    EXPECT_EQ(second.id(), first.id() + 1);
}

TEST(ResultInfo, TwoUnregisteredCustomResultsAreNeverEqual) {
    const ResultInfo first = sumOf("same", {temperature});
    const ResultInfo second = sumOf("same", {temperature});
    EXPECT_FALSE(first == second);
    const ResultInfo copy = first;
    EXPECT_EQ(copy, first);
}

TEST(ResultInfo, CustomDiffersFromAFilesResultOfItsId) {
    const ResultInfo custom = sumOf("c", {temperature});
    EXPECT_FALSE(custom == ResultInfo(SCALAR, custom.id(), "c", PER_NODE));
}

TEST(ResultInfo, NameReachesThisCopyOnlyAndKeepsTheIdentity) {
    const ResultInfo original = sumOf("a+b", {temperature});
    ResultInfo copy = original;
    copy.setName("Sum");
    EXPECT_EQ(copy.name(), "Sum");
    EXPECT_EQ(original.name(), "a+b");
    EXPECT_EQ(copy, original);
    EXPECT_EQ(copy.customResultArguments().size(), 1u);
    EXPECT_EQ(copy.customResultGenerator(), original.customResultGenerator());
}

TEST(ResultInfo, NamingAnInvalidOneLeavesTheOthersNameless) {
    ResultInfo info;
    info.setName("x");
    EXPECT_EQ(info.name(), "x");
    EXPECT_FALSE(info.isValid());
    EXPECT_EQ(ResultInfo().name(), "");
}

TEST(ResultInfo, BaseResultReachesThisCopyOnly) {
    ResultInfo copy = temperature;
    copy.setBaseResult(5, SYMMETRIC_TENSOR);
    EXPECT_EQ(copy.baseResultId(), 5);
    EXPECT_EQ(copy.baseResultType(), SYMMETRIC_TENSOR);
    EXPECT_EQ(temperature.baseResultId(), -1);
    copy.setName("renamed");
    EXPECT_EQ(copy.baseResultId(), 5);
}

TEST(ResultInfo, AssignmentSharesTheRecord) {
    ResultInfo info = temperature;
    info = sumOf("c", {temperature});
    EXPECT_TRUE(info.isCustom());
    const ResultInfo& self = info;
    info = self;
    EXPECT_EQ(info.name(), "c");
}

// One destructor inside the other would need more stack than a thread has.
TEST(ResultInfo, VeryDeepExpressionsComeApart) {
    orv::PtrRef<CustomResultGenerator> generator(new CustomResultGenerator(1));
    {
        ResultInfo deep = temperature;
        for (int i = 0; i < 200000; ++i) {
            std::vector<ResultInfo> arguments = {deep};
            deep = ResultInfo(SCALAR, "x", PER_NODE, arguments, generator.get());
        }
        EXPECT_EQ(generator->refCount(), 200001);
    }
    EXPECT_EQ(generator->refCount(), 1);
}

TEST(ResultInfo, ComingApartSparesWhatIsHeldElsewhere) {
    const ResultInfo inner = sumOf("inner", {temperature, temperature});
    { const ResultInfo outer = sumOf("outer", {inner, inner}); }
    ASSERT_EQ(inner.customResultArguments().size(), 2u);
    EXPECT_EQ(inner.customResultArguments()[0], temperature);
}

} // namespace
