#pragma once

#include "LibCore/rvfExport.h"

class VTVector;

/// The roots of a x^2 + b x + c, the larger one first. Without real roots both are 0, and nothing else tells. Does
/// nothing when either pointer is null. `a` must not be 0: the roots are then infinite or NaN.
ORV_API void VT2ndDegEq(double a, double b, double c, double* pdRoot1, double* pdRoot2);

/// Eigenvalues of the matrix of the rows (a, b) and (c, d), the larger one first, and unit eigenvectors in the plane
/// z = 0. Does nothing when either value pointer is null; gives no vectors when either vector pointer is null. Complex
/// eigenvalues come out as 0.
///
/// The first vector belongs to the larger value, found from the row (a, b), the second to the smaller one, from the row
/// (c, d). Not so where b or c is 0: a b of 0 makes the first vector (0, 1) and a c of 0 the second one (1, 0),
/// whichever diagonal entry is the larger. A diagonal matrix with a above d therefore has its vectors in the order
/// opposite to its values.
ORV_API void VTEigen2D(double a, double b, double c, double d, double* pdE1, double* pdE2, VTVector* pV1,
                       VTVector* pV2);

/// An eigenvector, not normalised, of the matrix of rows M[0], M[1], M[2] for a simple eigenvalue, by cofactors. False,
/// with the vector as it stands, when they all are below 1e-60 in magnitude, as for a repeated eigenvalue.
ORV_API bool VTEigenVector3x3(const double (*M)[3], double dEigenValue, double* pdVector);

ORV_API void VTCopy3x3(const double (*pFrom)[3], double (*pTo)[3]);

/// The matrix of signed 2 x 2 minors. Source and target must be different.
ORV_API void VTCofactor3x3(const double (*M)[3], double (*pCofactors)[3]);
