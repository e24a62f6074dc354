// Rays at what solvers have written, compared with a search through all triangles.

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/PartSurface_p.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "Tests/Support/TestPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using namespace orv::ug;
using orv::Ray;
using orv::Vec3d;
using orv::imp::cae::DataSourceCae;

namespace {

/// How far roundings may move a ray in a triangle, by the size of the triangle.
constexpr double tolerance = 1e-7;
/// And how far along it, by its length.
constexpr double nearness = 1e-8;

struct Triangle {
    Vec3d a;
    Vec3d toB;
    Vec3d toC;
    std::size_t part;
    std::size_t element;
};

/// A face with a ball about it, to pass over most faces quickly.
struct Face {
    std::size_t firstTriangle;
    std::size_t lastTriangle;
    Vec3d center;
    double radius = 0;
};

/// What a ray meets by the equations alone. `surely` is inside a triangle by more than roundings; `possible` are all
/// triangles that roundings may have put before it.
struct Search {
    double surely = std::numeric_limits<double>::infinity();
    std::vector<std::pair<double, const Triangle*>> possible;

    bool allows(std::size_t part, std::size_t element) const {
        return std::any_of(possible.begin(), possible.end(), [&](const auto& candidate) {
            return candidate.first <= surely + nearness && candidate.second->part == part &&
                   candidate.second->element == element;
        });
    }
};

class SolverModel {
public:
    SolverModel(const std::string& file, double offset)
        : m_source(new DataSourceCae(1)), m_model(new UnstructGridModel) {
        Error error;
        EXPECT_TRUE(m_source->openFiles({file}, &error)) << error.message().toStdString();
        m_geometry = m_source->state(0)->geometry(0);
        for (std::size_t p = 0; p < m_geometry->partCount(); ++p) {
            move(m_geometry->part(p), offset);
            collect(p);
        }
        m_model->setDataSource(m_source.get());
        m_model->modelSpec().setStateId(m_source->directory()->stateInfos()[0].id());
    }

    /// Shoots until `count` rays have met their targets; returns how many of them, or of those that something else was
    /// in the way of, were wrong.
    std::size_t shoot(std::size_t count, std::mt19937* engine) {
        m_engine = engine;
        std::size_t wrong = 0;
        for (std::size_t visible = 0; visible < count;) {
            bool isVisible = false;
            wrong += !(shootOne(visible % 2 == 0, &isVisible));
            visible += isVisible;
        }
        return wrong;
    }

    bool hasFaces() const {
        return !m_triangles.empty() && !m_hasLines;
    }

private:
    static void move(DataPart* part, double offset) {
        std::vector<double> coordinates(part->nodes()->coordinates().begin(), part->nodes()->coordinates().end());
        for (double& coordinate : coordinates) {
            coordinate += offset;
        }
        part->nodes()->set(std::move(coordinates), {});
    }

    void collect(std::size_t p) {
        const DataPart& part = *m_geometry->part(p);
        const PartSurface surface = surfaceOf(part);
        m_hasLines = m_hasLines || !surface.tubeElements.empty() || !surface.sphereElements.empty();
        for (std::size_t f = 0; f < surface.faceElements.size(); ++f) {
            Face face{surface.faceOffsets[f], surface.faceOffsets[f + 1], {}};
            face.firstTriangle = m_triangles.size();
            for (std::size_t t = surface.faceOffsets[f]; t < surface.faceOffsets[f + 1]; ++t) {
                const Vec3d a = part.nodes()->node(surface.corners[3 * t]);
                m_triangles.push_back({a, part.nodes()->node(surface.corners[3 * t + 1]) - a,
                                       part.nodes()->node(surface.corners[3 * t + 2]) - a, p, surface.faceElements[f]});
                for (std::size_t i = 0; i < 3; ++i) {
                    m_surfaceNodes.push_back(part.nodes()->node(surface.corners[3 * t + i]));
                    m_lower = {std::min(m_lower.x(), a.x()), std::min(m_lower.y(), a.y()),
                               std::min(m_lower.z(), a.z())};
                    m_upper = {std::max(m_upper.x(), a.x()), std::max(m_upper.y(), a.y()),
                               std::max(m_upper.z(), a.z())};
                }
            }
            face.lastTriangle = m_triangles.size();
            face.center = m_triangles[face.firstTriangle].a;
            for (std::size_t t = face.firstTriangle; t < face.lastTriangle; ++t) {
                for (const Vec3d& corner : {Vec3d(), m_triangles[t].toB, m_triangles[t].toC}) {
                    face.radius = std::max(face.radius, (m_triangles[t].a + corner - face.center).length());
                }
            }
            m_faces.push_back(face);
        }
    }

    double random() {
        return (*m_engine)() / 4294967296.0;
    }

    /// Mostly outside of the model, sometimes in a cube about its middle.
    Vec3d randomEye() {
        const Vec3d middle = (m_lower + m_upper) * 0.5;
        const double size = (m_upper - m_lower).length();
        if (random() < 0.2) {
            return middle + Vec3d(random() - 0.5, random() - 0.5, random() - 0.5) * (0.7 * size);
        }
        Vec3d direction;
        do {
            direction = Vec3d(random() - 0.5, random() - 0.5, random() - 0.5);
        } while (direction.length() > 0.5 || direction.length() < 0.01);
        return middle + direction * (size * (0.6 + 10 * random()) / direction.length());
    }

