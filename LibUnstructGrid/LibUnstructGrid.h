#pragma once

/// @page LibUnstructGrid LibUnstructGrid: the foundation
///
/// Types and functions that begin with `VT`, methods in upper camel case. It needs LibCore and LibIo alone.
///
/// - Text: VTString, a wide text with a cursor that walks words and tokens.
/// - VTRvfConvertApi goes between this family and the core's.

#include "LibUnstructGrid/VTOArrayTemplate.h"
#include "LibUnstructGrid/VTOBaseTypes2D.h"
#include "LibUnstructGrid/VTOBaseTypesIdent.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOMathConstants.h"
#include "LibUnstructGrid/VTORvfConvertApi.h"
#include "LibUnstructGrid/VTOSort.h"
#include "LibUnstructGrid/VTOString.h"
