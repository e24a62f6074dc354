#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/CustomResultGenerator.h"

namespace orv::app {

class GeneratorWalk;

/// Computes a result per element from one per node: each element gets the plain average of its nodes.
///
/// Mid-side nodes count like corners, and a node that an element lists twice counts twice. Nothing is weighted.
/// Vectors, displacements and symmetric tensors are averaged component by component. Nodes are added in the order of
/// the element's list, from 0.0 on, and the sum is divided by their number. Four nodes with 1, 2, 4 and 5 give 3.
///
/// UNDEFINED_DOUBLE is a number like any other here: an element with one undefined node gets a huge value, about the
/// largest double divided by the number of nodes, which does not count as undefined any more, and with several
/// undefined nodes it gets infinity. So undefined values spread to the elements around.
///
/// @code
/// std::vector<orv::ug::ResultInfo> arguments = {temperature};
/// auto* generator = new orv::app::NodeToElementResultGenerator(1);
/// generator->setArgumentType(0, orv::ug::SCALAR);
/// orv::ug::ResultInfo perElement(orv::ug::SCALAR, "T", orv::ug::PER_ELEMENT, arguments, generator);
/// @endcode
class ORV_API NodeToElementResultGenerator : public ug::CustomResultGenerator {
public:
    /// Only the first argument is converted. Further ones must still have as many items as the first on every part.
    explicit NodeToElementResultGenerator(unsigned long argumentCount);

    /// Writes the values of `result` into `state`. The range of a scalar is refreshed part by part.
    ///
    /// Asserts, in this order: "state"; "dataSource"; "directory"; that the first argument is PER_NODE and `result`
    /// PER_ELEMENT; that both are of one type. Execution goes on behind each, and behind all but the first, where the
    /// answer is false, the values are computed nevertheless as far as the input reaches: of an argument with more
    /// doubles in an item than the result has, the first ones are taken.
    ///
    /// @return false when the arguments do not fit the generator, are not loaded or cannot be computed, differ in their
    ///         number of items, or have fewer items on a part than that has nodes. What has been written by then stays.
    bool generate(const ug::DataSource* dataSource, const ug::ResultInfo& result,
                  const std::vector<ug::ResultInfo>& arguments, ug::DataState* state) override;

private:
    friend class GeneratorWalk;
};

} // namespace orv::app
