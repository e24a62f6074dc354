#include "LibUnstructGrid/VTOBoundingBoxOriented.h"

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOArrayVector.h"
#include "LibUnstructGrid/VTOBoundingBox_p.h"
#include "LibUnstructGrid/VTOGeometryMathNearest.h"
#include "LibUnstructGrid/VTOGeometryMathPolygon.h"
#include "LibUnstructGrid/VTOMathVector.h"

#include <algorithm>
#include <cmath>

namespace {

// Beyond any hit; as the widened float that it has always been.
constexpr double farAway = 1e30f;

// Four vertices of each side, and the axis that it stands across.
constexpr int sideVertices[24] = {0, 3, 2, 1, 4, 5, 6, 7, 0, 1, 5, 4, 2, 3, 7, 6, 3, 0, 4, 7, 1, 2, 6, 5};
constexpr int sideAxes[6] = {1, 1, 2, 2, 0, 0};

// What a turned axis does to a vertex number: the bits that change.
constexpr int mirrorBits[3] = {1, 4, 3};

double projectedExtent(const VTVector& extent, double f0, double f1, double f2) {
    return extent.x * std::fabs(f0) + extent.y * std::fabs(f1) + extent.z * std::fabs(f2);
}

/// The first point of a row of them around the center, and the step between them.
void splitAxis(const VTVector& fullAxis, int iNumPoints, VTVector* pStart, VTVector* pStep) {
    *pStep = fullAxis;
    if (iNumPoints > 1) {
        *pStart -= fullAxis / 2.0;
        *pStep /= iNumPoints - 1;
    }
}

} // namespace

VTOrientedBoundingBox::VTOrientedBoundingBox()
    : m_center(VT_ZERO_VEC), m_basis{VT_XAXIS_VEC, VT_YAXIS_VEC, VT_ZAXIS_VEC}, m_extent(VT_ZERO_VEC), m_iMinVertex(-1),
      m_iMaxVertex(-1), m_bDirty(true) {}

void VTOrientedBoundingBox::SetCenter(double fX, double fY, double fZ) {
    m_center.Set(fX, fY, fZ);
    FlagDirty();
}

void VTOrientedBoundingBox::SetExtent(double fX, double fY, double fZ) {
    m_extent.Set(fX, fY, fZ);
    FlagDirty();
}

void VTOrientedBoundingBox::SetBasis(const VTVector& xAxis, const VTVector& yAxis, const VTVector& zAxis) {
    const VTVector axes[3] = {xAxis, yAxis, zAxis};
    std::copy_n(axes, 3, m_basis);
    FlagDirty();
}

void VTOrientedBoundingBox::FlagDirty() {
    m_bDirty = true;
}

void VTOrientedBoundingBox::SetFromMinMax(const VTVector& minimum, const VTVector& maximum) {
    SetVertexNumbersFromPoints(minimum, maximum);
    m_extent = (maximum - minimum) * 0.5;
    m_center = (minimum + maximum) * 0.5;
    SetBasis(VT_XAXIS_VEC, VT_YAXIS_VEC, VT_ZAXIS_VEC);
    Reorient(-1);
}

void VTOrientedBoundingBox::SetFromMinMax(const VTBox& box) {
    SetFromMinMax(box.min, box.max);
}

void VTOrientedBoundingBox::SetVertexNumbersFromPoints(const VTVector& minimum, const VTVector& maximum) {
    unsigned int uiMin = 255;
    unsigned int uiMax = 255;
    for (int i = 0; i < 3; ++i) {
        const bool bInOrder = maximum[i] > minimum[i];
        uiMin &= bInOrder ? VTBoxes::lowVertices[i] : VTBoxes::highVertices[i];
        uiMax &= bInOrder ? VTBoxes::highVertices[i] : VTBoxes::lowVertices[i];
    }
    m_iMinVertex = VTBoxes::vertexOf(uiMin);
    m_iMaxVertex = VTBoxes::vertexOf(uiMax);
}

