#include "OrvApp/Selection.h"

#include "OrvVisualization/View.h"
#include "Tests/OrvApp/CatalogueTest.h"
#include "Tests/Support/MemoryModels.h"

using namespace orv;
using orv::app::Models;
using orv::app::Parts;
using orv::app::Selection;
using orv::app::Views;
using orvtest::failed;
using orvtest::FailedAssert;

namespace {

using Failures = std::vector<FailedAssert>;

const std::string inside = "OrvApp/Selection_p";

const FailedAssert noView = failed(inside, "view != __null", "Cannot add node to selection, there is no current view.");
const FailedAssert noModel =
    failed(inside, "model != __null", "Cannot add node to selection, there is no current model.");

const FailedAssert noSource = failed(inside, "source");
const FailedAssert noStateId = failed(inside, "hitItem.stateId() != -1");
const FailedAssert noStateIndex = failed(inside, "stateIndex != orv::UNDEFINED_SIZE_T");
const FailedAssert noState = failed(inside, "state");
/// What adding a hit on nothing ends with.
const Failures missed = {noStateId, noStateIndex, noState};

const FailedAssert badIndex = failed(inside, "index < count()");
const FailedAssert notTheFirst = failed(inside, "m_multiSelect || index == 0");
const FailedAssert badIdIndex = failed(inside, "index < m_initialGeometryId.size()");

/// An operation that adds what is named, called with the first of everything, and what it says.
struct AddOperation {
    std::string name;
    Selection::ItemType type;
    bool needsViewAndModel;
    FailedAssert noPart;
    FailedAssert wrongType;
    size_t (*add)(Selection* selection);
};

const FailedAssert notNodes = failed(inside, "m_itemType == Selection::NODE",
                                     "Cannot add node to selection because it's current type is not nodes.");

const AddOperation addOperations[] = {
    {"addNode", Selection::NODE, true,
     failed(inside, "part != __null", "Cannot add node to selection, there is no current part."), notNodes,
     [](Selection* selection) { return selection->addNode(0); }},
    {"addElement", Selection::ELEMENT, true,
     failed(inside, "part != __null", "Cannot add element to selection, there is no current part."),
     failed(inside, "m_itemType == Selection::ELEMENT",
            "Cannot add element to selection because it's current type is not elements."),
     [](Selection* selection) { return selection->addElement(0); }},
    {"addElementNode", Selection::ELEMENT_NODE, false,
     failed(inside, "part != __null", "Cannot add element node to selection, there is no current part."),
     failed(inside, "m_itemType == Selection::ELEMENT_NODE",
            "Cannot add element node to selection because it's current type is not element nodes."),
     [](Selection* selection) { return selection->addElementNode(0, 0); }},
    {"addElementSurface", Selection::ELEMENT_SURFACE, true,
     failed(inside, "part != __null", "Cannot add element surface to selection, there is no current part."),
     failed(inside, "m_itemType == Selection::ELEMENT_SURFACE",
            "Cannot add element surface to selection because it's current type is not element surfaces."),
     [](Selection* selection) { return selection->addElementSurface(0, 0); }},
    {"addCoordinate", Selection::COORDINATE, true,
     failed(inside, "part != __null", "Cannot add coordinate to selection, there is no current part."),
     failed(inside, "m_itemType == Selection::COORDINATE",
            "Cannot add coordinate to selection because it's current type is not coordinates."),
     [](Selection* selection) {
         return selection->addCoordinate({0.25, 0.25, 0});
     }},
};

/// An item on a state and geometry, told from others by its element.
ug::HitItem itemOn(int stateId, size_t geometryIndex, size_t elementIndex) {
    ug::HitItem item;
    item.setStateId(stateId);
    item.setGeometryIndex(geometryIndex);
    item.setElementIndex(elementIndex);
    return item;
}

/// A selection by itself: nothing is current.
class LoneSelectionTest : public orvtest::CatalogueTest {
protected:
    PtrRef<Selection> selection = new Selection;
};

TEST_F(LoneSelectionTest, StartsEmptyForOneItemOfNoType) {
    EXPECT_EQ(selection->refCount(), 1);
    EXPECT_EQ(selection->count(), 0u);
    EXPECT_EQ(selection->itemType(), Selection::UNDEFINED);
    EXPECT_FALSE(selection->isMultiSelectionEnabled());
}

TEST_F(LoneSelectionTest, ItemTypesHaveNumbersThatStay) {
    EXPECT_EQ(Selection::UNDEFINED, 0);
    EXPECT_EQ(Selection::ELEMENT, 1);
    EXPECT_EQ(Selection::NODE, 2);
    EXPECT_EQ(Selection::ELEMENT_NODE, 3);
    EXPECT_EQ(Selection::ELEMENT_SURFACE, 4);
    EXPECT_EQ(Selection::COORDINATE, 5);
}

TEST_F(LoneSelectionTest, MultiSelectionIsSwitchedOnAndOff) {
    selection->enableMultiSelection(true);
    EXPECT_TRUE(selection->isMultiSelectionEnabled());
    EXPECT_EQ(selection->itemType(), Selection::UNDEFINED);
    selection->enableMultiSelection(false);
    EXPECT_FALSE(selection->isMultiSelectionEnabled());
}

TEST_F(LoneSelectionTest, WithoutAnythingCurrentAllThatIsMissingIsTold) {
    for (const AddOperation& operation : addOperations) {
        SCOPED_TRACE(operation.name);
        Failures expected = {operation.noPart, operation.wrongType};
        if (operation.needsViewAndModel) {
            expected.insert(expected.begin(), {noView, noModel});
        }
        EXPECT_EQ(operation.add(selection.get()), 0u);
        EXPECT_EQ(asserts.take(), expected);
    }
}

TEST_F(LoneSelectionTest, WithoutASourceNothingIsAdded) {
    for (bool withModel : {false, true}) {
        if (withModel) {
            Models::instance()->add(orvtest::modelOn(nullptr, -1).get());
        }
        EXPECT_EQ(selection->add(itemOn(1, 0, 0)), 0u);
        EXPECT_EQ(asserts.take(), Failures{noSource});
        EXPECT_EQ(selection->add(ug::HitItem()), 0u);
        EXPECT_EQ(asserts.take(), (Failures{noSource, noStateId}));
    }
}

TEST_F(LoneSelectionTest, AnEmptySelectionHasNoItem) {
    EXPECT_EQ(selection->get(0).stateId(), -1);
    EXPECT_EQ(asserts.take(), Failures{badIndex});
    selection->remove(0);
    EXPECT_EQ(asserts.take(), Failures{badIndex});
    EXPECT_EQ(selection->initialGeometryId(0), -1);
    EXPECT_EQ(asserts.take(), Failures{badIdIndex});
    selection->set(0, ug::HitItem());
    EXPECT_EQ(asserts.take(), (Failures{badIndex, noSource, failed(inside, "item.stateId() != -1")}));
    EXPECT_EQ(selection->count(), 0u);
}

/// A model at state 2 and a view, with the view's selection. Items are added as they are.
class SelectionTest : public orvtest::CatalogueTest {
protected:
    SelectionTest() : model(orvtest::modelOn(memory.source.get(), 2)) {
        Models::instance()->add(model.get());
        view = Views::instance()->add();
        selection = Views::instance()->currentViewSelection();
    }

