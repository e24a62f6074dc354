#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"

namespace orv::app {

/// A function of the application's own, for createMathFunctionResult(): derive, and map one number to one number.
///
/// The result that is made with it holds a plain pointer and never deletes it: the object must live as long as any
/// result that was made with it can still be computed, which is at each load of it or of a result that rests on it.
class ORV_API MathFunctionCallBack {
public:
    /// Called for each double of each item, in the order of items and components, on the thread that loads the result.
    /// Undefined values (UNDEFINED_DOUBLE) do not come here and stay undefined; NaN and infinite ones do come.
    ///
    /// An exception, of whatever type, makes this one number undefined and is told to nobody; the others are computed.
    virtual double evaluate(double value) = 0;

    /// @param functionName what the result's name begins with: "sqrt" gives "sqrt(Pressure)"
    explicit MathFunctionCallBack(const Str& functionName);
    virtual ~MathFunctionCallBack();

    const Str& functionName() const;

private:
    Str m_functionName;
};

} // namespace orv::app
