#include "LibUnstructGrid/VTORvfConvertApi.h"

#include "LibCore/rvfArray.h"
#include "LibCore/rvfBoundingBox.h"
#include "LibCore/rvfColor3.h"
#include "LibCore/rvfMath.h"
#include "LibCore/rvfMatrix4.h"
#include "LibCore/rvfPlane.h"
#include "LibCore/rvfRef.h"
#include "LibCore/rvfString.h"
#include "LibCore/rvfVector3.h"
#include "LibUnstructGrid/VTOArrayInt.h"
#include "LibUnstructGrid/VTOArrayReal.h"
#include "LibUnstructGrid/VTOArrayVector.h"
#include "LibUnstructGrid/VTOBaseTypes2D.h"
#include "LibUnstructGrid/VTOBaseTypesColor.h"
#include "LibUnstructGrid/VTOPlane.h"
#include "Tests/LibUnstructGrid/BoxSupport.h"
#include "Tests/LibUnstructGrid/NewWatch.h"
#include "Tests/LibUnstructGrid/VTOStringSupport.h"
#include "Tests/Support/AssertStopper.h"

#include <limits>
#include <new>

using orvtest::assertsUntil;
using orvtest::countingMatrix;
using orvtest::floatE30;
using orvtest::text;
using Vec3d = rvf::Vector3<double>;
using Vec3f = rvf::Vector3<float>;

namespace rvf {

template <class T>
void PrintTo(const Vector3<T>& v, std::ostream* out) {
    *out << '(' << v.x() << ", " << v.y() << ", " << v.z() << ')';
}

} // namespace rvf

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr float floatInf = std::numeric_limits<float>::infinity();

// Not a float: narrowed and widened again it is 0.100000001490116.
constexpr double tenth = 0.1;
const double narrowedTenth = static_cast<double>(0.1f);

TEST(VTRvfConvertApi, CarriesTextBothWays) {
    const VTString sText(L"a\u00E5\U0001F600");
    const rvf::String coreText = VTRvfConvertApi::toString(sText);
    EXPECT_EQ(std::wstring(coreText.c_str()), L"a\u00E5\U0001F600");
    EXPECT_EQ(text(VTRvfConvertApi::toVTString(coreText)), L"a\u00E5\U0001F600");
}

TEST(VTRvfConvertApi, NullTextsArriveEmpty) {
    EXPECT_TRUE(VTRvfConvertApi::toString(VTString()).isEmpty());
    EXPECT_TRUE(VTRvfConvertApi::toVTString(rvf::String()) == VTString(L""));
}

TEST(VTRvfConvertApi, TextEndsAtAZeroInside) {
    EXPECT_EQ(text(VTRvfConvertApi::toVTString(rvf::String(std::wstring(L"ab\0cd", 5)))), L"ab");
}

TEST(VTRvfConvertApi, WidensEachByteAlone) {
    EXPECT_EQ(VTRvfConvertApi::toStdWString(""), L"");
    EXPECT_EQ(VTRvfConvertApi::toStdWString("abc"), L"abc");
    // The two bytes of an a with a ring in UTF-8.
    EXPECT_EQ(VTRvfConvertApi::toStdWString("a\xC3\xA5z"), std::wstring(L"a\u00C3\u00A5z"));
    EXPECT_EQ(VTRvfConvertApi::toStdWString("\x80\xFF"), std::wstring({wchar_t(128), wchar_t(255)}));
    EXPECT_EQ(VTRvfConvertApi::toStdWString(std::string("a\0b", 3)), std::wstring(L"a\0b", 3));
}

