#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvUnstructGrid/ModelSpec.h"

#include <cstddef>

namespace orv::ug {

class DataSource;
class Error;
class Progress;

/// A data source seen through a spec: what an application opens, lists and shows.
class ORV_API UnstructGridModel : public RefCountedObject {
public:
    /// Without a data source.
    UnstructGridModel();
    ~UnstructGridModel() override;

    UnstructGridModel(const UnstructGridModel&) = delete;
    UnstructGridModel& operator=(const UnstructGridModel&) = delete;

    /// Null until set.
    DataSource* dataSource();
    const DataSource* dataSource() const;
    /// Takes a reference; null lets go of the source. The ModelSpec stays as it is.
    void setDataSource(DataSource* source);

    /// The same object on each call.
    ModelSpec& modelSpec();
    const ModelSpec& modelSpec() const;

    /// The state id of the ModelSpec, -1 when none.
    int currentStateId() const;

    /// The frame of the current state that is shown; states have one frame, so 0.
    std::size_t currentFrameIndex() const;

    /// Brings the model up to date after a change of its spec. Values are loaded when somebody asks for them, so all
    /// that is to be done here is to see whether the state exists.
    /// @param error told when it does not; may be null
    /// @param progress told how far it is; may be null
    /// @param options 0; there are none yet
    /// @return false when there is no data source or it has no such state
    virtual bool refresh(Error* error, Progress* progress, unsigned int options);

private:
    PtrRef<DataSource> m_dataSource;
    ModelSpec m_modelSpec;
};

} // namespace orv::ug
