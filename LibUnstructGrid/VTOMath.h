#pragma once

/// The numeric kernel: tolerances and missing values, tolerant comparison, rounding, small solvers, quaternions, stress
/// tensors and interpolation. All functions are free of state.

#include "LibUnstructGrid/VTOMathCompare.h"
#include "LibUnstructGrid/VTOMathConstants.h"
#include "LibUnstructGrid/VTOMathQuaternion.h"
#include "LibUnstructGrid/VTOMathRound.h"
#include "LibUnstructGrid/VTOMathShepard.h"
#include "LibUnstructGrid/VTOMathSolver.h"
#include "LibUnstructGrid/VTOMathTensor.h"
#include "LibUnstructGrid/VTOMathVector.h"
