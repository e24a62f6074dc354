#pragma once

#include "OrvVisualization/Outline.h"

#include <cstddef>
#include <vector>

namespace orv::vis {

/// How much of each pixel is inside an outline: exactly, but for curves, which are taken as straight pieces that
/// deviate by less than a fiftieth of a pixel.
///
/// Each piece of the border adds, pixel by pixel, what its right side gains; sums from left to right are the answer.
/// Overlapping outlines of one sense of rotation count once.
class Coverage {
public:
    static constexpr double MAXIMUM_COORDINATE = 1e9;

    /// Of the part of the outline that is in a picture of this size. An outline with a coordinate that is not finite,
    /// or beyond the maximum, covers nothing.
    Coverage(const Outline& outline, int width, int height);

    /// The pixels that may be touched: left <= x < right, top <= y < bottom. Empty when left == right or
    /// top == bottom.
    int left() const;
    int top() const;
    int right() const;
    int bottom() const;

    /// Calls each(x, y, share) for all of these pixels, row by row, with a share from 0 to 1.
    template <class Each>
    void forEachPixel(Each each) const;

private:
    void setBounds(const Outline& outline, int width, int height);
    void addOutline(const Outline& outline);
    void addCurve(const OutlinePoint& begin, const OutlineStep& curve);
    void addLine(const OutlinePoint& begin, const OutlinePoint& end);
    void addInRow(float* row, double fromX, double toX, double height);
    static float shareOf(float sum);

    int m_left = 0;
    int m_top = 0;
    int m_right = 0;
    int m_bottom = 0;
    std::size_t m_stride = 0;
    std::vector<float> m_gains; ///< One more for each row than there are pixels.
};

template <class Each>
void Coverage::forEachPixel(Each each) const {
    for (int y = m_top; y < m_bottom; ++y) {
        const float* gains = m_gains.data() + std::size_t(y - m_top) * m_stride;
        float sum = 0.0F;
        for (int x = m_left; x < m_right; ++x) {
            sum += gains[x - m_left];
            each(x, y, shareOf(sum));
        }
    }
}

} // namespace orv::vis
