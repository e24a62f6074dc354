#include "OrvApp/Plots.h"

#include "OrvPlot2d/OverlayPlot.h"
#include "OrvVisualization/Font.h"
#include "Tests/OrvApp/CatalogueTest.h"

using namespace orv;
using orv::app::Plots;
using orv::plt::OverlayPlot;
using orvtest::failed;
using orvtest::FailedAssert;

namespace {

const FailedAssert badIndex = failed("OrvApp/Plots_p", "index < count()");

class PlotsTest : public orvtest::CatalogueTest {
protected:
    Plots* plots = Plots::instance();
};

TEST_F(PlotsTest, InstanceIsOneObject) {
    EXPECT_EQ(Plots::instance(), plots);
    EXPECT_EQ(plots->refCount(), 1);
}

TEST_F(PlotsTest, StartsEmpty) {
    EXPECT_EQ(plots->count(), 0u);
    plots->removeAll();
    EXPECT_EQ(plots->count(), 0u);
    EXPECT_EQ(plots->index(nullptr), UNDEFINED_SIZE_T);
}

TEST_F(PlotsTest, AddAppendsAPlotOfItsOwn) {
    OverlayPlot* first = plots->add();
    OverlayPlot* second = plots->add();
    EXPECT_EQ(plots->count(), 2u);
    EXPECT_NE(first, second);
    EXPECT_EQ(plots->get(0), first);
    EXPECT_EQ(plots->get(1), second);
    EXPECT_EQ(first->refCount(), 1);
}

TEST_F(PlotsTest, ANewPlotIsBareAndInTheNormalFont) {
    OverlayPlot* plot = plots->add();
    EXPECT_EQ(plot->title(), Str());
    EXPECT_EQ(plot->axisSettings()->xAxis().title, Str());
    EXPECT_EQ(plot->axisSettings()->yAxis().title, Str());
    EXPECT_EQ(plot->curveCount(), 0u);
    EXPECT_EQ(plot->font(), vis::Font::createNormalFont().get());
}

TEST_F(PlotsTest, AGivenPlotIsAppendedAndHeld) {
    PtrRef<OverlayPlot> plot = new OverlayPlot(nullptr);
    plots->add();
    plots->add(plot.get());
    EXPECT_EQ(plots->count(), 2u);
    EXPECT_EQ(plots->get(1), plot.get());
    EXPECT_EQ(plot->refCount(), 2);
}

TEST_F(PlotsTest, OnePlotMayStandAtSeveralPlaces) {
    PtrRef<OverlayPlot> plot = new OverlayPlot(nullptr);
    plots->add(plot.get());
    plots->add(plot.get());
    EXPECT_EQ(plots->count(), 2u);
    EXPECT_EQ(plots->index(plot.get()), 0u);
    plots->remove(0);
    EXPECT_EQ(plots->count(), 1u);
    EXPECT_EQ(plots->index(plot.get()), 0u);
}

TEST_F(PlotsTest, NullMayBeListed) {
    plots->add();
    plots->add(nullptr);
    EXPECT_EQ(plots->count(), 2u);
    EXPECT_EQ(plots->get(1), nullptr);
    EXPECT_EQ(plots->index(nullptr), 1u);
}

TEST_F(PlotsTest, APlotThatIsNotListedHasNoIndex) {
    PtrRef<OverlayPlot> stranger = new OverlayPlot(nullptr);
    plots->add();
    OverlayPlot* last = plots->add();
    EXPECT_EQ(plots->index(stranger.get()), UNDEFINED_SIZE_T);
    EXPECT_EQ(plots->index(nullptr), UNDEFINED_SIZE_T);
    EXPECT_EQ(plots->index(last), 1u);
}

TEST_F(PlotsTest, RemovingMovesLaterPlotsUp) {
    OverlayPlot* first = plots->add();
    plots->add();
    OverlayPlot* third = plots->add();
    EXPECT_TRUE(plots->remove(1));
    EXPECT_EQ(plots->count(), 2u);
    EXPECT_EQ(plots->index(first), 0u);
    EXPECT_EQ(plots->index(third), 1u);
}

TEST_F(PlotsTest, RemoveAllEmptiesTheList) {
    plots->add();
    plots->add();
    plots->removeAll();
    EXPECT_EQ(plots->count(), 0u);
}

TEST_F(PlotsTest, APlotThatTheCallerHoldsOutlivesItsPlaceInTheList) {
    PtrRef<OverlayPlot> removed = plots->add();
    PtrRef<OverlayPlot> swept = plots->add();
    plots->remove(0);
    plots->removeAll();
    EXPECT_EQ(removed->refCount(), 1);
    EXPECT_EQ(swept->refCount(), 1);
    removed->setTitle("still here");
    EXPECT_EQ(removed->title(), "still here");
}

TEST_F(PlotsTest, IndexesMustBeBelowTheCount) {
    plots->add();
    EXPECT_EQ(plots->get(1), nullptr);
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
    EXPECT_TRUE(plots->remove(1));
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
    EXPECT_EQ(plots->count(), 1u);
    plots->removeAll();
    EXPECT_TRUE(plots->remove(0));
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
}

/// There is none, unless somebody derives one.
class SecondPlots : public Plots {};

TEST_F(PlotsTest, AnotherObjectIsAnotherDoorToTheList) {
    PtrRef<SecondPlots> second = new SecondPlots;
    OverlayPlot* plot = second->add();
    second->add(nullptr);
    EXPECT_EQ(plots->count(), 2u);
    EXPECT_EQ(plots->get(0), plot);
    EXPECT_EQ(second->count(), 2u);
    EXPECT_EQ(second->get(0), plot);
    EXPECT_EQ(second->index(plot), 0u);
    EXPECT_TRUE(second->remove(1));
    EXPECT_EQ(plots->count(), 1u);
    second->removeAll();
    EXPECT_EQ(plots->count(), 0u);
}

} // namespace