    Search search(const Ray& ray) const {
        Search result;
        const double square = ray.direction() * ray.direction();
        for (const Face& face : m_faces) {
            const Vec3d from = face.center - ray.origin();
            const double along = from * ray.direction();
            if ((from * from - along * along / square) > face.radius * face.radius * 1.01 + 1e-9 * square) {
                continue;
            }
            for (std::size_t t = face.firstTriangle; t < face.lastTriangle; ++t) {
                meet(ray, m_triangles[t], &result);
            }
        }
        return result;
    }

    /// By Cramer's rule.
    static void meet(const Ray& ray, const Triangle& triangle, Search* result) {
        const Vec3d p = ray.direction() ^ triangle.toC;
        const double determinant = triangle.toB * p;
        if (determinant == 0) {
            return;
        }
        const Vec3d from = ray.origin() - triangle.a;
        const Vec3d q = from ^ triangle.toB;
        const double u = from * p / determinant;
        const double v = ray.direction() * q / determinant;
        const double at = triangle.toC * q / determinant;
        const double least = std::min({u, v, 1 - u - v});
        if (least < -tolerance || at < 0) {
            return;
        }
        result->possible.push_back({at, &triangle});
        if (least > tolerance) {
            result->surely = std::min(result->surely, at);
        }
    }

    bool shootOne(bool atNode, bool* isVisible) {
        Vec3d target;
        if (atNode) {
            target = m_surfaceNodes[(*m_engine)() % m_surfaceNodes.size()];
        } else {
            const Triangle& triangle = m_triangles[(*m_engine)() % m_triangles.size()];
            const double u = random();
            target = triangle.a + triangle.toB * u + triangle.toC * ((1 - u) * random());
        }
        Ray ray;
        ray.setOrigin(randomEye());
        ray.setDirection(target - ray.origin());
        const Search found = search(ray);
        *isVisible = found.surely > 1 - nearness;
        EXPECT_FALSE(found.possible.empty());
        HitItem hit;
        if (!m_model->rayIntersect(ray, &hit)) {
            return !*isVisible && found.surely == std::numeric_limits<double>::infinity();
        }
        if (!found.allows(hit.itemIndex(), hit.elementIndex())) {
            return false;
        }
        const double distance = (hit.coordinate() - target).length();
        return !*isVisible || (distance < 1e-6 * ray.direction().length() && isNodeRight(hit, target));
    }

    /// Where the element that was hit has a node in the place of the target, that is the node.
    bool isNodeRight(const HitItem& hit, const Vec3d& target) const {
        const DataNodes& nodes = *m_geometry->part(hit.itemIndex())->nodes();
        const auto indexes = m_geometry->part(hit.itemIndex())->elements()->nodeIndexes(hit.elementIndex());
        return std::find(indexes.begin(), indexes.end(), hit.nodeIndex()) != indexes.end() &&
               (nodes.node(hit.nodeIndex()) == target ||
                std::none_of(indexes.begin(), indexes.end(), [&](auto i) { return nodes.node(i) == target; }));
    }

    orv::PtrRef<DataSourceCae> m_source;
    orv::PtrRef<UnstructGridModel> m_model;
    DataGeometry* m_geometry = nullptr;
    std::vector<Triangle> m_triangles;
    std::vector<Face> m_faces;
    std::vector<Vec3d> m_surfaceNodes;
    bool m_hasLines = false;
    Vec3d m_lower = {1e300, 1e300, 1e300};
    Vec3d m_upper = {-1e300, -1e300, -1e300};
    std::mt19937* m_engine = nullptr;
};

// All in all 100,000 rays that meet what they are aimed at.
TEST(Picking, RaysMeetWhatTheyAreAimedAt) {
    struct Case {
        const char* file;
        std::size_t rays;
    };
    const Case cases[] = {{"bracket", 10000},    {"beam_binary", 5000},    {"contact", 5000},
                          {"cube_static", 5000}, {"mixed", 5000},          {"mixed_quadratic", 5000},
                          {"shell_2d", 5000},    {"shell_expanded", 5000}, {"plane", 5000}};
    std::mt19937 engine(2);
    std::size_t total = 0;
    for (const Case& c : cases) {
        const bool isExample = std::string(c.file) == "bracket";
        const std::string file =
            (isExample ? orvtest::exampleDataFolder() : orvtest::testDataFolder() + "/frd") + "/" + c.file + ".frd";
        for (double offset : {0.0, 1e6}) {
            SCOPED_TRACE(c.file);
            SolverModel model(file, offset);
            ASSERT_TRUE(model.hasFaces());
            EXPECT_EQ(model.shoot(c.rays, &engine), 0u) << "at an offset of " << offset;
            total += c.rays;
        }
    }
    EXPECT_EQ(total, 100000u);
}

} // namespace