int VTOrientedBoundingBox::Reorient(int iVertex) {
    const bool bKnown = iVertex >= 0 && iVertex <= 7;
    int iMoved = bKnown ? iVertex : 0;
    for (int i = 0; i < 3; ++i) {
        if (m_extent[i] < 0.0) {
            m_extent[i] = -m_extent[i];
            iMoved ^= mirrorBits[i];
        }
    }
    FlagDirty();
    return bKnown ? iMoved : -1;
}

void VTOrientedBoundingBox::GetMinMax(VTVector* pMin, VTVector* pMax, bool bForceBounds) {
    VTVector vertices[8];
    const VTVector* pFoundMin = &m_bounds.min;
    const VTVector* pFoundMax = &m_bounds.max;
    if (!bForceBounds && m_iMinVertex >= 0 && m_iMaxVertex >= 0) {
        GetFaceSet(vertices, nullptr, nullptr);
        pFoundMin = vertices + m_iMinVertex;
        pFoundMax = vertices + m_iMaxVertex;
    } else {
        CalcPlanesAndMinMax();
    }
    if (pMin) {
        *pMin = *pFoundMin;
    }
    if (pMax) {
        *pMax = *pFoundMax;
    }
}

void VTOrientedBoundingBox::GetMinMax(VTBox* pBox, bool bForceBounds) {
    GetMinMax(&pBox->min, &pBox->max, bForceBounds);
}

void VTOrientedBoundingBox::CalcPlanesAndMinMax() {
    if (!m_bDirty) {
        return;
    }
    VTVector vertices[8];
    VTVector normals[6];
    GetFaceSet(vertices, nullptr, normals);
    m_bounds = VTBox(vertices[0], vertices[0]);
    m_bounds.Add(vertices, 8);
    for (int iSide = 0; iSide < 6; ++iSide) {
        const VTVector normal = normals[iSide].GetNormalized();
        const VTVector& vertex = vertices[sideVertices[4 * iSide]];
        m_sidePlanes[iSide] = VTPlane(normal.x, normal.y, normal.z, -(normal * vertex));
    }
    m_bDirty = false;
}

void VTOrientedBoundingBox::GetFaceSet(VTVector* pPoints, int* piFaces, VTVector* pNormals) const {
    for (int iVertex = 0; iVertex < 8; ++iVertex) {
        pPoints[iVertex] = m_center;
        for (int i = 0; i < 3; ++i) {
            pPoints[iVertex] += (VTBoxes::isHigh(iVertex, i) ? m_extent[i] : -m_extent[i]) * m_basis[i];
        }
    }
    if (piFaces) {
        std::copy_n(sideVertices, 24, piFaces);
    }
    if (pNormals) {
        const VTVector normals[6] = {-m_basis[1], m_basis[1], m_basis[2], -m_basis[2], -m_basis[0], m_basis[0]};
        std::copy_n(normals, 6, pNormals);
    }
}

void VTOrientedBoundingBox::Transform(const VTMatrix4& matrix) {
    m_center.TransformPoint(matrix);
    for (VTVector& axis : m_basis) {
        axis.TransformVector(matrix);
    }
    FlagDirty();
}

void VTOrientedBoundingBox::MoveCenterAlongBasis(double fX, double fY, double fZ) {
    m_center += fX * m_basis[0] + fY * m_basis[1] + fZ * m_basis[2];
    FlagDirty();
}

void VTOrientedBoundingBox::ScaleExtent(double fX, double fY, double fZ) {
    SetExtent(m_extent.x * fX, m_extent.y * fY, m_extent.z * fZ);
}

void VTOrientedBoundingBox::Expand(double fDistance) {
    m_extent.Add(fDistance, fDistance, fDistance);
    FlagDirty();
}

void VTOrientedBoundingBox::Normalize() {
    for (int i = 0; i < 3; ++i) {
        m_extent[i] *= m_basis[i].Length();
        m_basis[i].Normalize();
    }
    FlagDirty();
}

