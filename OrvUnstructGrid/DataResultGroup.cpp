#include "OrvUnstructGrid/DataResultGroup.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/DataGeometry.h"

#include <algorithm>

namespace orv::ug {
namespace {

template <class List>
std::size_t indexIn(const List& list, int resultId) {
    const auto found = std::find_if(list.begin(), list.end(),
                                    [resultId](const auto& result) { return result->resultId() == resultId; });
    return found != list.end() ? static_cast<std::size_t>(found - list.begin()) : UNDEFINED_SIZE_T;
}

template <class List>
auto* entryOf(const List& list, std::size_t index) {
    return index < list.size() ? list[index].get() : nullptr;
}

template <class Result>
Result* findOrAddIn(std::vector<std::unique_ptr<Result>>& list, const ResultInfo& info, const DataGeometry* geometry) {
    Result* found = entryOf(list, indexIn(list, info.id()));
    if (found) {
        return found;
    }
    const std::size_t partCount = geometry ? geometry->partCount() : 0;
    return list.emplace_back(std::make_unique<Result>(info.id(), info.resultMapping(), partCount)).get();
}

template <class List>
void removeFrom(List& list, int resultId) {
    std::erase_if(list, [resultId](const auto& result) { return result->resultId() == resultId; });
}

} // namespace

DataResultGroup::DataResultGroup(const DataGeometry* geometry) : m_geometry(geometry) {}

DataResultGroup::~DataResultGroup() = default;

const DataGeometry* DataResultGroup::geometry() const {
    return m_geometry;
}

std::size_t DataResultGroup::scalarCount() const {
    return m_scalars.size();
}

std::size_t DataResultGroup::vectorCount() const {
    return m_vectors.size();
}

std::size_t DataResultGroup::displacementCount() const {
    return m_displacements.size();
}

std::size_t DataResultGroup::symmetricTensorCount() const {
    return m_symmetricTensors.size();
}

std::size_t DataResultGroup::scalarIndex(int resultId) const {
    return indexIn(m_scalars, resultId);
}

std::size_t DataResultGroup::vectorIndex(int resultId) const {
    return indexIn(m_vectors, resultId);
}

std::size_t DataResultGroup::displacementIndex(int resultId) const {
    return indexIn(m_displacements, resultId);
}

std::size_t DataResultGroup::symmetricTensorIndex(int resultId) const {
    return indexIn(m_symmetricTensors, resultId);
}

DataResultScalar* DataResultGroup::scalar(std::size_t index) {
    return entryOf(m_scalars, index);
}

DataResultVector* DataResultGroup::vector(std::size_t index) {
    return entryOf(m_vectors, index);
}

DataResultDisplacement* DataResultGroup::displacement(std::size_t index) {
    return entryOf(m_displacements, index);
}

DataResultSymmetricTensor* DataResultGroup::symmetricTensor(std::size_t index) {
    return entryOf(m_symmetricTensors, index);
}

const DataResultScalar* DataResultGroup::scalar(std::size_t index) const {
    return entryOf(m_scalars, index);
}

const DataResultVector* DataResultGroup::vector(std::size_t index) const {
    return entryOf(m_vectors, index);
}

const DataResultDisplacement* DataResultGroup::displacement(std::size_t index) const {
    return entryOf(m_displacements, index);
}

const DataResultSymmetricTensor* DataResultGroup::symmetricTensor(std::size_t index) const {
    return entryOf(m_symmetricTensors, index);
}

DataResult* DataResultGroup::find(const ResultInfo& info) {
    return const_cast<DataResult*>(static_cast<const DataResultGroup*>(this)->find(info));
}

const DataResult* DataResultGroup::find(const ResultInfo& info) const {
    switch (info.type()) {
    case SCALAR:
        return scalar(scalarIndex(info.id()));
    case VECTOR:
        return vector(vectorIndex(info.id()));
    case DISPLACEMENT:
        return displacement(displacementIndex(info.id()));
    case SYMMETRIC_TENSOR:
        return symmetricTensor(symmetricTensorIndex(info.id()));
    case NO_RESULT_TYPE:
        break;
    }
    return nullptr;
}

DataResult* DataResultGroup::findOrAdd(const ResultInfo& info) {
    switch (info.type()) {
    case SCALAR:
        return findOrAddIn(m_scalars, info, m_geometry);
    case VECTOR:
        return findOrAddIn(m_vectors, info, m_geometry);
    case DISPLACEMENT:
        return findOrAddIn(m_displacements, info, m_geometry);
    case SYMMETRIC_TENSOR:
        return findOrAddIn(m_symmetricTensors, info, m_geometry);
    case NO_RESULT_TYPE:
        break;
    }
    return nullptr;
}

void DataResultGroup::remove(const ResultInfo& info) {
    remove(info.type(), info.id());
}

void DataResultGroup::remove(ResultType type, int resultId) {
    switch (type) {
    case SCALAR:
        return removeFrom(m_scalars, resultId);
    case VECTOR:
        return removeFrom(m_vectors, resultId);
    case DISPLACEMENT:
        return removeFrom(m_displacements, resultId);
    case SYMMETRIC_TENSOR:
        return removeFrom(m_symmetricTensors, resultId);
    case NO_RESULT_TYPE:
        break;
    }
}

std::vector<const DataResult*> DataResultGroup::all() const {
    std::vector<const DataResult*> results;
    auto append = [&results](const auto& list) {
        for (const auto& result : list) {
            results.push_back(result.get());
        }
    };
    append(m_scalars);
    append(m_vectors);
    append(m_displacements);
    append(m_symmetricTensors);
    return results;
}

std::size_t DataResultGroup::byteCount() const {
    std::size_t bytes = 0;
    for (const DataResult* result : all()) {
        bytes += result->byteCount();
    }
    return bytes;
}

} // namespace orv::ug
