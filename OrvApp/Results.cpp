#include "OrvApp/Results.h"

#include "LibCore/rvfAssert.h"
#include "OrvApp/Models.h"
#include "OrvApp/Results_p.h"
#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include <algorithm>
#include <vector>

namespace orv::app {
namespace {

/// Null without a current model with a data source.
ug::DataSourceDirectory* currentDirectory() {
    ug::UnstructGridModel* model = Models::instance()->current();
    ug::DataSource* dataSource = model ? model->dataSource() : nullptr;
    return dataSource ? dataSource->directory() : nullptr;
}

/// In another order than the public indexes have: displacements come before tensors here.
std::vector<ug::ResultInfo> allInfos(const ug::DataSourceDirectory& directory) {
    std::vector<ug::ResultInfo> infos;
    for (ug::ResultType type : {ug::SCALAR, ug::VECTOR, ug::DISPLACEMENT, ug::SYMMETRIC_TENSOR}) {
        const std::vector<ug::ResultInfo> ofType = directory.resultInfos(type);
        infos.insert(infos.end(), ofType.begin(), ofType.end());
    }
    return infos;
}

bool dependsOn(const ug::ResultInfo& dependant, const ug::ResultInfo& info) {
    const std::vector<ug::ResultInfo>& arguments = dependant.customResultArguments();
    if (std::find(arguments.begin(), arguments.end(), info) != arguments.end()) {
        return true;
    }
    // A result without a base has no base in common with an invalid info.
    return info.isValid() && dependant.baseResultId() == info.id() && dependant.baseResultType() == info.type();
}

/// Removes one result from the directory. Gives what depended on it directly; a result that has gone by the time it is
/// looked at is not told apart.
std::vector<ug::ResultInfo> removeOne(const ug::ResultInfo& info) {
    RVF_ASSERT_MSG(info.isCustom(), "Only custom results can be removed and this isn't one of them.");
    ug::DataSourceDirectory* directory = currentDirectory();
    if (!directory) {
        return {};
    }
    const ug::ResultInfo testInfo = directory->findResultInfo(info.type(), info.id());
    RVF_ASSERT_MSG(testInfo.isValid(), "This custom result cannot be found. Nothing has been done.");
    directory->removeCustomResultInfo(info);
    std::vector<ug::ResultInfo> dependants = allInfos(*directory);
    std::erase_if(dependants, [&info](const ug::ResultInfo& dependant) { return !dependsOn(dependant, info); });
    return dependants;
}

} // namespace

Results* Results::instance() {
    static PtrRef<Results> singleton;
    if (!singleton) {
        singleton = new Results;
    }
    return singleton.get();
}

Results::Results() : m_private(nullptr) {
    m_private.reset(new ResultsPrivate);
}

Results::~Results() = default;

unsigned long Results::count() const {
    return m_private->count();
}

unsigned long Results::scalarCount() const {
    return m_private->scalarCount();
}

unsigned long Results::vectorCount() const {
    return m_private->vectorCount();
}

unsigned long Results::displacementCount() const {
    return m_private->displacementCount();
}

unsigned long Results::tensorCount() const {
    return m_private->tensorCount();
}

unsigned long Results::indexOf(ug::ResultInfo info) const {
    return m_private->indexOf(info);
}

unsigned long Results::scalarIndexOf(ug::ResultInfo info) const {
    return m_private->scalarIndexOf(info);
}

unsigned long Results::vectorIndexOf(ug::ResultInfo info) const {
    return m_private->vectorIndexOf(info);
}

unsigned long Results::displacementIndexOf(ug::ResultInfo info) const {
    return m_private->displacementIndexOf(info);
}

unsigned long Results::tensorIndexOf(ug::ResultInfo info) const {
    return m_private->tensorIndexOf(info);
}

ug::ResultInfo Results::resultInfo(unsigned long index) const {
    return m_private->resultInfo(index);
}

ug::ResultInfo Results::resultInfo(const Str& name) const {
    return m_private->resultInfo(name);
}

ug::ResultInfo Results::scalarInfo(unsigned long index) const {
    return m_private->scalarInfo(index);
}

ug::ResultInfo Results::scalarInfo(const Str& name) const {
    return m_private->scalarInfo(name);
}

ug::ResultInfo Results::vectorInfo(unsigned long index) const {
    return m_private->vectorInfo(index);
}

ug::ResultInfo Results::vectorInfo(const Str& name) const {
    return m_private->vectorInfo(name);
}

ug::ResultInfo Results::displacementInfo(unsigned long index) const {
    return m_private->displacementInfo(index);
}

ug::ResultInfo Results::displacementInfo(const Str& name) const {
    return m_private->displacementInfo(name);
}

ug::ResultInfo Results::tensorInfo(unsigned long index) const {
    return m_private->tensorInfo(index);
}

ug::ResultInfo Results::tensorInfo(const Str& name) const {
    return m_private->tensorInfo(name);
}

ug::DataResultScalar* Results::currentDataResultScalar(ug::ResultInfo scalar) {
    RVF_ASSERT_MSG(scalar.type() == orv::ug::SCALAR, "Cannot return scalar result, given info is not a scalar");
    return m_private->currentDataResultScalar(scalar);
}

ug::DataResultScalar* Results::currentDataResultScalar(const Str& name) {
    return m_private->currentDataResultScalar(name);
}

ug::DataPartScalar* Results::currentDataPartScalar(ug::ResultInfo scalar) {
    RVF_ASSERT_MSG(scalar.type() == orv::ug::SCALAR, "Cannot return scalar object, given info is not a scalar");
    return m_private->currentDataPartScalar(scalar);
}

ug::DataPartScalar* Results::currentDataPartScalar(const Str& name) {
    return m_private->currentDataPartScalar(name);
}

ug::DataResultVector* Results::currentDataResultVector(ug::ResultInfo vector) {
    RVF_ASSERT_MSG(vector.type() == orv::ug::VECTOR, "Cannot return vector result, given info is not a vector");
    return m_private->currentDataResultVector(vector);
}

ug::DataResultVector* Results::currentDataResultVector(const Str& name) {
    return m_private->currentDataResultVector(name);
}

ug::DataPartVector* Results::currentDataPartVector(ug::ResultInfo vector) {
    RVF_ASSERT_MSG(vector.type() == orv::ug::VECTOR, "Cannot return vector object, given info is not a vector");
    return m_private->currentDataPartVector(vector);
}

ug::DataPartVector* Results::currentDataPartVector(const Str& name) {
    return m_private->currentDataPartVector(name);
}

ug::DataResultSymmetricTensor* Results::currentDataResultTensor(ug::ResultInfo tensor) {
    RVF_ASSERT_MSG(tensor.type() == orv::ug::SYMMETRIC_TENSOR,
                   "Cannot return tensor result, given info is not a tensor");
    return m_private->currentDataResultTensor(tensor);
}

ug::DataResultSymmetricTensor* Results::currentDataResultTensor(const Str& name) {
    return m_private->currentDataResultTensor(name);
}

ug::DataPartSymmetricTensor* Results::currentDataPartTensor(ug::ResultInfo tensor) {
    RVF_ASSERT_MSG(tensor.type() == orv::ug::SYMMETRIC_TENSOR,
                   "Cannot return tensor object, given info is not a tensor");
    return m_private->currentDataPartTensor(tensor);
}

ug::DataPartSymmetricTensor* Results::currentDataPartTensor(const Str& name) {
    return m_private->currentDataPartTensor(name);
}

ug::DataResultDisplacement* Results::currentDataResultDisplacement(ug::ResultInfo displacement) {
    RVF_ASSERT_MSG(displacement.type() == orv::ug::DISPLACEMENT,
                   "Cannot return displacement result, given info is not a displacement");
    return m_private->currentDataResultDisplacement(displacement);
}

ug::DataResultDisplacement* Results::currentDataResultDisplacement(const Str& name) {
    return m_private->currentDataResultDisplacement(name);
}

ug::DataPartDisplacement* Results::currentDataPartDisplacement(ug::ResultInfo displacement) {
    RVF_ASSERT_MSG(displacement.type() == orv::ug::DISPLACEMENT,
                   "Cannot return displacement object, given info is not a displacement");
    return m_private->currentDataPartDisplacement(displacement);
}

ug::DataPartDisplacement* Results::currentDataPartDisplacement(const Str& name) {
    return m_private->currentDataPartDisplacement(name);
}

void Results::add(ug::ResultInfo info, const Str& name) {
    RVF_ASSERT_MSG(info.isCustom(),
                   "Cannot add this result as custom result, there is no function to compute its values");
    if (!name.isEmpty()) {
        info.setName(name);
    }
    add(info);
}

void Results::add(ug::ResultInfo info) {
    RVF_ASSERT_MSG(info.isCustom(),
                   "Cannot add this result as custom result, there is no function to compute its values");
    ug::DataSourceDirectory* directory = currentDirectory();
    if (!directory) {
        return;
    }
    const std::vector<ug::ResultInfo> baseArgs = directory->customResultBaseDependencies(info);
    for (std::size_t i = 0; i < baseArgs.size(); ++i) {
        const ug::ResultInfo testInfo = directory->findResultInfo(baseArgs[i].type(), baseArgs[i].id());
        RVF_ASSERT_MSG(testInfo.isValid(), "Base argument not found in the data source directory. Maybe it was "
                                           "retrieved from another data source.");
        RVF_ASSERT_MSG(testInfo.name() == baseArgs[i].name(), "Base argument not found in the data source directory. "
                                                              "Maybe it was retrieved from another data source.");
    }
    directory->setCustomResultInfo(info);
}

// A list of what is still to be removed, the next one last, goes through dependants in the order of a recursion, and
// takes chains of any length.
void Results::remove(ug::ResultInfo info) {
    std::vector<ug::ResultInfo> pending = {info};
    while (!pending.empty()) {
        const ug::ResultInfo next = pending.back();
        pending.pop_back();
        const std::vector<ug::ResultInfo> dependants = removeOne(next);
        pending.insert(pending.end(), dependants.rbegin(), dependants.rend());
    }
}

void Results::removeAll() {
    const ug::DataSourceDirectory* directory = currentDirectory();
    if (!directory) {
        return;
    }
    for (const ug::ResultInfo& info : allInfos(*directory)) {
        if (info.isCustom()) {
            remove(info);
        }
    }
}

} // namespace orv::app
