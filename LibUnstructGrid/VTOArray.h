#pragma once

/// @file
/// The growable, flat, contiguous arrays of the foundation.
///
/// Each element type has a class of its own, and the classes differ on purpose. What they share is told at VTArray and
/// VTIntArray; each of the others tells what it does differently. Three things hold for all of them:
///
/// - `Add` never grows the array, `AddGrow` does.
/// - A search that finds nothing returns -1, and a count of -1 means up to the last item.
/// - A failed check is an assertion and nothing else. When the assertion handler returns, the operation carries on as
///   if the check had passed, and then reads or writes outside the array.
///
/// None of them takes a lock: one writer at a time.

#include "LibUnstructGrid/VTOArrayBase.h"
#include "LibUnstructGrid/VTOArrayFloat.h"
#include "LibUnstructGrid/VTOArrayInt.h"
#include "LibUnstructGrid/VTOArrayIntIndex.h"
#include "LibUnstructGrid/VTOArrayMatrix4.h"
#include "LibUnstructGrid/VTOArrayPartInstanceID.h"
#include "LibUnstructGrid/VTOArrayReal.h"
#include "LibUnstructGrid/VTOArrayResultID.h"
#include "LibUnstructGrid/VTOArraySortedInt.h"
#include "LibUnstructGrid/VTOArrayString.h"
#include "LibUnstructGrid/VTOArrayTemplate.h"
#include "LibUnstructGrid/VTOArrayUbyte.h"
#include "LibUnstructGrid/VTOArrayVector.h"
#include "LibUnstructGrid/VTOArrayVectorFloat.h"
