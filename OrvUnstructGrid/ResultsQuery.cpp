#include "OrvUnstructGrid/ResultsQuery.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/DataSourceInterface.h"

#include <algorithm>

namespace orv::ug {
namespace {

/// The items of a part that belong to one node or element.
struct Range {
    std::size_t first = 0;
    std::size_t count = 0;
};

std::size_t surfacesBefore(const DataElements& elements, std::size_t index) {
    std::size_t count = 0;
    for (const ElementType type : elements.types().first(index)) {
        count += elementTypeInfo(type).surfaceCount;
    }
    return count;
}

// False when there is no such element.
bool findRangeOnElement(const DataElements& elements, std::size_t index, ResultMapping mapping, Range* range) {
    if (index >= elements.elementCount()) {
        return false;
    }
    *range = mapping == PER_ELEMENT_NODE
                 ? Range{elements.offsets()[index], elements.offsets()[index + 1] - elements.offsets()[index]}
                 : Range{surfacesBefore(elements, index), elementTypeInfo(elements.types()[index]).surfaceCount};
    return true;
}

// False when the part has no such node or element. Where each has one value, the part need not be read for it.
bool findRange(const DataPart& part, std::size_t index, ResultMapping mapping, Range* range) {
    if (mapping == PER_ELEMENT_NODE || mapping == PER_ELEMENT_SURFACE) {
        return findRangeOnElement(*part.elements(), index, mapping, range);
    }
    *range = {index, 1};
    return index < part.itemCount(mapping == PER_NODE ? PER_NODE : PER_ELEMENT);
}

// Empty when one of the values cannot be had.
std::vector<ResultsQueryResult> readItems(DataSourceInterface* source, const DataState& state, const ResultInfo& info,
                                          std::size_t geometryIndex, const std::vector<ResultsQueryItem>& items) {
    std::vector<ResultsQueryResult> results;
    const DataGeometry* geometry = state.geometry(geometryIndex);
    for (const ResultsQueryItem& item : items) {
        Range range;
        if (item.itemIndex() >= geometry->partCount() ||
            !findRange(*geometry->part(item.itemIndex()), item.index(), info.resultMapping(), &range)) {
            return {};
        }
        std::vector<double> values(range.count);
        const ScalarPlace place = {geometryIndex, item.itemIndex(), range.first};
        if (!source->copyScalars(state.id(), info, place, values, nullptr)) {
            return {};
        }
        results.emplace_back(std::move(values));
    }
    return results;
}

} // namespace

ResultsQuery::ResultsQuery(DataSource* source) : m_source(source) {}

ResultsQuery::~ResultsQuery() = default;

bool ResultsQuery::scalars(int resultId, int stateId, std::size_t geometryIndex,
                           const std::vector<ResultsQueryItem>* items, std::vector<ResultsQueryResult>* results) {
    if (!results) {
        return false;
    }
    results->clear();
    auto* source = dynamic_cast<DataSourceInterface*>(m_source);
    if (!source || !items) {
        return false;
    }
    const DataState* state = m_source->state(m_source->stateIndex(stateId));
    const ResultInfo info = m_source->directory()->findScalarResultInfo(resultId);
    if (!state || !info.isValid() || geometryIndex >= state->geometryCount()) {
        return false;
    }
    *results = readItems(source, *state, info, geometryIndex, *items);
    const bool hasValue = std::any_of(results->begin(), results->end(), [](const ResultsQueryResult& result) {
        return result.averageSubItemScalar() != UNDEFINED_DOUBLE;
    });
    if (!hasValue) {
        results->clear();
    }
    return hasValue;
}

} // namespace orv::ug
