#pragma once

#include "LibCore/rvfArray.h"
#include "LibCore/rvfExport.h"
#include "LibCore/rvfVector3.h"

class VTVector;

/// Interpolates at a point from its neighbours among nodes, each weighed by the inverse of its distance.
///
/// `piIndices` names `iNumIndices` neighbours; `pdValues` and `pVectorValues` hold one entry per node and are read at
/// those same indexes. A scalar is interpolated when both `pdValues` and `pdResult` are given, a vector when both
/// `pVectorValues` and `pVectorResult` are. An output without its input becomes 0. Without nodes, indexes or a point
/// nothing is written.
///
/// The first 16 neighbours alone take part; further ones are silently dropped. An `iPower` of 1 weighs by 1 /
/// distance^2, any other by 1 / distance^4. A neighbour that the point stands on gives its value alone, whatever the
/// earlier ones hold. That is one whose coordinates all differ by less than 1e-18, or, where `iPower` is not 1, one
/// that is nearer than 1e-9.
ORV_API void VTShepard3D(const VTVector* pNodes, const int* piIndices, int iNumIndices, const double* pdValues,
                         const VTVector* pVectorValues, int iPower, const VTVector* pPoint, double* pdResult,
                         VTVector* pVectorResult);

/// The same over float nodes, each component widened before the subtraction.
ORV_API void VTShepard3D(const rvf::Array<rvf::Vector3<float>>* pNodes, const unsigned int* puiIndices, int iNumIndices,
                         const double* pdValues, const VTVector* pVectorValues, int iPower, const VTVector* pPoint,
                         double* pdResult, VTVector* pVectorResult);