int VTOrientedBoundingBox::Resize(int iVertex, const VTVector* pNewPos, bool bLockX, bool bLockY, bool bLockZ) {
    if (iVertex < 0 || iVertex > 7) {
        return iVertex;
    }
    VTVector vertices[8];
    GetFaceSet(vertices, nullptr, nullptr);
    const VTVector way = *pNewPos - vertices[iVertex];
    const VTVector fromCenter = vertices[iVertex] - m_center;

    // The center goes half the way; so does each size, outwards or inwards as the vertex lies.
    const bool bLocked[3] = {bLockX, bLockY, bLockZ};
    VTVector deltas = VT_ZERO_VEC;
    for (int i = 0; i < 3; ++i) {
        if (!bLocked[i]) {
            deltas[i] = (m_basis[i] * way) / 2.0;
        }
    }
    MoveCenterAlongBasis(deltas.x, deltas.y, deltas.z);
    for (int i = 0; i < 3; ++i) {
        m_extent[i] += m_basis[i] * fromCenter < 0.0 ? -deltas[i] : deltas[i];
    }
    return Reorient(iVertex);
}

bool VTOrientedBoundingBox::GetTransformationMatrix(const VTOrientedBoundingBox* pOther, VTMatrix4* pM) const {
    const VTOrientedBoundingBox newBox;
    const VTOrientedBoundingBox& other = pOther ? *pOther : newBox;
    VTGetCoordSystemTransformation(other.m_basis, m_basis, nullptr, nullptr, pM);
    pM->Translate(m_center - other.m_center);
    return true;
}

const VTPlane* VTOrientedBoundingBox::GetSidePlanes(int iSide, VTPlane* pPlanes) {
    CalcPlanesAndMinMax();
    if (iSide < -1 || iSide > 5) {
        return nullptr;
    }
    const VTPlane* pFirst = iSide == -1 ? m_sidePlanes : m_sidePlanes + iSide;
    if (pPlanes) {
        std::copy_n(pFirst, iSide == -1 ? 6 : 1, pPlanes);
    }
    return pFirst;
}

bool VTOrientedBoundingBox::GetSideMidpoints(VTVector* pPoints) {
    if (!pPoints) {
        return false;
    }
    CalcPlanesAndMinMax();
    for (int iSide = 0; iSide < 6; ++iSide) {
        const VTPlane& plane = m_sidePlanes[iSide];
        pPoints[iSide] = m_center + m_extent[sideAxes[iSide]] * VTVector(plane.a, plane.b, plane.c);
    }
    return true;
}

void VTOrientedBoundingBox::GetPointsFromBox(int iNumX, int iNumY, int iNumZ, VTVectorArray* pNodeArray) const {
    RVF_ASSERT(pNodeArray);
    const int iNumPoints = iNumX * iNumY * iNumZ;
    RVF_ASSERT(iNumPoints > 0);
    pNodeArray->Alloc(iNumPoints, -1, true);
    VTVector start = m_center;
    VTVector steps[3];
    splitAxis(2.0 * m_extent.x * m_basis[0], iNumX, &start, &steps[0]);
    splitAxis(2.0 * m_extent.y * m_basis[1], iNumY, &start, &steps[1]);
    splitAxis(2.0 * m_extent.z * m_basis[2], iNumZ, &start, &steps[2]);
    VTVector* pPoint = pNodeArray->GetDataPtr();
    for (int iZ = 0; iZ < iNumZ; ++iZ) {
        for (int iY = 0; iY < iNumY; ++iY) {
            for (int iX = 0; iX < iNumX; ++iX) {
                *pPoint++ = start + iX * steps[0] + iY * steps[1] + iZ * steps[2];
            }
        }
    }
}

