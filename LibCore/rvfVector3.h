#pragma once

#include <cmath>
#include <cstddef>
#include <type_traits>

namespace rvf {

/// Three components of type float or double. A value. Nothing here has a tolerance.
template <class T>
class Vector3 {
    static_assert(std::is_floating_point_v<T>);

public:
    /// (0, 0, 0).
    constexpr Vector3() = default;
    constexpr Vector3(T x, T y, T z) : m_v{x, y, z} {}

    /// Between float and double. Explicit, since one way narrows: beyond the float range it gives an infinity.
    template <class Other>
    constexpr explicit Vector3(const Vector3<Other>& other) : m_v{T(other.x()), T(other.y()), T(other.z())} {}

    constexpr const T& x() const {
        return m_v[0];
    }
    constexpr const T& y() const {
        return m_v[1];
    }
    constexpr const T& z() const {
        return m_v[2];
    }
    constexpr T& x() {
        return m_v[0];
    }
    constexpr T& y() {
        return m_v[1];
    }
    constexpr T& z() {
        return m_v[2];
    }

    /// 0, 1 and 2 for x, y and z; not checked.
    constexpr const T& operator[](size_t index) const {
        return m_v[index];
    }
    constexpr T& operator[](size_t index) {
        return m_v[index];
    }

    /// x, y and z, one behind the other.
    constexpr const T* ptr() const {
        return m_v;
    }

    constexpr void set(T x, T y, T z) {
        *this = Vector3(x, y, z);
    }

    /// True when all components are exactly zero.
    constexpr bool isZero() const {
        return *this == Vector3();
    }

    T length() const {
        return std::sqrt(*this * *this);
    }

    /// Scales to length 1. False, with the vector as it was, when the length is 0.
    bool normalize() {
        T ownLength = length();
        if (!(ownLength > 0)) {
            return false;
        }
        *this = *this / ownLength;
        return true;
    }

    constexpr Vector3 operator-() const {
        return {-x(), -y(), -z()};
    }

    /// Exact, component by component.
    friend constexpr bool operator==(const Vector3& a, const Vector3& b) {
        return a.x() == b.x() && a.y() == b.y() && a.z() == b.z();
    }

    friend constexpr Vector3 operator+(const Vector3& a, const Vector3& b) {
        return {a.x() + b.x(), a.y() + b.y(), a.z() + b.z()};
    }

    friend constexpr Vector3 operator-(const Vector3& a, const Vector3& b) {
        return {a.x() - b.x(), a.y() - b.y(), a.z() - b.z()};
    }

    friend constexpr Vector3 operator*(const Vector3& v, T factor) {
        return {v.x() * factor, v.y() * factor, v.z() * factor};
    }

    friend constexpr Vector3 operator*(T factor, const Vector3& v) {
        return v * factor;
    }

    friend constexpr Vector3 operator/(const Vector3& v, T divisor) {
        return {v.x() / divisor, v.y() / divisor, v.z() / divisor};
    }

    /// The dot product.
    friend constexpr T operator*(const Vector3& a, const Vector3& b) {
        return a.x() * b.x() + a.y() * b.y() + a.z() * b.z();
    }

    /// The cross product. Binds weaker than arithmetic and comparison: write `(a ^ b) * c`.
    friend constexpr Vector3 operator^(const Vector3& a, const Vector3& b) {
        return {a.y() * b.z() - a.z() * b.y(), a.z() * b.x() - a.x() * b.z(), a.x() * b.y() - a.y() * b.x()};
    }

private:
    T m_v[3] = {};
};

} // namespace rvf
