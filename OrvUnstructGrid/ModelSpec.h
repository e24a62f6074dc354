#pragma once

#include "LibCore/rvfExport.h"

#include <cstddef>
#include <map>
#include <set>
#include <utility>

namespace orv::ug {

class UnstructGridModel;

/// What a model shows: its current state and the results chosen for display. Owned by the model.
class ORV_API ModelSpec {
public:
    explicit ModelSpec(const UnstructGridModel* model);

    ModelSpec(const ModelSpec&) = delete;
    ModelSpec& operator=(const ModelSpec&) = delete;

    /// Back to the beginning: no state, no results, the shape not displaced and at the scale 1, all parts visible.
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
    /// The choices of the parts that have one, by geometry index and part id.
    const std::map<std::pair<std::size_t, int>, int>& partFringesResultIds() const;

    /// The vector shown as arrows, -1 when none.
    void setVectorResultId(int vectorResultId);
    int vectorResultId() const;

    /// The displacement that the shape is deformed by, -1 when none.
    void setDisplacementResultId(int displacementResultId);
    int displacementResultId() const;

    /// Whether the shape is displaced by the chosen displacement; false at first.
    void setDisplaced(bool isDisplaced);
    bool isDisplaced() const;

    /// What displacements are multiplied by before they are added to the nodes; 1 at first. Asserts
    /// "std::isfinite(scale)" and then leaves it as it was.
    void setDisplacementScale(double scale);
    double displacementScale() const;

    /// Parts are visible until they are hidden; ids that no part has do no harm.
    void setPartVisible(std::size_t geometryIndex, int partId, bool isVisible);
    bool isPartVisible(std::size_t geometryIndex, int partId) const;
    /// The geometry index and part id of each hidden part.
    const std::set<std::pair<std::size_t, int>>& hiddenParts() const;

private:
    const UnstructGridModel* m_model;
    int m_stateId = -1;
    int m_fringesResultId = -1;
    int m_vectorResultId = -1;
    int m_displacementResultId = -1;
    bool m_isDisplaced = false;
    double m_displacementScale = 1.0;
    std::map<std::pair<std::size_t, int>, int> m_partFringesResultIds;
    std::set<std::pair<std::size_t, int>> m_hiddenParts;
};

} // namespace orv::ug
