#include "OrvPlot2d/AxisScale_p.h"

#include "OrvCore/Defines.h"
#include "OrvPlot2d/Decimal_p.h"

#include <algorithm>
#include <cmath>

namespace orv::plt {

struct LogMarks {
    double first = 0.0; ///< Logarithms of the ends.
    double last = 1.0;
    std::vector<Decimal> labelled;
    std::vector<Decimal> small;
};

namespace {

/// What differs by less, relative to its size, is noise.
constexpr double NOISE = 1e-11;

/// So much of a step may an end be beyond a mark and still count as on it.
constexpr double TOLERANCE = 1e-9;

/// Up to so many decades are marked finer than at powers of ten.
constexpr double FINE_DECADES = 3.0;

constexpr std::size_t LONG_LABEL = 5;

double floorOf(double value) {
    return std::floor(value + TOLERANCE + std::abs(value) * 1e-15);
}

double ceilingOf(double value) {
    return -floorOf(-value);
}

double largestOf(const ValueRange& range) {
    return std::max(std::abs(range.minimum), std::abs(range.maximum));
}

/// The power of ten that brings numbers away from the limits of doubles.
int scaleExponentFor(double largest) {
    if (largest >= 1e300) {
        return -20;
    }
    return largest > 0.0 && largest < 1e-280 ? 50 : 0;
}

/// Equal numbers get room about them.
ValueRange widened(const ValueRange& range) {
    const double width = range.maximum - range.minimum;
    if (width > NOISE * largestOf(range)) {
        return range;
    }
    const double middle = range.minimum + width / 2.0;
    const double room = middle == 0.0 ? 1.0 : std::abs(middle) / 10.0;
    return {middle - room, middle + room};
}

/// The multiples of a step that are labelled, and the small steps between them.
struct LinearGrid {
    Decimal step;
    Decimal smallStep;
    int parts = 1;         ///< Small steps in a step.
    std::int64_t from = 0; ///< In steps.
    std::int64_t to = 0;
    std::int64_t firstSmall = 0; ///< In small steps; these two enclose the range.
    std::int64_t lastSmall = 0;

    double valueAt(std::int64_t index) const {
        return toDouble({index * step.digits, step.exponent});
    }

    double valueAtSmall(std::int64_t index) const {
        return toDouble({index * smallStep.digits, smallStep.exponent});
    }
};

/// The finest grid that has at most `maximumSteps` labelled steps within the range or, when the range may grow, within
/// the small steps that enclose it.
LinearGrid linearGrid(const ValueRange& range, int maximumSteps, bool mayGrow) {
    struct Shape {
        Decimal step, smallStep;
        int parts;
    };
    constexpr Shape SHAPES[] = {
        {{1, 0}, {2, -1}, 5}, {{2, 0}, {5, -1}, 4}, {{25, -1}, {5, -1}, 5}, {{5, 0}, {1, 0}, 5}};
    const double width = range.maximum - range.minimum;
    for (int power = int(std::floor(std::log10(width / maximumSteps))) - 1;; ++power) {
        for (const Shape& shape : SHAPES) {
            LinearGrid grid{{shape.step.digits, shape.step.exponent + power},
                            {shape.smallStep.digits, shape.smallStep.exponent + power},
                            shape.parts};
            grid.firstSmall = std::int64_t(floorOf(range.minimum / toDouble(grid.smallStep)));
            grid.lastSmall = std::int64_t(ceilingOf(range.maximum / toDouble(grid.smallStep)));
            const double first = mayGrow ? double(grid.firstSmall) / grid.parts : range.minimum / toDouble(grid.step);
            const double last = mayGrow ? double(grid.lastSmall) / grid.parts : range.maximum / toDouble(grid.step);
            grid.from = std::int64_t(ceilingOf(first));
            grid.to = std::int64_t(floorOf(last));
            if (grid.to - grid.from <= maximumSteps) {
                return grid;
            }
        }
    }
}

std::vector<double> tickValues(const LinearGrid& grid) {
    std::vector<double> values;
    for (std::int64_t i = grid.from; i <= grid.to; ++i) {
        values.push_back(grid.valueAt(i));
    }
    return values;
}

std::vector<double> smallTickValues(const LinearGrid& grid) {
    std::vector<double> values;
    for (std::int64_t i = grid.firstSmall; i <= grid.lastSmall; ++i) {
        if (i % grid.parts != 0) {
            values.push_back(grid.valueAtSmall(i));
        }
    }
    return values;
}

/// The numbers at the ticks, divided by a power of ten.
std::vector<std::wstring> textsOf(const LinearGrid& grid, int powerOfTen) {
    std::vector<std::wstring> texts;
    for (std::int64_t i = grid.from; i <= grid.to; ++i) {
        texts.push_back(plainText({i * grid.step.digits, grid.step.exponent - powerOfTen}));
    }
    return texts;
}

std::size_t longestOf(const std::vector<std::wstring>& texts) {
    std::size_t longest = 0;
    for (const std::wstring& text : texts) {
        longest = std::max(longest, text.size());
    }
    return longest;
}

/// The labels of the ticks and, when they would be long without, the power of 1000 that they are divided by.
std::vector<std::wstring> labelsOf(const LinearGrid& grid, int scaleExponent, std::wstring* factor) {
    const std::int64_t largest = std::max(std::abs(grid.from), std::abs(grid.to)) * grid.step.digits;
    const int exponent = grid.step.exponent + int(std::to_string(largest).size()) - 1;
    const int power = int(std::floor((exponent - scaleExponent) / 3.0)) * 3;
    const std::vector<std::wstring> plain = textsOf(grid, scaleExponent);
    const std::vector<std::wstring> divided = textsOf(grid, scaleExponent + power);
    if (longestOf(plain) <= LONG_LABEL || longestOf(divided) + 2 > longestOf(plain)) {
        return plain;
    }
    *factor = L"\u00D7" + powerOfTenText(power);
    return divided;
}

/// The marks 1, 2 and 5 times powers of ten, counted through: 0 is 1, 1 is 2, 2 is 5, 3 is 10, -1 is 0.5.
struct FineMark {
    int index = 0;