TEST(VTRvfConvertApi, CarriesVectors) {
    const VTVector vector(tenth, -2, 1e300);
    const VTVectorFloat vectorFloat(0.1f, -2, 1e30f);
    EXPECT_EQ(VTRvfConvertApi::toVec3d(vector), Vec3d(tenth, -2, 1e300));
    EXPECT_EQ(VTRvfConvertApi::toVec3d(vectorFloat), Vec3d(narrowedTenth, -2, floatE30));
    EXPECT_EQ(VTRvfConvertApi::toVec3f(VTVector(tenth, -2, 1e30)), Vec3f(0.1f, -2, 1e30f));
    EXPECT_EQ(VTRvfConvertApi::toVec3f(vectorFloat), Vec3f(0.1f, -2, 1e30f));
    EXPECT_EQ(VTRvfConvertApi::toVTVector(Vec3d(tenth, -2, 1e300)), vector);
    EXPECT_EQ(VTRvfConvertApi::toVTVector(Vec3f(0.1f, -2, 1e30f)), VTVector(narrowedTenth, -2, floatE30));
}

TEST(VTRvfConvertApi, UndefinedVectorsCrossAsNumbers) {
    const Vec3d wide = VTRvfConvertApi::toVec3d(VT_UNDEFINED_VECTOR);
    EXPECT_EQ(wide, Vec3d(VT_UNDEFINED_DOUBLE, VT_UNDEFINED_DOUBLE, VT_UNDEFINED_DOUBLE));
    EXPECT_TRUE(rvf::Math::isUndefined(wide.x()));
    EXPECT_TRUE(VTRvfConvertApi::toVTVector(wide).IsUndefined());

    const Vec3f narrow = VTRvfConvertApi::toVec3f(VT_UNDEFINED_VECTOR);
    EXPECT_EQ(narrow, Vec3f(floatInf, floatInf, floatInf));
    EXPECT_TRUE(rvf::Math::isUndefined(narrow.x()));
    EXPECT_TRUE(VTIsUndefined(narrow.x()));
    VTFloatCoord2D coord;
    coord.x = narrow.x();
    coord.y = 0;
    EXPECT_FALSE(coord.IsUndefined()) << "which looks for the very number";
    EXPECT_EQ(VTRvfConvertApi::toVec3f(VTVector(-1e39, 3e38, 0)), Vec3f(-floatInf, 3e38f, 0));

    // An undefined float is nothing special among doubles.
    const Vec3d widened = VTRvfConvertApi::toVec3d(VTVectorFloat(VT_UNDEFINED_FLOAT, 0, 0));
    EXPECT_EQ(widened.x(), static_cast<double>(VT_UNDEFINED_FLOAT));
    EXPECT_FALSE(rvf::Math::isUndefined(widened.x()));
    EXPECT_FALSE(VTRvfConvertApi::toVTVector(Vec3f(VT_UNDEFINED_FLOAT, 0, 0)).IsUndefined());
}

TEST(VTRvfConvertApi, MatricesExchangeRowsAndColumns) {
    const rvf::Matrix4<double> matrix = VTRvfConvertApi::toMat4d(countingMatrix());
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            EXPECT_EQ(matrix(row, column), countingMatrix()[static_cast<int>(column)][row]) << row << ' ' << column;
        }
    }
    EXPECT_EQ(matrix(0, 3), 13); // The counting matrix has its 13th element at the start of its last array row.
    EXPECT_EQ(VTRvfConvertApi::toVTMatrix4(matrix), countingMatrix());
}

TEST(VTRvfConvertApi, MatricesTransformAlike) {
    VTMatrix4 matrix;
    matrix.LoadIdentity();
    matrix.RotateAxisAngle(1, 2, 3, 0.7);
    matrix.Translate(10, 20, 30);
    VTVector point(4, 5, 6);
    const Vec3d expected = VTRvfConvertApi::toMat4d(matrix).transformPoint(VTRvfConvertApi::toVec3d(point));
    point.TransformPoint(matrix);
    EXPECT_TRUE(orvtest::near(point, VTRvfConvertApi::toVTVector(expected), 1e-14));
}

TEST(VTRvfConvertApi, TranslationStandsInTheLastColumn) {
    VTMatrix4 matrix;
    matrix.LoadIdentity();
    matrix.Translate(tenth, 20, 30);
    rvf::Matrix4<double> expected;
    expected(0, 3) = tenth;
    expected(1, 3) = 20;
    expected(2, 3) = 30;
    EXPECT_EQ(VTRvfConvertApi::toMat4d(matrix), expected);
}

