#include "OrvUnstructGrid/DataGeometry.h"

#include "LibCore/rvfAssert.h"

#include <algorithm>

namespace orv::ug {
namespace {

int nextGeometryId() {
    static int lastId = 0;
    return ++lastId;
}

} // namespace

DataGeometry::DataGeometry() : m_id(nextGeometryId()), m_keeper(std::make_shared<const int>(m_id)) {}

DataGeometry::~DataGeometry() = default;

int DataGeometry::id() const {
    return m_id;
}

std::size_t DataGeometry::partCount() const {
    return m_parts.size();
}

DataPart* DataGeometry::part(std::size_t index) {
    RVF_ASSERT(index < partCount());
    return index < partCount() ? m_parts[index].get() : nullptr;
}

const DataPart* DataGeometry::part(std::size_t index) const {
    RVF_ASSERT(index < partCount());
    return index < partCount() ? m_parts[index].get() : nullptr;
}

DataPart* DataGeometry::addPart(int partId) {
    return m_parts.emplace_back(std::make_shared<DataPart>(partId)).get();
}

void DataGeometry::addPartsOf(const DataGeometry& other) {
    for (const std::shared_ptr<DataPart>& part : other.m_parts) {
        m_parts.push_back(part);
        part->setPartId(int(m_parts.size()));
    }
}

bool DataGeometry::read(Error* error) const {
    return std::all_of(m_parts.begin(), m_parts.end(), [error](const auto& part) { return part->read(error); });
}

void DataGeometry::giveBack() {
    for (const std::shared_ptr<DataPart>& part : m_parts) {
        if (part.use_count() == 1 && m_keeper.use_count() == 1) {
            part->giveBack();
        }
    }
}

std::size_t DataGeometry::bytesToGiveBack() const {
    std::size_t bytes = 0;
    for (const std::shared_ptr<DataPart>& part : m_parts) {
        bytes += part.use_count() == 1 && m_keeper.use_count() == 1 ? part->bytesToGiveBack() : 0;
    }
    return bytes;
}

std::shared_ptr<const void> DataGeometry::keep() const {
    return m_keeper;
}

std::size_t DataGeometry::byteCount() const {
    std::size_t bytes = 0;
    for (const std::shared_ptr<DataPart>& part : m_parts) {
        bytes += part->byteCount();
    }
    return bytes;
}

} // namespace orv::ug
