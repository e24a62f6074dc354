#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Vec3d.h"

namespace orv {

/// A symmetric tensor such as a stress: six components in the order of result items, XX, YY, ZZ, XY, YZ, ZX. A value.
///
/// A component of 1e308 or more, such as UNDEFINED_DOUBLE, and a NaN make every answer undefined: UNDEFINED_DOUBLE or
/// UNDEFINED_VECTOR.
///
/// The principal values have errors of up to 1e-7 of the deviatoric part. They are in descending order, but for plane
/// stresses: where ZZ, YZ and ZX are exactly zero, the value of the smallest magnitude is taken for the one out of the
/// plane and becomes the third one, exactly 0. The two others come first, in descending order and whatever their signs:
/// -30, -80 and 0, where -30 and -80 in any other plane would give 0, -30 and -80.
///
/// Nothing is kept between calls: each answer is computed anew.
class ORV_API SymmetricTensor {
public:
    /// All components zero.
    SymmetricTensor() = default;

    void set(double xx, double yy, double zz, double xy, double yz, double zx);

    /// The equivalent stress after von Mises, never negative, in the unit of the components.
    double vonMises() const;

    double firstPrincipalValue() const;
    double secondPrincipalValue() const;
    double thirdPrincipalValue() const;

    /// Unit vectors of free sense, each along the direction of its value. Where values are equal to within rounding no
    /// direction is special: the vector is then any in their plane, or zero. A zero tensor has zero vectors.
    Vec3d firstPrincipalVector() const;
    Vec3d secondPrincipalVector() const;
    Vec3d thirdPrincipalVector() const;

private:
    Vec3d principalVector(int number) const;

    double m_components[6] = {};
};

} // namespace orv
