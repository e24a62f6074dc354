#include "OrvUnstructGrid/DataResult.h"

#include "LibCore/rvfAssert.h"

namespace orv::ug {

DataResult::DataResult(int resultId, ResultType type, ResultMapping mapping)
    : m_resultId(resultId), m_type(type), m_mapping(mapping) {}

DataResult::~DataResult() = default;

int DataResult::resultId() const {
    return m_resultId;
}

ResultType DataResult::type() const {
    return m_type;
}

ResultMapping DataResult::resultMapping() const {
    return m_mapping;
}

void DataResult::swapPart(std::size_t partIndex, DataResult* other, std::size_t otherIndex) {
    RVF_ASSERT(other->type() == type());
    RVF_ASSERT(partIndex < partCount());
    RVF_ASSERT(otherIndex < other->partCount());
    if (other->type() == type() && partIndex < partCount() && otherIndex < other->partCount()) {
        swapCheckedPart(partIndex, other, otherIndex);
    }
}

std::size_t DataResult::byteCount() const {
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < partCount(); ++i) {
        bytes += values(i)->byteCount();
    }
    return bytes;
}

} // namespace orv::ug
