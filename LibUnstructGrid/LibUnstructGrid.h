#pragma once

/// @page LibUnstructGrid LibUnstructGrid: the foundation
///
/// Types and functions that begin with `VT`, methods in upper camel case. It needs LibCore and LibIo alone.
///
/// - Text: VTString, a wide text with a cursor that walks words and tokens.
/// - File names, and VTFile and VTBinaryFile, streams with a mode and a byte order.
/// - Identifiers, ranges, colours and two-dimensional values (VTOBaseTypes).
/// - Typed arrays, written out one by one: numbers, texts, vectors, matrices, identifiers (VTOArray).
/// - Sorting and searching on raw buffers, and VTHash (VTOSort).
/// - Vectors and matrices: VTVector, VTVector4, VTVectorFloat and VTMatrix4 (VTOLinAlgebra).
/// - Numerics: tolerances, missing values, rounding, quaternions, stress tensors, interpolation (VTOMath).
/// - VTPlane, a plane by its four coefficients.
/// - Rays and lines against planes, polygons, spheres and cylinders; clean-up of polygon meshes (VTOGeometryMath).
/// - VTBox and VTOrientedBoundingBox, boxes along the axes of the model and along their own (VTOBoundingBox).
/// - VTRvfConvertApi goes between this family and the core's.

#include "LibUnstructGrid/VTOArray.h"
#include "LibUnstructGrid/VTOBaseTypes.h"
#include "LibUnstructGrid/VTOBoundingBox.h"
#include "LibUnstructGrid/VTOFile.h"
#include "LibUnstructGrid/VTOGeometryMath.h"
#include "LibUnstructGrid/VTOLinAlgebra.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOMath.h"
#include "LibUnstructGrid/VTOMathConstants.h"
#include "LibUnstructGrid/VTOPlane.h"
#include "LibUnstructGrid/VTORvfConvertApi.h"
#include "LibUnstructGrid/VTOSort.h"
#include "LibUnstructGrid/VTOString.h"
