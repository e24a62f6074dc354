#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/DataPartValues.h"
#include "OrvUnstructGrid/ResultType.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace orv::ug {

/// What the four kinds of results have in common: the values of one result in one state, on the parts of one geometry.
/// Owned by a DataResultGroup.
class ORV_API DataResult {
public:
    virtual ~DataResult();

    DataResult(const DataResult&) = delete;
    DataResult& operator=(const DataResult&) = delete;

    int resultId() const;
    ResultType type() const;
    ResultMapping resultMapping() const;

    virtual std::size_t partCount() const = 0;

    /// One part's values by whatever kind this is; null when there is no such part.
    virtual DataPartValues* values(std::size_t partIndex) = 0;
    virtual const DataPartValues* values(std::size_t partIndex) const = 0;

    /// Exchanges the values of one part with those of a part of another result of the same type. Nothing is copied.
    /// Asserts "other->type() == type()", "partIndex < partCount()" and "otherIndex < other->partCount()"; nothing
    /// happens behind a failed assertion.
    void swapPart(std::size_t partIndex, DataResult* other, std::size_t otherIndex);

    std::size_t byteCount() const;

protected:
    DataResult(int resultId, ResultType type, ResultMapping mapping);

    /// swapPart() of parts that are there.
    virtual void swapCheckedPart(std::size_t partIndex, DataResult* other, std::size_t otherIndex) = 0;

private:
    int m_resultId;
    ResultType m_type;
    ResultMapping m_mapping;
};

/// A result whose parts hold `PartValues`.
template <class PartValues, ResultType Type>
class DataResultOf : public DataResult {
public:
    DataResultOf(int resultId, ResultMapping mapping, std::size_t partCount) : DataResult(resultId, Type, mapping) {
        m_parts.reserve(partCount);
        for (std::size_t i = 0; i < partCount; ++i) {
            m_parts.push_back(std::make_unique<PartValues>());
        }
    }

    std::size_t partCount() const override {
        return m_parts.size();
    }

    /// The values of the part at that index in the geometry; null when there is no such part, UNDEFINED_SIZE_T
    /// included.
    PartValues* part(std::size_t index) {
        return index < m_parts.size() ? m_parts[index].get() : nullptr;
    }

    const PartValues* part(std::size_t index) const {
        return index < m_parts.size() ? m_parts[index].get() : nullptr;
    }

    DataPartValues* values(std::size_t partIndex) override {
        return part(partIndex);
    }

    const DataPartValues* values(std::size_t partIndex) const override {
        return part(partIndex);
    }

protected:
    void swapCheckedPart(std::size_t partIndex, DataResult* other, std::size_t otherIndex) override {
        std::swap(m_parts[partIndex], static_cast<DataResultOf*>(other)->m_parts[otherIndex]);
    }

private:
    std::vector<std::unique_ptr<PartValues>> m_parts;
};

using DataResultScalar = DataResultOf<DataPartScalar, SCALAR>;
using DataResultVector = DataResultOf<DataPartVector, VECTOR>;
using DataResultDisplacement = DataResultOf<DataPartDisplacement, DISPLACEMENT>;
using DataResultSymmetricTensor = DataResultOf<DataPartSymmetricTensor, SYMMETRIC_TENSOR>;

} // namespace orv::ug
