#pragma once

#include "OrvPlot2d/AxisSettings.h"

#include <limits>
#include <string>
#include <vector>

namespace orv::plt {

/// The least and the greatest of some numbers.
struct ValueRange {
    double minimum = std::numeric_limits<double>::infinity();
    double maximum = -std::numeric_limits<double>::infinity();

    void add(double value);
    bool isEmpty() const;
};

/// Whether a number has a place on an axis: it is finite and defined and, on a logarithmic axis, greater than zero.
bool hasPlace(double value, bool logarithmic);

struct Tick {
    double position = 0.0; ///< From 0 at the axis's start to 1 at its end.
    std::wstring label;
};

struct LogMarks;

/// Where numbers lie on an axis, and which of them are marked.
///
/// A linear axis is marked at multiples of 1, 2, 2.5 or 5 times a power of ten, with the finest of these steps that
/// needs no more than the steps allowed. Labels of one axis have equally many decimals. When they would be long, they
/// are divided by factor(), a power of 1000.
///
/// A logarithmic axis over up to three decades is marked at 1, 2 and 5 times powers of ten as far as the allowed steps
/// suffice, otherwise at each power of ten, or at each second, third, fifth and so on.
///
/// An automatic axis begins and ends at the next marks that enclose the data: small ones on a linear axis, labelled
/// ones (or powers of ten) on a logarithmic axis. Data that are equal, or differ only behind the eleventh digit, which
/// is the noise of rounding, are shown as one number amid a tenth of itself in both directions; without data the axis
/// runs from 0 to 1, a logarithmic one from 1 to 10.
class AxisScale {
public:
    /// @param data what an automatic axis encloses; for a logarithmic one only what hasPlace() there
    /// @param maximumSteps how many steps between labelled ticks there is room for, at least 2
    AxisScale(const Axis& axis, const ValueRange& data, int maximumSteps);

    /// 0 at the start of the axis, 1 at its end, beyond these for numbers outside; not a number for what has no place.
    double position(double value) const;

    /// The labelled ones, from the start to the end.
    const std::vector<Tick>& ticks() const;

    /// The places of the small ticks between them, rising.
    const std::vector<double>& minorTicks() const;

    /// What the labels are to be multiplied by, such as 10 to the power of 6; empty when that is one.
    const std::wstring& factor() const;

private:
    void buildLinear(const Axis& axis, const ValueRange& data, int maximumSteps);
    void buildLogarithmic(const Axis& axis, const ValueRange& data, int maximumSteps);
    void addLogarithmicMarks(const LogMarks& marks);
    double place(double coordinate) const;
    void addTicks(const std::vector<double>& coordinates, const std::vector<std::wstring>& labels);
    void addMinorTicks(const std::vector<double>& coordinates);

    bool m_isLogarithmic = false;
    double m_scale = 1.0; ///< A linear axis multiplies by it, so that no number is near the limits of doubles.
    double m_first = 0.0; ///< The coordinates of the ends: scaled numbers or, on a logarithmic axis, logarithms.
    double m_last = 1.0;
    std::vector<Tick> m_ticks;
    std::vector<double> m_minorTicks;
    std::wstring m_factor;
};

} // namespace orv::plt
