#include "LibUnstructGrid/VTORvfConvertApi.h"

#include "LibCore/rvfArray.h"
#include "LibCore/rvfBoundingBox.h"
#include "LibCore/rvfColor3.h"
#include "LibCore/rvfMatrix4.h"
#include "LibCore/rvfPlane.h"
#include "LibCore/rvfRef.h"
#include "LibCore/rvfString.h"
#include "LibCore/rvfVector3.h"
#include "LibUnstructGrid/VTOArrayInt.h"
#include "LibUnstructGrid/VTOArrayReal.h"
#include "LibUnstructGrid/VTOArrayVector.h"
#include "LibUnstructGrid/VTOBaseTypesColor.h"
#include "LibUnstructGrid/VTOBoundingBoxAligned.h"
#include "LibUnstructGrid/VTOLinAlgebra.h"
#include "LibUnstructGrid/VTOPlane.h"

#include <algorithm>

namespace {

/// A new array with the items of another one, each made by `convert`.
template <typename Item, typename VtArray, typename Convert>
rvf::ref<rvf::Array<Item>> convertItems(const VtArray& source, Convert convert) {
    rvf::ref<rvf::Array<Item>> target = new rvf::Array<Item>;
    const int iNumItems = source.GetNumItems();
    if (iNumItems != 0) {
        target->resize(static_cast<size_t>(iNumItems));
        std::transform(source.GetDataPtr(), source.GetDataPtr() + iNumItems, target->ptr(), convert);
    }
    return target;
}

} // namespace

rvf::String VTRvfConvertApi::toString(const VTString& sText) {
    return rvf::String(~sText);
}

VTString VTRvfConvertApi::toVTString(const rvf::String& text) {
    return VTString(text.c_str());
}

std::wstring VTRvfConvertApi::toStdWString(const std::string& text) {
    const rvf::String widened(text);
    return std::wstring(widened.c_str(), widened.size());
}

rvf::Vector3<double> VTRvfConvertApi::toVec3d(const VTVector& vector) {
    return rvf::Vector3<double>(vector.x, vector.y, vector.z);
}

rvf::Vector3<double> VTRvfConvertApi::toVec3d(const VTVectorFloat& vector) {
    return rvf::Vector3<double>(toVec3f(vector));
}

rvf::Vector3<float> VTRvfConvertApi::toVec3f(const VTVector& vector) {
    return rvf::Vector3<float>(toVec3d(vector));
}

rvf::Vector3<float> VTRvfConvertApi::toVec3f(const VTVectorFloat& vector) {
    return rvf::Vector3<float>(vector.x, vector.y, vector.z);
}

VTVector VTRvfConvertApi::toVTVector(const rvf::Vector3<double>& vector) {
    return VTVector(vector.x(), vector.y(), vector.z());
}

VTVector VTRvfConvertApi::toVTVector(const rvf::Vector3<float>& vector) {
    return toVTVector(rvf::Vector3<double>(vector));
}

rvf::Matrix4<double> VTRvfConvertApi::toMat4d(const VTMatrix4& matrix) {
    rvf::Matrix4<double> result;
    for (size_t i = 0; i < 16; ++i) {
        result(i % 4, i / 4) = matrix.v[i];
    }
    return result;
}

VTMatrix4 VTRvfConvertApi::toVTMatrix4(const rvf::Matrix4<double>& matrix) {
    VTMatrix4 result;
    for (size_t i = 0; i < 16; ++i) {
        result.v[i] = static_cast<float>(matrix(i % 4, i / 4));
    }
    return result;
}

rvf::BoundingBox VTRvfConvertApi::toBoundingBox(const VTBox& box) {
    rvf::BoundingBox result;
    if (box.IsValid()) {
        result.add(toVec3d(box.min));
        result.add(toVec3d(box.max));
    }
    return result;
}

VTBox VTRvfConvertApi::toVTBox(const rvf::BoundingBox& box) {
    VTBox result;
    result.Reset();
    if (box.isValid()) {
        result.Add(toVTVector(box.min()));
        result.Add(toVTVector(box.max()));
    }
    return result;
}

rvf::Plane VTRvfConvertApi::toPlane(const VTPlane& plane) {
    rvf::Plane result;
    result.set(plane.a, plane.b, plane.c, plane.d);
    return result;
}

VTPlane VTRvfConvertApi::toVTPlane(const rvf::Plane& plane) {
    return VTPlane(plane.A(), plane.B(), plane.C(), plane.D());
}

rvf::Color3f VTRvfConvertApi::toColor3f(const VTByteColor& color) {
    return rvf::Color3f(toColor3ub(color));
}

rvf::Color3f VTRvfConvertApi::toColor3f(const VTRGBColor& color) {
    return rvf::Color3f(color.r, color.g, color.b);
}

rvf::Color3ub VTRvfConvertApi::toColor3ub(const VTByteColor& color) {
    return rvf::Color3ub(color.r, color.g, color.b);
}

VTByteColor VTRvfConvertApi::toVTByteColor(const rvf::Color3f& color) {
    return VTByteColor(VTRGBColor(color.r(), color.g(), color.b()));
}

rvf::ref<rvf::Array<rvf::Vector3<float>>> VTRvfConvertApi::toVec3fArray(const VTVectorArray& aVectors) {
    return convertItems<rvf::Vector3<float>>(aVectors, [](const VTVector& vector) { return toVec3f(vector); });
}

rvf::ref<rvf::Array<float>> VTRvfConvertApi::toFloatArray(const VTRealArray& afValues) {
    return convertItems<float>(afValues, [](double fValue) { return static_cast<float>(fValue); });
}

VTIntArray VTRvfConvertApi::toVTIntArray(const std::vector<int>& values) {
    VTIntArray aiResult;
    if (!values.empty()) {
        aiResult.CopyData(values.data(), static_cast<int>(values.size()), 0);
    }
    return aiResult;
}
