#include "Tools/SurfaceSnap.h"

#include "Tools/CommandError.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvapp {

namespace {

using orv::Vec3d;
using orv::vis::Shape;

/// A point of what is shown, and from where a ray sees it.
struct Candidate {
    double distance = std::numeric_limits<double>::infinity();
    Vec3d point;
    Vec3d direction; ///< Away from what is shown; of length 1.
    double radius;   ///< Of what is around the point.
};

Vec3d pointAt(const Shape& shape, std::size_t corner) {
    const double* coordinates = &shape.coordinates[3 * std::size_t(shape.corners[corner])];
    return {coordinates[0], coordinates[1], coordinates[2]};
}

Vec3d nearestBetween(const Vec3d& a, const Vec3d& b, const Vec3d& target) {
    const Vec3d side = b - a;
    const double square = side * side;
    return square > 0 ? a + side * std::clamp(((target - a) * side) / square, 0.0, 1.0) : a;
}

Vec3d nearestIn(const Vec3d (&corners)[3], const Vec3d& normal, const Vec3d& target) {
    const Vec3d foot = target - normal * ((target - corners[0]) * normal);
    bool isInside = true;
    Vec3d nearest = corners[0];
    for (std::size_t i = 0; i < 3; ++i) {
        const Vec3d& a = corners[i];
        const Vec3d& b = corners[(i + 1) % 3];
        isInside = isInside && ((b - a) ^ (foot - a)) * normal >= 0;
        const Vec3d onSide = nearestBetween(a, b, target);
        if ((onSide - target).length() < (nearest - target).length()) {
            nearest = onSide;
        }
    }
    return isInside ? foot : nearest;
}

void takeNearer(Candidate* best, const Vec3d& point, const Vec3d& direction, const Vec3d& target, double radius) {
    const double distance = (point - target).length();
    if (distance < best->distance) {
        *best = {distance, point, direction, radius};
    }
}

void searchFaces(const Shape& shape, const Vec3d& target, Candidate* best) {
    for (std::size_t first = 0; first + 2 < shape.corners.size(); first += 3) {
        const Vec3d corners[3] = {pointAt(shape, first), pointAt(shape, first + 1), pointAt(shape, first + 2)};
        const Vec3d across = (corners[1] - corners[0]) ^ (corners[2] - corners[0]);
        if (const double size = across.length(); size > 0) {
            takeNearer(best, nearestIn(corners, across / size, target), across / size, target, 0);
        }
    }
}

/// Of length 1 towards the target; along an axis when it is there.
Vec3d directionTo(const Vec3d& target, const Vec3d& point, const Vec3d& along) {
    const Vec3d way = target - point;
    if (const double length = way.length(); length > 0) {
        return way / length;
    }
    // The axis that is most across.
    const bool isAlongX = std::fabs(along.x()) > std::fabs(along.y());
    const Vec3d across = along ^ (isAlongX ? Vec3d(0, 1, 0) : Vec3d(1, 0, 0));
    return across.length() > 0 ? across / across.length() : Vec3d(0, 0, 1);
}

void searchLines(const Shape& shape, const Vec3d& target, Candidate* best) {
    const std::size_t ends = shape.kind == Shape::TUBES ? 2 : 1;
    for (std::size_t first = 0; first + ends <= shape.corners.size(); first += ends) {
        const Vec3d a = pointAt(shape, first);
        const Vec3d b = pointAt(shape, first + ends - 1);
        const Vec3d nearest = nearestBetween(a, b, target);
        takeNearer(best, nearest, directionTo(target, nearest, b - a), target, shape.radius);
    }
}

Candidate nearestShown(const orv::ug::UnstructGridModel& model, const Vec3d& target) {
    Candidate best;
    for (const Shape& shape : model.shapes()) {
        if (shape.kind == Shape::FACES) {
            searchFaces(shape, target, &best);
        } else {
            searchLines(shape, target, &best);
        }
    }
    return best;
}

/// Picks the point from close by, so that nothing comes between.
bool pick(const orv::ug::UnstructGridModel& model, const Candidate& candidate, double reach, orv::ug::HitItem* item) {
    orv::Ray ray;
    ray.setOrigin(candidate.point + candidate.direction * reach);
    ray.setDirection(-candidate.direction);
    if (!model.rayIntersect(ray, item) || (item->coordinate() - candidate.point).length() > 2 * reach) {
        return false;
    }
    item->setCoordinate(candidate.point);
    return true;
}

} // namespace

double shownDiagonal(const orv::ug::UnstructGridModel& model) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Vec3d least(infinity, infinity, infinity);
    Vec3d most = -least;
    for (const Shape& shape : model.shapes()) {
        for (std::size_t i = 0; i < shape.corners.size(); ++i) {
            const Vec3d point = pointAt(shape, i);
            for (std::size_t axis = 0; axis < 3; ++axis) {
                least[axis] = std::min(least[axis], point[axis]);
                most[axis] = std::max(most[axis], point[axis]);
            }
        }
    }
    return least.x() <= most.x() ? (most - least).length() : 0;
}

std::optional<SurfaceSnap> snapToSurface(orv::ug::UnstructGridModel& model, const Vec3d& point) {
    orv::Str reason;
    if (!model.updateShapes(&reason)) {
        throw CommandError(reason.toStdString());
    }
    const Candidate nearest = nearestShown(model, point);
    SurfaceSnap snap = {{}, nearest.distance};
    const double reach = nearest.radius > 0 ? 2 * nearest.radius : 1e-6 * shownDiagonal(model);
    if (!std::isfinite(nearest.distance) || !pick(model, nearest, reach, &snap.item)) {
        return std::nullopt;
    }
    return snap;
}

} // namespace orvapp
