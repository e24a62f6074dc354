#include "OrvApp/ViewSelections_p.h"

#include "OrvApp/Selection.h"
#include "OrvApp/Situations.h"
#include "OrvUnstructGrid/Situation.h"
#include "OrvVisualization/View.h"
#include "Tests/OrvApp/CatalogueTest.h"
#include "Tests/Support/MemoryModels.h"

using namespace orv;
using namespace orv::app;

namespace {

ug::HitItem itemOn(int stateId, size_t elementIndex) {
    ug::HitItem item;
    item.setStateId(stateId);
    item.setGeometryIndex(0);
    item.setElementIndex(elementIndex);
    return item;
}

/// With a model of the states 1, 2 and 3, and a view.
class ViewSelectionsTest : public orvtest::CatalogueTest {
protected:
    ViewSelectionsTest() {
        Models::instance()->add(orvtest::modelOn(memory.source.get(), 1).get());
        view = Views::instance()->add();
        selection = Views::instance()->viewSelection(view.get());
    }

    std::vector<size_t> selectedElements() const {
        std::vector<size_t> elements;
        for (const ug::HitItem& item : keeper()->selectionIn(*view).items) {
            elements.push_back(item.elementIndex());
        }
        return elements;
    }

    static ug::SelectionKeeper* keeper() {
        return ug::SelectionKeeper::instance();
    }

    orvtest::MemoryModel memory;
    PtrRef<vis::View> view;
    Selection* selection = nullptr;
};

TEST_F(ViewSelectionsTest, TellsWhatIsSelectedInAViewOfTheCatalogue) {
    selection->setItemType(Selection::ELEMENT);
    selection->enableMultiSelection(true);
    selection->add(itemOn(1, 4));
    selection->add(itemOn(2, 6));
    const ug::SituationSelection told = keeper()->selectionIn(*view);
    ASSERT_EQ(told.items.size(), 2u);
    EXPECT_EQ(told.items[0].elementIndex(), 4u);
    EXPECT_EQ(told.items[1].elementIndex(), 6u);
    EXPECT_EQ(told.itemType, Selection::ELEMENT);
    EXPECT_TRUE(told.isMultiSelectionEnabled);
    EXPECT_TRUE(selection->isMultiSelectionEnabled());
}

// Switching multi-selection off removes nothing, and position 1 may not be asked for then.
TEST_F(ViewSelectionsTest, TellsAllItemsOfASelectionForOne) {
    selection->enableMultiSelection(true);
    selection->add(itemOn(1, 4));
    selection->add(itemOn(1, 6));
    selection->enableMultiSelection(false);
    EXPECT_EQ(selectedElements(), (std::vector<size_t>{4, 6}));
    EXPECT_FALSE(keeper()->selectionIn(*view).isMultiSelectionEnabled);
    EXPECT_FALSE(selection->isMultiSelectionEnabled());
}

TEST_F(ViewSelectionsTest, SelectsInPlaceOfWhatWasSelected) {
    selection->add(itemOn(1, 9));
    keeper()->select({{itemOn(1, 4), itemOn(3, 6)}, Selection::NODE, false}, view.get());
    EXPECT_EQ(selectedElements(), (std::vector<size_t>{4, 6}));
    EXPECT_EQ(selection->itemType(), Selection::NODE);
    EXPECT_FALSE(selection->isMultiSelectionEnabled());
    keeper()->select({{}, Selection::NODE, true}, view.get());
    EXPECT_EQ(selection->count(), 0u);
    EXPECT_TRUE(selection->isMultiSelectionEnabled());
}

TEST_F(ViewSelectionsTest, LeavesOutWhatTheCurrentModelDoesNotHave) {
    keeper()->select({{itemOn(1, 4), itemOn(8, 5), itemOn(-1, 6), itemOn(2, 7)}, 1, true}, view.get());
    EXPECT_EQ(selectedElements(), (std::vector<size_t>{4, 7}));
    Models::instance()->closeAll();
    keeper()->select({{itemOn(1, 4)}, 1, true}, view.get());
    EXPECT_EQ(selection->count(), 0u);
}

TEST_F(ViewSelectionsTest, AnUnknownItemTypeIsNone) {
    for (const int unknown : {-1, 6}) {
        keeper()->select({{}, unknown, false}, view.get());
        EXPECT_EQ(selection->itemType(), Selection::UNDEFINED) << unknown;
    }
    keeper()->select({{}, 5, false}, view.get());
    EXPECT_EQ(selection->itemType(), Selection::COORDINATE);
}

TEST_F(ViewSelectionsTest, AViewOutsideOfTheCatalogueHasNoSelection) {
    selection->add(itemOn(1, 4));
    const PtrRef<vis::View> stranger = new vis::View;
    EXPECT_TRUE(keeper()->selectionIn(*stranger).items.empty());
    keeper()->select({{itemOn(1, 5)}, 0, false}, stranger.get());
    EXPECT_EQ(selectedElements(), std::vector<size_t>{4});
}

TEST_F(ViewSelectionsTest, ASituationBringsTheSelectionBack) {
    selection->setItemType(Selection::ELEMENT);
    selection->add(itemOn(1, 4));
    const PtrRef<ug::Situation> situation = Situations::instance()->captureCurrent();
    selection->setItemType(Selection::NODE);
    selection->add(itemOn(1, 5));
    EXPECT_TRUE(situation->applyTo(Models::instance()->current(), view.get(), nullptr));
    EXPECT_EQ(selectedElements(), std::vector<size_t>{4});
    EXPECT_EQ(selection->itemType(), Selection::ELEMENT);
}

} // namespace
