#include "LibUnstructGrid/VTOBoundingBoxAligned.h"

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOArrayInt.h"
#include "LibUnstructGrid/VTOArrayVector.h"
#include "LibUnstructGrid/VTOBoundingBox_p.h"
#include "LibUnstructGrid/VTOBoundingBoxOriented.h"
#include "LibUnstructGrid/VTOLinAlgebraVector4.h"
#include "LibUnstructGrid/VTOPlane.h"

#include <algorithm>
#include <cmath>

namespace {

// As the widened float that it has always been.
constexpr double resetValue = 1e30f;

// Four vertices of each side.
constexpr int sideVertices[24] = {0, 3, 2, 1, 4, 5, 6, 7, 0, 1, 5, 4, 3, 7, 6, 2, 0, 4, 7, 3, 1, 2, 6, 5};

constexpr VTVector sideNormals[6] = {VT_NEG_YAXIS_VEC, VT_YAXIS_VEC,     VT_ZAXIS_VEC,
                                     VT_NEG_ZAXIS_VEC, VT_NEG_XAXIS_VEC, VT_XAXIS_VEC};

bool addPoints(VTBox* pBox, const VTVector* pPoints, int iNumPoints) {
    bool bChanged = false;
    for (int i = 0; i < iNumPoints; ++i) {
        bChanged |= pBox->Add(pPoints[i]);
    }
    return bChanged;
}

/// The vertex that is farthest along a direction.
VTVector farthestVertex(const VTBox& box, const VTVector& direction) {
    return VTVector(direction.x > 0.0 ? box.max.x : box.min.x, direction.y > 0.0 ? box.max.y : box.min.y,
                    direction.z > 0.0 ? box.max.z : box.min.z);
}

} // namespace

VTBox::VTBox() : VTBox(VT_ZERO_VEC, VT_ZERO_VEC) {}

VTBox::VTBox(const VTVector& minimum, const VTVector& maximum) : bMark(true), min(minimum), max(maximum) {}

VTBox::VTBox(double fMinX, double fMinY, double fMinZ, double fMaxX, double fMaxY, double fMaxZ)
    : VTBox(VTVector(fMinX, fMinY, fMinZ), VTVector(fMaxX, fMaxY, fMaxZ)) {}

VTBox::VTBox(const VTBox& other) : VTBox(other.min, other.max) {}

bool VTBox::operator==(const VTBox& other) const {
    return min == other.min && max == other.max;
}

bool VTBox::IsValid() const {
    return !(min.x > max.x) && !(min.y > max.y) && !(min.z > max.z);
}

void VTBox::BoxFromPointAndExtent(const VTVector& center, const VTVector& size) {
    // Either argument may be a field of this box.
    const VTVector half = size / 2.0;
    const VTVector minimum = center - half;
    max = center + half;
    min = minimum;
}

double VTBox::LargestExtent() const {
    return Extent().MaxComponent(nullptr);
}

int VTBox::LargestExtentAxis() const {
    const VTVector extent = Extent();
    if (extent.x > extent.y && extent.x > extent.z) {
        return 0;
    }
    if (extent.y > extent.x && extent.y > extent.z) {
        return 1;
    }
    return 2;
}

void VTBox::ScaleExtent(double fX, double fY, double fZ) {
    const VTVector extent = Extent();
    const VTVector growth(extent.x * fX, extent.y * fY, extent.z * fZ);
    min -= growth;
    max += growth;
}

void VTBox::Expand(double fDistance) {
    min -= fDistance * VT_UNIT_VEC;
    max += fDistance * VT_UNIT_VEC;
}

void VTBox::Reset() {
    min = resetValue * VT_UNIT_VEC;
    max = -resetValue * VT_UNIT_VEC;
}

void VTBox::SetZero() {
    min.SetZero();
    max.SetZero();
}

bool VTBox::Add(const VTVector& point) {
    return Add(VTBox(point, point));
}

bool VTBox::Add(const VTBox& box) {
    bool bChanged = false;
    for (int i = 0; i < 3; ++i) {
        if (box.min[i] < min[i]) {
            min[i] = box.min[i];
            bChanged = true;
        }
        if (box.max[i] > max[i]) {
            max[i] = box.max[i];
            bChanged = true;
        }
    }
    return bChanged;
}

bool VTBox::Add(const VTVectorArray& aPoints) {
    return addPoints(this, aPoints.GetDataPtr(), aPoints.GetNumItems());
}

bool VTBox::Add(const VTVector* pPoints, int iNumPoints) {
    RVF_ASSERT(pPoints);
    return addPoints(this, pPoints, iNumPoints);
}

bool VTBox::Add(const VTVectorArray& aPoints, const VTIntArray& aiIndices) {
    bool bChanged = false;
    for (int i = 0; i < aiIndices.GetNumItems(); ++i) {
        RVF_ASSERT((aiIndices[i] >= 0) && (aiIndices[i] < aPoints.GetNumItems()));
        bChanged |= Add(aPoints.GetDataPtr()[aiIndices[i]]);
    }
    return bChanged;
}

