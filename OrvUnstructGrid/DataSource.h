#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/DataSourceDirectory.h"
#include "OrvUnstructGrid/DataState.h"
#include "OrvUnstructGrid/ProgressMeter.h"

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

namespace orv::ug {

class UnstructGridModel;

/// Where models get their data from: a directory of what there is, and the states with what has been loaded.
///
/// Several models may share one source; each has its own current state. A source whose values can be loaded on demand
/// is a DataSourceInterface too, which callers find out by a dynamic cast.
class ORV_API DataSource : public RefCountedObject {
public:
    explicit DataSource(int id);
    ~DataSource() override;

    int id() const;

    /// Never null.
    DataSourceDirectory* directory();
    const DataSourceDirectory* directory() const;

    /// The state that the model's spec names; null for a null model and when the source has no such state. Costs one
    /// look-up: nothing is read.
    DataState* currentState(const UnstructGridModel* model);

    std::size_t stateCount() const;
    /// The state at that index of the directory's stateInfos(); null when there is none.
    DataState* state(std::size_t index);
    const DataState* state(std::size_t index) const;
    /// The index of the state with that id; UNDEFINED_SIZE_T when there is none.
    std::size_t stateIndex(int stateId) const;

    /// Deletes the values of a result in every state.
    virtual void dropResult(const ResultInfo& info);

    /// Told, from the next percent on, how far each open and each load has come: percents that rise, and 100 when it is
    /// done. Null, as at first, for nobody. Not owned: take it back before it goes. A load that has nothing to read
    /// tells so too, and work within other work is a part of that.
    void setProgress(Progress* progress);
    /// What tells it, for those who do the work.
    ProgressMeter* progressMeter();

    /// @name Kept by UnstructGridModel::setDataSource(), so that the source knows which states are current
    /// @{
    void attachModel(const UnstructGridModel* model);
    void detachModel(const UnstructGridModel* model);
    /// @}

protected:
    /// Appends a state to the directory and to the list of states, which stay parallel. Null when the directory does
    /// not take it, because its id is negative or there already.
    DataState* addState(const StateInfo& info, std::vector<PtrRef<DataGeometry>> geometries);

    /// True when a model that uses this source has that state as its current one.
    bool isCurrentForAModel(int stateId) const;

    /// True when no other state has that geometry of a state of this source.
    bool isOfOneState(const DataGeometry* geometry) const;
    /// True when there is such a geometry.
    bool hasGeometryOfOneState() const;

private:
    int m_id;
    DataSourceDirectory m_directory;
    ProgressMeter m_progressMeter;
    std::vector<std::unique_ptr<DataState>> m_states;
    std::map<const DataGeometry*, std::size_t> m_stateCounts; ///< How many states have it.
    std::vector<const UnstructGridModel*> m_models;
};

} // namespace orv::ug
