#include "OrvVisualization/LegendScale_p.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace orv::vis {
namespace {

constexpr double PLAIN_FROM = 1e-2;
constexpr double PLAIN_BELOW = 1e6;
constexpr int MAXIMUM_DIGITS = std::numeric_limits<double>::max_digits10;

/// How the numbers of a range are written.
class NumberFormat {
public:
    NumberFormat(double minimum, double maximum) {
        const double largest = std::max(std::abs(minimum), std::abs(maximum));
        if (largest > 0.0 && (largest < PLAIN_FROM || largest >= PLAIN_BELOW)) {
            m_exponent = 3 * int(std::floor(std::log10(largest) / 3));
        }
        const double width = minimum < maximum ? scaled(maximum) - scaled(minimum) : scaled(largest);
        const int digitsBefore = largest > 0.0 ? std::max(1, int(std::floor(std::log10(scaled(largest)))) + 1) : 1;
        if (width > 0.0) {
            m_decimals = std::clamp(int(std::ceil(3.0 - std::log10(width))), 0, MAXIMUM_DIGITS - digitsBefore);
        }
    }

    /// In units of the common exponent. No power of ten of a double is beyond a long double.
    double scaled(double value) const {
        return double(static_cast<long double>(value) / std::pow(10.0L, m_exponent));
    }

    Str textOfScaled(double value) const {
        const Str text = Str("%1").arg(value, 0, 'f', m_decimals);
        const Str number = isZero(text.toStdString()) && std::signbit(value) ? text.subStr(1) : text;
        return m_exponent == 0 ? number : number + "e" + std::to_string(m_exponent);
    }

private:
    static bool isZero(const std::string& text) {
        return text.find_first_of("123456789") == std::string::npos;
    }

    int m_exponent = 0;
    int m_decimals = 0;
};

/// The smallest of 1, 2, 5, 10, 20, ... times a power of ten that is not below `least`.
double roundStep(double least) {
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= least) {
            return factor * power;
        }
    }
    return 10.0 * power;
}

/// Every n-th border of bands, so that none is too near and the last is the upper end.
std::vector<double> bandBorders(std::size_t bandCount, double closest) {
    std::size_t step = 1;
    while (step < bandCount && (bandCount % step != 0 || double(step) / double(bandCount) < closest)) {
        ++step;
    }
    std::vector<double> fractions;
    for (std::size_t i = step; i < bandCount; i += step) {
        fractions.push_back(double(i) / double(bandCount));
    }
    return fractions;
}

/// Of numbers that end in zeros, those that are not too near to the ends.
std::vector<double> roundFractions(double minimum, double maximum, double closest) {
    const double width = maximum - minimum;
    const double step = roundStep(width * closest);
    const double first = std::ceil(minimum / step);
    std::vector<double> fractions;
    for (int i = 0; i <= int(width / step); ++i) {
        const double fraction = ((first + i) * step - minimum) / width;
        if (fraction >= closest && fraction <= 1.0 - closest) {
            fractions.push_back(fraction);
        }
    }
    return fractions;
}

} // namespace

std::vector<LegendTick> legendTicks(double minimum, double maximum, std::size_t bandCount, double closest) {
    const NumberFormat format(minimum, maximum);
    const double low = format.scaled(minimum);
    const double high = format.scaled(maximum);
    if (!(low < high)) {
        return {{0.5, format.textOfScaled(low)}};
    }
    std::vector<LegendTick> ticks = {{0.0, format.textOfScaled(low)}};
    auto add = [&](double fraction, double value) {
        const Str text = format.textOfScaled(value);
        if (!(text == ticks.back().text)) {
            ticks.push_back({fraction, text});
        }
    };
    for (double fraction : bandCount > 0 ? bandBorders(bandCount, closest) : roundFractions(low, high, closest)) {
        add(fraction, low + (high - low) * fraction);
    }
    const Str last = format.textOfScaled(high);
    if (ticks.size() > 1 && ticks.back().text == last) {
        ticks.pop_back();
    }
    ticks.push_back({1.0, last});
    return ticks;
}

} // namespace orv::vis
