#pragma once

/// @file
/// The small value types of the foundation: identifiers, two-dimensional coordinates, ranges and colours.

#include "LibUnstructGrid/VTOBaseTypes2D.h"
#include "LibUnstructGrid/VTOBaseTypesColor.h"
#include "LibUnstructGrid/VTOBaseTypesIdent.h"
#include "LibUnstructGrid/VTOBaseTypesRange.h"
