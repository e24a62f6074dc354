#include "OrvApp/Results_p.h"

#include "LibCore/rvfAssert.h"
#include "OrvApp/Models.h"
#include "OrvApp/Parts.h"
#include "OrvApp/States.h"
#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/DataSourceInterface.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include <utility>

namespace orv::app {

using ug::DISPLACEMENT;
using ug::SCALAR;
using ug::SYMMETRIC_TENSOR;
using ug::VECTOR;

namespace {

void append(std::vector<ug::ResultInfo>* infos, const std::vector<ug::ResultInfo>& more) {
    infos->insert(infos->end(), more.begin(), more.end());
}

/// All of them when no state is current.
std::vector<ug::ResultInfo> availableInCurrentState(std::vector<ug::ResultInfo> infos,
                                                    const ug::DataSourceDirectory* directory) {
    if (const ug::DataState* state = States::instance()->current()) {
        const int stateId = state->id();
        std::erase_if(infos, [&](const ug::ResultInfo& info) { return !directory->hasResult(stateId, info); });
    }
    return infos;
}

unsigned long positionOf(const ug::ResultInfo& info, const std::vector<ug::ResultInfo>& infos) {
    for (unsigned long i = 0; i < infos.size(); ++i) {
        if (infos[i] == info) {
            return i;
        }
    }
    return UNDEFINED_SIZE_T;
}

} // namespace

std::vector<ug::ResultInfo> ResultsPrivate::currentInfos() const {
    const ug::DataSourceDirectory* directory = currentDirectory();
    RVF_ASSERT_MSG(directory != NULL, "There are no results, cannot return any.");
    // The order of the public indexes: not that of the type numbers.
    std::vector<ug::ResultInfo> infos = directory->scalarResultInfos();
    append(&infos, directory->vectorResultInfos());
    append(&infos, directory->symmetricTensorResultInfos());
    append(&infos, directory->displacementResultInfos());
    return availableInCurrentState(std::move(infos), directory);
}

std::vector<ug::ResultInfo> ResultsPrivate::currentInfos(ug::ResultType type) const {
    const ug::DataSourceDirectory* directory = currentDirectory();
    RVF_ASSERT_MSG(directory != NULL, "There are no results, cannot return any.");
    return availableInCurrentState(directory->resultInfos(type), directory);
}

unsigned long ResultsPrivate::count() const {
    return currentInfos().size();
}

unsigned long ResultsPrivate::scalarCount() const {
    return currentInfos(SCALAR).size();
}

unsigned long ResultsPrivate::vectorCount() const {
    return currentInfos(VECTOR).size();
}

unsigned long ResultsPrivate::displacementCount() const {
    return currentInfos(DISPLACEMENT).size();
}

unsigned long ResultsPrivate::tensorCount() const {
    return currentInfos(SYMMETRIC_TENSOR).size();
}

unsigned long ResultsPrivate::indexOf(ug::ResultInfo info) const {
    return positionOf(info, currentInfos());
}

unsigned long ResultsPrivate::scalarIndexOf(ug::ResultInfo info) const {
    RVF_ASSERT_MSG(info.type() == SCALAR, "Given result is not a scalar, cannot return its index");
    return typedIndexOf(info);
}

unsigned long ResultsPrivate::vectorIndexOf(ug::ResultInfo info) const {
    RVF_ASSERT_MSG(info.type() == VECTOR, "Given result is not a vector, cannot return its index");
    return typedIndexOf(info);
}

unsigned long ResultsPrivate::displacementIndexOf(ug::ResultInfo info) const {
    RVF_ASSERT_MSG(info.type() == DISPLACEMENT, "Given result is not a displacement, cannot return its index");
    return typedIndexOf(info);
}

unsigned long ResultsPrivate::tensorIndexOf(ug::ResultInfo info) const {
    RVF_ASSERT_MSG(info.type() == SYMMETRIC_TENSOR, "Given result is not a tensor, cannot return its index");
    return typedIndexOf(info);
}

unsigned long ResultsPrivate::typedIndexOf(ug::ResultInfo info) const {
    return positionOf(info, currentInfos(info.type()));
}

ug::ResultInfo ResultsPrivate::resultInfo(unsigned long index) const {
    RVF_ASSERT(index < count());
    return currentInfos()[index];
}

ug::ResultInfo ResultsPrivate::resultInfo(const Str& name) const {
    return wildCardInfo(currentInfos(), name);
}

ug::ResultInfo ResultsPrivate::scalarInfo(unsigned long index) const {
    RVF_ASSERT(index < scalarCount());
    return currentInfos(SCALAR)[index];
}

ug::ResultInfo ResultsPrivate::scalarInfo(const Str& name) const {
    return wildCardInfo(currentInfos(SCALAR), name);
}

ug::ResultInfo ResultsPrivate::vectorInfo(unsigned long index) const {
    RVF_ASSERT(index < vectorCount());
    return currentInfos(VECTOR)[index];
}

ug::ResultInfo ResultsPrivate::vectorInfo(const Str& name) const {
    return wildCardInfo(currentInfos(VECTOR), name);
}

ug::ResultInfo ResultsPrivate::displacementInfo(unsigned long index) const {
    RVF_ASSERT(index < displacementCount());
    return currentInfos(DISPLACEMENT)[index];
}

ug::ResultInfo ResultsPrivate::displacementInfo(const Str& name) const {
    return wildCardInfo(currentInfos(DISPLACEMENT), name);
}

ug::ResultInfo ResultsPrivate::tensorInfo(unsigned long index) const {
    RVF_ASSERT(index < tensorCount());
    return currentInfos(SYMMETRIC_TENSOR)[index];
}

ug::ResultInfo ResultsPrivate::tensorInfo(const Str& name) const {
    return wildCardInfo(currentInfos(SYMMETRIC_TENSOR), name);
}

ug::ResultInfo ResultsPrivate::wildCardInfo(const std::vector<ug::ResultInfo>& infos, const Str& pattern) const {
    if (infos.empty()) {
        return ug::ResultInfo();
    }
    ug::ResultInfo foundInfo;
    for (const ug::ResultInfo& info : infos) {
        if (!info.name().matches(pattern)) {
            continue;
        }
        // Told by the id, so a match whose own id is -1 does not count as a first one.
        const int foundCount = foundInfo.id() == -1 ? 1 : 2;
        RVF_ASSERT_MSG(foundCount < 2, "Found multiple results sharing the given pattern.");
        if (foundCount == 2) {
            return ug::ResultInfo();
        }
        foundInfo = info;
    }
    RVF_ASSERT_MSG(foundInfo.isValid(), Str("Wildcard %1 not found").arg(pattern, 0, ' ').toStdString().c_str());
    return foundInfo;
}

bool ResultsPrivate::loadResult(ug::ResultInfo info) {
    const ug::DataState* state = States::instance()->current();
    RVF_ASSERT(state);
    ug::DataSource* dataSource = currentDataSource();
    RVF_ASSERT(dataSource);
    auto* loader = dynamic_cast<ug::DataSourceInterface*>(dataSource);
    if (!loader) {
        return true;
    }
    ug::Error error;
    ug::DataStateSpec spec;
    spec.setResultIds({info});
    return loader->loadDataState(state->id(), spec, &error);
}

ug::DataResultGroup* ResultsPrivate::currentResultGroupAndPartIndex(unsigned long* partIndex) const {
    RVF_ASSERT(partIndex);
    ug::DataState* state = States::instance()->current();
    if (!state) {
        return nullptr;
    }
    const ug::DataPart* part = Parts::instance()->current();
    if (!part) {
        return nullptr;
    }
    const ug::DataSource* dataSource = currentDataSource();
    RVF_ASSERT(dataSource);
    const ug::DataSourceDirectory* directory = currentDirectory();
    RVF_ASSERT(directory);

    *partIndex = UNDEFINED_SIZE_T;
    const ug::DataGeometry* foundGeometry = nullptr;
    for (std::size_t g = 0; g < state->geometryCount(); ++g) {
        const ug::DataGeometry* geometry = state->geometry(g);
        RVF_ASSERT(geometry);
        for (std::size_t p = 0; p < geometry->partCount(); ++p) {
            if (geometry->part(p) == part) {
                *partIndex = p;
                foundGeometry = geometry;
                break;
            }
        }
    }
    return state->results(foundGeometry);
}

// The check behind the load looks at the type and not at the index, so it does not notice a failed load: the null that
// the group gives for no index tells the caller.
template <class Result, class CheckAfterLoad>
Result* ResultsPrivate::findOrLoad(const ug::ResultInfo& info, std::size_t (ug::DataResultGroup::*position)(int) const,
                                   Result* (ug::DataResultGroup::*get)(std::size_t), CheckAfterLoad checkAfterLoad) {
    unsigned long partIndex = UNDEFINED_SIZE_T;
    ug::DataResultGroup* group = currentResultGroupAndPartIndex(&partIndex);
    if (!group) {
        return nullptr;
    }
    std::size_t index = (group->*position)(info.id());
    if (index == UNDEFINED_SIZE_T) {
        loadResult(info);
        index = (group->*position)(info.id());
        checkAfterLoad();
    }
    return (group->*get)(index);
}

template <class Part, class Result>
Part* ResultsPrivate::currentPartOf(const ug::ResultInfo& info,
                                    Result* (ResultsPrivate::*currentResult)(ug::ResultInfo)) {
    unsigned long partIndex = UNDEFINED_SIZE_T;
    if (!currentResultGroupAndPartIndex(&partIndex)) {
        return nullptr;
    }
    Result* result = (this->*currentResult)(info);
    return result ? result->part(partIndex) : nullptr;
}

template <class Data>
Data* ResultsPrivate::byName(const Str& name, Data* (ResultsPrivate::*currentData)(ug::ResultInfo)) {
    const ug::ResultInfo info = resultInfo(name);
    return info.id() < 0 ? nullptr : (this->*currentData)(info);
}

ug::DataResultScalar* ResultsPrivate::currentDataResultScalar(ug::ResultInfo scalar) {
    RVF_ASSERT_MSG(scalar.type() == SCALAR, "Cannot return scalar result, given info is not a scalar");
    return findOrLoad(scalar, &ug::DataResultGroup::scalarIndex, &ug::DataResultGroup::scalar, [&] {
        RVF_ASSERT_MSG(
            scalar.type() == SCALAR,
            "Cannot return scalar result part, result loading failed - it may not be available in the current state");
    });
}

ug::DataResultScalar* ResultsPrivate::currentDataResultScalar(const Str& name) {
    return byName(name, &ResultsPrivate::currentDataResultScalar);
}

ug::DataPartScalar* ResultsPrivate::currentDataPartScalar(ug::ResultInfo scalar) {
    RVF_ASSERT_MSG(scalar.type() == SCALAR, "Cannot return scalar result part, given info is not a scalar");
    return currentPartOf<ug::DataPartScalar>(scalar, &ResultsPrivate::currentDataResultScalar);
}

ug::DataPartScalar* ResultsPrivate::currentDataPartScalar(const Str& name) {
    return byName(name, &ResultsPrivate::currentDataPartScalar);
}

ug::DataResultVector* ResultsPrivate::currentDataResultVector(ug::ResultInfo vector) {
    RVF_ASSERT_MSG(vector.type() == VECTOR, "Cannot return vector result, given info is not a vector");
    return findOrLoad(vector, &ug::DataResultGroup::vectorIndex, &ug::DataResultGroup::vector, [&] {
        RVF_ASSERT_MSG(
            vector.type() == VECTOR,
            "Cannot return vector result part, result loading failed - it may not be available in the current state");
    });
}

ug::DataResultVector* ResultsPrivate::currentDataResultVector(const Str& name) {
    return byName(name, &ResultsPrivate::currentDataResultVector);
}

ug::DataPartVector* ResultsPrivate::currentDataPartVector(ug::ResultInfo vector) {
    RVF_ASSERT_MSG(vector.type() == VECTOR, "Cannot return vector result part, given info is not a vector");
    return currentPartOf<ug::DataPartVector>(vector, &ResultsPrivate::currentDataResultVector);
}

ug::DataPartVector* ResultsPrivate::currentDataPartVector(const Str& name) {
    return byName(name, &ResultsPrivate::currentDataPartVector);
}

ug::DataResultSymmetricTensor* ResultsPrivate::currentDataResultTensor(ug::ResultInfo tensor) {
    // The slip in the message stays: it is the text that people search their logs for.
    RVF_ASSERT_MSG(tensor.type() == SYMMETRIC_TENSOR, "Cannot return tesnor result, given info is not a tensor");
    return findOrLoad(tensor, &ug::DataResultGroup::symmetricTensorIndex, &ug::DataResultGroup::symmetricTensor, [&] {
        RVF_ASSERT_MSG(
            tensor.type() == SYMMETRIC_TENSOR,
            "Cannot return tensor result part, result loading failed - it may not be available in the current state");
    });
}

ug::DataResultSymmetricTensor* ResultsPrivate::currentDataResultTensor(const Str& name) {
    return byName(name, &ResultsPrivate::currentDataResultTensor);
}

ug::DataPartSymmetricTensor* ResultsPrivate::currentDataPartTensor(ug::ResultInfo tensor) {
    RVF_ASSERT_MSG(tensor.type() == SYMMETRIC_TENSOR, "Cannot return tensor result part, given info is not a tensor");
    return currentPartOf<ug::DataPartSymmetricTensor>(tensor, &ResultsPrivate::currentDataResultTensor);
}

ug::DataPartSymmetricTensor* ResultsPrivate::currentDataPartTensor(const Str& name) {
    return byName(name, &ResultsPrivate::currentDataPartTensor);
}

ug::DataResultDisplacement* ResultsPrivate::currentDataResultDisplacement(ug::ResultInfo displacement) {
    RVF_ASSERT_MSG(displacement.type() == DISPLACEMENT,
                   "Cannot return displacement result, given info is not a displacement");
    return findOrLoad(displacement, &ug::DataResultGroup::displacementIndex, &ug::DataResultGroup::displacement, [&] {
        RVF_ASSERT_MSG(displacement.type() == DISPLACEMENT, "Cannot return displacement result part, result loading "
                                                            "failed - it may not be available in the current state");
    });
}

ug::DataResultDisplacement* ResultsPrivate::currentDataResultDisplacement(const Str& name) {
    return byName(name, &ResultsPrivate::currentDataResultDisplacement);
}

ug::DataPartDisplacement* ResultsPrivate::currentDataPartDisplacement(ug::ResultInfo displacement) {
    RVF_ASSERT_MSG(displacement.type() == DISPLACEMENT,
                   "Cannot return displacement result part, given info is not a displacement");
    return currentPartOf<ug::DataPartDisplacement>(displacement, &ResultsPrivate::currentDataResultDisplacement);
}

ug::DataPartDisplacement* ResultsPrivate::currentDataPartDisplacement(const Str& name) {
    return byName(name, &ResultsPrivate::currentDataPartDisplacement);
}

ug::DataSource* ResultsPrivate::currentDataSource() const {
    ug::UnstructGridModel* model = currentModel();
    return model ? model->dataSource() : nullptr;
}

const ug::DataSourceDirectory* ResultsPrivate::currentDirectory() const {
    const ug::DataSource* dataSource = currentDataSource();
    return dataSource ? dataSource->directory() : nullptr;
}

ug::UnstructGridModel* ResultsPrivate::currentModel() const {
    return Models::instance()->current();
}

} // namespace orv::app
