#include "OrvApp/ViewSelections_p.h"

#include "OrvApp/Models.h"
#include "OrvApp/Selection.h"
#include "OrvApp/Views.h"
#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

namespace orv::app {
namespace {

/// Null for a view that is not in the catalogue.
Selection* selectionOf(const vis::View& view) {
    const Views* views = Views::instance();
    const bool isKnown = views->indexOf(&view) != UNDEFINED_SIZE_T;
    return isKnown ? views->viewSelection(const_cast<vis::View*>(&view)) : nullptr;
}

/// Makes a selection answer for, and take, several items as long as it lives.
class AllItems {
public:
    explicit AllItems(Selection* selection) : m_selection(selection), m_before(selection->isMultiSelectionEnabled()) {
        m_selection->enableMultiSelection(true);
    }

    ~AllItems() {
        m_selection->enableMultiSelection(m_before);
    }

    AllItems(const AllItems&) = delete;
    AllItems& operator=(const AllItems&) = delete;

private:
    Selection* m_selection;
    bool m_before;
};

Selection::ItemType itemTypeOf(int number) {
    const bool isOne = number >= Selection::UNDEFINED && number <= Selection::COORDINATE;
    return isOne ? static_cast<Selection::ItemType>(number) : Selection::UNDEFINED;
}

bool hasStateOf(const ug::DataSource* source, const ug::HitItem& item) {
    return source && source->stateIndex(item.stateId()) != UNDEFINED_SIZE_T;
}

} // namespace

ViewSelections::ViewSelections() {
    setInstance(this);
}

ViewSelections::~ViewSelections() {
    setInstance(nullptr);
}

ug::SituationSelection ViewSelections::selectionIn(const vis::View& view) const {
    ug::SituationSelection kept;
    if (Selection* selection = selectionOf(view)) {
        kept.itemType = selection->itemType();
        kept.isMultiSelectionEnabled = selection->isMultiSelectionEnabled();
        const AllItems all(selection);
        for (std::size_t i = 0; i < selection->count(); ++i) {
            kept.items.push_back(selection->get(i));
        }
    }
    return kept;
}

void ViewSelections::select(const ug::SituationSelection& selection, vis::View* view) {
    Selection* selected = selectionOf(*view);
    if (!selected) {
        return;
    }
    selected->removeAll();
    selected->setItemType(itemTypeOf(selection.itemType));
    selected->enableMultiSelection(selection.isMultiSelectionEnabled);
    const ug::UnstructGridModel* model = Models::instance()->current();
    const AllItems all(selected);
    for (const ug::HitItem& item : selection.items) {
        if (model && hasStateOf(model->dataSource(), item)) {
            selected->add(item);
        }
    }
}

} // namespace orv::app
