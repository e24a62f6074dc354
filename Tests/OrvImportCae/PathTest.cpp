// Paths over what solvers have written, between what rays have hit, compared with a search along the cut of all
// triangles.

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/PartSurface_p.h"
#include "OrvUnstructGrid/SurfacePathQuery.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "Tests/Support/TestPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <tuple>
#include <vector>

using namespace orv::ug;
using orv::Ray;
using orv::Vec3d;
using orv::imp::cae::DataSourceCae;

namespace {

struct Triangle {
    std::array<std::size_t, 3> places; ///< Corners at the same place have the same.
    std::array<Vec3d, 3> corners;
    std::size_t part;
    std::size_t element;
    Vec3d middle; ///< Of a ball about it.
    double radius;

    Vec3d normal() const {
        const Vec3d cross = (corners[1] - corners[0]) ^ (corners[2] - corners[0]);
        return cross / cross.length();
    }
};

/// The nearest point of a triangle, by trying its inside, its sides and its corners.
Vec3d nearestOf(const Triangle& triangle, const Vec3d& p) {
    const auto& c = triangle.corners;
    const Vec3d normal = triangle.normal();
    const Vec3d projected = p - normal * ((p - c[0]) * normal);
    bool isInside = true;
    Vec3d nearest = c[0];
    for (std::size_t i = 0; i < 3; ++i) {
        const Vec3d side = c[(i + 1) % 3] - c[i];
        isInside = isInside && (side ^ (projected - c[i])) * normal >= 0;
        const double share = std::clamp((p - c[i]) * side / (side * side), 0.0, 1.0);
        const Vec3d candidate = c[i] + side * share;
        if ((candidate - p).length() < (nearest - p).length()) {
            nearest = candidate;
        }
    }
    return isInside ? projected : nearest;
}

/// A model of volumes, whose parts share nodes where they touch.
class SolverModel {
public:
    explicit SolverModel(const std::string& file) : m_source(new DataSourceCae(1)), m_model(new UnstructGridModel) {
        Error error;
        EXPECT_TRUE(m_source->openFiles({file}, &error)) << error.message().toStdString();
        m_model->setDataSource(m_source.get());
        m_model->modelSpec().setStateId(m_source->directory()->stateInfos()[0].id());
        std::vector<PartSurface> surfaces;
        std::map<std::set<std::size_t>, int> uses;
        for (std::size_t p = 0; p < partCount(); ++p) {
            surfaces.push_back(surfaceOf(part(p)));
            for (std::size_t f = 0; f < surfaces[p].faceElements.size(); ++f) {
                ++uses[facePlaces(p, surfaces[p], f)];
            }
        }
        for (std::size_t p = 0; p < partCount(); ++p) {
            for (std::size_t f = 0; f < surfaces[p].faceElements.size(); ++f) {
                if (uses[facePlaces(p, surfaces[p], f)] == 1) {
                    collect(p, surfaces[p], f);
                }
            }
        }
    }

    std::size_t partCount() const {
        return m_source->state(0)->geometry(0)->partCount();
    }

    const DataPart& part(std::size_t index) const {
        return *m_source->state(0)->geometry(0)->part(index);
    }

    Vec3d node(const HitItem& item) const {
        return part(item.itemIndex()).nodes()->node(item.nodeIndex());
    }

    UnstructGridModel* model() const {
        return m_model.get();
    }

    double size() const {
        Vec3d lower = m_triangles[0].corners[0];
        Vec3d upper = lower;
        for (const Triangle& triangle : m_triangles) {
            for (const Vec3d& corner : triangle.corners) {
                for (std::size_t i = 0; i < 3; ++i) {
                    lower[i] = std::min(lower[i], corner[i]);
                    upper[i] = std::max(upper[i], corner[i]);
                }
            }
        }
        return (upper - lower).length();
    }

    /// From somewhere outside at a random triangle's inside.
    HitItem pick(std::mt19937* engine) const {
        auto random = [engine] { return 0.05 + 0.9 * ((*engine)() / 4294967296.0); };
        HitItem hit;
        for (;;) {
            const Triangle& triangle = m_triangles[(*engine)() % m_triangles.size()];
            const double u = random() / 2;
            const double v = random() / 2;
            const auto& c = triangle.corners;
            const Vec3d target = c[0] + (c[1] - c[0]) * u + (c[2] - c[0]) * v;
            Ray ray;
            ray.setOrigin(target + triangle.normal() * (10 * size()));
            ray.setDirection(-triangle.normal());
            if (m_model->rayIntersect(ray, &hit)) {
                return hit;
            }
        }
    }

