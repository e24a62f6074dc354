#include "OrvUnstructGrid/SelectionKeeper.h"

#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/Situation.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "OrvVisualization/View.h"
#include "Tests/Support/MemoryModels.h"

#include <gtest/gtest.h>

using namespace orv;
using namespace orv::ug;

namespace {

/// Knows one view, and what was selected in it.
class OneViewKeeper : public SelectionKeeper {
public:
    explicit OneViewKeeper(vis::View* view) : m_view(view) {
        setInstance(this);
    }

    ~OneViewKeeper() override {
        setInstance(nullptr);
    }

    SituationSelection selectionIn(const vis::View& view) const override {
        return &view == m_view ? selected : SituationSelection();
    }

    void select(const SituationSelection& selection, vis::View* view) override {
        if (view == m_view) {
            selected = selection;
        }
    }

    SituationSelection selected;

private:
    vis::View* m_view;
};

HitItem itemOn(std::size_t element) {
    HitItem item;
    item.setStateId(1);
    item.setElementIndex(element);
    return item;
}

class SelectionKeeperTest : public testing::Test {
protected:
    SelectionKeeperTest() {
        model->setDataSource(memory.source.get());
        model->modelSpec().setStateId(1);
    }

    orvtest::MemoryModel memory;
    PtrRef<UnstructGridModel> model{new UnstructGridModel};
    PtrRef<vis::View> view{new vis::View};
    PtrRef<vis::View> other{new vis::View};
    PtrRef<Situation> situation{new Situation};
};

TEST_F(SelectionKeeperTest, ThereIsNoneUntilOneIsSet) {
    EXPECT_EQ(SelectionKeeper::instance(), nullptr);
    {
        const OneViewKeeper keeper(view.get());
        EXPECT_EQ(SelectionKeeper::instance(), &keeper);
    }
    EXPECT_EQ(SelectionKeeper::instance(), nullptr);
}

TEST_F(SelectionKeeperTest, CaptureAsksForTheSelectionOfItsView) {
    OneViewKeeper keeper(view.get());
    keeper.selected = {{itemOn(3), itemOn(5)}, 1, true};
    situation->capture(*model, *view);
    const SituationSelection captured = situation->selection();
    ASSERT_EQ(captured.items.size(), 2u);
    EXPECT_EQ(captured.items[0].elementIndex(), 3u);
    EXPECT_EQ(captured.items[1].elementIndex(), 5u);
    EXPECT_EQ(captured.itemType, 1);
    EXPECT_TRUE(captured.isMultiSelectionEnabled);
    situation->capture(*model, *other);
    EXPECT_TRUE(situation->selection().items.empty());
}

TEST_F(SelectionKeeperTest, ApplyingSelectsAgain) {
    OneViewKeeper keeper(view.get());
    keeper.selected = {{itemOn(3)}, 1, false};
    situation->capture(*model, *view);
    keeper.selected = {{itemOn(7)}, 2, true};
    Error error;
    EXPECT_TRUE(situation->applyTo(model.get(), other.get(), &error)) << error.message();
    EXPECT_EQ(keeper.selected.items[0].elementIndex(), 7u);
    EXPECT_TRUE(situation->applyTo(model.get(), view.get(), &error)) << error.message();
    ASSERT_EQ(keeper.selected.items.size(), 1u);
    EXPECT_EQ(keeper.selected.items[0].elementIndex(), 3u);
    EXPECT_EQ(keeper.selected.itemType, 1);
    EXPECT_FALSE(keeper.selected.isMultiSelectionEnabled);
}

TEST_F(SelectionKeeperTest, WithoutOneTheSelectionIsTheCallersMatter) {
    situation->capture(*model, *view);
    situation->setSelection({{itemOn(3)}, 1, false});
    EXPECT_TRUE(situation->applyTo(model.get(), view.get(), nullptr));
    EXPECT_EQ(situation->selection().items.size(), 1u);
}

} // namespace
