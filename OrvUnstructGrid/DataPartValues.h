#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Defines.h"
#include "OrvCore/Vec3d.h"

#include <cstddef>
#include <memory>
#include <span>

namespace orv::ug {

/// The values of one result on one part: plain doubles, contiguous, item after item. A missing number is
/// UNDEFINED_DOUBLE. Items follow the order of the part's nodes or elements, as the result's mapping says.
class ORV_API DataPartValues {
public:
    DataPartValues(const DataPartValues&) = delete;
    DataPartValues& operator=(const DataPartValues&) = delete;

    /// The doubles in one item.
    std::size_t dimension() const;
    std::size_t itemCount() const;

    /// dimension() * itemCount() doubles; null when there are no items.
    double* values();
    const double* values() const;
    std::span<const double> span() const;

    /// Makes room for `itemCount` items, whose doubles then hold anything: write them all. The earlier values are lost,
    /// unless the count is the same, and then nothing happens.
    void allocate(std::size_t itemCount);
    void fillUndefined();

    std::size_t byteCount() const;

protected:
    explicit DataPartValues(std::size_t dimension);
    ~DataPartValues();

    /// Asserts "index < itemCount()"; null behind a failed assertion.
    const double* item(std::size_t index) const;

private:
    struct GiveBack {
        std::size_t count;
        void operator()(double* values) const;
    };

    std::size_t m_dimension;
    std::size_t m_itemCount = 0;
    std::unique_ptr<double[], GiveBack> m_values;
};

/// One scalar for each item, with the range of the defined ones.
class ORV_API DataPartScalar : public DataPartValues {
public:
    DataPartScalar();

    /// Asserts "index < itemCount()"; UNDEFINED_DOUBLE behind a failed assertion, in the other classes undefined
    /// components.
    double value(std::size_t index) const;

    /// Recomputes minimum() and maximum(). Call it after the values have been written. Values equal to
    /// UNDEFINED_DOUBLE and NaNs are left out.
    void updateMinMax();

    /// The same, put off until somebody asks for minimum() or maximum(): for values that may be dropped before. What
    /// counts then is what the values are by that time.
    void updateMinMaxWhenAsked();

    /// @name updateMinMax() piece by piece, for writers that have each piece at hand as they write it
    /// @{
    /// Nothing counts yet.
    void clearMinMax();
    /// Makes minimum() and maximum() count these values too.
    void extendMinMax(std::span<const double> values);
    /// @}

    /// UNDEFINED_DOUBLE until the first of these calls, or when no value counts. May take the range only now.
    double minimum() const;
    double maximum() const;

private:
    struct Range {
        double minimum = UNDEFINED_DOUBLE;
        double maximum = UNDEFINED_DOUBLE;
    };

    static Range extended(const Range& range, std::span<const double> values);
    const Range& range() const;

    mutable Range m_range;
    mutable bool m_isUpdateDue = false;
};

/// X, Y, Z for each item.
class ORV_API DataPartVector : public DataPartValues {
public:
    DataPartVector();
    Vec3d value(std::size_t index) const;
};

/// X, Y, Z for each item.
class ORV_API DataPartDisplacement : public DataPartValues {
public:
    DataPartDisplacement();
    Vec3d value(std::size_t index) const;
};

/// XX, YY, ZZ, XY, YZ, ZX for each item.
class ORV_API DataPartSymmetricTensor : public DataPartValues {
public:
    DataPartSymmetricTensor();
    /// The six doubles of one item; null behind a failed assertion.
    const double* value(std::size_t index) const;
};

} // namespace orv::ug