    int geometryId(size_t index) {
        return memory.state(2)->geometry(index)->id();
    }

    /// Three items, on the elements 10, 11, 12, the second on the geometry at 1.
    void addThree() {
        selection->enableMultiSelection(true);
        selection->add(itemOn(2, 0, 10));
        selection->add(itemOn(2, 1, 11));
        selection->add(itemOn(2, 0, 12));
    }

    std::vector<size_t> elements() {
        const bool multiSelect = selection->isMultiSelectionEnabled();
        selection->enableMultiSelection(true);
        std::vector<size_t> elements;
        for (size_t i = 0; i < selection->count(); ++i) {
            elements.push_back(selection->get(i).elementIndex());
        }
        selection->enableMultiSelection(multiSelect);
        return elements;
    }

    /// Of all items, up to the failing one behind the last.
    std::vector<int> geometryIds() {
        std::vector<int> ids;
        for (size_t i = 0; i < selection->count(); ++i) {
            ids.push_back(selection->initialGeometryId(i));
        }
        EXPECT_EQ(asserts.take(), Failures());
        selection->initialGeometryId(selection->count());
        EXPECT_EQ(asserts.take(), Failures{badIdIndex});
        return ids;
    }

    orvtest::MemoryModel memory;
    PtrRef<ug::UnstructGridModel> model;
    PtrRef<vis::View> view;
    PtrRef<Selection> selection;
};

TEST_F(SelectionTest, ASingleItemIsReplaced) {
    EXPECT_EQ(selection->add(itemOn(2, 0, 10)), 1u);
    EXPECT_EQ(selection->add(itemOn(1, 1, 11)), 1u);
    EXPECT_EQ(elements(), (std::vector<size_t>{11}));
    EXPECT_EQ(geometryIds(), (std::vector<int>{geometryId(1)}));
    EXPECT_EQ(selection->get(0).stateId(), 1);
}

TEST_F(SelectionTest, SeveralItemsAreAppendedAlsoTwice) {
    selection->enableMultiSelection(true);
    EXPECT_EQ(selection->add(itemOn(2, 0, 10)), 1u);
    EXPECT_EQ(selection->add(itemOn(2, 1, 11)), 2u);
    EXPECT_EQ(selection->add(itemOn(2, 0, 10)), 3u);
    EXPECT_EQ(elements(), (std::vector<size_t>{10, 11, 10}));
    ASSERT_NE(geometryId(0), geometryId(1));
    EXPECT_EQ(geometryIds(), (std::vector<int>{geometryId(0), geometryId(1), geometryId(0)}));
}

TEST_F(SelectionTest, AnyTypeTakesReadyMadeItems) {
    for (int type = Selection::UNDEFINED; type <= Selection::COORDINATE; ++type) {
        selection->setItemType(static_cast<Selection::ItemType>(type));
        EXPECT_EQ(selection->add(itemOn(2, 0, 10)), 1u);
    }
}

TEST_F(SelectionTest, AHitOnNothingIsNotAddedButReplaces) {
    selection->add(itemOn(2, 0, 10));
    EXPECT_EQ(selection->add(ug::HitItem()), 0u);
    EXPECT_EQ(asserts.take(), missed);
    EXPECT_EQ(selection->count(), 0u);
    EXPECT_EQ(geometryIds(), std::vector<int>());
}

TEST_F(SelectionTest, AHitOnNothingLeavesSeveralItems) {
    addThree();
    EXPECT_EQ(selection->add(ug::HitItem()), 3u);
    EXPECT_EQ(asserts.take(), missed);
    EXPECT_EQ(geometryIds(), (std::vector<int>{geometryId(0), geometryId(1), geometryId(0)}));
}

TEST_F(SelectionTest, TheStateMustBeOneOfTheSource) {
    EXPECT_EQ(selection->add(itemOn(9, 0, 10)), 0u);
    EXPECT_EQ(asserts.take(), (Failures{noStateIndex, noState}));
}

TEST_F(SelectionTest, AnItemOnNoGeometryHasNoGeometryId) {
    EXPECT_EQ(selection->add(itemOn(2, 2, 10)), 1u);
    EXPECT_EQ(asserts.take(), Failures{failed("OrvUnstructGrid/DataState", "index < geometryCount()")});
    EXPECT_EQ(geometryIds(), std::vector<int>{-1});
}

TEST_F(SelectionTest, TheTypeItHasKeepsTheItems) {
    selection->setItemType(Selection::NODE);
    addThree();
    selection->setItemType(Selection::NODE);
    EXPECT_EQ(selection->count(), 3u);
}

TEST_F(SelectionTest, AnotherTypeEmptiesTheSelection) {
    addThree();
    selection->setItemType(Selection::ELEMENT);
    EXPECT_EQ(selection->itemType(), Selection::ELEMENT);
    EXPECT_EQ(selection->count(), 0u);
    EXPECT_EQ(geometryIds(), std::vector<int>());
    EXPECT_TRUE(selection->isMultiSelectionEnabled());
}

TEST_F(SelectionTest, RemoveAllKeepsTheSettings) {
    selection->setItemType(Selection::ELEMENT);
    addThree();
    selection->removeAll();
    EXPECT_EQ(selection->count(), 0u);
    EXPECT_EQ(geometryIds(), std::vector<int>());
    EXPECT_EQ(selection->itemType(), Selection::ELEMENT);
    EXPECT_TRUE(selection->isMultiSelectionEnabled());
}

TEST_F(SelectionTest, SwitchingMultiSelectionOffKeepsAllButOnlyTheFirstMayBeAddressed) {
    addThree();
    selection->enableMultiSelection(false);
    EXPECT_EQ(selection->count(), 3u);
    EXPECT_EQ(selection->get(0).elementIndex(), 10u);
    EXPECT_EQ(selection->get(1).elementIndex(), 11u);
    EXPECT_EQ(asserts.take(), Failures{notTheFirst});
    selection->set(1, itemOn(2, 0, 13));
    EXPECT_EQ(asserts.take(), Failures{notTheFirst});
    EXPECT_EQ(elements(), (std::vector<size_t>{10, 13, 12}));
    EXPECT_EQ(geometryIds(), (std::vector<int>{geometryId(0), geometryId(0), geometryId(0)}));
    selection->remove(1);
    EXPECT_EQ(asserts.take(), Failures{notTheFirst});
    EXPECT_EQ(elements(), (std::vector<size_t>{10, 12}));
}

TEST_F(SelectionTest, IndexesMustBeBelowTheCount) {
    addThree();
    EXPECT_EQ(selection->get(3).stateId(), -1);
    EXPECT_EQ(asserts.take(), Failures{badIndex});
    selection->set(3, itemOn(2, 0, 13));
    EXPECT_EQ(asserts.take(), Failures{badIndex});
    selection->remove(3);
    EXPECT_EQ(asserts.take(), Failures{badIndex});
    selection->enableMultiSelection(false);
    selection->get(3);
    EXPECT_EQ(asserts.take(), (Failures{badIndex, notTheFirst}));
    selection->set(3, itemOn(2, 0, 13));
    EXPECT_EQ(asserts.take(), (Failures{badIndex, notTheFirst}));
    selection->remove(3);
    EXPECT_EQ(asserts.take(), (Failures{badIndex, notTheFirst}));
    EXPECT_EQ(elements(), (std::vector<size_t>{10, 11, 12}));
}

TEST_F(SelectionTest, GetGivesACopy) {
    selection->add(itemOn(2, 0, 10));
    ug::HitItem copy = selection->get(0);
    copy.setElementIndex(99);
    EXPECT_EQ(selection->get(0).elementIndex(), 10u);
}

TEST_F(SelectionTest, SetReplacesItemAndGeometryId) {
    addThree();
    selection->set(1, itemOn(1, 0, 20));
    selection->set(2, itemOn(3, 1, 21));
    EXPECT_EQ(elements(), (std::vector<size_t>{10, 20, 21}));
    EXPECT_EQ(geometryIds(), (std::vector<int>{geometryId(0), geometryId(0), geometryId(1)}));
}

TEST_F(SelectionTest, SetReplacesTheItemBeforeItLooksForItsState) {
    addThree();
    selection->set(1, itemOn(9, 0, 20));
    EXPECT_EQ(asserts.take(), (Failures{noStateIndex, noState}));
    selection->set(2, ug::HitItem());
    EXPECT_EQ(asserts.take(), (Failures{failed(inside, "item.stateId() != -1"), noStateIndex, noState}));
    EXPECT_EQ(elements(), (std::vector<size_t>{10, 20, UNDEFINED_SIZE_T}));
    EXPECT_EQ(geometryIds(), (std::vector<int>{geometryId(0), geometryId(1), geometryId(0)}));

    Models::instance()->closeAll();
    selection->set(0, itemOn(2, 1, 30));
    EXPECT_EQ(asserts.take(), Failures{noSource});
    EXPECT_EQ(selection->get(0).elementIndex(), 30u);
}

TEST_F(SelectionTest, LaterItemsMoveUpWithTheirGeometryIds) {
    addThree();
    selection->remove(0);
    EXPECT_EQ(elements(), (std::vector<size_t>{11, 12}));
    EXPECT_EQ(geometryIds(), (std::vector<int>{geometryId(1), geometryId(0)}));
}

TEST_F(SelectionTest, RemovingTheOnlyItemEmptiesIt) {
    selection->add(itemOn(2, 0, 10));
    selection->remove(0);
    EXPECT_EQ(selection->count(), 0u);
    EXPECT_EQ(geometryIds(), std::vector<int>());
}

TEST_F(SelectionTest, ItemsStayWhateverBecomesCurrent) {
    addThree();
    const std::vector<int> ids = geometryIds();
    model->modelSpec().setStateId(3);
    Parts::instance()->setCurrentIndex(4);
    Models::instance()->add(orvtest::modelOn(nullptr, -1).get());
    Models::instance()->closeAll();
    Views::instance()->add();
    EXPECT_EQ(elements(), (std::vector<size_t>{10, 11, 12}));
    EXPECT_EQ(geometryIds(), ids);
}

/// Adds what is named, with a camera to look from.
class SelectionRayTest : public SelectionTest {
protected:
    /// The cubes of the parts, see MemoryModel: the base at x 0 to 1, the column at 10 to 12, the roof at 20 to 21 and
    /// the nut, on the geometry at 1, at 10 to 13; y and z are 0 to 1. Where parts coincide, geometry 0 is hit.
    enum FlatIndex { BASE = 0, COLUMN = 1, ROOF = 2 };

