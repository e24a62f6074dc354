#include "OrvVisualization/ColorMap.h"

#include "OrvCore/Defines.h"
#include "OrvVisualization/Viridis_p.h"

#include <algorithm>
#include <cmath>

namespace orv::vis {
namespace {

constexpr std::array<std::uint32_t, 5> RAINBOW = {0x0000ff, 0x00ffff, 0x00ff00, 0xffff00, 0xff0000};

rvf::Color3f colorOf(std::uint32_t rgb) {
    return rvf::Color3f(rvf::Color3ub(std::uint8_t(rgb >> 16), std::uint8_t(rgb >> 8), std::uint8_t(rgb)));
}

rvf::Color3f mix(const rvf::Color3f& a, const rvf::Color3f& b, float weightOfB) {
    auto channel = [&](float ofA, float ofB) { return ofA + (ofB - ofA) * weightOfB; };
    return {channel(a.r(), b.r()), channel(a.g(), b.g()), channel(a.b(), b.b())};
}

template <std::size_t N>
rvf::Color3f between(const std::array<std::uint32_t, N>& colors, double fraction) {
    const double place = fraction * double(N - 1);
    const std::size_t first = std::min(std::size_t(place), N - 2);
    return mix(colorOf(colors[first]), colorOf(colors[first + 1]), float(place - double(first)));
}

bool isDefined(double value) {
    return !std::isnan(value) && value != UNDEFINED_DOUBLE;
}

double placeOfBand(double fraction, std::size_t count) {
    const std::size_t band = std::min(std::size_t(fraction * double(count)), count - 1);
    return count == 1 ? 0.5 : double(band) / double(count - 1);
}

} // namespace

ColorMap::ColorMap(Kind kind) : m_kind(kind) {}

ColorMap::Kind ColorMap::kind() const {
    return m_kind;
}

void ColorMap::setKind(Kind kind) {
    m_kind = kind;
}

std::size_t ColorMap::bandCount() const {
    return m_bandCount;
}

bool ColorMap::setBandCount(std::size_t count) {
    if (count > MAXIMUM_BANDS) {
        return false;
    }
    m_bandCount = count;
    return true;
}

bool ColorMap::hasFixedRange() const {
    return m_hasFixedRange;
}

double ColorMap::minimum() const {
    return m_minimum;
}

double ColorMap::maximum() const {
    return m_maximum;
}

bool ColorMap::setFixedRange(double minimum, double maximum) {
    if (!std::isfinite(minimum) || !std::isfinite(maximum) || maximum == UNDEFINED_DOUBLE || !(minimum < maximum)) {
        return false;
    }
    m_hasFixedRange = true;
    m_minimum = minimum;
    m_maximum = maximum;
    return true;
}

void ColorMap::setAutomaticRange() {
    m_hasFixedRange = false;
    m_minimum = 0.0;
    m_maximum = 0.0;
}

const rvf::Color3f& ColorMap::undefinedColor() const {
    return m_undefinedColor;
}

void ColorMap::setUndefinedColor(const rvf::Color3f& color) {
    m_undefinedColor = color;
}

double ColorMap::fractionOf(double value, double minimum, double maximum) {
    if (!(minimum < maximum)) {
        return value < minimum ? 0.0 : value > minimum ? 1.0 : 0.5;
    }
    // Halves, so that the width of no range is beyond the largest number.
    return std::clamp((value / 2 - minimum / 2) / (maximum / 2 - minimum / 2), 0.0, 1.0);
}

rvf::Color3f ColorMap::colorAtFraction(double fraction) const {
    const double inside = std::clamp(fraction, 0.0, 1.0);
    const double place = m_bandCount > 0 ? placeOfBand(inside, m_bandCount) : inside;
    return m_kind == Kind::VIRIDIS ? between(VIRIDIS, place) : between(RAINBOW, place);
}

rvf::Color3f ColorMap::colorAt(double value, double minimum, double maximum) const {
    return isDefined(value) ? colorAtFraction(fractionOf(value, minimum, maximum)) : m_undefinedColor;
}

} // namespace orv::vis
