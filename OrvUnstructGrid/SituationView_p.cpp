#include "OrvUnstructGrid/SituationCapture_p.h"

#include "OrvCore/PropertySetCollection.h"
#include "OrvVisualization/View.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace orv::ug {
namespace {

constexpr const char* CAMERA = "situation.camera";
constexpr const char* EYE = "eye";
constexpr const char* REFERENCE_POINT = "viewReferencePoint";
constexpr const char* UP = "up";
constexpr const char* IS_PARALLEL = "isParallel";
constexpr const char* ANGLE = "angle";
constexpr const char* HEIGHT = "height";

constexpr const char* DRAWING = "situation.drawing";
constexpr const char* BACKGROUND_TOP = "backgroundTop";
constexpr const char* BACKGROUND_BOTTOM = "backgroundBottom";
constexpr const char* EDGES = "areEdgesShown";
constexpr const char* LEGEND = "isLegendShown";
constexpr const char* LIT = "isLit";
constexpr const char* ANTIALIASING = "antialiasing";

constexpr const char* COLOR_MAP = "situation.colorMap";
constexpr const char* KIND = "kind";
constexpr const char* BAND_COUNT = "bandCount";
constexpr const char* HAS_FIXED_RANGE = "hasFixedRange";
constexpr const char* MINIMUM = "minimum";
constexpr const char* MAXIMUM = "maximum";
constexpr const char* UNDEFINED_COLOR = "undefinedColor";

/// In the order of vis::ColorMap::Kind.
constexpr const char* KINDS[] = {"viridis", "rainbow"};

Vec3d toVector(const rvf::Color3f& color) {
    return {color.r(), color.g(), color.b()};
}

// The fallback for what has no room in floats, and when there is no such vector.
rvf::Color3f colorOr(const PropertySet& set, const char* key, const rvf::Color3f& fallback) {
    constexpr double LARGEST = std::numeric_limits<float>::max();
    const Vec3d color = set.valueOr(key, toVector(fallback));
    for (std::size_t i = 0; i < 3; ++i) {
        if (!(std::abs(color[i]) <= LARGEST)) {
            return fallback;
        }
    }
    return {float(color.x()), float(color.y()), float(color.z())};
}

void captureCamera(const vis::Camera& camera, PropertySet* set) {
    Vec3d eye;
    Vec3d viewReferencePoint;
    Vec3d up;
    camera.toLookAt(&eye, &viewReferencePoint, &up);
    set->setValue(EYE, eye);
    set->setValue(REFERENCE_POINT, viewReferencePoint);
    set->setValue(UP, up);
    set->setValue(IS_PARALLEL, camera.isParallel());
    set->setValue(ANGLE, camera.angle());
    set->setValue(HEIGHT, camera.height());
}

bool applyToCamera(const PropertySet& set, vis::Camera* camera) {
    Vec3d eye;
    Vec3d viewReferencePoint;
    Vec3d up;
    camera->toLookAt(&eye, &viewReferencePoint, &up);
    const bool isParallel = set.valueOr(IS_PARALLEL, camera->isParallel());
    const double angle = set.valueOr(ANGLE, camera->angle());
    const bool isSet = camera->setFromLookAt(set.valueOr(EYE, eye), set.valueOr(REFERENCE_POINT, viewReferencePoint),
                                             set.valueOr(UP, up)) &&
                       camera->setPerspective(angle) && camera->setParallel(set.valueOr(HEIGHT, camera->height()));
    // The angle is set even when the picture is a parallel one, to be there when it is wanted again.
    if (!isParallel) {
        camera->setPerspective(angle);
    }
    return isSet;
}

void captureDrawing(const vis::View& view, PropertySet* set) {
    set->setValue(BACKGROUND_TOP, toVector(view.backgroundTop()));
    set->setValue(BACKGROUND_BOTTOM, toVector(view.backgroundBottom()));
    set->setValue(EDGES, view.areEdgesShown());
    set->setValue(LEGEND, view.isLegendShown());
    set->setValue(LIT, view.isLit());
    set->setValue(ANTIALIASING, view.antialiasing());
}

bool applyToDrawing(const PropertySet& set, vis::View* view) {
    view->setBackground(colorOr(set, BACKGROUND_TOP, view->backgroundTop()),
                        colorOr(set, BACKGROUND_BOTTOM, view->backgroundBottom()));
    view->setEdgesShown(set.valueOr(EDGES, view->areEdgesShown()));
    view->setLegendShown(set.valueOr(LEGEND, view->isLegendShown()));
    view->setLit(set.valueOr(LIT, view->isLit()));
    return view->setAntialiasing(set.valueOr(ANTIALIASING, view->antialiasing()));
}

void captureColorMap(const vis::ColorMap& map, PropertySet* set) {
    set->setValue(KIND, Str(KINDS[std::size_t(map.kind())]));
    set->setValue(BAND_COUNT, int(map.bandCount()));
    set->setValue(HAS_FIXED_RANGE, map.hasFixedRange());
    set->setValue(MINIMUM, map.minimum());
    set->setValue(MAXIMUM, map.maximum());
    set->setValue(UNDEFINED_COLOR, toVector(map.undefinedColor()));
}

bool applyToColorMap(const PropertySet& set, vis::View* view) {
    vis::ColorMap map = view->colorMap();
    const auto kind = std::find(std::begin(KINDS), std::end(KINDS), set.valueOr(KIND, Str()));
    bool isKnown = kind != std::end(KINDS);
    if (isKnown) {
        map.setKind(vis::ColorMap::Kind(kind - std::begin(KINDS)));
    }
    isKnown = map.setBandCount(std::size_t(set.valueOr(BAND_COUNT, int(map.bandCount())))) && isKnown;
    if (!set.valueOr(HAS_FIXED_RANGE, false)) {
        map.setAutomaticRange();
    } else {
        const double minimum = set.valueOr(MINIMUM, map.minimum());
        const double maximum = set.valueOr(MAXIMUM, map.maximum());
        isKnown = map.setFixedRange(minimum, maximum) && isKnown;
    }
    map.setUndefinedColor(colorOr(set, UNDEFINED_COLOR, map.undefinedColor()));
    view->setColorMap(map);
    return isKnown;
}

PropertySet* append(const char* classType, PropertySetCollection* collection) {
    const PtrRef<PropertySet> set(new PropertySet(classType));
    collection->append(set.get());
    return set.get();
}

} // namespace

void captureView(const vis::View& view, PropertySetCollection* collection) {
    captureCamera(*view.camera(), append(CAMERA, collection));
    captureDrawing(view, append(DRAWING, collection));
    captureColorMap(view.colorMap(), append(COLOR_MAP, collection));
}

void applyToView(const PropertySetCollection& collection, vis::View* view, std::vector<Str>* missing) {
    const auto apply = [&](const char* classType, const char* what, auto applySet) {
        const PropertySet* set = collection.find(classType);
        if (set && !applySet(*set)) {
            missing->push_back(what);
        }
    };
    apply(CAMERA, "the camera", [&](const PropertySet& set) { return applyToCamera(set, view->camera()); });
    apply(DRAWING, "how the view is drawn", [&](const PropertySet& set) { return applyToDrawing(set, view); });
    apply(COLOR_MAP, "the colour map", [&](const PropertySet& set) { return applyToColorMap(set, view); });
}

} // namespace orv::ug
