#include "OrvUnstructGrid/ResultsQueryResult.h"

#include "OrvCore/Defines.h"

#include <utility>

namespace orv::ug {

ResultsQueryResult::ResultsQueryResult(std::vector<double> subItemScalars)
    : m_subItemScalars(std::move(subItemScalars)) {}

std::span<const double> ResultsQueryResult::subItemScalars() const {
    return m_subItemScalars;
}

double ResultsQueryResult::averageSubItemScalar() const {
    double sum = -0.0; // So that a single zero keeps its sign.
    std::size_t count = 0;
    for (const double value : m_subItemScalars) {
        if (value != UNDEFINED_DOUBLE) {
            sum += value;
            ++count;
        }
    }
    return count > 0 ? sum / double(count) : UNDEFINED_DOUBLE;
}

} // namespace orv::ug
