#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/DataResult.h"
#include "OrvUnstructGrid/ResultInfo.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace orv::ug {

class DataGeometry;

/// The results that are loaded for one geometry in one state.
///
/// Each kind has positions of its own, in the order of loading; a position is good until a result is removed.
class ORV_API DataResultGroup {
public:
    explicit DataResultGroup(const DataGeometry* geometry);
    ~DataResultGroup();

    DataResultGroup(const DataResultGroup&) = delete;
    DataResultGroup& operator=(const DataResultGroup&) = delete;

    const DataGeometry* geometry() const;

    std::size_t scalarCount() const;
    std::size_t vectorCount() const;
    std::size_t displacementCount() const;
    std::size_t symmetricTensorCount() const;

    /// The position of the loaded result with that id; UNDEFINED_SIZE_T when it is not loaded.
    std::size_t scalarIndex(int resultId) const;
    std::size_t vectorIndex(int resultId) const;
    std::size_t displacementIndex(int resultId) const;
    std::size_t symmetricTensorIndex(int resultId) const;

    /// The result at a position; null when there is none, as for UNDEFINED_SIZE_T.
    DataResultScalar* scalar(std::size_t index);
    DataResultVector* vector(std::size_t index);
    DataResultDisplacement* displacement(std::size_t index);
    DataResultSymmetricTensor* symmetricTensor(std::size_t index);
    const DataResultScalar* scalar(std::size_t index) const;
    const DataResultVector* vector(std::size_t index) const;
    const DataResultDisplacement* displacement(std::size_t index) const;
    const DataResultSymmetricTensor* symmetricTensor(std::size_t index) const;

    /// The loaded result of that type and id, whatever its kind; null when it is not loaded.
    DataResult* find(const ResultInfo& info);
    const DataResult* find(const ResultInfo& info) const;

    /// The same, made when it is not there: with the geometry's parts, none of which has items yet. Null only for an
    /// info without a type.
    DataResult* findOrAdd(const ResultInfo& info);

    /// Deletes the values. Nothing happens when the result is not loaded.
    void remove(const ResultInfo& info);
    void remove(ResultType type, int resultId);

    /// All loaded results, kind after kind.
    std::vector<const DataResult*> all() const;

    std::size_t byteCount() const;

private:
    template <class Result>
    using List = std::vector<std::unique_ptr<Result>>;

    const DataGeometry* m_geometry;
    List<DataResultScalar> m_scalars;
    List<DataResultVector> m_vectors;
    List<DataResultDisplacement> m_displacements;
    List<DataResultSymmetricTensor> m_symmetricTensors;
};

} // namespace orv::ug
