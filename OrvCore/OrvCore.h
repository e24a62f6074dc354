#pragma once

/// @page OrvCore OrvCore: what applications and components share
///
/// Namespace `orv`; stands on LibCore, and SymmetricTensor on the numerics of LibUnstructGrid.
///
/// - Text and numbers: Str (UTF-8 at the border), Vec3d, Ray, and the marks for what is undefined, UNDEFINED_SIZE_T,
///   UNDEFINED_DOUBLE and UNDEFINED_VECTOR.
/// - Stresses: SymmetricTensor, with its von Mises value, principal values and directions.
/// - Ownership: shared objects derive from RefCountedObject and are held by PtrRef; a facade owns its private object
///   through internal::PimplPointerHolder.
/// - Properties: a PropertySetCollection is a list of PropertySet.
/// - Start-up: an Instance carries InitializationOptions; CoreComponent holds the LogManager.
/// - editDistance() tells how far two words are apart, for "did you mean".
/// - Convert carries texts to and from the core.

#include "OrvCore/Convert.h"
#include "OrvCore/CoreComponent.h"
#include "OrvCore/Defines.h"
#include "OrvCore/EditDistance.h"
#include "OrvCore/InitializationOptions.h"
#include "OrvCore/Instance.h"
#include "OrvCore/LogManager.h"
#include "OrvCore/PimplPointerHolder.h"
#include "OrvCore/PropertySet.h"
#include "OrvCore/PropertySetCollection.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/Ray.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvCore/Str.h"
#include "OrvCore/SymmetricTensor.h"
#include "OrvCore/Vec3d.h"
