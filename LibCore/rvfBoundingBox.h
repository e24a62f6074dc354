#pragma once

#include "LibCore/rvfArray.h"
#include "LibCore/rvfExport.h"
#include "LibCore/rvfMatrix4.h"
#include "LibCore/rvfString.h"
#include "LibCore/rvfVector3.h"

namespace rvf {

/// A box along the axes, from a minimum to a maximum. A value.
///
/// A box is invalid as long as nothing has been added to it. Not all is as in VTBox: expand() grows the size by its
/// amount, not each side, and the numbers of an invalid box are the largest doubles.
class ORV_API BoundingBox {
public:
    /// An invalid box, as after reset().
    BoundingBox();
    /// Taken as given: a maximum below the minimum makes the box invalid.
    BoundingBox(const Vector3<double>& min, const Vector3<double>& max);
    BoundingBox(const Vector3<float>& min, const Vector3<float>& max);

    /// Makes the box invalid: every component of the minimum the largest finite double, of the maximum its negation.
    void reset();
    /// Whether the maximum is at or above the minimum on all three axes; a NaN makes a box invalid.
    bool isValid() const;

    /// Extends the box to the point. A component that is NaN changes nothing.
    void add(const Vector3<double>& point);
    void add(const Vector3<float>& point);
    /// Extends the box to each point.
    void add(const Array<Vector3<double>>& points);
    void add(const Array<Vector3<float>>& points);
    /// Extends the box to both corners of `box`; an invalid one changes nothing.
    void add(const BoundingBox& box);

    const Vector3<double>& min() const;
    const Vector3<double>& max() const;
    /// (min + max) / 2. Asserts "isValid()".
    Vector3<double> center() const;
    /// max - min. Asserts "isValid()".
    Vector3<double> extent() const;
    /// Half the length of the diagonal. Asserts "isValid()".
    double radius() const;

    /// Whether the point lies inside or on the faces. Asserts "isValid()".
    bool contains(const Vector3<double>& point) const;
    /// Whether the boxes have a point in common, on the faces too. Asserts "isValid()" and "box.isValid()".
    bool intersects(const BoundingBox& box) const;

    /// Writes eight corners: around the bottom face from the minimum, x first, then the same four at the maximum z.
    ///
    ///        7-----6
    ///       /|    /|
    ///      4-----5 |     z  y
    ///      | 3---|-2     | /
    ///      |/    |/      |/
    ///      0-----1       +-- x
    void cornerVertices(Vector3<double>* vertices) const;

    /// Grows the size by `amount`, half of it on each side. VTBox::Expand() moves each side by the whole amount.
    void expand(double amount);
    /// Becomes the bounds of the eight corners, transformed as points. An invalid box stays as it is.
    void transform(const Matrix4<double>& matrix);

    /// "BoundingBox: min: x=0 y=0 z=0 max: x=1 y=2 z=3", on one line, numbers with six significant digits.
    String debugString() const;

private:
    Vector3<double> m_min;
    Vector3<double> m_max;
};

} // namespace rvf