    void prepare(Selection::ItemType type, FlatIndex part, const Vec3d& eye) {
        selection->setItemType(type);
        Parts::instance()->setCurrentIndex(part);
        lookFrom(view.get(), eye);
    }

    static void lookFrom(vis::View* view, const Vec3d& eye) {
        ASSERT_TRUE(view->camera()->setFromLookAt(eye, eye + Vec3d(0, 1, 0), {0, 0, 1}));
    }

    void expectHitAt(size_t index, const Vec3d& point) {
        EXPECT_NEAR((selection->get(index).coordinate() - point).length(), 0.0, 1e-12);
    }
};

TEST_F(SelectionRayTest, AddNodeHitsANodeThatIsVisible) {
    prepare(Selection::NODE, ROOF, {22, -3, 5});
    EXPECT_EQ(selection->addNode(7), 1u);
    const ug::HitItem hit = selection->get(0);
    EXPECT_EQ(hit.stateId(), 2);
    EXPECT_EQ(hit.geometryIndex(), 0u);
    EXPECT_EQ(hit.partId(), 3);
    EXPECT_EQ(hit.itemIndex(), 2u);
    EXPECT_EQ(hit.nodeIndex(), 7u);
    expectHitAt(0, {21, 0, 1});
    EXPECT_EQ(geometryIds(), std::vector<int>{geometryId(0)});
}

TEST_F(SelectionRayTest, AddNodeAddsWhatIsInFrontOfAHiddenNode) {
    prepare(Selection::NODE, ROOF, {22, -3, 5});
    // Node 1 is at (20, 1, 0). The way there, (-2, 4, -5), is at the height of the top, z = 1, after 0.8 of it.
    EXPECT_EQ(selection->addNode(1), 1u);
    expectHitAt(0, {20.4, 0.2, 1});
    EXPECT_EQ(selection->get(0).nodeIndex(), 3u); // At (20, 0, 1).
}

TEST_F(SelectionRayTest, SeveralNodesAreAppended) {
    prepare(Selection::NODE, ROOF, {22, -3, 5});
    selection->enableMultiSelection(true);
    EXPECT_EQ(selection->addNode(7), 1u);
    EXPECT_EQ(selection->addNode(3), 2u);
    EXPECT_EQ(selection->get(1).nodeIndex(), 3u);
}

TEST_F(SelectionRayTest, AddElementAimsAtTheCentroid) {
    prepare(Selection::ELEMENT, COLUMN, {11.7, 0.3, 9});
    EXPECT_EQ(selection->addElement(1), 1u);
    EXPECT_EQ(selection->get(0).partId(), 2);
    EXPECT_EQ(selection->get(0).elementIndex(), 1u);
    // The centroid is (11.5, 0.5, 0.5); the top is reached after 8 of 8.5.
    expectHitAt(0, {11.7 - 0.2 * 8 / 8.5, 0.3 + 0.2 * 8 / 8.5, 1});
}

TEST_F(SelectionRayTest, AddElementSurfaceAimsAtTheElementAndNotesTheSurface) {
    prepare(Selection::ELEMENT_SURFACE, COLUMN, {11.7, 0.3, 9});
    EXPECT_EQ(selection->addElementSurface(1, 5), 1u); // The ray hits another one, the top.
    EXPECT_EQ(selection->get(0).elementIndex(), 1u);
    EXPECT_EQ(selection->get(0).elementLocalSurfaceIndex(), 5u);
    expectHitAt(0, {11.7 - 0.2 * 8 / 8.5, 0.3 + 0.2 * 8 / 8.5, 1});
}

TEST_F(SelectionRayTest, AddElementSurfaceNotesTheSurfaceOnAnotherElementToo) {
    // The last cube of the nut is in the way.
    prepare(Selection::ELEMENT_SURFACE, COLUMN, {15, 0.5, 0.5});
    EXPECT_EQ(selection->addElementSurface(0, 4), 1u);
    EXPECT_EQ(selection->get(0).geometryIndex(), 1u);
    EXPECT_EQ(selection->get(0).elementIndex(), 2u);
    EXPECT_EQ(selection->get(0).elementLocalSurfaceIndex(), 4u);
    expectHitAt(0, {13, 0.5, 0.5});
    EXPECT_EQ(geometryIds(), std::vector<int>{geometryId(1)});
}

TEST_F(SelectionRayTest, AddCoordinateLooksAlsoBeyondThePointAndAtAnyPart) {
    prepare(Selection::COORDINATE, BASE, {20.25, 0.25, 9});
    EXPECT_EQ(selection->addCoordinate({20.25, 0.25, 5}), 1u);
    EXPECT_EQ(selection->get(0).partId(), 3);
    expectHitAt(0, {20.25, 0.25, 1});
}

TEST_F(SelectionRayTest, ARayThatHitsNothingAddsNothing) {
    prepare(Selection::COORDINATE, BASE, {20.25, 0.25, 9});
    selection->addCoordinate({20.25, 0.25, 5});
    EXPECT_EQ(selection->addCoordinate({20.25, 0.25, 10}), 0u);
    EXPECT_EQ(asserts.take(), missed);
    selection->setItemType(Selection::ELEMENT_SURFACE);
    model->modelSpec().setPartVisible(0, 1, false); // The base, and the bolt in the same place.
    model->modelSpec().setPartVisible(1, 1, false);
    EXPECT_EQ(selection->addElementSurface(0, 0), 0u);
    EXPECT_EQ(asserts.take(), missed);
}

TEST_F(SelectionRayTest, TheCameraIsThatOfTheCurrentView) {
    prepare(Selection::COORDINATE, BASE, {20.25, 0.25, 9});
    lookFrom(Views::instance()->add().get(), {20.75, 0.25, 9});
    EXPECT_EQ(selection->addCoordinate({20.75, 0.25, 5}), 1u);
    expectHitAt(0, {20.75, 0.25, 1});
}

TEST_F(SelectionRayTest, AddElementNodeTakesTheElementsNodeAndTellsThatTheTypeIsNotNodes) {
    prepare(Selection::ELEMENT_NODE, COLUMN, {11, -3, 4});
    EXPECT_EQ(selection->addElementNode(1, 3), 1u); // The second cube begins at node 4.
    EXPECT_EQ(asserts.take(), Failures{notNodes});
    EXPECT_EQ(selection->get(0).nodeIndex(), 7u);
    expectHitAt(0, {11, 0, 1});
    EXPECT_EQ(selection->itemType(), Selection::ELEMENT_NODE);
}

TEST_F(SelectionRayTest, AnItemOfTheWrongTypeIsToldAndAdded) {
    for (const AddOperation& operation : addOperations) {
        SCOPED_TRACE(operation.name);
        for (int number = Selection::UNDEFINED; number <= Selection::COORDINATE; ++number) {
            const auto type = static_cast<Selection::ItemType>(number);
            prepare(type, BASE, {0.3, 0.2, 9});
            Failures expected;
            if (type != operation.type) {
                expected.push_back(operation.wrongType);
            }
            if (operation.type == Selection::ELEMENT_NODE && type != Selection::NODE) {
                expected.push_back(notNodes);
            }
            EXPECT_EQ(operation.add(selection.get()), 1u);
            EXPECT_EQ(asserts.take(), expected);
            EXPECT_EQ(selection->itemType(), type);
        }
    }
}

TEST_F(SelectionRayTest, WithoutAViewTheIndexIsStillChecked) {
    Views::instance()->removeCurrent();
    const FailedAssert badElement = failed(inside, "elementIndex < part->elements()->elementCount()");
    selection->add(itemOn(2, 0, 10));
    EXPECT_EQ(selection->addNode(8), 1u);
    EXPECT_EQ(asserts.take(), (Failures{noView, notNodes, failed(inside, "index < part->nodes()->nodeCount()")}));
    EXPECT_EQ(selection->addElement(1), 1u);
    EXPECT_EQ(asserts.take(), (Failures{noView, addOperations[1].wrongType,
                                        failed(inside, "index < part->elements()->elementCount()")}));
    EXPECT_EQ(selection->addElementSurface(0, 6), 1u);
    EXPECT_EQ(asserts.take(),
              (Failures{noView, addOperations[3].wrongType, failed(inside, "surfaceIndex < surfacesPerElement")}));
    EXPECT_EQ(asserts.takeUntil(3, [&] { selection->addElementSurface(1, 0); }),
              (Failures{noView, addOperations[3].wrongType, badElement}));
    EXPECT_EQ(selection->addCoordinate({0.25, 0.25, 0}), 1u);
    EXPECT_EQ(asserts.take(), (Failures{noView, addOperations[4].wrongType}));
    EXPECT_EQ(asserts.takeUntil(2, [&] { selection->addElementNode(1, 0); }),
              (Failures{addOperations[2].wrongType, badElement}));
    EXPECT_EQ(elements(), std::vector<size_t>{10});
}

TEST_F(SelectionRayTest, TheLastOfEverythingMayBeNamed) {
    prepare(Selection::NODE, COLUMN, {11.3, 0.2, 9});
    EXPECT_EQ(selection->addNode(11), 1u);
    selection->setItemType(Selection::ELEMENT);
    EXPECT_EQ(selection->addElement(1), 1u);
    selection->setItemType(Selection::ELEMENT_SURFACE);
    EXPECT_EQ(selection->addElementSurface(1, 5), 1u);
    selection->setItemType(Selection::ELEMENT_NODE);
    EXPECT_EQ(selection->addElementNode(1, 7), 1u);
    EXPECT_EQ(asserts.take(), Failures{notNodes});
}

TEST_F(SelectionRayTest, ANodeBeyondTheElementIsNotAdded) {
    prepare(Selection::ELEMENT_NODE, COLUMN, {11.3, 0.2, 9});
    selection->add(itemOn(2, 0, 10));
    EXPECT_EQ(selection->addElementNode(1, 8), 1u);
    EXPECT_EQ(asserts.take(), Failures{failed(inside, "localNodeIndex < nodesPerElement")});
    EXPECT_EQ(elements(), std::vector<size_t>{10});
}

TEST_F(SelectionRayTest, ASurfaceBeyondTheElementIsNotedAllTheSame) {
    prepare(Selection::ELEMENT_SURFACE, COLUMN, {11.3, 0.2, 9});
    EXPECT_EQ(selection->addElementSurface(1, 6), 1u);
    EXPECT_EQ(asserts.take(), Failures{failed(inside, "surfaceIndex < surfacesPerElement")});
    EXPECT_EQ(selection->get(0).elementLocalSurfaceIndex(), 6u);
}

TEST_F(SelectionRayTest, ANodeBeyondThePartIsNowhere) {
    prepare(Selection::NODE, ROOF, {22, -3, 5});
    EXPECT_EQ(selection->addNode(8), 0u);
    Failures expected = {failed(inside, "index < part->nodes()->nodeCount()"),
                         failed("OrvUnstructGrid/DataNodes", "index < nodeCount()")};
    expected.insert(expected.end(), missed.begin(), missed.end());
    EXPECT_EQ(asserts.take(), expected);
}

TEST_F(SelectionRayTest, WithoutAModelNothingIsAddedAndItemsStay) {
    selection->add(itemOn(2, 0, 10));
    Models::instance()->closeAll();
    for (const AddOperation& operation : addOperations) {
        SCOPED_TRACE(operation.name);
        Failures expected = {operation.noPart, operation.wrongType};
        if (operation.needsViewAndModel) {
            expected.insert(expected.begin(), noModel);
        }
        EXPECT_EQ(operation.add(selection.get()), 1u);
        EXPECT_EQ(asserts.take(), expected);
    }
}

TEST_F(SelectionRayTest, WithoutAPartOnlyACoordinateCanBeAdded) {
    lookFrom(view.get(), {0.25, 0.25, 9});
    for (const AddOperation& operation : addOperations) {
        SCOPED_TRACE(operation.name);
        selection->setItemType(operation.type);
        Parts::instance()->setCurrentIndex(UNDEFINED_SIZE_T);
        EXPECT_EQ(operation.add(selection.get()), operation.type == Selection::COORDINATE ? 1u : 0u);
        // Asking for the current part of a state that has parts is a mistake of its own when none is.
        EXPECT_EQ(asserts.take(), (Failures{failed("OrvApp/Parts_p", "m_currentIndex != orv::UNDEFINED_SIZE_T"),
                                            failed("OrvApp/Parts_p", "index < count()"), operation.noPart}));
    }
}

TEST_F(SelectionRayTest, WithoutAStateACoordinateHitsNothing) {
    prepare(Selection::COORDINATE, BASE, {0.25, 0.25, 9});
    model->modelSpec().setStateId(-1);
    EXPECT_EQ(selection->addCoordinate({0.25, 0.25, 0}), 0u);
    EXPECT_EQ(asserts.take(), (Failures{addOperations[4].noPart, noStateId, noStateIndex, noState}));
}

} // namespace
