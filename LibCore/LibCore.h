#pragma once

/// @page LibCore LibCore: base types
///
/// The lowest floor, namespace `rvf`. It needs nothing but the standard library.
///
/// - Failed preconditions: Assert, with an observer for tests and an action that the application chooses.
/// - Shared objects: Object counts its holders in an AtomicCounter, ref holds.
/// - Text: String is wide; CharArray is its UTF-8 form for the C library.
/// - Logging: LogManager keeps a Logger per name; messages go with their CodeLocation to one LogDestination.
/// - Numbers: Vector3, Matrix4 (column vectors, translation in the last column) and Array.
/// - Geometry: BoundingBox and Plane; Math with its checksum; Color3f and Color3ub.
/// - System: C library calls that respect the size of their buffers.

#include "LibCore/rvfArray.h"
#include "LibCore/rvfAssert.h"
#include "LibCore/rvfAtomicCounter.h"
#include "LibCore/rvfBoundingBox.h"
#include "LibCore/rvfCharArray.h"
#include "LibCore/rvfCodeLocation.h"
#include "LibCore/rvfColor3.h"
#include "LibCore/rvfExport.h"
#include "LibCore/rvfLogDestination.h"
#include "LibCore/rvfLogger.h"
#include "LibCore/rvfLogManager.h"
#include "LibCore/rvfMath.h"
#include "LibCore/rvfMatrix4.h"
#include "LibCore/rvfObject.h"
#include "LibCore/rvfPlane.h"
#include "LibCore/rvfRef.h"
#include "LibCore/rvfString.h"
#include "LibCore/rvfSystem.h"
#include "LibCore/rvfVector3.h"
