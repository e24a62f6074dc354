#include "OrvApp/Views.h"

#include "OrvApp/Selection.h"
#include "OrvVisualization/View.h"
#include "Tests/OrvApp/CatalogueTest.h"

using namespace orv;
using orv::app::Selection;
using orv::app::Views;
using orvtest::failed;
using orvtest::FailedAssert;

namespace {

const std::string inside = "OrvApp/Views_p";
const FailedAssert badIndex = failed(inside, "index < count()");
const FailedAssert noCurrent = failed(inside, "m_currentIndex != orv::UNDEFINED_SIZE_T");

class ViewsTest : public orvtest::CatalogueTest {
protected:
    void addMany(size_t count) {
        for (size_t i = 0; i < count; ++i) {
            views->add();
        }
    }

    /// The one way to have views and no current one.
    void setNoneCurrent() {
        views->setCurrent(nullptr);
        asserts.take();
    }

    Views* views = Views::instance();
};

TEST_F(ViewsTest, InstanceIsOneObject) {
    EXPECT_EQ(Views::instance(), views);
    EXPECT_EQ(views->refCount(), 1);
}

TEST_F(ViewsTest, StartsEmpty) {
    EXPECT_EQ(views->count(), 0u);
    EXPECT_EQ(views->currentIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(views->current(), nullptr);
    EXPECT_EQ(views->currentViewSelection(), nullptr);
    EXPECT_TRUE(views->removeCurrent());
    views->currentViewInfo();
    EXPECT_EQ(views->indexOf(nullptr), UNDEFINED_SIZE_T);
}

TEST_F(ViewsTest, AddMakesAViewThatIsCurrent) {
    PtrRef<vis::View> first = views->add();
    EXPECT_EQ(views->count(), 1u);
    EXPECT_EQ(views->currentIndex(), 0u);
    PtrRef<vis::View> second = views->add();
    EXPECT_EQ(views->count(), 2u);
    EXPECT_EQ(views->currentIndex(), 1u);
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(views->get(0), first.get());
    EXPECT_EQ(views->get(1), second.get());
    EXPECT_EQ(views->current(), second.get());
}

TEST_F(ViewsTest, AViewIsHeldByTheListAndByTheCaller) {
    PtrRef<vis::View> view = views->add();
    EXPECT_EQ(view->refCount(), 2);
    EXPECT_EQ(view->modelCount(), 0u);
}

TEST_F(ViewsTest, AddDoesNotLookAtModels) {
    PtrRef<ug::UnstructGridModel> model = orvtest::modelOn(nullptr, -1);
    app::Models::instance()->add(model.get());
    views->add();
    EXPECT_EQ(views->current()->modelCount(), 0u);
}

TEST_F(ViewsTest, EachViewHasItsOwnEmptySelection) {
    addMany(2);
    Selection* first = views->viewSelection(0ul);
    Selection* second = views->viewSelection(1);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->refCount(), 1);
    EXPECT_EQ(first->count(), 0u);
    EXPECT_EQ(views->viewSelection(views->get(0)), first);
    EXPECT_EQ(views->viewSelection(views->get(1)), second);
}

TEST_F(ViewsTest, CurrentFollowsTheIndex) {
    addMany(3);
    views->setCurrentIndex(1);
    EXPECT_EQ(views->currentIndex(), 1u);
    EXPECT_EQ(views->current(), views->get(1));
    EXPECT_EQ(views->currentViewSelection(), views->viewSelection(1));
    views->currentViewInfo();
}

TEST_F(ViewsTest, SetCurrentFindsTheView) {
    addMany(3);
    views->setCurrent(views->get(1));
    EXPECT_EQ(views->currentIndex(), 1u);
    EXPECT_EQ(views->indexOf(views->get(2)), 2u);
}

TEST_F(ViewsTest, SetCurrentOfWhatIsNotListedFailsTwiceAndSelectsNothing) {
    PtrRef<vis::View> stranger = new vis::View;
    addMany(2);
    for (vis::View* view : {stranger.get(), static_cast<vis::View*>(nullptr)}) {
        views->setCurrentIndex(1);
        views->setCurrent(view);
        EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{failed(inside, "index != orv::UNDEFINED_SIZE_T",
                                                                    "View not found : cannot set it as current."),
                                                             badIndex}));
        EXPECT_EQ(views->currentIndex(), UNDEFINED_SIZE_T);
    }
}

TEST_F(ViewsTest, WithoutACurrentViewAskingForItIsAMistake) {
    addMany(2);
    setNoneCurrent();
    EXPECT_EQ(views->current(), nullptr);
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
    EXPECT_EQ(views->currentViewSelection(), nullptr);
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{noCurrent});
    views->currentViewInfo();
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{noCurrent, badIndex}));
    EXPECT_TRUE(views->removeCurrent());
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
    EXPECT_EQ(views->count(), 2u);
}

TEST_F(ViewsTest, SetCurrentIndexStoresAlsoWhatIsOutOfRange) {
    addMany(2);
    for (size_t index : {size_t(2), UNDEFINED_SIZE_T}) {
        views->setCurrentIndex(index);
        EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
        EXPECT_EQ(views->currentIndex(), index);
    }
}

