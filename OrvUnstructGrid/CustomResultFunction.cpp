#include "OrvUnstructGrid/CustomResultFunction.h"

#include "OrvCore/Defines.h"

#include <algorithm>
#include <utility>

namespace orv::ug {

CustomResultFunction::CustomResultFunction() = default;

CustomResultFunction::~CustomResultFunction() = default;

void CustomResultFunction::computeItems(const InputItems& inputs, std::size_t count, double* output) {
    if (m_itemsForm && m_itemsForm(inputs, count, output)) {
        return;
    }
    std::vector<const double*> items = inputs.values;
    for (std::size_t i = 0; i < count; ++i, output += m_outputDimension) {
        if (!computeItem(items, output)) {
            std::fill_n(output, m_outputDimension, UNDEFINED_DOUBLE);
        }
        for (std::size_t k = 0; k < items.size(); ++k) {
            items[k] += inputs.dimensions[k];
        }
    }
}

std::size_t CustomResultFunction::outputDimension() const {
    return m_outputDimension;
}

void CustomResultFunction::setOutputDimension(std::size_t dimension) {
    m_outputDimension = dimension;
}

void CustomResultFunction::setItemsForm(ItemsForm form) {
    m_itemsForm = std::move(form);
}

} // namespace orv::ug