TEST(VTRvfConvertApi, MatricesComeBackThroughFloats) {
    for (int i = 0; i < 16; ++i) {
        VTMatrix4 matrix = countingMatrix();
        matrix.v[i] = tenth;
        VTMatrix4 expected = countingMatrix();
        expected.v[i] = narrowedTenth;
        const rvf::Matrix4<double> core = VTRvfConvertApi::toMat4d(matrix);
        EXPECT_EQ(core(static_cast<std::size_t>(i % 4), static_cast<std::size_t>(i / 4)), tenth) << "not this way";
        const VTMatrix4 back = VTRvfConvertApi::toVTMatrix4(core);
        EXPECT_TRUE(std::equal(back.v, back.v + 16, expected.v)) << i;
    }
    EXPECT_EQ(VTRvfConvertApi::toVTMatrix4(VTRvfConvertApi::toMat4d(VT_UNDEFINED_MATRIX4)).v[0], inf);
}

TEST(VTRvfConvertApi, CarriesBoxes) {
    const rvf::BoundingBox box = VTRvfConvertApi::toBoundingBox(VTBox(tenth, 2, 3, 4, 5, 6));
    EXPECT_EQ(box.min(), Vec3d(tenth, 2, 3));
    EXPECT_EQ(box.max(), Vec3d(4, 5, 6));
    EXPECT_EQ(VTRvfConvertApi::toVTBox(box), VTBox(tenth, 2, 3, 4, 5, 6));
    EXPECT_TRUE(VTRvfConvertApi::toVTBox(box).bMark);

    const rvf::BoundingBox point = VTRvfConvertApi::toBoundingBox(VTBox());
    EXPECT_TRUE(point.isValid());
    EXPECT_EQ(point.min(), Vec3d());
    EXPECT_EQ(point.max(), Vec3d());
    EXPECT_EQ(VTRvfConvertApi::toVTBox(point), VTBox());
}

TEST(VTRvfConvertApi, InvalidBoxesTakeTheNumbersOfTheirFamily) {
    const double largest = std::numeric_limits<double>::max();
    VTBox reset;
    reset.Reset();
    const VTBox invalid[] = {reset, VTBox(1, 0, 0, 0, 9, 9), VTBox(0, 0, 1, 9, 9, 0)};
    for (const VTBox& box : invalid) {
        const rvf::BoundingBox converted = VTRvfConvertApi::toBoundingBox(box);
        EXPECT_FALSE(converted.isValid());
        EXPECT_EQ(converted.min(), Vec3d(largest, largest, largest));
        EXPECT_EQ(converted.max(), Vec3d(-largest, -largest, -largest));
    }
    for (const rvf::BoundingBox& box : {rvf::BoundingBox(), rvf::BoundingBox(Vec3d(0, 1, 0), Vec3d(9, 0, 9))}) {
        EXPECT_EQ(VTRvfConvertApi::toVTBox(box), reset);
        EXPECT_FALSE(VTRvfConvertApi::toVTBox(box).IsValid());
    }
}

TEST(VTRvfConvertApi, FarBoxesStopAtTheNumbersOfAResetBox) {
    const rvf::BoundingBox far(Vec3d(2e30, -3e30, 0), Vec3d(3e30, -2e30, 1));
    EXPECT_EQ(VTRvfConvertApi::toVTBox(far), VTBox(floatE30, -3e30, 0, 3e30, -floatE30, 1));
    const rvf::BoundingBox there = VTRvfConvertApi::toBoundingBox(VTBox(2e30, -3e30, 0, 3e30, -2e30, 1));
    EXPECT_EQ(there.min(), far.min());
    EXPECT_EQ(there.max(), far.max());
}

