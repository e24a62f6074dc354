#include "OrvUnstructGrid/UnstructGridModel.h"

#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ErrorTexts_p.h"
#include "OrvUnstructGrid/Progress.h"

namespace orv::ug {

UnstructGridModel::UnstructGridModel() : m_modelSpec(this) {}

UnstructGridModel::~UnstructGridModel() {
    setDataSource(nullptr);
}

DataSource* UnstructGridModel::dataSource() {
    return m_dataSource.get();
}

const DataSource* UnstructGridModel::dataSource() const {
    return m_dataSource.get();
}

void UnstructGridModel::setDataSource(DataSource* source) {
    if (m_dataSource) {
        m_dataSource->detachModel(this);
    }
    m_dataSource = source;
    if (source) {
        source->attachModel(this);
    }
}

ModelSpec& UnstructGridModel::modelSpec() {
    return m_modelSpec;
}

const ModelSpec& UnstructGridModel::modelSpec() const {
    return m_modelSpec;
}

int UnstructGridModel::currentStateId() const {
    return m_modelSpec.stateId();
}

std::size_t UnstructGridModel::currentFrameIndex() const {
    return 0;
}

bool UnstructGridModel::refresh(Error* error, Progress* progress, unsigned int) {
    if (!m_dataSource) {
        return fail(error, "The model has no data source: open a file into it first");
    }
    if (!m_dataSource->currentState(this)) {
        return fail(error, unknownStateText(*m_dataSource->directory(), currentStateId()));
    }
    if (progress) {
        progress->setPercent(100);
    }
    return true;
}

} // namespace orv::ug
