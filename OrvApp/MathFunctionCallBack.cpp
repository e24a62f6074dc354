#include "OrvApp/MathFunctionCallBack.h"

namespace orv::app {

MathFunctionCallBack::MathFunctionCallBack(const Str& functionName) : m_functionName(functionName) {}

MathFunctionCallBack::~MathFunctionCallBack() = default;

const Str& MathFunctionCallBack::functionName() const {
    return m_functionName;
}

} // namespace orv::app