TEST(VTRvfConvertApi, CarriesPlanes) {
    const rvf::Plane plane = VTRvfConvertApi::toPlane(VTPlane(tenth, 2, 3, 4));
    EXPECT_EQ(plane.A(), tenth);
    EXPECT_EQ(plane.B(), 2);
    EXPECT_EQ(plane.C(), 3);
    EXPECT_EQ(plane.D(), 4);
    const VTPlane back = VTRvfConvertApi::toVTPlane(plane);
    EXPECT_EQ(back.a, tenth);
    EXPECT_EQ(back.b, 2);
    EXPECT_EQ(back.c, 3);
    EXPECT_EQ(back.d, 4);
    EXPECT_FALSE(VTRvfConvertApi::toVTPlane(rvf::Plane()).IsValid());
}

TEST(VTRvfConvertApi, PlaneWithoutANormalCrossesAfterAnAssertion) {
    rvf::Plane plane;
    EXPECT_EQ(assertsUntil(9, [&] { plane = VTRvfConvertApi::toPlane(VTPlane(0, 0, 0, 5)); }),
              std::vector<orvtest::FailedAssert>(
                  {{"LibCore/rvfPlane", "!(A == 0.0 && B == 0.0 && C == 0.0)", std::nullopt}}));
    EXPECT_FALSE(plane.isValid());
    EXPECT_EQ(plane.D(), 5);
}

TEST(VTRvfConvertApi, CarriesColors) {
    EXPECT_EQ(VTRvfConvertApi::toColor3f(VTByteColor(255, 51, 1)), rvf::Color3f(1.0f, 0.2f, 1.0f / 255.0f));
    EXPECT_EQ(VTRvfConvertApi::toColor3f(VTRGBColor(0.1f, 2.0f, -0.5f)), rvf::Color3f(0.1f, 2.0f, -0.5f));
    EXPECT_EQ(VTRvfConvertApi::toColor3ub(VTByteColor(255, 51, 1)), rvf::Color3ub(255, 51, 1));
}

TEST(VTRvfConvertApi, ByteColorsAreRounded) {
    // 0.999 of 255 is 254.745: rounded to one decimal and cut off 254, where a plain rounding gives 255. 127.96 becomes
    // 128.0 in the first step, 127.94 stays below.
    EXPECT_EQ(VTRvfConvertApi::toVTByteColor(rvf::Color3f(0.999f, 127.96f / 255.0f, 127.94f / 255.0f)),
              VTByteColor(254, 128, 127));
    const rvf::Color3f color(0.3f, 0.6f, 0.9f);
    EXPECT_EQ(VTRvfConvertApi::toVTByteColor(color), VTByteColor(VTRGBColor(0.3f, 0.6f, 0.9f)));
}

TEST(VTRvfConvertApi, EveryByteColorComesBack) {
    for (int i = 0; i < 256; ++i) {
        const VTByteColor color(static_cast<unsigned char>(i), static_cast<unsigned char>(255 - i),
                                static_cast<unsigned char>(i ^ 85));
        EXPECT_EQ(VTRvfConvertApi::toVTByteColor(VTRvfConvertApi::toColor3f(color)), color) << i;
    }
}

TEST(VTRvfConvertApi, CarriesArrays) {
    VTVectorArray aVectors;
    aVectors.Alloc(5, -1, false); // The capacity does not cross.
    aVectors.Add(VTVector(tenth, 2, 3));
    aVectors.Add(VT_UNDEFINED_VECTOR);
    const rvf::ref<rvf::Array<Vec3f>> vectors = VTRvfConvertApi::toVec3fArray(aVectors);
    ASSERT_TRUE(vectors.notNull());
    EXPECT_EQ(vectors->refCount(), 1);
    ASSERT_EQ(vectors->size(), 2u);
    EXPECT_EQ((*vectors)[0], Vec3f(0.1f, 2, 3));
    EXPECT_EQ((*vectors)[1], Vec3f(floatInf, floatInf, floatInf));

    VTRealArray afValues;
    afValues.Alloc(5, -1, false);
    afValues.Add(tenth);
    afValues.Add(VT_UNDEFINED_DOUBLE);
    afValues.Add(-7);
    const rvf::ref<rvf::Array<float>> values = VTRvfConvertApi::toFloatArray(afValues);
    EXPECT_EQ(values->refCount(), 1);
    ASSERT_EQ(values->size(), 3u);
    EXPECT_EQ((*values)[0], 0.1f);
    EXPECT_EQ((*values)[1], floatInf);
    EXPECT_EQ((*values)[2], -7);
}

