#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PimplPointerHolder.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvCore/Vec3d.h"

#include <cstddef>
#include <vector>

namespace orv::plt {
class Curve;
class OverlayPlot;
} // namespace orv::plt

namespace orv::ug {
class HitItem;
class UnstructGridModel;
} // namespace orv::ug

namespace orv::app {

class PlotsPrivate;

/// The plots of the process, in the order of adding, and the curves that are drawn into them from results.
///
/// Plots know nothing of models: a curve holds copies of numbers and stays as it is when a model changes or is closed.
/// The pointers that come back do not own. A plot lives as long as it is listed, or longer where the caller holds it in
/// a PtrRef; its curves live as long as the plot.
///
/// There is one list: another object of this class, if one were ever made, would be one more door to it. One thread at
/// a time.
class ORV_API Plots : public RefCountedObject {
public:
    /// Made at the first call, gone at process exit.
    static Plots* instance();

    std::size_t count() const;

    /// Asserts "index < count()"; null behind the failed assertion.
    plt::OverlayPlot* get(std::size_t index) const;

    /// Appends a new plot in the normal font, without a title and curves.
    plt::OverlayPlot* add();

    /// Appends a plot and takes a reference on it. The same one may stand at several places, and null is taken too.
    void add(plt::OverlayPlot* plot);

    /// Takes a plot off the list; later ones move up by one. Asserts "index < count()"; nothing is removed behind the
    /// failed assertion.
    /// @return always true
    bool remove(std::size_t index);

    void removeAll();

    /// The first place of a plot; UNDEFINED_SIZE_T when it is not listed.
    std::size_t index(const plt::OverlayPlot* plot) const;

    /// Draws how a scalar at one node or element runs over the states: the states' reference values along x, the scalar
    /// along y.
    ///
    /// Which of the hit item's indexes counts is the result's affair: the node of a result PER_NODE, the element of
    /// any other one. The values per node or surface of an element are averaged, see
    /// ug::ResultsQueryResult::averageSubItemScalar(). So an item without the index that is needed, a hit on nothing,
    /// or on an element when the values are at nodes, gives no curve.
    ///
    /// With state groups, only the states of the first group that has the model's current state are drawn, in the
    /// group's order; when the model has no current state, the first state stands for it. A current state in no group
    /// gives no curve. Without groups all states are drawn, in the order of the directory.
    ///
    /// A state in which there is no value there is left out, without a gap. A state without a reference value is put 1
    /// behind the point before it, the first one at 0.
    ///
    /// The axes are titled anew by each call: x "Time", "Frequency" or "LoadCase" after the first of the states, also
    /// when others measure something else, and "State" when it measures none of these; y with the result's name. That
    /// is also the name of the curve, so two curves of one result at two nodes have the same one.
    ///
    /// Asserts "index < count()" and "plot", and "currentStateId >= 0" when there are groups but no states. Logs, as an
    /// error, that the item is undefined, that the id is -1, that there is no such scalar, or that its mapping is
    /// unknown, and looks for these in that order.
    /// @param hitItem such as one of a Selection; its node, element, part and geometry count, but not its state
    /// @param model must not be null; need not be a current or an open one
    /// @return owned by the plot; null, with the plot as it was, when there is no curve, which is no error when only
    ///         values are missing
    plt::Curve* addHistoryCurve(std::size_t plotIndex, const ug::HitItem& hitItem, const ug::UnstructGridModel* model,
                                int scalarResultId);

    /// Draws a scalar along the surface from one selected item of the current view to the next: the length of the way
    /// along x, in the unit of the coordinates, the scalar along y. See ug::SurfacePathQuery.
    ///
    /// Either all items lie on parts, which need not be the same, or all on one cutting plane. The scalar is the one
    /// that is shown as fringes on the first item's part, or on the cutting plane. The way goes through the centres of
    /// the picked elements when the selection is for elements, through the places that were hit when it is for
    /// coordinates or on a cutting plane, and otherwise through the picked nodes.
    ///
    /// The plot gets the title "Plot n", where n is the number of plots in the list, not the place of this one: two
    /// plots can bear the same title, and each length curve writes it anew. The x axis is titled "Length", the y axis
    /// with the scalar's name; the curve is named "Scalar vs. Length". Title and axes are written before the way is
    /// looked for, so they stand also when there is none.
    ///
    /// Tells AppComponent::progressInstance(), when there is one, 20 before the way is looked for, 50 when it is
    /// found, and 100.
    ///
    /// Asserts "plotIndex < count()", and later, as get(), "index < count()" and "plot". Logs, as an error, that
    /// nothing is selected, which it is not without a view either, that the items lie on different things, that nothing
    /// is shown there, or that there is no way, and looks for these in that order.
    /// @param model must not be null; the one that the items were picked in
    /// @param pathPoints filled with the points of the way, in place of what it held; untouched when there is no curve;
    ///        may be null
    /// @return owned by the plot; null when there is none. A curve without points where the way has no values.
    plt::Curve* addLengthCurve(std::size_t plotIndex, const ug::UnstructGridModel* model,
                               std::vector<Vec3d>* pathPoints);

protected:
    Plots();
    ~Plots() override;

private:
    internal::PimplPointerHolder<PlotsPrivate> m_private;
};

} // namespace orv::app
