#pragma once

#include "OrvCore/Defines.h"
#include "OrvCore/PtrRef.h"
#include "OrvPlot2d/OverlayPlot.h"
#include "OrvVisualization/Font.h"

#include <cstddef>
#include <vector>

namespace orvtest {

using Numbers = std::vector<double>;

/// An empty plot with the normal font.
inline orv::PtrRef<orv::plt::OverlayPlot> makePlot(const orv::Str& title, const orv::Str& xTitle,
                                                   const orv::Str& yTitle) {
    orv::PtrRef<orv::plt::OverlayPlot> plot(new orv::plt::OverlayPlot(orv::vis::Font::createNormalFont().get()));
    plot->setTitle(title);
    plot->axisSettings()->setXAxisTitle(xTitle);
    plot->axisSettings()->setYAxisTitle(yTitle);
    return plot;
}

/// `count` numbers from `first` to `last`.
inline Numbers spaced(double first, double last, std::size_t count) {
    Numbers numbers(count);
    for (std::size_t i = 0; i < count; ++i) {
        numbers[i] = first + (last - first) * double(i) / double(count - 1);
    }
    return numbers;
}

template <class Function>
Numbers mapped(Numbers numbers, Function function) {
    for (double& number : numbers) {
        number = function(number);
    }
    return numbers;
}

} // namespace orvtest