TEST(VTRvfConvertApi, CarriesSingleItems) {
    const auto vectors = VTRvfConvertApi::toVec3fArray(VTVectorArray::Make(VTVector(1, 2, 3)));
    ASSERT_EQ(vectors->size(), 1u);
    EXPECT_EQ((*vectors)[0], Vec3f(1, 2, 3));
    VTRealArray afValues;
    afValues.AddGrow(7);
    const auto values = VTRvfConvertApi::toFloatArray(afValues);
    ASSERT_EQ(values->size(), 1u);
    EXPECT_EQ((*values)[0], 7);
    const VTIntArray aiValues = VTRvfConvertApi::toVTIntArray({7});
    ASSERT_EQ(aiValues.GetNumItems(), 1);
    EXPECT_EQ(aiValues[0], 7);
}

TEST(VTRvfConvertApi, EmptyArraysAreNotNull) {
    VTVectorArray aVectors;
    VTRealArray afValues;
    for (int i = 0; i < 2; ++i) {
        const auto vectors = VTRvfConvertApi::toVec3fArray(aVectors);
        ASSERT_TRUE(vectors.notNull());
        EXPECT_EQ(vectors->size(), 0u);
        const auto values = VTRvfConvertApi::toFloatArray(afValues);
        ASSERT_TRUE(values.notNull());
        EXPECT_EQ(values->size(), 0u);
        aVectors.Alloc(3, -1, false); // And so with room for items that are not there.
        afValues.Alloc(3, -1, false);
    }
}

TEST(VTRvfConvertApi, ArraysPassOnThatMemoryIsOut) {
    VTVectorArray aVectors;
    aVectors.Alloc(1000, -1, true);
    VTRealArray afValues;
    afValues.Alloc(1000, -1, true);
    {
        const orvtest::NewWatch watch(2);
        EXPECT_THROW(VTRvfConvertApi::toVec3fArray(aVectors), std::bad_alloc);
        EXPECT_EQ(watch.sizes().size(), 2u) << "the array and its items, which fail";
        EXPECT_EQ(watch.numDeletes(), 1) << "the array is released on the way";
    }
    const orvtest::NewWatch watch(2);
    EXPECT_THROW(VTRvfConvertApi::toFloatArray(afValues), std::bad_alloc);
    EXPECT_EQ(watch.sizes().size(), 2u);
    EXPECT_EQ(watch.numDeletes(), 1);
}

TEST(VTRvfConvertApi, CarriesInts) {
    std::vector<int> values(100);
    values.reserve(300);
    values[1] = 7;
    values[99] = VT_UNDEFINED_INT;
    const VTIntArray aiValues = VTRvfConvertApi::toVTIntArray(values);
    ASSERT_EQ(aiValues.GetNumItems(), 100);
    EXPECT_EQ(aiValues.GetNumAllocated(), 100) << "the capacity does not cross";
    EXPECT_EQ(aiValues.GetGrowBy(), 12) << "the default step, an eighth";
    EXPECT_EQ(aiValues[0], 0);
    EXPECT_EQ(aiValues[1], 7);
    EXPECT_EQ(aiValues[99], VT_UNDEFINED_INT);

    const VTIntArray aiNone = VTRvfConvertApi::toVTIntArray({});
    EXPECT_EQ(aiNone.GetNumItems(), 0);
    EXPECT_EQ(aiNone.GetDataPtr(), nullptr);
}

} // namespace
