#pragma once

#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOString.h"

#include <string>
#include <vector>

class VTBox;
class VTIntArray;
class VTMatrix4;
class VTPlane;
class VTRealArray;
class VTVector;
class VTVectorArray;
class VTVectorFloat;
struct VTByteColor;
struct VTRGBColor;

namespace rvf {
class BoundingBox;
class Color3f;
class Color3ub;
class Plane;
class String;
template <class T>
class Array;
template <class T>
class Matrix4;
template <class T>
class ref;
template <class T>
class Vector3;
} // namespace rvf

/// Carries values between the `VT` family and the core's `rvf` family. Every function makes a new value.
///
/// Undefined values are not looked for: each crosses as the number that it is. Between doubles, and from float to
/// double, that changes nothing, but a VT_UNDEFINED_FLOAT is an ordinary 3.4e38 among doubles. From double to float,
/// VT_UNDEFINED_DOUBLE and all else beyond the floats becomes an infinity: the tests against a limit, such as
/// VTIsUndefined(float) and rvf::Math::isUndefined(float), still take it for undefined, while a comparison with
/// VT_UNDEFINED_FLOAT does not.
class ORV_API VTRvfConvertApi {
public:
    /// The same characters. A null string gives the empty text.
    static rvf::String toString(const VTString& sText);
    /// The same characters, up to a zero inside. Never null.
    static VTString toVTString(const rvf::String& text);
    /// Each byte becomes the character of the same number, 0 to 255. Nothing is decoded: of UTF-8 each byte beyond
    /// ASCII comes out as a character of its own.
    static std::wstring toStdWString(const std::string& text);

    /// Exact, or widened.
    static rvf::Vector3<double> toVec3d(const VTVector& vector);
    static rvf::Vector3<double> toVec3d(const VTVectorFloat& vector);
    /// Narrows each component; see above for what is undefined.
    static rvf::Vector3<float> toVec3f(const VTVector& vector);
    /// Exact.
    static rvf::Vector3<float> toVec3f(const VTVectorFloat& vector);
    /// Exact, or widened.
    static VTVector toVTVector(const rvf::Vector3<double>& vector);
    static VTVector toVTVector(const rvf::Vector3<float>& vector);

    /// The same transformation, exactly. Element [j][i] of a VTMatrix4 stands in row i and column j, so the translation
    /// goes from the last array row to the last column.
    static rvf::Matrix4<double> toMat4d(const VTMatrix4& matrix);
    /// The same transformation with about seven digits: every element goes through a float, the translation too. So
    /// toVTMatrix4(toMat4d(m)) is not m in general.
    static VTMatrix4 toVTMatrix4(const rvf::Matrix4<double>& matrix);

    /// The same minimum and maximum. An invalid box gives an invalid box, as new, and its numbers do not cross: 1e30
    /// stands for nothing in a VTBox, the largest double in a rvf::BoundingBox. A new VTBox is valid and gives the
    /// valid box of no size at the origin.
    static rvf::BoundingBox toBoundingBox(const VTBox& box);
    /// The reverse, by adding both corners to a box after VTBox::Reset(): a minimum above 1e30 comes out as 1e30, a
    /// maximum below -1e30 as -1e30.
    static VTBox toVTBox(const rvf::BoundingBox& box);

    /// The four coefficients, exactly. A plane without a normal asserts in rvf::Plane::set() and crosses all the same.
    static rvf::Plane toPlane(const VTPlane& plane);
    /// The four coefficients, exactly.
    static VTPlane toVTPlane(const rvf::Plane& plane);

    /// Each byte / 255.
    static rvf::Color3f toColor3f(const VTByteColor& color);
    /// The same channels.
    static rvf::Color3f toColor3f(const VTRGBColor& color);
    /// The same channels.
    static rvf::Color3ub toColor3ub(const VTByteColor& color);
    /// Rounds as the constructor of VTByteColor from VTRGBColor does. Every VTByteColor comes back from toColor3f()
    /// unchanged.
    static VTByteColor toVTByteColor(const rvf::Color3f& color);

    /// A new array of as many items, each narrowed. Never null; without items an empty array.
    static rvf::ref<rvf::Array<rvf::Vector3<float>>> toVec3fArray(const VTVectorArray& aVectors);
    static rvf::ref<rvf::Array<float>> toFloatArray(const VTRealArray& afValues);
    /// The same items with the default growth step; without items an array without a buffer.
    static VTIntArray toVTIntArray(const std::vector<int>& values);
};
