#pragma once

#include "LibCore/rvfVector3.h"

#include <cstddef>

namespace rvf {

/// A 4 x 4 matrix for column vectors: `M * v` transforms v, `A * B` applies B first, and a translation stands in the
/// last column. A value.
///
///     | xx xy xz tx |
///     | yx yy yz ty |
///     | zx zy zz tz |
///     |  0  0  0  1 |
template <class T>
class Matrix4 {
public:
    /// The identity.
    constexpr Matrix4() {
        for (size_t i = 0; i < 4; ++i) {
            m_rows[i][i] = 1;
        }
    }

    /// Row and column count from 0; not checked.
    constexpr const T& operator()(size_t row, size_t column) const {
        return m_rows[row][column];
    }

    constexpr T& operator()(size_t row, size_t column) {
        return m_rows[row][column];
    }

    /// Rotates, scales and translates. The last row is taken for (0, 0, 0, 1): there is no division.
    constexpr Vector3<T> transformPoint(const Vector3<T>& point) const {
        return transformVector(point) + Vector3<T>(m_rows[0][3], m_rows[1][3], m_rows[2][3]);
    }

    /// Rotates and scales, without the translation.
    constexpr Vector3<T> transformVector(const Vector3<T>& vector) const {
        auto row = [this](size_t i) { return Vector3<T>(m_rows[i][0], m_rows[i][1], m_rows[i][2]); };
        return {row(0) * vector, row(1) * vector, row(2) * vector};
    }

    friend constexpr Matrix4 operator*(const Matrix4& a, const Matrix4& b) {
        Matrix4 product;
        for (size_t row = 0; row < 4; ++row) {
            for (size_t column = 0; column < 4; ++column) {
                T sum = 0;
                for (size_t i = 0; i < 4; ++i) {
                    sum += a(row, i) * b(i, column);
                }
                product(row, column) = sum;
            }
        }
        return product;
    }

    /// Exact, element by element.
    constexpr bool operator==(const Matrix4& other) const = default;

private:
    T m_rows[4][4] = {};
};

} // namespace rvf
