#include "OrvApp/Parts_p.h"

#include "LibCore/rvfAssert.h"
#include "OrvApp/Models.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include <vector>

namespace orv::app {

std::size_t PartsPrivate::count() const {
    const ug::DataState* state = currentState();
    if (!state) {
        return 0;
    }
    std::size_t count = 0;
    for (std::size_t i = 0; i < state->geometryCount(); ++i) {
        const ug::DataGeometry* geo = state->geometry(i);
        RVF_ASSERT(geo);
        count += geo->partCount();
    }
    return count;
}

ug::DataPart* PartsPrivate::current() const {
    if (count() == 0) {
        return nullptr;
    }
    RVF_ASSERT(m_currentIndex != orv::UNDEFINED_SIZE_T);
    return get(m_currentIndex);
}

ug::PartInfo PartsPrivate::currentInfo() const {
    if (count() == 0) {
        return ug::PartInfo();
    }
    return info(m_currentIndex);
}

void PartsPrivate::setCurrent(ug::DataPart* part) {
    const std::size_t index = indexOf(part);
    RVF_ASSERT_MSG(index != orv::UNDEFINED_SIZE_T, "Part not found : cannot set it as current.");
    setCurrentIndex(index);
}

std::size_t PartsPrivate::currentIndex() const {
    return m_currentIndex;
}

void PartsPrivate::setCurrentIndex(std::size_t index) {
    RVF_ASSERT(index < count() || index == orv::UNDEFINED_SIZE_T);
    m_currentIndex = index;
}

ug::DataPart* PartsPrivate::get(std::size_t index) const {
    RVF_ASSERT(index < count());
    ug::DataState* state = currentState();
    if (!state) {
        return nullptr;
    }
    std::size_t partsBefore = 0;
    for (std::size_t i = 0; i < state->geometryCount(); ++i) {
        ug::DataGeometry* geo = state->geometry(i);
        RVF_ASSERT(geo);
        const std::size_t partsWith = partsBefore + geo->partCount();
        if (index < partsWith) {
            return geo->part(index - partsBefore);
        }
        partsBefore = partsWith;
    }
    return nullptr;
}

ug::DataPart* PartsPrivate::get(const Str& pattern) const {
    Models* models = Models::instance();
    RVF_ASSERT(models);
    ug::UnstructGridModel* model = models->current();
    ug::DataSource* source = model ? model->dataSource() : nullptr;
    ug::DataState* state = source ? source->currentState(model) : nullptr;
    const ug::DataSourceDirectory* directory = source ? source->directory() : nullptr;
    if (!state || !directory) {
        return nullptr;
    }

    // Only the records have names. They stand in the order of the geometry's parts.
    ug::DataPart* found = nullptr;
    int foundCount = 0;
    const std::size_t geometryCount = directory->geometryCountPerState();
    for (std::size_t g = 0; g < geometryCount; ++g) {
        const std::vector<ug::PartInfo> infos = directory->partInfos(g);
        for (std::size_t p = 0; p < infos.size(); ++p) {
            if (!infos[p].name().matches(pattern)) {
                continue;
            }
            ++foundCount;
            RVF_ASSERT_MSG(foundCount < 2, "Found multiple part names sharing the given pattern.");
            if (foundCount == 2) {
                return nullptr;
            }
            found = state->geometry(g)->part(p);
        }
    }
    return found;
}

std::size_t PartsPrivate::indexOf(const ug::DataPart* part) const {
    const ug::DataState* state = currentState();
    if (!state) {
        return 0;
    }
    std::size_t index = 0;
    for (std::size_t i = 0; i < state->geometryCount(); ++i) {
        const ug::DataGeometry* geo = state->geometry(i);
        RVF_ASSERT(geo);
        for (std::size_t p = 0; p < geo->partCount(); ++p, ++index) {
            if (geo->part(p) == part) {
                return index;
            }
        }
    }
    return UNDEFINED_SIZE_T;
}

ug::PartInfo PartsPrivate::info(std::size_t index) const {
    RVF_ASSERT(index < count());
    const ug::DataPart* part = get(index);
    RVF_ASSERT(part);
    const int id = part->partId();
    const std::size_t geometry = geometryIndex(part);
    if (id < 0 || geometry == UNDEFINED_SIZE_T) {
        return ug::PartInfo();
    }
    return currentDirectory()->findPartInfo(geometry, id);
}

std::size_t PartsPrivate::geometryIndex(std::size_t index) const {
    const ug::DataPart* part = get(index);
    return part ? geometryIndex(part) : UNDEFINED_SIZE_T;
}

std::size_t PartsPrivate::geometryIndex(const ug::DataPart* part) const {
    const ug::DataState* state = currentState();
    if (!state) {
        return UNDEFINED_SIZE_T;
    }
    for (std::size_t i = 0; i < state->geometryCount(); ++i) {
        const ug::DataGeometry* geometry = state->geometry(i);
        for (std::size_t p = 0; geometry && p < geometry->partCount(); ++p) {
            if (geometry->part(p) == part) {
                return i;
            }
        }
    }
    return UNDEFINED_SIZE_T;
}

ug::DataState* PartsPrivate::currentState() const {
    Models* models = Models::instance();
    RVF_ASSERT(models);
    ug::UnstructGridModel* model = models->current();
    ug::DataSource* source = model ? model->dataSource() : nullptr;
    return source ? source->currentState(model) : nullptr;
}

const ug::DataSourceDirectory* PartsPrivate::currentDirectory() const {
    Models* models = Models::instance();
    RVF_ASSERT(models);
    const ug::UnstructGridModel* model = models->current();
    const ug::DataSource* source = model ? model->dataSource() : nullptr;
    return source ? source->directory() : nullptr;
}

} // namespace orv::app