bool VTOrientedBoundingBox::RayIntersect(const VTVector& origin, const VTVector& dir, double* pdDist, int* piVertex,
                                         int* piSide, VTVector* pPoint) const {
    VTVector vertices[8];
    VTVector normals[6];
    GetFaceSet(vertices, nullptr, normals);
    double fBest = farAway;
    VTVector bestPoint;
    int iBestSide = -1;
    for (int iSide = 0; iSide < 6; ++iSide) {
        const int* piSideVertices = sideVertices + 4 * iSide;
        VTVector point;
        double fDist = 0.0;
        if (VTPlaneRayIntersect(normals[iSide], vertices[piSideVertices[0]], origin, dir, &point, &fDist) &&
            fDist >= 0.0 && fDist < fBest &&
            VTPointInIndexedPolygonFast(normals[iSide], vertices, piSideVertices, 4, point)) {
            fBest = fDist;
            bestPoint = point;
            iBestSide = iSide;
        }
    }
    if (pdDist) {
        *pdDist = fBest;
    }
    if (iBestSide < 0) {
        return false;
    }
    if (piVertex) {
        *piVertex = VTFindClosestNode(sideVertices + 4 * iBestSide, 4, vertices, bestPoint);
    }
    if (piSide) {
        *piSide = iBestSide;
    }
    if (pPoint) {
        *pPoint = bestPoint;
    }
    return true;
}

// The separating axis test: two convex boxes are apart exactly when their shadows are, on an axis of the one, of the
// other, or across one of each. Half-sizes are projected by the cosines between the bases.
bool VTOrientedBoundingBox::BoxIntersect(const VTOrientedBoundingBox& other) const {
    const VTVector way = other.m_center - m_center;
    double R[3][3];
    double fWay[3];
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            R[i][j] = m_basis[i] * other.m_basis[j];
        }
        fWay[i] = way * m_basis[i];
    }
    for (int i = 0; i < 3; ++i) {
        if (std::fabs(fWay[i]) > m_extent[i] + projectedExtent(other.m_extent, R[i][0], R[i][1], R[i][2])) {
            return false;
        }
    }
    for (int j = 0; j < 3; ++j) {
        if (std::fabs(way * other.m_basis[j]) >
            projectedExtent(m_extent, R[0][j], R[1][j], R[2][j]) + other.m_extent[j]) {
            return false;
        }
    }
    for (int i = 0; i < 3; ++i) {
        const int i1 = (i + 1) % 3;
        const int i2 = (i + 2) % 3;
        for (int j = 0; j < 3; ++j) {
            const int j1 = (j + 1) % 3;
            const int j2 = (j + 2) % 3;
            const double fOwn = m_extent[i1] * std::fabs(R[i2][j]) + m_extent[i2] * std::fabs(R[i1][j]);
            const double fOther = other.m_extent[j1] * std::fabs(R[i][j2]) + other.m_extent[j2] * std::fabs(R[i][j1]);
            if (std::fabs(fWay[i2] * R[i1][j] - fWay[i1] * R[i2][j]) > fOwn + fOther) {
                return false;
            }
        }
    }
    return true;
}

bool VTOrientedBoundingBox::PointInBox(const VTVector& point) {
    CalcPlanesAndMinMax();
    return m_bounds.PointInBox(point, VT_REAL_TOLERANCE) &&
           std::none_of(m_sidePlanes, m_sidePlanes + 6,
                        [&](const VTPlane& plane) { return plane.GetDistance(point) > 0.0; });
}

double VTOrientedBoundingBox::GetPointL2Dist(const VTVector& point, VTVector* pClosest) const {
    const VTVector way = point - m_center;
    VTVector offset(way * m_basis[0], way * m_basis[1], way * m_basis[2]);
    const double fL2Dist = VTBoxes::clampToHalfSizes(m_extent, &offset);
    if (pClosest) {
        *pClosest = m_center + offset.x * m_basis[0] + offset.y * m_basis[1] + offset.z * m_basis[2];
    }
    return fL2Dist;
}

double VTOrientedBoundingBox::GetPointDist(const VTVector& point, VTVector* pClosest) const {
    return std::sqrt(GetPointL2Dist(point, pClosest));
}
