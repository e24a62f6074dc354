#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/ResultsQueryItem.h"
#include "OrvUnstructGrid/ResultsQueryResult.h"

#include <cstddef>
#include <vector>

namespace orv::ug {

class DataSource;

/// Asks a data source for the values of single nodes or elements, such as one node's over all states:
///
/// @code
/// orv::ug::ResultsQuery query(source);
/// const std::vector<orv::ug::ResultsQueryItem> items = {orv::ug::ResultsQueryItem(partIndex, nodeIndex)};
/// std::vector<orv::ug::ResultsQueryResult> results;
/// for (const orv::ug::StateInfo& state : source->directory()->stateInfos()) {
///     if (query.scalars(resultId, state.id(), 0, &items, &results)) {
///         curve.push_back(results[0].averageSubItemScalar());
///     }
/// }
/// @endcode
class ORV_API ResultsQuery {
public:
    /// @param source not owned; it must live as long as the query. With null, or a source
    ///               that is no DataSourceInterface, no query succeeds.
    explicit ResultsQuery(DataSource* source);
    ~ResultsQuery();

    /// The values of one scalar result in one state, one entry in `results` for each item, in the order of the items.
    ///
    /// A result that is loaded in that state is read from memory. Otherwise the source reads these values alone where
    /// its format allows a seek, and loads the whole result where it does not, as it does for a custom result.
    ///
    /// @return false when the state has no value: the state or the result is unknown, the result has no values in that
    ///         state or they cannot be read, the geometry or one of the items does not exist, there are no items, or
    ///         not one of them has a defined value. `results` is then empty. Also false when `items` or `results` is
    ///         null.
    bool scalars(int resultId, int stateId, std::size_t geometryIndex, const std::vector<ResultsQueryItem>* items,
                 std::vector<ResultsQueryResult>* results);

private:
    DataSource* m_source;
};

} // namespace orv::ug