bool VTBox::Add(const VTVector* pPoints, const int* piIndices, int iNumIndices) {
    RVF_ASSERT(pPoints);
    RVF_ASSERT(piIndices);
    bool bChanged = false;
    for (int i = 0; i < iNumIndices; ++i) {
        RVF_ASSERT(piIndices[i] >= 0);
        bChanged |= Add(pPoints[piIndices[i]]);
    }
    return bChanged;
}

void VTBox::Transform(const VTMatrix4& matrix) {
    if (!IsValid()) {
        return;
    }
    VTVector corners[8];
    GetCornerPoints(corners);
    for (VTVector& corner : corners) {
        corner.TransformPoint(matrix);
    }
    min = max = corners[0];
    addPoints(this, corners, 8);
}

void VTBox::GetCornerPoints(VTVector* pCornerPoints) const {
    RVF_ASSERT(pCornerPoints);
    for (double fZ : {min.z, max.z}) {
        *pCornerPoints++ = VTVector(min.x, min.y, fZ);
        *pCornerPoints++ = VTVector(max.x, min.y, fZ);
        *pCornerPoints++ = VTVector(max.x, max.y, fZ);
        *pCornerPoints++ = VTVector(min.x, max.y, fZ);
    }
}

void VTBox::GetFaceSet(VTVector* pPoints, int* piFaces, VTVector* pNormals) const {
    for (int iVertex = 0; iVertex < 8; ++iVertex) {
        for (int i = 0; i < 3; ++i) {
            pPoints[iVertex][i] = VTBoxes::isHigh(iVertex, i) ? max[i] : min[i];
        }
    }
    if (piFaces) {
        std::copy_n(sideVertices, 24, piFaces);
    }
    if (pNormals) {
        std::copy_n(sideNormals, 6, pNormals);
    }
}

void VTBox::GetPointsFromBox(int iNumX, int iNumY, int iNumZ, VTVectorArray* pNodeArray) const {
    RVF_ASSERT(pNodeArray);
    VTOrientedBoundingBox box;
    box.SetFromMinMax(*this);
    box.GetPointsFromBox(iNumX, iNumY, iNumZ, pNodeArray);
}

double VTBox::FindClosestNode(const VTVector& point, VTVector* pClosest) const {
    VTVector vertices[8];
    GetFaceSet(vertices, nullptr, nullptr);
    const VTVector* pNearest = std::min_element(vertices, vertices + 8, [&](const VTVector& a, const VTVector& b) {
        return VTPointL2Dist(a, point) < VTPointL2Dist(b, point);
    });
    if (pClosest) {
        *pClosest = *pNearest;
    }
    return VTPointL2Dist(*pNearest, point);
}

bool VTBox::PointInBox(const VTVector& point, const double& fTolerance) const {
    return point.x >= min.x - fTolerance && point.x <= max.x + fTolerance && point.y >= min.y - fTolerance &&
           point.y <= max.y + fTolerance && point.z >= min.z - fTolerance && point.z <= max.z + fTolerance;
}

bool VTBox::BoxIntersect(const VTBox& box) const {
    return min.x <= box.max.x && max.x >= box.min.x && min.y <= box.max.y && max.y >= box.min.y && min.z <= box.max.z &&
           max.z >= box.min.z;
}

int VTBox::PlanesBoxIntersect(const VTVector4* pPlanes, int iNumPlanes, bool bCheckFullyInside) const {
    bool bCrossed = false;
    int iPlane = iNumPlanes;
    do {
        const VTVector4& plane = pPlanes[--iPlane];
        const VTVector normal(plane.x, plane.y, plane.z);
        if (normal * farthestVertex(*this, normal) - plane.w < 0.0) {
            return -1;
        }
        if (bCheckFullyInside && normal * farthestVertex(*this, -normal) - plane.w < 0.0) {
            bCrossed = true;
        }
    } while (iPlane > 0);
    return bCrossed ? 0 : 1;
}

VTRealRange VTBox::PlaneMinMaxDist(const VTPlane& plane) const {
    if (!IsValid()) {
        return VTRealRange();
    }
    VTVector corners[8];
    GetCornerPoints(corners);
    double fDistances[8];
    std::transform(corners, corners + 8, fDistances, [&](const VTVector& corner) { return plane.GetDistance(corner); });
    const auto [pMin, pMax] = std::minmax_element(fDistances, fDistances + 8);
    return VTRealRange(*pMin, *pMax);
}

double VTBox::GetPointL2Dist(const VTVector& point, VTVector* pClosest) const {
    const VTVector center = Center();
    VTVector offset = point - center;
    const double fL2Dist = VTBoxes::clampToHalfSizes(Extent() / 2.0, &offset);
    if (pClosest) {
        *pClosest = center + offset;
    }
    return fL2Dist;
}

double VTBox::GetPointDist(const VTVector& point, VTVector* pClosest) const {
    return std::sqrt(GetPointL2Dist(point, pClosest));
}
