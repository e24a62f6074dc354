#pragma once

#include "LibCore/rvfExport.h"

/// A closed range of ints. All tests are exact.
struct ORV_API VTIntRange {
    int min;
    int max;

    /// Invalid, see SetInvalid().
    VTIntRange();
    VTIntRange(int iMin, int iMax);

    bool operator==(const VTIntRange&) const = default;
    void Set(int iMin, int iMax);
    void SetZero();
    /// Either pointer may be null.
    void Get(int* piMin, int* piMax) const;
    /// Maximum less minimum, which wraps around when it does not fit an int.
    int GetRange() const;

    /// Minimum VT_UNDEFINED_INT and maximum -VT_UNDEFINED_INT: the first Update() makes both bounds its value.
    void SetInvalid();
    /// The maximum must be at or above the minimum and, with the flag, neither bound may be VT_UNDEFINED_INT.
    bool IsValid(bool bCheckUndefined) const;
    bool IsInvalid(bool bCheckUndefined) const;
    /// A bound is VT_UNDEFINED_INT; so is the minimum of the invalid range.
    bool IsUndefined() const;

    bool ValueInRange(int iValue) const;
    /// Moves the value to the bound that it overshoots and returns whether it did. Asserts the pointer and a maximum
    /// that is at or above the minimum.
    bool ClampValue(int* piValue) const;

    /// Extends the range to the value and returns whether that changed it. With the flag VT_UNDEFINED_INT is ignored.
    bool Update(int iValue, bool bIgnoreUndefined);
    /// Extends the range to both bounds of the other and returns whether that changed it. With the flag a range with a
    /// bound of VT_UNDEFINED_INT is ignored. An invalid range changes nothing.
    bool Update(const VTIntRange& other, bool bIgnoreUndefined);
};

/// A closed range of floats.
struct ORV_API VTFloatRange {
    float min;
    float max;

    /// Invalid, see SetInvalid().
    VTFloatRange();
    VTFloatRange(float fMin, float fMax);

    /// Exact.
    bool operator==(const VTFloatRange&) const = default;
    void Set(float fMin, float fMax);
    void SetZero();
    /// Either pointer may be null.
    void Get(float* pfMin, float* pfMax) const;
    /// Maximum less minimum.
    float GetRange() const;

    /// Minimum 1e30 and maximum -1e30: the first Update() makes both bounds its value, unless the value lies beyond
    /// these, which then stay.
    void SetInvalid();
    /// The maximum must be at or above the minimum and, with the flag, both bounds below VT_UNDEFINED_FLOAT_LIMIT.
    bool IsValid(bool bCheckUndefined) const;
    bool IsInvalid(bool bCheckUndefined) const;
    /// A bound is not below VT_UNDEFINED_FLOAT_LIMIT, or the bounds are exactly those of SetInvalid().
    bool IsUndefined() const;

    /// Inside, or equal by VTFeq() with VT_FLOAT_TOLERANCE to the bound it overshoots.
    bool ValueInRange(float fValue) const;
    /// Moves the value to the bound that it overshoots and returns whether it did. Asserts the pointer and a maximum
    /// that is at or above the minimum.
    bool ClampValue(float* pfValue) const;
    /// Where the value lies: 0 at the minimum, 1 at the maximum. VT_UNDEFINED_FLOAT for a range of VTFeqZero() extent.
    float GetRelativeValue(float fValue) const;

    /// Extends the range to the value and returns whether that changed it. With the flag a value above
    /// VT_UNDEFINED_FLOAT_LIMIT is ignored.
    bool Update(float fValue, bool bIgnoreUndefined);
    /// Extends the range to both bounds of the other and returns whether that changed it. With the flag a range with a
    /// bound above VT_UNDEFINED_FLOAT_LIMIT is ignored. An invalid range changes nothing.
    bool Update(const VTFloatRange& other, bool bIgnoreUndefined);
};

/// A closed range of doubles.
struct ORV_API VTRealRange {
    double min;
    double max;

    /// Invalid, see SetInvalid().
    VTRealRange();
    VTRealRange(double fMin, double fMax);

    /// Exact.
    bool operator==(const VTRealRange&) const = default;
    void Set(double fMin, double fMax);
    void SetZero();
    /// Either pointer may be null.
    void Get(double* pfMin, double* pfMax) const;
    /// Maximum less minimum.
    double GetRange() const;

