#include "LibUnstructGrid/VTOMathSolver.h"

#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOMathCompare.h"

#include <cmath>
#include <utility>

namespace {

struct Place {
    int iRow;
    int iColumn;
};

/// The entry of the largest magnitude outside one row and one column (-1 excludes none); of equal ones the first, row
/// by row.
Place largestEntry(const double (*M)[3], int iSkipRow, int iSkipColumn) {
    Place largest = {-1, -1};
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            if (i == iSkipRow || j == iSkipColumn) {
                continue;
            }
            if (largest.iRow < 0 || std::fabs(M[i][j]) > std::fabs(M[largest.iRow][largest.iColumn])) {
                largest = {i, j};
            }
        }
    }
    return largest;
}

} // namespace

void VT2ndDegEq(double a, double b, double c, double* pdRoot1, double* pdRoot2) {
    if (!pdRoot1 || !pdRoot2) {
        return;
    }
    *pdRoot1 = 0.0;
    *pdRoot2 = 0.0;
    const double fDiscriminant = b * b - 4.0 * a * c;
    if (fDiscriminant < 0.0) {
        return;
    }
    const double fRoot = std::sqrt(fDiscriminant);
    *pdRoot1 = (-b + fRoot) / (2.0 * a);
    *pdRoot2 = (-b - fRoot) / (2.0 * a);
    if (*pdRoot1 < *pdRoot2) {
        std::swap(*pdRoot1, *pdRoot2);
    }
}

void VTEigen2D(double a, double b, double c, double d, double* pdE1, double* pdE2, VTVector* pV1, VTVector* pV2) {
    if (!pdE1 || !pdE2) {
        return;
    }
    VT2ndDegEq(1.0, -(a + d), a * d - b * c, pdE1, pdE2);
    if (!pV1 || !pV2) {
        return;
    }
    if (VTFeq(b, 0.0, VT_DOUBLE_TOLERANCE)) {
        *pV1 = VT_YAXIS_VEC;
    } else {
        const double t = (*pdE1 - a) / b;
        *pV1 = VTVector(1.0, t, 0.0) / std::sqrt(t * t + 1.0);
    }
    if (VTFeq(c, 0.0, VT_DOUBLE_TOLERANCE)) {
        *pV2 = VT_XAXIS_VEC;
    } else {
        const double t = (*pdE2 - d) / c;
        *pV2 = VTVector(t, 1.0, 0.0) / std::sqrt(t * t + 1.0);
    }
}

// The rows of the cofactor matrix of M - lambda I are multiples of the eigenvector. The largest cofactor gives the
// component that is set to 1, and a row of M - lambda I itself the last one.
bool VTEigenVector3x3(const double (*M)[3], double dEigenValue, double* pdVector) {
    double A[3][3];
    VTCopy3x3(M, A);
    for (int i = 0; i < 3; ++i) {
        A[i][i] -= dEigenValue;
    }
    double C[3][3];
    VTCofactor3x3(A, C);
    const Place first = largestEntry(C, -1, -1);
    if (VTFeqZero(C[first.iRow][first.iColumn])) {
        return false;
    }
    const Place second = largestEntry(A, first.iRow, first.iColumn);
    const double* pdRow = A[second.iRow];
    if (VTFeqZero(pdRow[second.iColumn])) {
        return false;
    }
    const int iOther = 3 - first.iColumn - second.iColumn;
    pdVector[first.iColumn] = 1.0;
    pdVector[iOther] = C[first.iRow][iOther] / C[first.iRow][first.iColumn];
    pdVector[second.iColumn] = (-pdRow[first.iColumn] - pdRow[iOther] * pdVector[iOther]) / pdRow[second.iColumn];
    return true;
}

void VTCopy3x3(const double (*pFrom)[3], double (*pTo)[3]) {
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            pTo[i][j] = pFrom[i][j];
        }
    }
}

// Cyclic rows and columns bring the signs with them.
void VTCofactor3x3(const double (*M)[3], double (*pCofactors)[3]) {
    for (int i = 0; i < 3; ++i) {
        const double* pdNext = M[(i + 1) % 3];
        const double* pdLast = M[(i + 2) % 3];
        for (int j = 0; j < 3; ++j) {
            const int iNext = (j + 1) % 3;
            const int iLast = (j + 2) % 3;
            pCofactors[i][j] = pdNext[iNext] * pdLast[iLast] - pdNext[iLast] * pdLast[iNext];
        }
    }
}
