#include "OrvUnstructGrid/DataPartValues.h"

#include "LibCore/rvfAssert.h"

#include <algorithm>
#include <limits>

namespace orv::ug {
namespace {

Vec3d vectorOf(const double* item) {
    return item ? Vec3d(item[0], item[1], item[2]) : UNDEFINED_VECTOR;
}

} // namespace

DataPartValues::DataPartValues(std::size_t dimension) : m_dimension(dimension) {}

DataPartValues::~DataPartValues() = default;

std::size_t DataPartValues::dimension() const {
    return m_dimension;
}

std::size_t DataPartValues::itemCount() const {
    return m_itemCount;
}

double* DataPartValues::values() {
    return m_values.get();
}

const double* DataPartValues::values() const {
    return m_values.get();
}

std::span<const double> DataPartValues::span() const {
    return {m_values.get(), m_dimension * m_itemCount};
}

void DataPartValues::allocate(std::size_t itemCount) {
    if (itemCount == m_itemCount) {
        return;
    }
    m_values.reset();
    m_itemCount = 0;
    if (itemCount > 0) {
        m_values = std::make_unique_for_overwrite<double[]>(m_dimension * itemCount);
        m_itemCount = itemCount;
    }
}

void DataPartValues::fillUndefined() {
    std::fill_n(m_values.get(), m_dimension * m_itemCount, UNDEFINED_DOUBLE);
}

std::size_t DataPartValues::byteCount() const {
    return m_dimension * m_itemCount * sizeof(double);
}

const double* DataPartValues::item(std::size_t index) const {
    RVF_ASSERT(index < itemCount());
    return index < m_itemCount ? m_values.get() + m_dimension * index : nullptr;
}

DataPartScalar::DataPartScalar() : DataPartValues(1) {}

double DataPartScalar::value(std::size_t index) const {
    const double* scalar = item(index);
    return scalar ? *scalar : UNDEFINED_DOUBLE;
}

void DataPartScalar::updateMinMax() {
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (double value : span()) {
        if (value != UNDEFINED_DOUBLE) {
            // Written so that a NaN, which compares false with everything, changes neither.
            low = value < low ? value : low;
            high = value > high ? value : high;
        }
    }
    const bool anyCounts = low <= high;
    m_minimum = anyCounts ? low : UNDEFINED_DOUBLE;
    m_maximum = anyCounts ? high : UNDEFINED_DOUBLE;
}

double DataPartScalar::minimum() const {
    return m_minimum;
}

double DataPartScalar::maximum() const {
    return m_maximum;
}

DataPartVector::DataPartVector() : DataPartValues(3) {}

Vec3d DataPartVector::value(std::size_t index) const {
    return vectorOf(item(index));
}

DataPartDisplacement::DataPartDisplacement() : DataPartValues(3) {}

Vec3d DataPartDisplacement::value(std::size_t index) const {
    return vectorOf(item(index));
}

DataPartSymmetricTensor::DataPartSymmetricTensor() : DataPartValues(6) {}

const double* DataPartSymmetricTensor::value(std::size_t index) const {
    return item(index);
}

} // namespace orv::ug
