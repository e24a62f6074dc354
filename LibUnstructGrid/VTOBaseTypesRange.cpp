#include "LibUnstructGrid/VTOBaseTypesRange.h"

#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOMath.h"

#include <utility>

namespace {

// The bounds of an invalid range of doubles are the widened floats too.
constexpr float INVALID_MIN = 1e30f;
constexpr float INVALID_MAX = -1e30f;

template <typename Value>
bool clamp(Value* pValue, Value min, Value max) {
    if (*pValue < min) {
        *pValue = min;
        return true;
    }
    if (*pValue > max) {
        *pValue = max;
        return true;
    }
    return false;
}

template <typename Range>
bool extend(Range* pRange, decltype(Range::min) min, decltype(Range::max) max) {
    const Range before = *pRange;
    if (min < pRange->min) {
        pRange->min = min;
    }
    if (max > pRange->max) {
        pRange->max = max;
    }
    return pRange->min != before.min || pRange->max != before.max;
}

} // namespace

VTIntRange::VTIntRange() {
    SetInvalid();
}

VTIntRange::VTIntRange(int iMin, int iMax) : min(iMin), max(iMax) {}

void VTIntRange::Set(int iMin, int iMax) {
    min = iMin;
    max = iMax;
}

void VTIntRange::SetZero() {
    Set(0, 0);
}

void VTIntRange::Get(int* piMin, int* piMax) const {
    if (piMin) {
        *piMin = min;
    }
    if (piMax) {
        *piMax = max;
    }
}

int VTIntRange::GetRange() const {
    return static_cast<int>(static_cast<unsigned int>(max) - static_cast<unsigned int>(min));
}

void VTIntRange::SetInvalid() {
    Set(VT_UNDEFINED_INT, -VT_UNDEFINED_INT);
}

bool VTIntRange::IsValid(bool bCheckUndefined) const {
    return !(bCheckUndefined && IsUndefined()) && max >= min;
}

bool VTIntRange::IsInvalid(bool bCheckUndefined) const {
    return !IsValid(bCheckUndefined);
}

bool VTIntRange::IsUndefined() const {
    return min == VT_UNDEFINED_INT || max == VT_UNDEFINED_INT;
}

bool VTIntRange::ValueInRange(int iValue) const {
    return VTValueInRange(iValue, min, max);
}

bool VTIntRange::ClampValue(int* piValue) const {
    RVF_ASSERT(piValue);
    RVF_ASSERT(max >= min);
    return clamp(piValue, min, max);
}

bool VTIntRange::Update(int iValue, bool bIgnoreUndefined) {
    return Update(VTIntRange(iValue, iValue), bIgnoreUndefined);
}

bool VTIntRange::Update(const VTIntRange& other, bool bIgnoreUndefined) {
    return !(bIgnoreUndefined && other.IsUndefined()) && extend(this, other.min, other.max);
}

VTFloatRange::VTFloatRange() {
    SetInvalid();
}

VTFloatRange::VTFloatRange(float fMin, float fMax) : min(fMin), max(fMax) {}

void VTFloatRange::Set(float fMin, float fMax) {
    min = fMin;
    max = fMax;
}

void VTFloatRange::SetZero() {
    Set(0, 0);
}

void VTFloatRange::Get(float* pfMin, float* pfMax) const {
    if (pfMin) {
        *pfMin = min;
    }
    if (pfMax) {
        *pfMax = max;
    }
}

float VTFloatRange::GetRange() const {
    return max - min;
}

void VTFloatRange::SetInvalid() {
    Set(INVALID_MIN, INVALID_MAX);
}

bool VTFloatRange::IsValid(bool bCheckUndefined) const {
    if (bCheckUndefined && (VTIsUndefined(min) || VTIsUndefined(max))) {
        return false;
    }
    return max >= min;
}

bool VTFloatRange::IsInvalid(bool bCheckUndefined) const {
    return !IsValid(bCheckUndefined);
}

bool VTFloatRange::IsUndefined() const {
    return VTIsUndefined(min) || VTIsUndefined(max) || *this == VTFloatRange();
}

bool VTFloatRange::ValueInRange(float fValue) const {
    if (fValue < min) {
        return VTFeq(fValue, min, VT_FLOAT_TOLERANCE);
    }
    return !(fValue > max) || VTFeq(fValue, max, VT_FLOAT_TOLERANCE);
}

bool VTFloatRange::ClampValue(float* pfValue) const {
    RVF_ASSERT(pfValue);
    RVF_ASSERT(max >= min);
    return clamp(pfValue, min, max);
}

float VTFloatRange::GetRelativeValue(float fValue) const {
    return VTFeqZero(GetRange()) ? VT_UNDEFINED_FLOAT : (fValue - min) / GetRange();
}

bool VTFloatRange::Update(float fValue, bool bIgnoreUndefined) {
    return Update(VTFloatRange(fValue, fValue), bIgnoreUndefined);
}

bool VTFloatRange::Update(const VTFloatRange& other, bool bIgnoreUndefined) {
    if (bIgnoreUndefined && (other.min > VT_UNDEFINED_FLOAT_LIMIT || other.max > VT_UNDEFINED_FLOAT_LIMIT)) {
        return false;
    }
    return extend(this, other.min, other.max);
}

VTRealRange::VTRealRange() {
    SetInvalid();
}

VTRealRange::VTRealRange(double fMin, double fMax) : min(fMin), max(fMax) {}

void VTRealRange::Set(double fMin, double fMax) {
    min = fMin;
    max = fMax;
}

void VTRealRange::SetZero() {
    Set(0, 0);
}

void VTRealRange::Get(double* pfMin, double* pfMax) const {
    if (pfMin) {
        *pfMin = min;
    }
    if (pfMax) {
        *pfMax = max;
    }
}

