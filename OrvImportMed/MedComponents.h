#pragma once

#include "OrvUnstructGrid/ResultType.h"

#include <string>
#include <vector>

namespace orv::imp::cae {

/// Components of a field that become one result.
struct MedColumns {
    /// In place of a component that the field of a plane model does not have: 0.
    static constexpr int ZERO = -1;

    std::string name;
    ug::ResultType type;
    std::vector<int> columns; ///< For each double of an item its component, from 0, or ZERO.

    bool operator==(const MedColumns&) const = default;
};

/// Gathers a field's components to results, by their names:
/// - XX, YY, ZZ, XY and maybe XZ and YZ behind one stem (SIXX, EPXX, or nothing) to a symmetric tensor. MED files hold
///   them in the order XX YY ZZ XY XZ YZ; whatever the order is, it becomes ours.
/// - DX, DY and maybe DZ to a displacement, or to a vector when the field's name tells another quantity of
///   code_aster's that has these components, such as VITE, the velocity.
/// - Three components that end with X, Y and Z behind one stem, and three without names, to a vector.
/// - All others are scalars.
/// A result has the field's name when it is made of all components or is the tensor or displacement of the field's
/// first component; a scalar has FIELD.COMPONENT, other tensors FIELD.STEM. A component without a name goes by its
/// number from 1, and so does one whose name another one has.
std::vector<MedColumns> gatherMedComponents(const std::string& field, const std::vector<std::string>& components);

} // namespace orv::imp::cae
