#pragma once

#include "Tests/OrvUnstructGrid/PathModels.h"

#include <cstddef>
#include <vector>

namespace orvtest {

/// Points to within roundings.
inline void expectPath(const std::vector<orv::Vec3d>& path, const std::vector<orv::Vec3d>& expected) {
    ASSERT_EQ(path.size(), expected.size());
    for (std::size_t i = 0; i < path.size(); ++i) {
        EXPECT_NEAR((path[i] - expected[i]).length(), 0.0, 1e-12) << i;
    }
}

struct Curve {
    std::vector<double> x;
    std::vector<double> y;
};

/// A curve without a path having been asked for; empty when the query fails.
inline Curve curveOf(const PathModel& model, orv::ug::SurfacePathQuery::PointType type,
                     const std::vector<orv::ug::HitItem>& items, const orv::ug::ResultInfo& info) {
    orv::ug::SurfacePathQuery query(model.model.get(), 0, type, items);
    Curve curve = {{7}, {7}};
    const bool isDone = query.getScalarResultValues(info.id(), &curve.x, &curve.y);
    EXPECT_EQ(isDone, !curve.x.empty());
    EXPECT_EQ(curve.x.size(), curve.y.size());
    return curve;
}

inline double linear(const orv::Vec3d& point) {
    return 3 * point.x() - 2 * point.y() + 0.5 * point.z() + 4;
}

/// That a path has the values of linear() all along.
inline void expectLinear(PathModel& model, orv::ug::SurfacePathQuery::PointType type,
                         const std::vector<orv::ug::HitItem>& items) {
    const orv::ug::ResultInfo info = model.addField(linear);
    const std::vector<orv::Vec3d> path = model.path(type, items);
    const Curve curve = curveOf(model, type, items, info);
    ASSERT_FALSE(path.empty());
    ASSERT_EQ(curve.x.size(), path.size());
    double length = 0;
    for (std::size_t i = 0; i < path.size(); ++i) {
        length += i > 0 ? (path[i] - path[i - 1]).length() : 0.0;
        EXPECT_NEAR(curve.x[i], length, 1e-9);
        EXPECT_NEAR(curve.y[i], linear(path[i]), 1e-9);
    }
}

} // namespace orvtest
