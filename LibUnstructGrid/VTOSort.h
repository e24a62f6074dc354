#pragma once

/// Sorting, searching and grouping on raw buffers.
///
/// Functions assert their pointers and do nothing when the count is below 1. Positions and counts are int; a search
/// that finds nothing gives -1. Nothing here keeps a buffer beyond the call.

#include "LibUnstructGrid/VTOSortFunctions.h"
#include "LibUnstructGrid/VTOSortHash.h"
#include "LibUnstructGrid/VTOSortSearch.h"
#include "LibUnstructGrid/VTOSortSorter.h"
#include "LibUnstructGrid/VTOSortUnique.h"
