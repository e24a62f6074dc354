#pragma once

#include "OrvUnstructGrid/SelectionKeeper.h"

namespace orv::app {

/// Lets situations keep the selections of the Views catalogue. Known to them from its birth to its end.
class ViewSelections : public ug::SelectionKeeper {
public:
    ViewSelections();
    ~ViewSelections() override;

    ug::SituationSelection selectionIn(const vis::View& view) const override;

    /// Items on states that the current model does not have are left out.
    void select(const ug::SituationSelection& selection, vis::View* view) override;
};

} // namespace orv::app
