#include "OrvApp/Results.h"

#include "LibCore/rvfAssert.h"
#include "OrvApp/Results_p.h"
#include "OrvCore/PtrRef.h"

namespace orv::app {

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

} // namespace orv::app
