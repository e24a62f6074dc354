#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/SituationSelection.h"

namespace orv::vis {
class View;
}

namespace orv::ug {

/// Who knows what is selected in which view: an application's catalogue, which makes itself known here so that a
/// Situation can ask it.
class ORV_API SelectionKeeper {
public:
    SelectionKeeper() = default;
    virtual ~SelectionKeeper();

    SelectionKeeper(const SelectionKeeper&) = delete;
    SelectionKeeper& operator=(const SelectionKeeper&) = delete;

    /// Without items for a view that it does not know.
    virtual SituationSelection selectionIn(const vis::View& view) const = 0;

    /// Selects these items and no others. Nothing happens in a view that it does not know.
    virtual void select(const SituationSelection& selection, vis::View* view) = 0;

    /// Null until one is set.
    static SelectionKeeper* instance();
    /// @param keeper not owned; null for none
    static void setInstance(SelectionKeeper* keeper);
};

} // namespace orv::ug