    int decade() const {
        return int(std::floor(index / 3.0));
    }

    int digit() const {
        constexpr int DIGITS[] = {1, 2, 5};
        return DIGITS[index - 3 * decade()];
    }

    double logarithm() const {
        return decade() + std::log10(digit());
    }
};

/// The last mark up to a number.
FineMark markBelow(double logarithm) {
    FineMark mark{int(floorOf(logarithm)) * 3};
    while (FineMark{mark.index + 1}.logarithm() <= logarithm + TOLERANCE) {
        ++mark.index;
    }
    return mark;
}

/// The first mark from a number on.
FineMark markAbove(double logarithm) {
    const FineMark below = markBelow(logarithm);
    return below.logarithm() >= logarithm - TOLERANCE ? below : FineMark{below.index + 1};
}

std::vector<double> logarithmsOf(const std::vector<Decimal>& marks) {
    std::vector<double> logarithms;
    for (const Decimal& mark : marks) {
        logarithms.push_back(mark.exponent + std::log10(double(mark.digits)));
    }
    return logarithms;
}

void addDigits(LogMarks* marks, std::initializer_list<int> digits) {
    for (int decade = int(floorOf(marks->first)); decade <= int(floorOf(marks->last)); ++decade) {
        for (const int digit : digits) {
            marks->small.push_back({digit, decade});
        }
    }
}

LogMarks fineMarks(double first, double last, FineMark from, FineMark to) {
    LogMarks marks{first, last, {}, {}};
    for (FineMark mark = from; mark.index <= to.index; ++mark.index) {
        marks.labelled.push_back({mark.digit(), mark.decade()});
    }
    addDigits(&marks, {3, 4, 6, 7, 8, 9});
    return marks;
}

LogMarks decadeMarks(double first, double last, int maximumSteps) {
    // Near enough to each other that the first one that fits has two marks at least.
    constexpr int STRIDES[] = {1, 2, 3, 5, 10, 20, 30, 50, 100, 200, 300, 500};
    const int stride = *std::find_if(std::begin(STRIDES), std::end(STRIDES) - 1, [&](int candidate) {
        return floorOf(last / candidate) - ceilingOf(first / candidate) <= maximumSteps;
    });
    LogMarks marks{first, last, {}, {}};
    for (int decade = int(ceilingOf(first)); decade <= int(floorOf(last)); ++decade) {
        (decade % stride == 0 ? marks.labelled : marks.small).push_back({1, decade});
    }
    if (stride == 1) {
        addDigits(&marks, {2, 3, 4, 5, 6, 7, 8, 9});
    }
    return marks;
}

LogMarks enclosingMarks(double first, double last, int maximumSteps) {
    FineMark from = markBelow(first);
    FineMark to = markAbove(last);
    if (from.index == to.index) {
        --from.index;
        ++to.index;
    }
    if (last - first <= FINE_DECADES && to.index - from.index <= maximumSteps) {
        return fineMarks(from.logarithm(), to.logarithm(), from, to);
    }
    return decadeMarks(floorOf(first), ceilingOf(last), maximumSteps);
}

LogMarks marksWithin(double first, double last, int maximumSteps) {
    const FineMark from = markAbove(first);
    const FineMark to = markBelow(last);
    if (last - first <= FINE_DECADES && to.index - from.index <= maximumSteps) {
        return fineMarks(first, last, from, to);
    }
    return decadeMarks(first, last, maximumSteps);
}

/// Written out when all are of handy size, otherwise as powers of ten.
std::vector<std::wstring> logarithmicTexts(const std::vector<Decimal>& marks) {
    const bool isPlain = std::all_of(marks.begin(), marks.end(),
                                     [](const Decimal& mark) { return mark.exponent >= -3 && mark.exponent <= 4; });
    std::vector<std::wstring> texts;
    for (const Decimal& mark : marks) {
        const std::wstring times = mark.digits == 1 ? L"" : std::to_wstring(mark.digits) + L"\u00D7";
        texts.push_back(isPlain ? plainText(mark) : times + powerOfTenText(mark.exponent));
    }
    return texts;
}

} // namespace

void ValueRange::add(double value) {
    minimum = std::min(minimum, value);
    maximum = std::max(maximum, value);
}

bool ValueRange::isEmpty() const {
    return minimum > maximum;
}

bool hasPlace(double value, bool logarithmic) {
    return std::isfinite(value) && value != UNDEFINED_DOUBLE && (!logarithmic || value > 0.0);
}

AxisScale::AxisScale(const Axis& axis, const ValueRange& data, int maximumSteps) : m_isLogarithmic(axis.isLogarithmic) {
    if (m_isLogarithmic) {
        buildLogarithmic(axis, data, std::max(maximumSteps, 2));
    } else {
        buildLinear(axis, data, std::max(maximumSteps, 2));
    }
}

double AxisScale::position(double value) const {
    if (!hasPlace(value, m_isLogarithmic)) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return place(m_isLogarithmic ? std::log10(value) : value * m_scale);
}

const std::vector<Tick>& AxisScale::ticks() const {
    return m_ticks;
}

const std::vector<double>& AxisScale::minorTicks() const {
    return m_minorTicks;
}

const std::wstring& AxisScale::factor() const {
    return m_factor;
}

void AxisScale::buildLinear(const Axis& axis, const ValueRange& data, int maximumSteps) {
    ValueRange range = data.isEmpty() ? ValueRange{0.0, 1.0} : data;
    if (axis.range) {
        range = {axis.range->minimum, axis.range->maximum};
    }
    const int scaleExponent = scaleExponentFor(largestOf(range));
    m_scale = toDouble({1, scaleExponent});
    range = widened({range.minimum * m_scale, range.maximum * m_scale});
    const LinearGrid grid = linearGrid(range, maximumSteps, !axis.range);
    m_first = axis.range ? range.minimum : grid.valueAtSmall(grid.firstSmall);
    m_last = axis.range ? range.maximum : grid.valueAtSmall(grid.lastSmall);
    addTicks(tickValues(grid), labelsOf(grid, scaleExponent, &m_factor));
    addMinorTicks(smallTickValues(grid));
}

void AxisScale::buildLogarithmic(const Axis& axis, const ValueRange& data, int maximumSteps) {
    const bool isFixed = axis.range && axis.range->minimum > 0.0;
    if (!isFixed) {
        const ValueRange range = data.isEmpty() ? ValueRange{1.0, 10.0} : data;
        addLogarithmicMarks(enclosingMarks(std::log10(range.minimum), std::log10(range.maximum), maximumSteps));
        return;
    }
    const int scaleExponent = scaleExponentFor(axis.range->maximum);
    const double scale = toDouble({1, scaleExponent});
    const ValueRange range = widened({axis.range->minimum * scale, axis.range->maximum * scale});
    const double first = std::log10(range.minimum) - scaleExponent;
    const double last = std::log10(range.maximum) - scaleExponent;
    const LogMarks marks = marksWithin(first, last, maximumSteps);
    if (marks.labelled.size() > 1) {
        addLogarithmicMarks(marks);
        return;
    }
    // Between two neighbouring marks: equal steps tell more than powers of ten.
    m_first = first;
    m_last = last;
    const LinearGrid grid = linearGrid(range, maximumSteps, false);
    std::vector<double> coordinates = tickValues(grid);
    for (double& coordinate : coordinates) {
        coordinate = std::log10(coordinate) - scaleExponent;
    }
    addTicks(coordinates, labelsOf(grid, scaleExponent, &m_factor));
}

void AxisScale::addLogarithmicMarks(const LogMarks& marks) {
    m_first = marks.first;
    m_last = marks.last;
    addTicks(logarithmsOf(marks.labelled), logarithmicTexts(marks.labelled));
    addMinorTicks(logarithmsOf(marks.small));
}

double AxisScale::place(double coordinate) const {
    return (coordinate - m_first) / (m_last - m_first);
}

void AxisScale::addTicks(const std::vector<double>& coordinates, const std::vector<std::wstring>& labels) {
    for (std::size_t i = 0; i < coordinates.size(); ++i) {
        m_ticks.push_back({std::clamp(place(coordinates[i]), 0.0, 1.0), labels[i]});
    }
}

void AxisScale::addMinorTicks(const std::vector<double>& coordinates) {
    for (const double coordinate : coordinates) {
        const double position = place(coordinate);
        if (position > TOLERANCE && position < 1.0 - TOLERANCE) {
            m_minorTicks.push_back(position);
        }
    }
    std::sort(m_minorTicks.begin(), m_minorTicks.end());
}

} // namespace orv::plt
