#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/CustomResultGenerator.h"

namespace orv::app {

class GeneratorWalk;

/// Computes a result that is constant: each component of each item, on a part or in the whole state, holds the
/// smallest, the largest or the average number of another result of the same type and mapping.
///
/// The components of a vector, displacement or tensor are thrown together: the minimum of a vector result is its
/// smallest single component, not a length. The average of a state is that of all its numbers, so a part with more
/// items weighs more. It is the sum in the order of geometries, parts and items, divided by the count.
///
/// Numbers equal to UNDEFINED_DOUBLE are left out. A NaN is not: it makes the average NaN, and as minimum and maximum
/// it stands until the next number takes its place.
///
/// Two traps:
/// - The search for the maximum begins at the smallest normal double, 2.2250738585072014e-308, so that is the maximum
///   of numbers that all lie below it, such as negative ones.
/// - Without any defined number the minimum is 1.7976931348623157e+308, which reads as undefined, the maximum
///   2.2250738585072014e-308 and the average 0.0.
///
/// | numbers | minimum | maximum | average |
/// |---|---|---|---|
/// | 1, 2, undefined | 1 | 2 | 1.5 |
/// | -3, -1 | -3 | 2.2250738585072014e-308 | -2 |
class ORV_API MinMaxAvgValueResultGenerator : public ug::CustomResultGenerator {
public:
    /// @param argumentCount 1; anything else is refused by generate()
    /// @param operation 0 minimum, 1 maximum, 2 average; any other value leaves the output values as they are
    /// @param perPart true: a value for each part; false: one value over all parts of all geometries of the state
    MinMaxAvgValueResultGenerator(unsigned long argumentCount, int operation, bool perPart);

    /// Writes the values of `result` into `state`, and refreshes the range of a scalar part by part. One value over all
    /// parts is written when all have been read.
    ///
    /// Asserts, in this order: "state"; "dataSource"; "argCount == 1"; "directory"; that `result` has the argument's
    /// type; that it has its mapping. Execution goes on behind each, and behind all but the first, where the answer is
    /// false, the values are computed nevertheless from the first argument.
    ///
    /// @return false when the arguments do not fit the generator, are none, are not loaded or cannot be computed, or
    ///         differ in their number of items. What has been written by then stays.
    bool generate(const ug::DataSource* dataSource, const ug::ResultInfo& result,
                  const std::vector<ug::ResultInfo>& arguments, ug::DataState* state) override;

private:
    friend class GeneratorWalk;

    bool generatePerPart(const GeneratorWalk& walk, ug::DataState* state) const;
    bool generateOverAllParts(const GeneratorWalk& walk, ug::DataState* state) const;

    int m_operation;
    bool m_perPart;
};

} // namespace orv::app