TEST_F(ViewsTest, SetCurrentIndexRefusesToSelectNothingAlsoWithoutViews) {
    views->setCurrentIndex(UNDEFINED_SIZE_T);
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
}

TEST_F(ViewsTest, IndexesMustBeBelowTheCount) {
    addMany(2);
    EXPECT_EQ(views->get(2), nullptr);
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
    views->viewInfo(2);
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
    EXPECT_EQ(views->viewSelection(2), nullptr);
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
    EXPECT_TRUE(views->remove(2));
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
    EXPECT_EQ(views->count(), 2u);
}

TEST_F(ViewsTest, InfoIsThereForEachView) {
    addMany(2);
    const app::ViewInfo byIndex = views->viewInfo(1);
    const app::ViewInfo byView = views->viewInfo(views->get(0));
    static_cast<void>(byIndex);
    static_cast<void>(byView);
    EXPECT_TRUE(std::is_empty_v<app::ViewInfo>);
}

TEST_F(ViewsTest, AnAlienViewHasNeitherRecordNorSelection) {
    addMany(1);
    PtrRef<vis::View> stranger = new vis::View;
    EXPECT_EQ(views->indexOf(stranger.get()), UNDEFINED_SIZE_T);
    views->viewInfo(stranger.get());
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
    EXPECT_EQ(views->viewSelection(stranger.get()), nullptr);
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
}

TEST_F(ViewsTest, RemovingAnAlienViewAssertsTwice) {
    addMany(2);
    PtrRef<vis::View> stranger = new vis::View;
    EXPECT_TRUE(views->remove(stranger.get()));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{failed("OrvApp/Views", "index != orv::UNDEFINED_SIZE_T",
                                                                "View not found : cannot remove it"),
                                                         badIndex}));
    EXPECT_EQ(views->count(), 2u);
    EXPECT_EQ(views->currentIndex(), 1u);
}

TEST_F(ViewsTest, RemovingTheOnlyViewLeavesNoneCurrent) {
    views->add();
    EXPECT_TRUE(views->remove(0ul));
    EXPECT_EQ(views->count(), 0u);
    EXPECT_EQ(views->currentIndex(), UNDEFINED_SIZE_T);
    views->add();
    EXPECT_EQ(views->currentIndex(), 0u);
}

TEST_F(ViewsTest, RemovingTheOnlyViewWhenNoneIsCurrentAsserts) {
    views->add();
    setNoneCurrent();
    EXPECT_TRUE(views->remove(0ul));
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{failed(inside, "m_currentIndex == 0")});
    EXPECT_EQ(views->count(), 0u);
    EXPECT_EQ(views->currentIndex(), UNDEFINED_SIZE_T);
}

TEST_F(ViewsTest, RemovingMovesLaterViewsAndTheirSelectionsUp) {
    addMany(4);
    vis::View* kept[] = {views->get(0), views->get(2), views->get(3)};
    Selection* selections[] = {views->viewSelection(0ul), views->viewSelection(2), views->viewSelection(3)};
    EXPECT_TRUE(views->remove(views->get(1)));
    ASSERT_EQ(views->count(), 3u);
    for (size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(views->get(i), kept[i]);
        EXPECT_EQ(views->viewSelection(i), selections[i]);
    }
}

TEST_F(ViewsTest, RemovingClampsTheCurrentIndexAndNoMore) {
    struct Case {
        size_t count;
        size_t current;
        size_t removed;
        size_t currentAfter;
    };
    // With A, B, C and C current: without A still C, now at 1. With A, B, C, D and C current: without A it is D, at 2.
    for (const Case& c : {Case{3, 2, 0, 1}, Case{4, 2, 0, 2}, Case{3, 1, 1, 1}, Case{3, 2, 2, 1}, Case{3, 0, 0, 0},
                          Case{3, 0, 2, 0}, Case{3, UNDEFINED_SIZE_T, 0, 1}}) {
        addMany(c.count);
        views->setCurrentIndex(c.current);
        asserts.take();
        EXPECT_TRUE(views->remove(c.removed));
        EXPECT_EQ(views->currentIndex(), c.currentAfter)
            << c.count << " views, " << c.current << " current, without " << c.removed;
        while (views->count() > 0) {
            views->removeCurrent();
        }
    }
}

TEST_F(ViewsTest, RemoveCurrentRemovesTheCurrentOne) {
    addMany(3);
    vis::View* first = views->get(0);
    vis::View* last = views->get(2);
    views->setCurrentIndex(1);
    EXPECT_TRUE(views->removeCurrent());
    ASSERT_EQ(views->count(), 2u);
    EXPECT_EQ(views->get(0), first);
    EXPECT_EQ(views->current(), last);
}

TEST_F(ViewsTest, AViewThatTheCallerHoldsOutlivesItsPlaceInTheList) {
    PtrRef<vis::View> view = views->add();
    PtrRef<Selection> selection = views->currentViewSelection();
    EXPECT_EQ(selection->refCount(), 2);
    views->remove(view.get());
    EXPECT_EQ(view->refCount(), 1);
    EXPECT_EQ(selection->refCount(), 1);
    EXPECT_EQ(views->indexOf(view.get()), UNDEFINED_SIZE_T);
}

} // namespace
