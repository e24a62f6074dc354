#include "LibUnstructGrid/VTOBaseTypes2D.h"

#include "LibUnstructGrid/VTOMathConstants.h"

#include <algorithm>
#include <utility>

VTIntCoord2D::VTIntCoord2D(int iX, int iY) : x(iX), y(iY) {}

void VTIntCoord2D::Set(int iX, int iY) {
    *this = VTIntCoord2D(iX, iY);
}

bool VTIntCoord2D::IsZero() const {
    return x == 0 && y == 0;
}

void VTIntCoord2D::SetUndefined() {
    Set(VT_UNDEFINED_INT, VT_UNDEFINED_INT);
}

bool VTIntCoord2D::IsUndefined() const {
    return x == VT_UNDEFINED_INT || y == VT_UNDEFINED_INT;
}

VTIntSize2D::VTIntSize2D(int iWidth, int iHeight) : w(iWidth), h(iHeight) {}

void VTIntSize2D::Set(int iWidth, int iHeight) {
    *this = VTIntSize2D(iWidth, iHeight);
}

bool VTIntSize2D::IsZero() const {
    return w == 0 && h == 0;
}

void VTIntSize2D::SetUndefined() {
    Set(VT_UNDEFINED_INT, VT_UNDEFINED_INT);
}

bool VTIntSize2D::IsUndefined() const {
    return w == VT_UNDEFINED_INT || h == VT_UNDEFINED_INT;
}

void VTIntSize2D::ScaleFitInside(const VTIntSize2D& bounds) {
    if (w == 0 || h == 0 || bounds.IsZero()) {
        return;
    }
    const long long iWidthAtFullHeight = static_cast<long long>(bounds.h) * w / h;
    if (iWidthAtFullHeight > bounds.w) {
        Set(bounds.w, static_cast<int>(static_cast<long long>(bounds.w) * h / w));
    } else {
        Set(static_cast<int>(iWidthAtFullHeight), bounds.h);
    }
}

VTFloatCoord2D::VTFloatCoord2D(float fX, float fY) : x(fX), y(fY) {}

void VTFloatCoord2D::Set(float fX, float fY) {
    *this = VTFloatCoord2D(fX, fY);
}

void VTFloatCoord2D::SetUndefined() {
    Set(VT_UNDEFINED_FLOAT, VT_UNDEFINED_FLOAT);
}

bool VTFloatCoord2D::IsUndefined() const {
    return x == VT_UNDEFINED_FLOAT || y == VT_UNDEFINED_FLOAT;
}

VTFloatSize2D::VTFloatSize2D(float fWidth, float fHeight) : w(fWidth), h(fHeight) {}

void VTFloatSize2D::Set(float fWidth, float fHeight) {
    *this = VTFloatSize2D(fWidth, fHeight);
}

void VTFloatSize2D::SetUndefined() {
    Set(VT_UNDEFINED_FLOAT, VT_UNDEFINED_FLOAT);
}

bool VTFloatSize2D::IsUndefined() const {
    return w == VT_UNDEFINED_FLOAT || h == VT_UNDEFINED_FLOAT;
}

VTIntRect::VTIntRect(int iLeft, int iBottom, int iRight, int iTop)
    : left(iLeft), bottom(iBottom), right(iRight), top(iTop) {}

void VTIntRect::Set(int iLeft, int iBottom, int iRight, int iTop) {
    *this = VTIntRect(iLeft, iBottom, iRight, iTop);
}

void VTIntRect::SetZero() {
    *this = VTIntRect();
}

void VTIntRect::Normalize() {
    if (left > right) {
        std::swap(left, right);
    }
    if (bottom > top) {
        std::swap(bottom, top);
    }
}

int VTIntRect::Width() const {
    return right - left;
}

int VTIntRect::Height() const {
    return top - bottom;
}

VTIntSize2D VTIntRect::Size() const {
    return {Width(), Height()};
}

bool VTIntRect::IsZero() const {
    return *this == VTIntRect();
}

bool VTIntRect::IsEmpty() const {
    return Width() == 0 || Height() == 0;
}

VTFloatRect::VTFloatRect(float fLeft, float fBottom, float fRight, float fTop)
    : left(fLeft), bottom(fBottom), right(fRight), top(fTop) {}

void VTFloatRect::Set(float fLeft, float fBottom, float fRight, float fTop) {
    *this = VTFloatRect(fLeft, fBottom, fRight, fTop);
}

void VTFloatRect::SetZero() {
    *this = VTFloatRect();
}

void VTFloatRect::Offset(float fOffsetX, float fOffsetY) {
    left += fOffsetX;
    right += fOffsetX;
    bottom += fOffsetY;
    top += fOffsetY;
}

void VTFloatRect::Inflate(float fDeltaX, float fDeltaY) {
    left -= fDeltaX;
    right += fDeltaX;
    bottom -= fDeltaY;
    top += fDeltaY;
}

void VTFloatRect::Normalize() {
    if (left > right) {
        std::swap(left, right);
    }
    if (bottom > top) {
        std::swap(bottom, top);
    }
}

float VTFloatRect::Width() const {
    return right - left;
}

float VTFloatRect::Height() const {
    return top - bottom;
}

VTFloatSize2D VTFloatRect::Size() const {
    return {Width(), Height()};
}

bool VTFloatRect::Intersect(const VTFloatRect& other) {
    Set(std::max(left, other.left), std::max(bottom, other.bottom), std::min(right, other.right),
        std::min(top, other.top));
    const bool bNoWidth = Width() <= 0;
    const bool bNoHeight = Height() <= 0;
    if (bNoWidth) {
        left = right = 0;
    }
    if (bNoHeight) {
        bottom = top = 0;
    }
    return !bNoWidth && !bNoHeight;
}

bool VTFloatRect::PointInRect(float fX, float fY) const {
    return fX >= left && fX < right && fY >= bottom && fY < top;
}

void VTFloatRect::SetUndefined() {
    Set(VT_UNDEFINED_FLOAT, VT_UNDEFINED_FLOAT, VT_UNDEFINED_FLOAT, VT_UNDEFINED_FLOAT);
}

bool VTFloatRect::IsUndefined() const {
    return left > VT_UNDEFINED_FLOAT_LIMIT || bottom > VT_UNDEFINED_FLOAT_LIMIT || right > VT_UNDEFINED_FLOAT_LIMIT ||
           top > VT_UNDEFINED_FLOAT_LIMIT;
}
