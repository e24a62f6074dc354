#pragma once

#include "LibCore/rvfExport.h"

// Two-dimensional types. Everything starts at zero.

struct ORV_API VTIntCoord2D {
    int x = 0;
    int y = 0;

    VTIntCoord2D() = default;
    VTIntCoord2D(int iX, int iY);

    bool operator==(const VTIntCoord2D&) const = default;
    void Set(int iX, int iY);
    bool IsZero() const;

    /// Both components become VT_UNDEFINED_INT.
    void SetUndefined();
    /// Either component is VT_UNDEFINED_INT.
    bool IsUndefined() const;
};

struct ORV_API VTIntSize2D {
    int w = 0;
    int h = 0;

    VTIntSize2D() = default;
    VTIntSize2D(int iWidth, int iHeight);

    bool operator==(const VTIntSize2D&) const = default;
    void Set(int iWidth, int iHeight);
    bool IsZero() const;

    /// Both components become VT_UNDEFINED_INT.
    void SetUndefined();
    /// Either component is VT_UNDEFINED_INT.
    bool IsUndefined() const;

    /// Grows or shrinks this size until it touches the bounds, and keeps the aspect as far as whole numbers can: a
    /// side is cut to an integer. (100, 50) in (10, 10) becomes (10, 5). Nothing happens in bounds of zero, or when a
    /// side of this size is 0, which has no aspect to keep.
    void ScaleFitInside(const VTIntSize2D& bounds);
};

struct ORV_API VTFloatCoord2D {
    float x = 0;
    float y = 0;

    VTFloatCoord2D() = default;
    VTFloatCoord2D(float fX, float fY);

    /// Exact.
    bool operator==(const VTFloatCoord2D&) const = default;
    void Set(float fX, float fY);

    /// Both components become VT_UNDEFINED_FLOAT.
    void SetUndefined();
    /// Either component is exactly VT_UNDEFINED_FLOAT. A value that is merely above VT_UNDEFINED_FLOAT_LIMIT is
    /// defined here, though not in a VTFloatRect.
    bool IsUndefined() const;
};

struct ORV_API VTFloatSize2D {
    float w = 0;
    float h = 0;

    VTFloatSize2D() = default;
    VTFloatSize2D(float fWidth, float fHeight);

    /// Exact.
    bool operator==(const VTFloatSize2D&) const = default;
    void Set(float fWidth, float fHeight);

    /// Both components become VT_UNDEFINED_FLOAT.
    void SetUndefined();
    /// Either component is exactly VT_UNDEFINED_FLOAT, as in VTFloatCoord2D.
    bool IsUndefined() const;
};

/// Up is positive: the top lies at or above the bottom once the rectangle is normalized.
struct ORV_API VTIntRect {
    int left = 0;
    int bottom = 0;
    int right = 0;
    int top = 0;

    VTIntRect() = default;
    VTIntRect(int iLeft, int iBottom, int iRight, int iTop);

    bool operator==(const VTIntRect&) const = default;
    void Set(int iLeft, int iBottom, int iRight, int iTop);
    void SetZero();

    /// Orders left and right, and bottom and top.
    void Normalize();

    int Width() const;
    int Height() const;
    VTIntSize2D Size() const;

    /// All four fields are 0.
    bool IsZero() const;
    /// The width or the height is 0.
    bool IsEmpty() const;
};

/// Up is positive: the top lies at or above the bottom once the rectangle is normalized.
struct ORV_API VTFloatRect {
    float left = 0;
    float bottom = 0;
    float right = 0;
    float top = 0;

    VTFloatRect() = default;
    VTFloatRect(float fLeft, float fBottom, float fRight, float fTop);

    /// Exact.
    bool operator==(const VTFloatRect&) const = default;
    void Set(float fLeft, float fBottom, float fRight, float fTop);
    void SetZero();

    void Offset(float fOffsetX, float fOffsetY);
    /// Moves each side out, so that the width grows by twice `fDeltaX` and the height by twice `fDeltaY`.
    void Inflate(float fDeltaX, float fDeltaY);
    /// Orders left and right, and bottom and top.
    void Normalize();

    float Width() const;
    float Height() const;
    VTFloatSize2D Size() const;

    /// Becomes what both rectangles cover. When that has no width, left and right become 0, and when it has no height,
    /// bottom and top; either way the result is false and the rectangle has changed.
    bool Intersect(const VTFloatRect& other);

    /// Half open: the left and the bottom edge belong to the rectangle, the right and the top edge do not.
    bool PointInRect(float fX, float fY) const;

    /// All four fields become VT_UNDEFINED_FLOAT.
    void SetUndefined();
    /// Any field is above VT_UNDEFINED_FLOAT_LIMIT. Coordinates and sizes test for the exact value instead.
    bool IsUndefined() const;
};
