#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/CustomResultGenerator.h"

namespace orv::app {

class GeneratorWalk;

/// Computes a result per node from one per element: each node gets the plain average of the elements around it, in its
/// own part.
///
/// Nothing is weighted: neither volume nor distance counts, and an element that lists a node twice counts twice for it.
/// Vectors, displacements and symmetric tensors are averaged component by component. Elements are added in their order,
/// from 0.0 on, and the sum is divided by their number.
///
/// A node that no element uses gets 0.0, which cannot be told from a computed 0.0: it is not undefined.
///
/// UNDEFINED_DOUBLE is a number like any other here: a node with one undefined element gets a huge value that does not
/// count as undefined any more, or UNDEFINED_DOUBLE again when that element is its only one, and with several undefined
/// elements it gets infinity. So undefined values spread to the nodes around.
///
/// Make and use it as NodeToElementResultGenerator, with the mappings exchanged.
class ORV_API ElementToNodeResultGenerator : public ug::CustomResultGenerator {
public:
    /// Only the first argument is converted. Further ones must still have as many items as the first on every part.
    explicit ElementToNodeResultGenerator(unsigned long argumentCount);

    /// Writes the values of `result` into `state`. The range of a scalar is refreshed part by part.
    ///
    /// Asserts, in this order: "state"; "dataSource"; "directory"; that the first argument is PER_ELEMENT and `result`
    /// PER_NODE; that both are of one type. Execution goes on behind each, and behind all but the first, where the
    /// answer is false, the values are computed nevertheless as far as the input reaches: of an argument with more
    /// doubles in an item than the result has, the first ones are taken.
    ///
    /// @return false when the arguments do not fit the generator, are not loaded or cannot be computed, differ in their
    ///         number of items, or have fewer items on a part than that has elements. What has been written by then
    ///         stays.
    bool generate(const ug::DataSource* dataSource, const ug::ResultInfo& result,
                  const std::vector<ug::ResultInfo>& arguments, ug::DataState* state) override;

private:
    friend class GeneratorWalk;
};

} // namespace orv::app
