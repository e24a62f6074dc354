#include "Tools/Statistics.h"

#include "OrvCore/Defines.h"

#include <cmath>

namespace orvapp {

namespace {

/// A sum that keeps what each addition rounds off (Neumaier's variant of Kahan's summation), so that the average of
/// millions of values is as exact as the values. The extended range keeps sums of large values finite.
class CompensatedSum {
public:
    void add(double value) {
        const long double sum = m_sum + value;
        const bool sumIsLarger = std::fabs(m_sum) >= std::fabs(static_cast<long double>(value));
        m_lost += sumIsLarger ? (m_sum - sum) + value : (value - sum) + m_sum;
        m_sum = sum;
    }

    /// An infinite value makes the lost part meaningless.
    long double value() const {
        return std::isfinite(m_sum) ? m_sum + m_lost : m_sum;
    }

private:
    long double m_sum = 0;
    long double m_lost = 0;
};

bool isDefined(double value) {
    return value != orv::UNDEFINED_DOUBLE && !std::isnan(value);
}

} // namespace

Statistics componentStatistics(std::span<const double> values, std::size_t dimension, std::size_t component) {
    Statistics statistics;
    statistics.count = values.size() / dimension;
    CompensatedSum sum;
    for (std::size_t item = 0; item < statistics.count; ++item) {
        const double value = values[item * dimension + component];
        if (!isDefined(value)) {
            ++statistics.undefined;
            continue;
        }
        sum.add(value);
        if (!statistics.min || value < statistics.min->value) {
            statistics.min = Extreme{value, item};
        }
        if (!statistics.max || value > statistics.max->value) {
            statistics.max = Extreme{value, item};
        }
    }
    if (statistics.min) {
        const auto defined = static_cast<long double>(statistics.count - statistics.undefined);
        statistics.average = static_cast<double>(sum.value() / defined);
    }
    return statistics;
}

} // namespace orvapp
