#include "Tools/LengthCommand.h"

#include "Tools/Choice.h"
#include "Tools/DisplayText.h"
#include "Tools/NumberText.h"
#include "Tools/PlotCommand.h"
#include "Tools/ProgressBar.h"
#include "Tools/QuietLog.h"
#include "Tools/SurfaceSnap.h"
#include "Tools/ValuesSelection.h"

#include <algorithm>

namespace orvapp {

namespace {

/// Of the model's size, how far a point may be from the surface.
constexpr double USUAL_TOLERANCE = 0.01;

/// Shows on a terminal what the library tells of its progress.
class ShownProgress {
public:
    explicit ShownProgress(const std::string& label) : m_bar(label) {
        orv::app::AppComponent::setProgressInstance(&m_bar);
    }

    ~ShownProgress() {
        orv::app::AppComponent::setProgressInstance(nullptr);
    }

    ShownProgress(const ShownProgress&) = delete;
    ShownProgress& operator=(const ShownProgress&) = delete;

private:
    BarProgress m_bar;
};

ValuesSelection selectionOf(const PlotCommand& command, const LengthOptions& options) {
    ValuesOptions values = options.plot.values;
    values.state = options.state.empty() ? "*" : options.state;
    ValuesSelection selection = selectValues(command.file(), command.scalar(), values);
    if (options.state.empty()) {
        selection.states = {selection.states.back()};
    }
    return selection;
}

/// Shows the chosen parts only, and the scalar on them.
void show(const PlotCommand& command, const std::vector<FilePart>& parts) {
    orv::ug::ModelSpec& spec = orv::app::Models::instance()->current()->modelSpec();
    const orv::ug::DataSourceDirectory& directory = command.file().directory();
    for (const FilePart& part : command.file().parts()) {
        const bool isChosen = std::any_of(parts.begin(), parts.end(), [&](const FilePart& chosen) {
            return chosen.geometryIndex == part.geometryIndex && chosen.partIndex == part.partIndex;
        });
        const int id = directory.partInfos(part.geometryIndex)[part.partIndex].id();
        spec.setPartVisible(part.geometryIndex, id, isChosen);
    }
    spec.setFringesResultId(command.scalar().id());
}

std::string pointText(const orv::Vec3d& point) {
    return roundedNumber(point.x(), 6) + ',' + roundedNumber(point.y(), 6) + ',' + roundedNumber(point.z(), 6);
}

orv::ug::HitItem pickNear(const PlotCommand& command, const orv::Vec3d& point, double tolerance) {
    orv::ug::UnstructGridModel& model = *orv::app::Models::instance()->current();
    const std::optional<SurfaceSnap> snap = snapToSurface(model, point);
    if (!snap) {
        refuse(command.file(), "there is no surface for a way to run over");
    }
    const double allowed = tolerance >= 0 ? tolerance : USUAL_TOLERANCE * shownDiagonal(model);
    if (snap->distance > allowed) {
        refuse(command.file(), "the point " + pointText(point) + " is " + briefNumber(snap->distance) +
                                   " off the surface, whose nearest point is " + pointText(snap->item.coordinate()) +
                                   "; allowed is " + briefNumber(allowed) + ", and more with --tolerance");
    }
    return snap->item;
}

void addCurve(PlotCommand* command, const LengthOptions& options) {
    orv::app::Selection* selection = orv::app::Views::instance()->currentViewSelection();
    selection->removeAll();
    for (const orv::Vec3d& point : options.through) {
        selection->add(pickNear(*command, point, options.tolerance));
    }
    const QuietLog quiet;
    std::vector<orv::Vec3d> path;
    orv::plt::Curve* curve = orv::app::Plots::instance()->addLengthCurve(
        command->plotIndex(), orv::app::Models::instance()->current(), &path);
    const std::string state = nameOf(orv::app::States::instance()->currentInfo());
    if (!curve) {
        refuse(command->file(), "there is no way along the surface through these points: they are all the same, or lie "
                                "on parts that do not touch");
    }
    if (curve->pointCount() == 0) {
        refuse(command->file(),
               '"' + nameOf(command->scalar()) + "\" has no values along the way in state \"" + state + '"');
    }
    command->addCurve(curve, state, path);
}

} // namespace

void runLength(const LengthOptions& options) {
    PlotCommand command(options.plot);
    const ValuesSelection values = selectionOf(command, options);
    orv::app::Views::instance()->add();
    orv::app::Selection* selection = orv::app::Views::instance()->currentViewSelection();
    selection->setItemType(orv::app::Selection::COORDINATE);
    selection->enableMultiSelection(true);
    {
        const ShownProgress progress(command.file().path());
        for (const std::size_t state : values.states) {
            command.file().load(state, command.scalar());
            show(command, values.parts);
            addCurve(&command, options);
            command.file().drop(command.scalar());
        }
    }
    command.write(values.states.size() > 1 ? std::to_string(values.states.size()) + " states"
                                           : nameOf(orv::app::States::instance()->currentInfo()));
}

} // namespace orvapp
