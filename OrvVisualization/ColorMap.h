#pragma once

#include "LibCore/rvfColor3.h"
#include "LibCore/rvfExport.h"

#include <cstddef>

namespace orv::vis {

/// What colours the numbers of a picture have. A value.
class ORV_API ColorMap {
public:
    enum class Kind {
        VIRIDIS, ///< Dark blue, green, yellow: equal steps of the value look equally large.
        RAINBOW  ///< Blue, cyan, green, yellow, red, as engineers are used to it.
    };

    static constexpr std::size_t MAXIMUM_BANDS = 256;

    /// Without bands, with the range of the values that are shown, undefined values in grey.
    explicit ColorMap(Kind kind = Kind::VIRIDIS);

    Kind kind() const;
    void setKind(Kind kind);

    /// How many plain colours the range is divided into, each for an equal piece of it; 0 for colours that go over into
    /// each other. The first and the last band have the colours of the two ends, a single one that of the middle.
    std::size_t bandCount() const;
    /// @return false, and nothing changes, beyond MAXIMUM_BANDS
    bool setBandCount(std::size_t count);

    /// Whether the range is a fixed one, and not that of the values that are shown.
    bool hasFixedRange() const;
    /// 0 unless there is a fixed range.
    double minimum() const;
    double maximum() const;
    /// @return false, and nothing changes, unless both are finite numbers, neither is undefined and the minimum is
    ///         below the maximum
    bool setFixedRange(double minimum, double maximum);
    void setAutomaticRange();

    const rvf::Color3f& undefinedColor() const;
    void setUndefinedColor(const rvf::Color3f& color);

    /// Where a value is in a range, from 0 to 1. Values outside are at the ends; in a range that is one number, values
    /// that equal it are in the middle. The value must not be a NaN.
    static double fractionOf(double value, double minimum, double maximum);

    /// The colour of a place in the range, with the bands. Outside of 0 to 1 it is that of the ends.
    rvf::Color3f colorAtFraction(double fraction) const;

    /// The colour of a value when the picture's range is from `minimum` to `maximum`. These count alone: a fixed range
    /// is for the caller to hand over. A NaN and UNDEFINED_DOUBLE are undefined values.
    rvf::Color3f colorAt(double value, double minimum, double maximum) const;

private:
    Kind m_kind;
    std::size_t m_bandCount = 0;
    bool m_hasFixedRange = false;
    double m_minimum = 0.0;
    double m_maximum = 0.0;
    rvf::Color3f m_undefinedColor = {0.65F, 0.65F, 0.65F};
};

} // namespace orv::vis
