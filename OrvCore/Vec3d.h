#pragma once

#include <cmath>
#include <cstddef>

namespace orv {

/// Three doubles: a point or a direction in the model's own units. A value. Nothing here has a tolerance.
class Vec3d {
public:
    /// (0, 0, 0).
    constexpr Vec3d() = default;
    constexpr Vec3d(double x, double y, double z) : m_v{x, y, z} {}

    constexpr double x() const {
        return m_v[0];
    }

    constexpr double y() const {
        return m_v[1];
    }

    constexpr double z() const {
        return m_v[2];
    }

    /// 0, 1 and 2 for x, y and z; not checked.
    constexpr double operator[](size_t index) const {
        return m_v[index];
    }

    constexpr double& operator[](size_t index) {
        return m_v[index];
    }

    double length() const {
        return std::sqrt(*this * *this);
    }

    constexpr Vec3d operator-() const {
        return {-x(), -y(), -z()};
    }

    constexpr Vec3d& operator+=(const Vec3d& other) {
        return *this = *this + other;
    }

    constexpr Vec3d& operator-=(const Vec3d& other) {
        return *this = *this - other;
    }

    constexpr Vec3d& operator*=(double factor) {
        return *this = *this * factor;
    }

    /// Exact, component by component.
    constexpr bool operator==(const Vec3d& other) const = default;

    friend constexpr Vec3d operator+(const Vec3d& a, const Vec3d& b) {
        return {a.x() + b.x(), a.y() + b.y(), a.z() + b.z()};
    }

    friend constexpr Vec3d operator-(const Vec3d& a, const Vec3d& b) {
        return {a.x() - b.x(), a.y() - b.y(), a.z() - b.z()};
    }

    friend constexpr Vec3d operator*(const Vec3d& v, double factor) {
        return {v.x() * factor, v.y() * factor, v.z() * factor};
    }

    friend constexpr Vec3d operator*(double factor, const Vec3d& v) {
        return v * factor;
    }

    friend constexpr Vec3d operator/(const Vec3d& v, double divisor) {
        return {v.x() / divisor, v.y() / divisor, v.z() / divisor};
    }

    /// The dot product.
    friend constexpr double operator*(const Vec3d& a, const Vec3d& b) {
        return a.x() * b.x() + a.y() * b.y() + a.z() * b.z();
    }

    /// The cross product. Binds weaker than arithmetic and comparison: write `(a ^ b) * c`.
    friend constexpr Vec3d operator^(const Vec3d& a, const Vec3d& b) {
        return {a.y() * b.z() - a.z() * b.y(), a.z() * b.x() - a.x() * b.z(), a.x() * b.y() - a.y() * b.x()};
    }

private:
    double m_v[3] = {};
};

} // namespace orv
