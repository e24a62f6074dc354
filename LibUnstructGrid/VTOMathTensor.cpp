#include "LibUnstructGrid/VTOMathTensor.h"

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOMathCompare.h"
#include "LibUnstructGrid/VTOMathSolver.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double zeroLimit = 1e-60;

// 4 pi / 3 and 2 pi / 3 as the floats they have always been.
constexpr double twoThirdsTurn = 4.188790321350098;
constexpr double oneThirdTurn = 2.094395160675049;

struct Tensor {
    double xx;
    double yy;
    double zz;
    double xy;
    double yz;
    double zx;
};

Tensor load(const double* d, int iDim) {
    return iDim == 3 ? Tensor{d[0], d[1], 0.0, d[2], 0.0, 0.0} : Tensor{d[0], d[1], d[2], d[3], d[4], d[5]};
}

bool isZero(const Tensor& t) {
    return VTFeqZero(t.xx) && VTFeqZero(t.yy) && VTFeqZero(t.zz) && VTFeqZero(t.xy) && VTFeqZero(t.yz) &&
           VTFeqZero(t.zx);
}

/// The principal values in descending order: the roots of the deviator's cubic e^3 - p e + q = 0, moved by the mean.
void computeRoots(Tensor t, double (&roots)[3]) {
    const double fShift = -(t.xx + t.yy + t.zz) / 3.0;
    t.xx += fShift;
    t.yy += fShift;
    t.zz += fShift;
    const double p = t.xy * t.xy + t.yz * t.yz + t.zx * t.zx - t.xx * t.yy - t.yy * t.zz - t.xx * t.zz;
    const double q =
        t.xx * t.yz * t.yz + t.yy * t.zx * t.zx + t.zz * t.xy * t.xy - t.xx * t.yy * t.zz - 2.0 * t.xy * t.yz * t.zx;
    // p is a sum of squares in disguise. Rounding turns it negative for a hydrostatic state.
    if (p < zeroLimit) {
        roots[0] = roots[1] = roots[2] = -fShift;
        return;
    }
    const double u = std::clamp(-std::sqrt(27.0 / p) * q * 0.5 / p, -1.0, 1.0);
    const double phi = std::acos(u) / 3.0;
    const double r = 2.0 * std::sqrt(p / 3.0);
    roots[0] = r * std::cos(phi) - fShift;
    roots[1] = r * std::cos(phi + twoThirdsTurn) - fShift;
    roots[2] = r * std::cos(phi + oneThirdTurn) - fShift;
}

/// Sets the root of the smallest magnitude to 0 and puts it last; the two others stay in descending order.
void dropOutOfPlaneRoot(double (&roots)[3]) {
    if (std::fabs(roots[2]) > std::fabs(roots[1])) {
        std::swap(roots[1], roots[2]);
    }
    if (std::fabs(roots[2]) > std::fabs(roots[0])) {
        std::swap(roots[0], roots[2]);
    }
    if (roots[1] > roots[0]) {
        std::swap(roots[0], roots[1]);
    }
    roots[2] = 0.0;
}

void computeDirections2D(const double* pfData, VTVector* pVectors) {
    double fFirst = 0.0;
    double fSecond = 0.0;
    VTEigen2D(pfData[0], pfData[2], pfData[2], pfData[1], &fFirst, &fSecond, &pVectors[0], &pVectors[1]);
}

void computeDirections3D(const Tensor& t, const double (&roots)[3], VTVector* pVectors) {
    const double matrix[3][3] = {{t.xx, t.xy, t.zx}, {t.xy, t.yy, t.yz}, {t.zx, t.yz, t.zz}};
    for (int i = 0; i < 3; ++i) {
        double direction[3] = {0.0, 0.0, 0.0};
        VTEigenVector3x3(matrix, roots[i], direction);
        pVectors[i].Set(direction[0], direction[1], direction[2]);
        pVectors[i].Normalize();
    }
}

double writeUndefined(double* pdPrincipals, VTVector* pVectors) {
    if (pdPrincipals) {
        std::fill_n(pdPrincipals, 3, VT_UNDEFINED_DOUBLE);
    }
    if (pVectors) {
        std::fill_n(pVectors, 3, VT_UNDEFINED_VECTOR);
    }
    return VT_UNDEFINED_DOUBLE;
}

} // namespace

double VTComputePrincipalsPrivate(const double* pfData, int iDim, int iPrinc, double* pdPrincipals,
                                  VTVector* pVectors) {
    RVF_ASSERT(pfData);
    RVF_ASSERT((iDim == 3) || (iDim == 6));
    RVF_ASSERT((iPrinc >= 0) && (iPrinc < ((iDim == 6) ? 3 : 2)));
    if (vt::internal::hasUndefined(pfData, iDim)) {
        return writeUndefined(pdPrincipals, pVectors);
    }
    const Tensor tensor = load(pfData, iDim);
    const int iNumPrincipals = iDim == 6 ? 3 : 2;
    if (pdPrincipals) {
        std::fill_n(pdPrincipals, iNumPrincipals, 0.0);
    }
    if (pVectors) {
        std::fill_n(pVectors, iNumPrincipals, VT_ZERO_VEC);
    }
    if (isZero(tensor)) {
        return 0.0;
    }

    double roots[3];
    computeRoots(tensor, roots);
    if (iDim == 3 || (iDim == 6 && tensor.zz == 0.0 && tensor.yz == 0.0 && tensor.zx == 0.0)) {
        dropOutOfPlaneRoot(roots);
    }
    if (pVectors && iDim == 3) {
        computeDirections2D(pfData, pVectors);
    } else if (pVectors && iDim == 6) {
        computeDirections3D(tensor, roots, pVectors);
    }
    if (pdPrincipals) {
        std::copy_n(roots, iNumPrincipals, pdPrincipals);
    }
    if (iPrinc >= 0 && iPrinc < iNumPrincipals) {
        return roots[iPrinc];
    }
    RVF_FAIL_MSG("Unhandled case");
    return VT_UNDEFINED_DOUBLE;
}

double VTComputePrincipals2D(const double* pfData, double* pdPrincipals, VTVector* pVectors) {
    return VTComputePrincipalsPrivate(pfData, 3, 0, pdPrincipals, pVectors);
}

double VTComputePrincipals3D(const double* pfData, double* pdPrincipals, VTVector* pVectors) {
    return VTComputePrincipalsPrivate(pfData, 6, 0, pdPrincipals, pVectors);
}

double VTComputePrincipal(const double* pfData, int iDim, int iPrinc) {
    return VTComputePrincipalsPrivate(pfData, iDim, iPrinc, nullptr, nullptr);
}
