#include "OrvUnstructGrid/CustomResultFunction.h"

namespace orv::ug {

CustomResultFunction::CustomResultFunction() = default;

CustomResultFunction::~CustomResultFunction() = default;

std::size_t CustomResultFunction::outputDimension() const {
    return m_outputDimension;
}

void CustomResultFunction::setOutputDimension(std::size_t dimension) {
    m_outputDimension = dimension;
}

} // namespace orv::ug
