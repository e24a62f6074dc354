#include "Tools/Picture.h"

#include "Tools/Choice.h"
#include "Tools/CommandError.h"
#include "Tools/Expression.h"
#include "Tools/Names.h"
#include "Tools/PasswordFile.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <set>

namespace orvapp {

namespace {

using StateIndexes = std::vector<std::size_t>;

StateIndexes both(const StateIndexes& a, const StateIndexes& b) {
    StateIndexes common;
    std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(common));
    return common;
}

} // namespace

Picture::Picture(const PictureOptions& options)
    : m_size(parseSize(options.size)), m_file(options.file, readPassword(options.passwordFile)),
      m_view(orv::app::Views::instance()->add()), m_statePattern(options.state) {
    m_view->addModel(&model());
    m_view->setLegendShown(options.hasLegend);
    model().modelSpec().setFringesResultId(-1); // a new model shows one of its results
    if (!options.result.empty()) {
        chooseResult(options.result);
    }
    if (!options.deformation.empty()) {
        chooseDeformation(options.deformation);
    }
    chooseParts(options);
    if (!options.cut.empty()) {
        addCut(options.cut);
    }
    chooseStates(options.state);
    placeCamera(options);
}

const ResultFile& Picture::file() const {
    return m_file;
}

orv::ug::UnstructGridModel& Picture::model() const {
    return *orv::app::Models::instance()->current();
}

orv::vis::View& Picture::view() const {
    return *m_view;
}

PictureSize Picture::size() const {
    return m_size;
}

const orv::ug::ResultInfo& Picture::result() const {
    return m_result;
}

const std::vector<std::size_t>& Picture::states() const {
    return m_states;
}

std::size_t Picture::onlyState() const {
    if (!m_statePattern.empty() && m_states.size() > 1) {
        std::vector<std::string> names;
        for (const std::size_t state : m_states) {
            names.push_back(stateName(state));
        }
        refuse(m_file, '"' + m_statePattern + "\" names " + std::to_string(names.size()) +
                           " states, name one of them: " + listed(names));
    }
    return m_states.back();
}

std::string Picture::stateName(std::size_t state) const {
    return nameOf(m_file.directory().stateInfos()[state]);
}

void Picture::show(std::size_t state) const {
    orv::app::States::instance()->setCurrentIndex(state);
    orv::Str reason;
    if (!model().updateShapes(&reason)) {
        throw CommandError(reason.toStdString());
    }
}

void Picture::fit() const {
    if (!m_view->fit(m_size.width, m_size.height)) {
        refuse(m_file, "there is nothing to be seen: no part is shown, and no plane meets one");
    }
}

void Picture::drop() const {
    for (const orv::ug::ResultInfo& shown : {m_result, m_deformation}) {
        if (shown.isValid()) {
            m_file.drop(shown);
        }
    }
}

void Picture::chooseResult(const std::string& expression) {
    m_built = buildScalar(parseExpression(expression), m_file.results(), "colours show");
    m_result = m_file.add(m_built.info, expression);
    model().modelSpec().setFringesResultId(m_result.id());
}

/// A name may end like a scale: then it goes before.
void Picture::chooseDeformation(const std::string& text) {
    const std::vector<orv::ug::ResultInfo> displacements = m_file.directory().resultInfos(orv::ug::DISPLACEMENT);
    const std::vector<std::string> names = namesOf(displacements);
    const bool isName = std::find(names.begin(), names.end(), text) != names.end();
    const Deformation deformation = isName ? Deformation{text, 1.0} : parseDeformation(text);
    m_deformation = displacements[choose(m_file, "displacement", names, deformation.result).front()];
    orv::ug::ModelSpec& spec = model().modelSpec();
    spec.setDisplacementResultId(m_deformation.id());
    spec.setDisplacementScale(deformation.scale);
    spec.setDisplaced(true);
}

/// A section is inside of the parts, which would hide it.
void Picture::chooseParts(const PictureOptions& options) const {
    const std::vector<FilePart> parts = m_file.parts();
    const bool hidesAll = options.parts.empty() && !options.cut.empty();
    const std::vector<std::size_t> chosen =
        hidesAll ? std::vector<std::size_t>() : chooseAny(m_file, "part", namesOf(parts), options.parts);
    const std::set<std::size_t> shown(chosen.begin(), chosen.end());
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const orv::ug::PartInfo info = m_file.directory().partInfos(parts[i].geometryIndex)[parts[i].partIndex];
        model().modelSpec().setPartVisible(parts[i].geometryIndex, info.id(), shown.contains(i));
    }
}

void Picture::addCut(const std::string& plane) const {
    const Plane parsed = parsePlane(plane);
    orv::ug::CuttingPlane* cut = model().addCuttingPlane();
    cut->setPlane(parsed.point, parsed.normal);
    cut->setMapScalarResultId(m_result.isValid() ? m_result.id() : -1);
}

void Picture::chooseStates(const std::string& pattern) {
    const std::vector<std::string> names = namesOf(m_file.directory().stateInfos());
    StateIndexes having(names.size());
    std::iota(having.begin(), having.end(), std::size_t(0));
    std::string shown;
    for (const orv::ug::ResultInfo& info : {m_result, m_deformation}) {
        if (info.isValid()) {
            having = both(having, m_file.statesWith(info));
            shown += (shown.empty() ? "\"" : " and \"") + nameOf(info) + '"';
        }
    }
    if (having.empty()) {
        refuse(m_file, "no state has values of " + shown);
    }
    m_states = pattern.empty() ? having : both(choose(m_file, "state", names, pattern), having);
    if (m_states.empty()) {
        refuse(m_file, "there are no values of " + shown + " in state \"" + pattern +
                           "\", only in: " + listed(picked(names, having)));
    }
}

void Picture::placeCamera(const PictureOptions& options) const {
    const Viewpoint viewpoint = parseViewpoint(options.view);
    orv::vis::Camera* camera = m_view->camera();
    camera->setFromLookAt(viewpoint.toEye, {0, 0, 0}, viewpoint.up);
    if (options.isParallel) {
        camera->setParallel(1.0); // fit() finds the height
    }
}

} // namespace orvapp
