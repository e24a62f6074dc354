#include "OrvUnstructGrid/SurfacePathQuery.h"

#include "OrvUnstructGrid/CuttingPlane.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/EdgeWay_p.h"
#include "OrvUnstructGrid/LoadedResults_p.h"
#include "OrvUnstructGrid/ModelShapes_p.h"
#include "OrvUnstructGrid/PickedPoint_p.h"
#include "OrvUnstructGrid/SectionWay_p.h"
#include "OrvUnstructGrid/SurfaceWalk_p.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace orv::ug {
namespace {

bool isBefore(const Vec3d& a, const Vec3d& b) {
    return std::make_tuple(a.x(), a.y(), a.z()) < std::make_tuple(b.x(), b.y(), b.z());
}

const Vec3d& pointOf(const Vec3d& point) {
    return point;
}

const Vec3d& pointOf(const SurfacePoint& point) {
    return point.point;
}

/// Joins the legs from each end to the next. A leg is always found in the same direction, so that both ways round there
/// is the same path.
/// @return empty when one of the legs is
template <class End, class FindLeg>
std::vector<PathSegment> joinLegs(const std::vector<End>& ends, FindLeg findLeg) {
    std::vector<PathSegment> segments;
    for (std::size_t i = 1; i < ends.size(); ++i) {
        const End& from = ends[i - 1];
        const End& to = ends[i];
        if (pointOf(from) == pointOf(to)) {
            continue;
        }
        const bool isForward = isBefore(pointOf(from), pointOf(to));
        std::vector<PathSegment> leg = isForward ? findLeg(from, to) : findLeg(to, from);
        if (leg.empty()) {
            return {};
        }
        if (!isForward) {
            reversePath(&leg);
        }
        segments.insert(segments.end(), leg.begin(), leg.end());
    }
    return segments;
}

std::vector<PathSegment> pathOnParts(const SurfaceTopology& topology, SurfacePathQuery::PointType type,
                                     const std::vector<HitItem>& items) {
    std::vector<SurfacePoint> points;
    for (const HitItem& item : items) {
        std::optional<SurfacePoint> point = pickedPoint(topology, type, item);
        if (!point) {
            return {};
        }
        points.push_back(std::move(*point));
    }
    return joinLegs(points, [&](const SurfacePoint& from, const SurfacePoint& to) {
        std::vector<PathSegment> walk = surfaceWalk(topology, from, to);
        return walk.empty() ? edgeWay(topology, from, to) : walk;
    });
}

std::vector<PathSegment> pathInPlane(const std::vector<ShownSection>& sections, const CuttingPlane& plane,
                                     const std::vector<HitItem>& items) {
    std::vector<Vec3d> points;
    for (const HitItem& item : items) {
        const Vec3d offset = item.coordinate() - plane.point();
        if (!std::isfinite(offset * offset)) {
            return {};
        }
        points.push_back(item.coordinate() - plane.normal() * (offset * plane.normal()));
    }
    return joinLegs(points,
                    [&](const Vec3d& from, const Vec3d& to) { return sectionWay(sections, plane.normal(), from, to); });
}

/// All on parts, or all on one cutting plane.
bool areOfOneKind(const std::vector<HitItem>& items) {
    return std::all_of(items.begin(), items.end(), [&first = items[0]](const HitItem& item) {
        return item.itemType() == first.itemType() &&
               (item.itemType() != HitItem::CUTTING_PLANE || item.itemIndex() == first.itemIndex());
    });
}

} // namespace

SurfacePathQuery::SurfacePathQuery(UnstructGridModel* model, std::size_t frameIndex, PointType pointType,
                                   std::vector<HitItem> items)
    : m_model(model), m_frameIndex(frameIndex), m_pointType(pointType), m_items(std::move(items)) {}

SurfacePathQuery::~SurfacePathQuery() = default;

bool SurfacePathQuery::generatePath(std::vector<Vec3d>* path) {
    if (!path) {
        return false;
    }
    generate();
    *path = pathPoints(m_segments);
    return !path->empty();
}

void SurfacePathQuery::generate() {
    m_segments.clear();
    if (!m_model || m_items.size() < 2 || !areOfOneKind(m_items) || m_frameIndex != m_model->currentFrameIndex()) {
        return;
    }
    ModelShapes* shapes = m_model->currentShapes();
    if (!shapes) {
        return;
    }
    if (m_items[0].itemType() != HitItem::CUTTING_PLANE) {
        m_segments = pathOnParts(shapes->topology(), m_pointType, m_items);
    } else if (m_items[0].itemIndex() < m_model->cuttingPlaneCount()) {
        const std::size_t plane = m_items[0].itemIndex();
        m_segments = pathInPlane(shapes->sectionsOf(plane), *m_model->cuttingPlane(plane), m_items);
    }
    const DataState* state = m_model->dataSource()->currentState(m_model);
    m_stateId = state->id();
    m_geometryIds = geometryIdsOf(*state);
}

bool SurfacePathQuery::getScalarResultValues(int scalarResultId, std::vector<double>* x, std::vector<double>* y) {
    if (!x || !y) {
        return false;
    }
    x->clear();
    y->clear();
    if (m_segments.empty()) {
        generate();
    }
    DataSource* source = m_model ? m_model->dataSource() : nullptr;
    DataState* state = source ? source->state(source->stateIndex(m_stateId)) : nullptr;
    if (m_segments.empty() || !state || geometryIdsOf(*state) != m_geometryIds) {
        return false;
    }
    const ResultInfo info = source->directory()->findScalarResultInfo(scalarResultId);
    return info.isValid() && loadResults(source, state, {info}, nullptr) && samplePath(m_segments, *state, info, x, y);
}

} // namespace orv::ug
