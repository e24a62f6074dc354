#pragma once

#include "LibCore/rvfExport.h"

#include <cstddef>
#include <map>
#include <utility>

namespace orv::ug {

class UnstructGridModel;

/// What a model shows: its current state and the results chosen for display. Owned by the model.
class ORV_API ModelSpec {
public:
    explicit ModelSpec(const UnstructGridModel* model);

    ModelSpec(const ModelSpec&) = delete;
    ModelSpec& operator=(const ModelSpec&) = delete;

    /// Forgets state and results: every id is -1.
    void clear();

    void setStateId(int stateId);
    /// -1 when none.
    int stateId() const;

    /// Chooses, of each type, the first result of the data source that the current state has: a scalar as fringes, a
    /// vector as arrows, a displacement to deform by. -1 where there is none, or no data source.
    void setDefaultResults();

    /// The scalar shown as fringes, -1 when none.
    void setFringesResultId(int scalarResultId);
    int fringesResultId() const;

    /// A scalar for one part, in place of the model's; -1 shows none on that part.
    void setPartFringesResultId(std::size_t geometryIndex, int partId, int scalarResultId);
    /// The part's own choice when it has one, otherwise the model's; -1 when none.
    int effectiveFringesResultId(std::size_t geometryIndex, int partId) const;

    /// The vector shown as arrows, -1 when none.
    void setVectorResultId(int vectorResultId);
    int vectorResultId() const;

    /// The displacement that the shape is deformed by, -1 when none.
    void setDisplacementResultId(int displacementResultId);
    int displacementResultId() const;

private:
    const UnstructGridModel* m_model;
    int m_stateId = -1;
    int m_fringesResultId = -1;
    int m_vectorResultId = -1;
    int m_displacementResultId = -1;
    std::map<std::pair<std::size_t, int>, int> m_partFringesResultIds;
};

} // namespace orv::ug