double VTRealRange::GetRange() const {
    return max - min;
}

void VTRealRange::SetInvalid() {
    Set(INVALID_MIN, INVALID_MAX);
}

bool VTRealRange::IsValid(bool bCheckUndefined) const {
    if (bCheckUndefined && (VTIsUndefined(min) || VTIsUndefined(max))) {
        return false;
    }
    return max >= min;
}

bool VTRealRange::IsInvalid(bool bCheckUndefined) const {
    return !IsValid(bCheckUndefined);
}

bool VTRealRange::IsUndefined() const {
    return VTIsUndefined(min) || VTIsUndefined(max) || *this == VTRealRange();
}

bool VTRealRange::ValueInRange(double fValue) const {
    if (fValue < min) {
        return VTFeq(fValue, min, VT_DOUBLE_TOLERANCE);
    }
    return !(fValue > max) || VTFeq(fValue, max, VT_DOUBLE_TOLERANCE);
}

bool VTRealRange::ClampValue(double* pfValue) const {
    RVF_ASSERT(pfValue);
    RVF_ASSERT(max >= min);
    return clamp(pfValue, min, max);
}

double VTRealRange::GetRelativeValue(double fValue) const {
    return VTFeqZero(GetRange()) ? VT_UNDEFINED_DOUBLE : (fValue - min) / GetRange();
}

bool VTRealRange::Update(double fValue, bool bIgnoreUndefined) {
    return Update(VTRealRange(fValue, fValue), bIgnoreUndefined);
}

bool VTRealRange::Update(const VTRealRange& other, bool bIgnoreUndefined) {
    if (bIgnoreUndefined && (other.min > VT_UNDEFINED_DOUBLE_LIMIT || other.max > VT_UNDEFINED_DOUBLE_LIMIT)) {
        return false;
    }
    return extend(this, other.min, other.max);
}

void VTFloatMinMax::Reset() {
    *this = VTFloatMinMax();
}

void VTFloatMinMax::SetMin(float fMin, int iIndex) {
    range.min = fMin;
    iMinIndex = iIndex;
}

void VTFloatMinMax::SetMax(float fMax, int iIndex) {
    range.max = fMax;
    iMaxIndex = iIndex;
}

bool VTFloatMinMax::Update(float fValue, int iIndex, bool bIgnoreUndefined) {
    VTFloatMinMax other;
    other.SetMin(fValue, iIndex);
    other.SetMax(fValue, iIndex);
    return Update(other, bIgnoreUndefined);
}

bool VTFloatMinMax::Update(const VTFloatMinMax& other, bool bIgnoreUndefined) {
    const VTFloatMinMax before = *this;
    if (!range.Update(other.range, bIgnoreUndefined)) {
        return false;
    }
    if (range.min != before.range.min) {
        iMinIndex = other.iMinIndex;
    }
    if (range.max != before.range.max) {
        iMaxIndex = other.iMaxIndex;
    }
    return true;
}

void VTRealMinMax::Reset() {
    *this = VTRealMinMax();
}

void VTRealMinMax::SetMin(double fMin, int iIndex) {
    range.min = fMin;
    iMinIndex = iIndex;
}

void VTRealMinMax::SetMax(double fMax, int iIndex) {
    range.max = fMax;
    iMaxIndex = iIndex;
}

bool VTRealMinMax::Update(double fValue, int iIndex, bool bIgnoreUndefined) {
    VTRealMinMax other;
    other.SetMin(fValue, iIndex);
    other.SetMax(fValue, iIndex);
    return Update(other, bIgnoreUndefined);
}

bool VTRealMinMax::Update(const VTRealMinMax& other, bool bIgnoreUndefined) {
    const VTRealMinMax before = *this;
    if (!range.Update(other.range, bIgnoreUndefined)) {
        return false;
    }
    if (range.min != before.range.min) {
        iMinIndex = other.iMinIndex;
    }
    if (range.max != before.range.max) {
        iMaxIndex = other.iMaxIndex;
    }
    return true;
}

bool VTValueInRange(int iValue, int iMin, int iMax) {
    return iValue >= iMin && iValue <= iMax;
}

bool VTValueInRange(unsigned int uiValue, unsigned int uiMin, unsigned int uiMax) {
    return uiValue >= uiMin && uiValue <= uiMax;
}

bool VTValueInRange(float fValue, float fMin, float fMax) {
    return fValue >= fMin && fValue <= fMax;
}

bool VTClampValue(int* piValue, int iMin, int iMax) {
    RVF_ASSERT(iMax >= iMin);
    return clamp(piValue, iMin, iMax);
}

bool VTClampValue(unsigned int* puiValue, unsigned int uiMin, unsigned int uiMax) {
    RVF_ASSERT(uiMax >= uiMin);
    return clamp(puiValue, uiMin, uiMax);
}

bool VTClampValue(float* pfValue, float fMin, float fMax) {
    RVF_ASSERT(fMax >= fMin);
    return clamp(pfValue, fMin, fMax);
}

bool VTClampValue(double* pdValue, double dMin, double dMax) {
    RVF_ASSERT(dMax >= dMin);
    return clamp(pdValue, dMin, dMax);
}

void VTSwapValues(int* piValueA, int* piValueB) {
    std::swap(*piValueA, *piValueB);
}

void VTSwapValues(unsigned int* puiValueA, unsigned int* puiValueB) {
    std::swap(*puiValueA, *puiValueB);
}

void VTSwapValues(float* pfValueA, float* pfValueB) {
    std::swap(*pfValueA, *pfValueB);
}

void VTSwapPointers(void** ppPointerA, void** ppPointerB) {
    std::swap(*ppPointerA, *ppPointerB);
}
