#include "OrvApp/States_p.h"

#include "LibCore/rvfAssert.h"
#include "OrvApp/Models.h"
#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include <vector>

namespace orv::app {

std::size_t StatesPrivate::count() const {
    const ug::DataSourceDirectory* directory = currentDirectory();
    return directory ? directory->stateCount() : 0;
}

ug::DataState* StatesPrivate::current() const {
    if (count() == 0) {
        return nullptr;
    }
    const ug::UnstructGridModel* model = currentModel();
    RVF_ASSERT(model);
    ug::DataSource* dataSource = currentDataSource();
    return dataSource ? dataSource->currentState(model) : nullptr;
}

ug::StateInfo StatesPrivate::currentInfo() const {
    if (count() == 0) {
        return ug::StateInfo();
    }
    const ug::UnstructGridModel* model = currentModel();
    RVF_ASSERT(model);
    const ug::DataSourceDirectory* directory = currentDirectory();
    RVF_ASSERT(directory);
    return directory->findStateInfo(model->currentStateId());
}

void StatesPrivate::setCurrentInfo(ug::StateInfo info) {
    const std::size_t index = indexOf(info);
    // A state is meant, but the message stays: it is the text that people search their logs for.
    RVF_ASSERT_MSG(index != orv::UNDEFINED_SIZE_T, "View not found : cannot set it as current.");
    setCurrentIndex(index);
}

std::size_t StatesPrivate::currentIndex() const {
    const ug::UnstructGridModel* model = currentModel();
    if (!model) {
        return UNDEFINED_SIZE_T;
    }
    const int id = model->currentStateId();
    const ug::DataSource* dataSource = currentDataSource();
    RVF_ASSERT(dataSource);
    return dataSource->stateIndex(id);
}

void StatesPrivate::setCurrentIndex(std::size_t index) {
    RVF_ASSERT(index < count());
    ug::UnstructGridModel* model = currentModel();
    if (!model) {
        return;
    }
    model->modelSpec().setStateId(info(index).id());
    model->refresh(nullptr, nullptr, 0);
}

std::size_t StatesPrivate::indexOf(ug::StateInfo info) const {
    if (count() == 0) {
        return UNDEFINED_SIZE_T;
    }
    const ug::DataSourceDirectory* directory = currentDirectory();
    RVF_ASSERT(directory);
    const std::vector<ug::StateInfo> infos = directory->stateInfos();
    for (std::size_t i = 0; i < infos.size(); ++i) {
        if (infos[i].id() == info.id()) {
            return i;
        }
    }
    return UNDEFINED_SIZE_T;
}

ug::StateInfo StatesPrivate::info(std::size_t index) const {
    RVF_ASSERT(index < count());
    if (count() == 0) {
        return ug::StateInfo();
    }
    const ug::DataSourceDirectory* directory = currentDirectory();
    RVF_ASSERT(directory);
    return directory->stateInfo(index);
}

ug::StateInfo StatesPrivate::info(const Str& pattern) const {
    const ug::DataSourceDirectory* directory = currentDirectory();
    return directory ? wildCardInfo(directory->stateInfos(), pattern) : ug::StateInfo();
}

ug::StateInfo StatesPrivate::wildCardInfo(const std::vector<ug::StateInfo>& infos, const Str& pattern) const {
    ug::StateInfo found;
    for (const ug::StateInfo& info : infos) {
        if (!info.name().matches(pattern)) {
            continue;
        }
        // Told by the id, so a match whose own id is -1 does not count as a first one.
        const int foundCount = found.id() == -1 ? 1 : 2;
        RVF_ASSERT_MSG(foundCount < 2, "Found multiple states sharing the given pattern.");
        if (foundCount == 2) {
            return ug::StateInfo();
        }
        found = info;
    }
    return found;
}

ug::UnstructGridModel* StatesPrivate::currentModel() const {
    return Models::instance()->current();
}

ug::DataSource* StatesPrivate::currentDataSource() const {
    ug::UnstructGridModel* model = currentModel();
    return model ? model->dataSource() : nullptr;
}

const ug::DataSourceDirectory* StatesPrivate::currentDirectory() const {
    const ug::DataSource* dataSource = currentDataSource();
    return dataSource ? dataSource->directory() : nullptr;
}

} // namespace orv::app
