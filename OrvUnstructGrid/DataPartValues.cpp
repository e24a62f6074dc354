#include "OrvUnstructGrid/DataPartValues.h"

#include "LibCore/rvfAssert.h"
#include "OrvUnstructGrid/ValuePool_p.h"

#include <algorithm>
#include <limits>

namespace orv::ug {
namespace {

Vec3d vectorOf(const double* item) {
    return item ? Vec3d(item[0], item[1], item[2]) : UNDEFINED_VECTOR;
}

/// How many numbers are looked at side by side: a single running minimum would wait for itself at each number.
constexpr std::size_t laneCount = 8;

/// The ranges of every eighth number.
struct Lanes {
    Lanes() {
        std::fill_n(low, laneCount, std::numeric_limits<double>::infinity());
        std::fill_n(high, laneCount, -std::numeric_limits<double>::infinity());
    }

    /// An undefined value is taken for a NaN, which compares false with everything and so changes neither.
    void include(std::size_t lane, double value) {
        const double counted = value == UNDEFINED_DOUBLE ? std::numeric_limits<double>::quiet_NaN() : value;
        low[lane] = counted < low[lane] ? counted : low[lane];
        high[lane] = counted > high[lane] ? counted : high[lane];
    }

    double low[laneCount];
    double high[laneCount];
};

} // namespace

void DataPartValues::GiveBack::operator()(double* values) const {
    ValuePool::instance().giveBack(values, count);
}

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
        const std::size_t count = m_dimension * itemCount;
        m_values = {ValuePool::instance().take(count), GiveBack{count}};
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
    clearMinMax();
    extendMinMax(span());
}

void DataPartScalar::updateMinMaxWhenAsked() {
    m_isUpdateDue = true;
}

void DataPartScalar::clearMinMax() {
    m_range = {};
    m_isUpdateDue = false;
}

void DataPartScalar::extendMinMax(std::span<const double> values) {
    m_range = extended(range(), values);
}

double DataPartScalar::minimum() const {
    return range().minimum;
}

double DataPartScalar::maximum() const {
    return range().maximum;
}

DataPartScalar::Range DataPartScalar::extended(const Range& range, std::span<const double> values) {
    Lanes lanes;
    const std::size_t inLanes = values.size() - values.size() % laneCount;
    for (std::size_t i = 0; i < inLanes; i += laneCount) {
        for (std::size_t lane = 0; lane < laneCount; ++lane) {
            lanes.include(lane, values[i + lane]);
        }
    }
    for (std::size_t i = inLanes; i < values.size(); ++i) {
        lanes.include(0, values[i]);
    }
    lanes.include(0, range.minimum);
    lanes.include(0, range.maximum);
    const double low = *std::min_element(lanes.low, lanes.low + laneCount);
    const double high = *std::max_element(lanes.high, lanes.high + laneCount);
    return low <= high ? Range{low, high} : Range();
}

const DataPartScalar::Range& DataPartScalar::range() const {
    if (m_isUpdateDue) {
        m_range = extended({}, span());
        m_isUpdateDue = false;
    }
    return m_range;
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
