#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/RefCountedObject.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace orv::ug {

/// What computes one item of a custom result from one item of each of its arguments.
///
/// computeItem() is all that a function has to offer. One that can do many items in a row faster than one after the
/// other offers a form for that too, which must give the same numbers: see setItemsForm().
class ORV_API CustomResultFunction : public RefCountedObject {
public:
    /// Items in a row, with one entry for each argument.
    struct InputItems {
        std::vector<const double*> values;     ///< The first double of the first item.
        std::vector<unsigned long> dimensions; ///< The doubles in one item.
    };

    CustomResultFunction();
    ~CustomResultFunction() override;

    /// @param inputItems for each argument, the first double of its item
    /// @param outputItem outputDimension() doubles to write
    /// @return false when the item cannot be computed, such as for another number of inputs than the expected one; the
    ///         item is undefined then, whatever has been written
    virtual bool computeItem(const std::vector<const double*>& inputItems, double* outputItem) = 0;

    /// Computes `count` items in a row, from inputs that hold as many. Items that computeItem() refuses become
    /// UNDEFINED_DOUBLE in all outputDimension() components.
    void computeItems(const InputItems& inputs, std::size_t count, double* output);

    /// The doubles in one output item: 0 until the generator that runs the function has told it.
    std::size_t outputDimension() const;

    /// For the generator: the doubles per item of the result that the function is about to serve.
    void setOutputDimension(std::size_t dimension);

    /// Does what computeItems() says, or answers false, and then computeItem() is called for each item. It has to check
    /// what it relies on: the number of inputs, their dimensions and outputDimension().
    using ItemsForm = std::function<bool(const InputItems& inputs, std::size_t count, double* output)>;

protected:
    /// For the constructors of functions that offer such a form.
    void setItemsForm(ItemsForm form);

private:
    std::size_t m_outputDimension = 0;
    ItemsForm m_itemsForm;
};

} // namespace orv::ug