    /// Minimum 1e30 and maximum -1e30, which are the floats widened, 1.0000000150474662e30: the first Update() makes
    /// both bounds its value, unless the value lies beyond these, which then stay.
    void SetInvalid();
    /// The maximum must be at or above the minimum and, with the flag, both bounds below VT_UNDEFINED_DOUBLE_LIMIT.
    bool IsValid(bool bCheckUndefined) const;
    bool IsInvalid(bool bCheckUndefined) const;
    /// A bound is not below VT_UNDEFINED_DOUBLE_LIMIT, or the bounds are exactly those of SetInvalid().
    bool IsUndefined() const;

    /// Inside, or equal by VTFeq() with VT_DOUBLE_TOLERANCE to the bound it overshoots.
    bool ValueInRange(double fValue) const;
    /// Moves the value to the bound that it overshoots and returns whether it did. Asserts the pointer and a maximum
    /// that is at or above the minimum.
    bool ClampValue(double* pfValue) const;
    /// Where the value lies: 0 at the minimum, 1 at the maximum. VT_UNDEFINED_DOUBLE for a range of VTFeqZero()
    /// extent.
    double GetRelativeValue(double fValue) const;

    /// Extends the range to the value and returns whether that changed it. With the flag a value above
    /// VT_UNDEFINED_DOUBLE_LIMIT is ignored.
    bool Update(double fValue, bool bIgnoreUndefined);
    /// Extends the range to both bounds of the other and returns whether that changed it. With the flag a range with a
    /// bound above VT_UNDEFINED_DOUBLE_LIMIT is ignored. An invalid range changes nothing.
    bool Update(const VTRealRange& other, bool bIgnoreUndefined);
};

/// A range of floats and the indexes of the items it comes from. Of equal items the first one seen is kept.
struct ORV_API VTFloatMinMax {
    VTFloatRange range;
    int iMinIndex = -1;
    int iMaxIndex = -1;

    bool operator==(const VTFloatMinMax&) const = default;
    /// The invalid range, and -1 for both indexes.
    void Reset();
    void SetMin(float fMin, int iIndex);
    void SetMax(float fMax, int iIndex);

    /// Like VTFloatRange::Update(); a bound that moves takes over the index.
    bool Update(float fValue, int iIndex, bool bIgnoreUndefined);
    bool Update(const VTFloatMinMax& other, bool bIgnoreUndefined);
};

/// A range of doubles and the indexes of the items it comes from. Of equal items the first one seen is kept.
struct ORV_API VTRealMinMax {
    VTRealRange range;
    int iMinIndex = -1;
    int iMaxIndex = -1;

    bool operator==(const VTRealMinMax&) const = default;
    /// The invalid range, and -1 for both indexes.
    void Reset();
    void SetMin(double fMin, int iIndex);
    void SetMax(double fMax, int iIndex);

    /// Like VTRealRange::Update(); a bound that moves takes over the index.
    bool Update(double fValue, int iIndex, bool bIgnoreUndefined);
    bool Update(const VTRealMinMax& other, bool bIgnoreUndefined);
};

/// Both bounds belong to the range.
ORV_API bool VTValueInRange(int iValue, int iMin, int iMax);
ORV_API bool VTValueInRange(unsigned int uiValue, unsigned int uiMin, unsigned int uiMax);
ORV_API bool VTValueInRange(float fValue, float fMin, float fMax);

/// Moves the value to the bound that it overshoots and returns whether it did. Asserts a maximum that is at or above
/// the minimum.
ORV_API bool VTClampValue(int* piValue, int iMin, int iMax);
ORV_API bool VTClampValue(unsigned int* puiValue, unsigned int uiMin, unsigned int uiMax);
ORV_API bool VTClampValue(float* pfValue, float fMin, float fMax);
ORV_API bool VTClampValue(double* pdValue, double dMin, double dMax);

ORV_API void VTSwapValues(int* piValueA, int* piValueB);
ORV_API void VTSwapValues(unsigned int* puiValueA, unsigned int* puiValueB);
ORV_API void VTSwapValues(float* pfValueA, float* pfValueB);
ORV_API void VTSwapPointers(void** ppPointerA, void** ppPointerB);