    const Triangle& triangleAt(const Vec3d& point) const {
        const Triangle* nearest = nullptr;
        double least = std::numeric_limits<double>::infinity();
        for (const Triangle& triangle : m_triangles) {
            if ((triangle.middle - point).length() - triangle.radius < least) {
                const double distance = (nearestOf(triangle, point) - point).length();
                if (distance < least) {
                    least = distance;
                    nearest = &triangle;
                }
            }
        }
        return *nearest;
    }

    /// Of all ways along the cut between two points inside triangles, the shortest's length; infinite when there is
    /// none. Relaxes all pieces of the cut until nothing changes.
    double shortestCut(const Vec3d& from, const Vec3d& to) const {
        const Triangle& first = triangleAt(from);
        const Triangle& last = triangleAt(to);
        if (&first == &last) {
            return (to - from).length();
        }
        const Vec3d cross = (to - from) ^ (first.normal() + last.normal());
        const Vec3d normal = cross / cross.length();
        using Side = std::pair<std::size_t, std::size_t>;
        struct Piece {
            Side ends[2];
            double length;
        };
        std::map<Side, double> lengths;
        std::map<Side, double> lengthsToEnd;
        std::vector<Piece> pieces;
        for (const Triangle& triangle : m_triangles) {
            Piece piece;
            Vec3d points[2];
            std::size_t count = 0;
            for (std::size_t i = 0; i < 3; ++i) {
                const std::size_t next = (i + 1) % 3;
                const double a = (triangle.corners[i] - from) * normal;
                const double b = (triangle.corners[next] - from) * normal;
                if ((a < 0) != (b < 0)) {
                    points[count] =
                        triangle.corners[i] + (triangle.corners[next] - triangle.corners[i]) * (a / (a - b));
                    piece.ends[count++] = std::minmax(triangle.places[i], triangle.places[next]);
                }
            }
            if (count != 2) {
                continue;
            }
            piece.length = (points[1] - points[0]).length();
            pieces.push_back(piece);
            for (std::size_t i = 0; i < 2; ++i) {
                lengths.try_emplace(piece.ends[i], std::numeric_limits<double>::infinity());
                if (&triangle == &first) {
                    lengths[piece.ends[i]] = (points[i] - from).length();
                }
                if (&triangle == &last) {
                    lengthsToEnd[piece.ends[i]] = (points[i] - to).length();
                }
            }
        }
        for (bool hasChanged = true; hasChanged;) {
            hasChanged = false;
            for (const Piece& piece : pieces) {
                double& a = lengths[piece.ends[0]];
                double& b = lengths[piece.ends[1]];
                if (a + piece.length < b || b + piece.length < a) {
                    (a < b ? b : a) = std::min(a, b) + piece.length;
                    hasChanged = true;
                }
            }
        }
        double shortest = std::numeric_limits<double>::infinity();
        for (const auto& [side, length] : lengthsToEnd) {
            shortest = std::min(shortest, lengths[side] + length);
        }
        return shortest;
    }

private:
    /// The same for nodes at the same place.
    std::size_t placeOf(std::size_t partIndex, std::size_t nodeIndex) {
        const Vec3d point = part(partIndex).nodes()->node(nodeIndex);
        return m_places.try_emplace({point.x(), point.y(), point.z()}, m_places.size()).first->second;
    }

    /// Of all nodes of the face.
    std::set<std::size_t> facePlaces(std::size_t partIndex, const PartSurface& surface, std::size_t face) {
        const DataElements& elements = *part(partIndex).elements();
        const std::size_t element = surface.faceElements[face];
        std::set<std::size_t> places;
        for (const std::uint8_t i : elementSurface(elements.elementType(element), surface.faceSurfaces[face])) {
            places.insert(placeOf(partIndex, elements.nodeIndexes(element)[i]));
        }
        return places;
    }

