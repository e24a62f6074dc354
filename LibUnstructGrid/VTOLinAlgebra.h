#pragma once

/// Vectors and matrices: the value types of all geometry of this family.

#include "LibUnstructGrid/VTOLinAlgebraMatrix4.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOLinAlgebraVector4.h"
#include "LibUnstructGrid/VTOLinAlgebraVectorFloat.h"
