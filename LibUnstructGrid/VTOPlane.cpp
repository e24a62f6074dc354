#include "LibUnstructGrid/VTOPlane.h"

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOArrayVector.h"
#include "LibUnstructGrid/VTOMathCompare.h"

namespace {

/// The least square of a component of the common direction of two planes that are not parallel.
constexpr double parallelLimit = 1e-60;

} // namespace

bool VTPlane::operator==(const VTPlane& other) const {
    VTPlane plane1 = *this;
    VTPlane plane2 = other;
    plane1.Normalize();
    plane2.Normalize();
    return VTFeq(plane1.a, plane2.a, VT_DOUBLE_TOLERANCE) && VTFeq(plane1.b, plane2.b, VT_DOUBLE_TOLERANCE) &&
           VTFeq(plane1.c, plane2.c, VT_DOUBLE_TOLERANCE) && VTFeq(plane1.d, plane2.d, VT_DOUBLE_TOLERANCE);
}

void VTPlane::Normalize() {
    const double fLength = NormalLength();
    if (fLength > 0.0) {
        *this = VTPlane(a / fLength, b / fLength, c / fLength, d / fLength);
    }
}

void VTPlane::Transform(const VTMatrix4& matrix) {
    VTVector normal;
    VTVector point;
    GetNormal(&normal);
    GetPoint(&point);
    normal.TransformVector(matrix);
    point.TransformPoint(matrix);
    SetFromPointAndNormal(point, normal);
}

bool VTPlane::GetNormal(VTVector* pNormal) const {
    RVF_ASSERT(pNormal);
    pNormal->Set(a, b, c);
    return pNormal->Normalize();
}

void VTPlane::GetPoint(VTVector* pPoint) const {
    RVF_ASSERT(pPoint);
    GetNormal(pPoint);
    *pPoint *= GetDistanceToOrigin();
}

void VTPlane::SetFromPointAndNormal(const VTVector& point, const VTVector& normal) {
    const VTVector unit = normal.GetNormalized();
    *this = VTPlane(unit.x, unit.y, unit.z, -(unit * point));
}

void VTPlane::SetFromPoints(const VTVector& p1, const VTVector& p2, const VTVector& p3) {
    const VTVector normal = (p2 - p1) ^ (p3 - p1);
    *this = VTPlane(normal.x, normal.y, normal.z, -(normal * p1));
}

bool VTPlane::SetFromPolygon(const VTVectorArray& aPoints) {
    *this = VTPlane();
    const VTVector* pPoints = aPoints.GetDataPtr();
    const int iNumPoints = aPoints.GetNumItems();
    VTVector normal = VT_ZERO_VEC;
    VTVector sum = VT_ZERO_VEC;
    for (int i = 0; i < iNumPoints; ++i) {
        const VTVector& pi = pPoints[i];
        const VTVector& pj = pPoints[(i + 1) % iNumPoints];
        normal.Add((pi.y - pj.y) * (pi.z + pj.z), (pi.z - pj.z) * (pi.x + pj.x), (pi.x - pj.x) * (pi.y + pj.y));
        sum += pi;
    }
    const double fLength = normal.Length();
    if (!(fLength > 0.0)) {
        return false;
    }
    *this =
        VTPlane(normal.x / fLength, normal.y / fLength, normal.z / fLength, -(sum * normal) / (iNumPoints * fLength));
    return true;
}

bool VTPlane::GetDefaultOrientation(VTVector* pOrientation) const {
    RVF_ASSERT(pOrientation);
    if (VTFeqZero(b) && VTFeqZero(c)) {
        *pOrientation = VT_YAXIS_VEC;
        return true;
    }
    return ProjectVector(VT_XAXIS_VEC, pOrientation);
}

bool VTPlane::ProjectVector(const VTVector& vector, VTVector* pProjected) const {
    RVF_ASSERT(pProjected);
    VTVector normal;
    GetNormal(&normal);
    VTVector projected = vector;
    if (!projected.ProjectVectorOntoPlane(normal)) {
        return false;
    }
    *pProjected = projected;
    return true;
}

bool VTPlane::ProjectPoint(const VTVector& point, VTVector* pProjected) const {
    RVF_ASSERT(pProjected);
    VTVector origin;
    GetPoint(&origin);
    VTVector along = VT_ZERO_VEC;
    const bool bProjected = ProjectVector(point - origin, &along);
    *pProjected = origin + along;
    return bProjected;
}

// Cramer's rule on the two components that are left when the third is set to 0.
bool VTPlane::Intersect(const VTPlane& other, VTVector* pPoint, VTVector* pDirection) const {
    VTVector normal1;
    VTVector normal2;
    GetNormal(&normal1);
    other.GetNormal(&normal2);
    VTVector m = normal1 ^ normal2;
    const double fXX = m.x * m.x;
    const double fYY = m.y * m.y;
    const double fZZ = m.z * m.z;
    if (fZZ > fXX && fZZ > fYY && !(fZZ < parallelLimit)) {
        pPoint->Set((b * other.d - other.b * d) / m.z, (other.a * d - a * other.d) / m.z, 0.0);
    } else if (fYY > fXX && !(fYY < parallelLimit)) {
        pPoint->Set((other.c * d - c * other.d) / m.y, 0.0, (a * other.d - other.a * d) / m.y);
    } else if (fXX < parallelLimit) {
        return false;
    } else {
        pPoint->Set(0.0, (c * other.d - other.c * d) / m.x, (other.b * d - b * other.d) / m.x);
    }
    if (pDirection) {
        m.Normalize();
        *pDirection = m;
    }
    return true;
}