    void collect(std::size_t partIndex, const PartSurface& surface, std::size_t face) {
        for (std::size_t t = surface.faceOffsets[face]; t < surface.faceOffsets[face + 1]; ++t) {
            Triangle triangle;
            for (std::size_t i = 0; i < 3; ++i) {
                const std::uint32_t corner = surface.corners[3 * t + i];
                triangle.places[i] = placeOf(partIndex, corner);
                triangle.corners[i] = part(partIndex).nodes()->node(corner);
            }
            const auto& c = triangle.corners;
            triangle.middle = (c[0] + c[1] + c[2]) / 3;
            triangle.radius = std::max({(c[0] - triangle.middle).length(), (c[1] - triangle.middle).length(),
                                        (c[2] - triangle.middle).length()});
            triangle.part = partIndex;
            triangle.element = surface.faceElements[face];
            m_triangles.push_back(triangle);
        }
    }

    orv::PtrRef<DataSourceCae> m_source;
    orv::PtrRef<UnstructGridModel> m_model;
    std::map<std::tuple<double, double, double>, std::size_t> m_places;
    std::vector<Triangle> m_triangles;
};

double lengthOf(const std::vector<Vec3d>& path) {
    double length = 0;
    for (std::size_t i = 1; i < path.size(); ++i) {
        length += (path[i] - path[i - 1]).length();
    }
    return length;
}

/// That each point and the middle of each piece are on the surface.
void expectOnSurface(const SolverModel& model, const std::vector<Vec3d>& path, double tolerance) {
    for (std::size_t i = 0; i < path.size(); ++i) {
        const Vec3d middle = (path[i] + path[i == 0 ? 0 : i - 1]) * 0.5;
        EXPECT_LT((nearestOf(model.triangleAt(path[i]), path[i]) - path[i]).length(), tolerance);
        EXPECT_LT((nearestOf(model.triangleAt(middle), middle) - middle).length(), tolerance);
    }
}

class PathTest : public testing::TestWithParam<const char*> {
protected:
    static std::string file() {
        const bool isExample = std::string(GetParam()) == "bracket";
        return (isExample ? orvtest::exampleDataFolder() : orvtest::testDataFolder() + "/frd") + "/" + GetParam() +
               ".frd";
    }
};

TEST_P(PathTest, PathsAreTheShortestAlongTheCut) {
    const SolverModel solver(file());
    std::mt19937 engine(6);
    const double size = solver.size();
    int walks = 0;
    for (int i = 0; i < 30; ++i) {
        const std::vector<HitItem> items = {solver.pick(&engine), solver.pick(&engine)};
        const Vec3d from = items[0].coordinate();
        const Vec3d to = items[1].coordinate();
        const Vec3d along = (to - from) / (to - from).length();
        const Vec3d mean = solver.triangleAt(from).normal() + solver.triangleAt(to).normal();
        if ((along ^ mean).length() < 1e-3) {
            continue; // Hardly a plane.
        }
        SurfacePathQuery query(solver.model(), 0, SurfacePathQuery::COORDINATE, items);
        std::vector<Vec3d> path;
        ASSERT_TRUE(query.generatePath(&path));
        EXPECT_LT((path.front() - from).length(), 1e-9 * size);
        EXPECT_LT((path.back() - to).length(), 1e-9 * size);
        expectOnSurface(solver, path, 1e-9 * size);
        const double expected = solver.shortestCut(from, to);
        if (std::isfinite(expected)) {
            EXPECT_NEAR(lengthOf(path), expected, 1e-9 * size);
            ++walks;
        }
        SurfacePathQuery back(solver.model(), 0, SurfacePathQuery::COORDINATE, {items[1], items[0]});
        std::vector<Vec3d> reversed;
        ASSERT_TRUE(back.generatePath(&reversed));
        std::reverse(reversed.begin(), reversed.end());
        EXPECT_EQ(path, reversed);
    }
    EXPECT_GT(walks, 15);
}

TEST_P(PathTest, NodesAndElementsAreReached) {
    const SolverModel solver(file());
    std::mt19937 engine(8);
    const double size = solver.size();
    for (int i = 0; i < 5; ++i) {
        const std::vector<HitItem> items = {solver.pick(&engine), solver.pick(&engine), solver.pick(&engine)};
        for (const auto type : {SurfacePathQuery::NODE, SurfacePathQuery::ELEMENT}) {
            const bool isAPoint = type == SurfacePathQuery::NODE && solver.node(items[0]) == solver.node(items[1]) &&
                                  solver.node(items[0]) == solver.node(items[2]);
            SurfacePathQuery query(solver.model(), 0, type, items);
            std::vector<Vec3d> path;
            ASSERT_EQ(query.generatePath(&path), !isAPoint);
            if (isAPoint) {
                continue;
            }
            expectOnSurface(solver, path, 1e-9 * size);
            if (type == SurfacePathQuery::NODE) {
                EXPECT_EQ(path.front(), solver.node(items[0]));
                EXPECT_EQ(path.back(), solver.node(items[2]));
                EXPECT_NE(std::find(path.begin(), path.end(), solver.node(items[1])), path.end());
            } else {
                EXPECT_EQ(solver.triangleAt(path.front()).element, items[0].elementIndex());
                EXPECT_EQ(solver.triangleAt(path.back()).element, items[2].elementIndex());
            }
        }
    }
}

TEST_P(PathTest, ASolversScalarIsSampledBetweenItsNodesValues) {
    const SolverModel solver(file());
    DataSource& source = *solver.model()->dataSource();
    const std::vector<ResultInfo> infos = source.directory()->scalarResultInfos();
    std::mt19937 engine(9);
    for (const ResultInfo& info : infos) {
        const std::vector<HitItem> items = {solver.pick(&engine), solver.pick(&engine)};
        SurfacePathQuery query(solver.model(), 0, SurfacePathQuery::NODE, items);
        std::vector<double> x;
        std::vector<double> y;
        if (info.resultMapping() != PER_NODE || !query.getScalarResultValues(info.id(), &x, &y)) {
            continue;
        }
        const DataResultGroup& group = *source.state(0)->results(source.state(0)->geometry(0));
        const DataResultScalar& values = *group.scalar(group.scalarIndex(info.id()));
        EXPECT_EQ(y.front(), values.part(items[0].itemIndex())->value(items[0].nodeIndex()));
        EXPECT_EQ(y.back(), values.part(items[1].itemIndex())->value(items[1].nodeIndex()));
        std::vector<Vec3d> path;
        ASSERT_TRUE(query.generatePath(&path));
        EXPECT_EQ(x.size(), path.size()); // Parts have the same values where they touch.
        EXPECT_NEAR(x.back(), lengthOf(path), 1e-9 * solver.size());
    }
}

// A solver's scalar is loaded and then written anew, which stays as long as it is loaded.
TEST_P(PathTest, AFieldLinearInSpaceIsMetExactlyAllAlong) {
    const auto linear = [](const Vec3d& p) { return 0.3 * p.x() - 0.2 * p.y() + 0.5 * p.z() + 4; };
    const SolverModel solver(file());
    DataSource& source = *solver.model()->dataSource();
    std::mt19937 engine(11);
    std::size_t sampleCount = 0;
    for (const ResultInfo& info : source.directory()->scalarResultInfos()) {
        const std::vector<HitItem> items = {solver.pick(&engine), solver.pick(&engine)};
        SurfacePathQuery query(solver.model(), 0, SurfacePathQuery::NODE, items);
        std::vector<Vec3d> path;
        std::vector<double> x;
        std::vector<double> y;
        if (info.resultMapping() != PER_NODE || !query.generatePath(&path) ||
            !query.getScalarResultValues(info.id(), &x, &y)) {
            continue;
        }
        DataResultGroup& group = *source.state(0)->results(source.state(0)->geometry(0));
        DataResultScalar& scalar = *group.scalar(group.scalarIndex(info.id()));
        for (std::size_t p = 0; p < solver.partCount(); ++p) {
            for (std::size_t n = 0; n < scalar.part(p)->itemCount(); ++n) {
                scalar.part(p)->values()[n] = linear(solver.part(p).nodes()->node(n));
            }
        }
        ASSERT_TRUE(query.getScalarResultValues(info.id(), &x, &y));
        ASSERT_EQ(y.size(), path.size());
        for (std::size_t i = 0; i < path.size(); ++i) {
            EXPECT_NEAR(y[i], linear(path[i]), 1e-9 * solver.size());
        }
        sampleCount += path.size();
    }
    EXPECT_GT(sampleCount, 1u);
}

INSTANTIATE_TEST_SUITE_P(Models, PathTest, testing::Values("bracket", "cube_static", "beam_binary"),
                         [](const auto& test) { return std::string(test.param); });

} // namespace
