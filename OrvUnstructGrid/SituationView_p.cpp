#include "OrvUnstructGrid/SituationCapture_p.h"

#include "OrvCore/PropertySetCollection.h"
#include "OrvVisualization/View.h"

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

Vec3d toVector(const rvf::Color3f& color) {
    return {color.r(), color.g(), color.b()};
}

rvf::Color3f toColor(const Vec3d& vector) {
    return {float(vector.x()), float(vector.y()), float(vector.z())};
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
    view->setBackground(toColor(set.valueOr(BACKGROUND_TOP, toVector(view->backgroundTop()))),
                        toColor(set.valueOr(BACKGROUND_BOTTOM, toVector(view->backgroundBottom()))));
    view->setEdgesShown(set.valueOr(EDGES, view->areEdgesShown()));
    view->setLegendShown(set.valueOr(LEGEND, view->isLegendShown()));
    view->setLit(set.valueOr(LIT, view->isLit()));
    return view->setAntialiasing(set.valueOr(ANTIALIASING, view->antialiasing()));
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
}

void applyToView(const PropertySetCollection& collection, vis::View* view, std::vector<Str>* missing) {
    const PropertySet* camera = collection.find(CAMERA);
    if (camera && !applyToCamera(*camera, view->camera())) {
        missing->push_back("a camera that sees something");
    }
    const PropertySet* drawing = collection.find(DRAWING);
    if (drawing && !applyToDrawing(*drawing, view)) {
        missing->push_back("from 1 to 8 rays along each side of a pixel");
    }
}

} // namespace orv::ug
