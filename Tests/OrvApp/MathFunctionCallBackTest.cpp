#include "OrvApp/MathFunctionCallBack.h"

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

using orv::app::MathFunctionCallBack;

namespace {

class Doubling : public MathFunctionCallBack {
public:
    using MathFunctionCallBack::MathFunctionCallBack;

    double evaluate(double value) override {
        return 2 * value;
    }
};

TEST(MathFunctionCallBack, KeepsItsName) {
    EXPECT_EQ(Doubling("twice").functionName(), "twice");
    EXPECT_EQ(Doubling("").functionName(), "");
}

TEST(MathFunctionCallBack, IsForApplicationsToDerive) {
    static_assert(std::is_abstract_v<MathFunctionCallBack>);
    static_assert(std::has_virtual_destructor_v<MathFunctionCallBack>);
    Doubling doubling("twice");
    MathFunctionCallBack* callback = &doubling;
    EXPECT_EQ(callback->evaluate(21), 42);
}

#ifdef __x86_64__
TEST(MathFunctionCallBack, EvaluateIsTheFirstVirtualOperation) {
    // This platform's pointer to a virtual member begins with the offset of its slot plus one.
    double (MathFunctionCallBack::*evaluate)(double) = &MathFunctionCallBack::evaluate;
    std::ptrdiff_t slotOffsetPlusOne = 0;
    std::memcpy(&slotOffsetPlusOne, &evaluate, sizeof slotOffsetPlusOne);
    EXPECT_EQ(slotOffsetPlusOne, 1);
}
#endif

} // namespace
