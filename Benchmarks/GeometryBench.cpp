// Ten million rays against a plane, a triangle and a cylinder, beside the same formulas written out where they are
// needed; and the removal of duplicated nodes beside the sort that it cannot do without.

#include "LibUnstructGrid/VTOGeometryMath.h"
#include "LibUnstructGrid/VTOSortFunctions.h"

#include "Benchmarks/Claims.h"

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

namespace {

constexpr std::size_t callCount = 10'000'000;

/// Few enough to stay in the processor's cache.
constexpr std::size_t caseCount = 512;

struct Case {
    VTVector origin;
    VTVector dir;
    VTVector triangle[3];
    VTVector normal;
    VTVector base;
    VTVector top;
};

/// The same without our types.
struct PlainCase {
    double origin[3];
    double dir[3];
    double triangle[3][3];
    double normal[3];
    double base[3];
    double top[3];
};

std::vector<Case> cases(caseCount);
std::vector<PlainCase> plainCases(caseCount);

double real(std::mt19937& engine, double low, double high) {
    return low + (high - low) * (static_cast<double>(engine()) / 4294967296.0);
}

VTVector vectorIn(std::mt19937& engine, double size) {
    const double x = real(engine, -size, size);
    const double y = real(engine, -size, size);
    return VTVector(x, y, real(engine, -size, size));
}

/// Rays from a distance to somewhere near the middle.
void makeCases() {
    std::mt19937 engine(4);
    for (std::size_t i = 0; i < caseCount; ++i) {
        Case& one = cases[i];
        one.origin = vectorIn(engine, 10);
        one.dir = vectorIn(engine, 1) - one.origin;
        for (VTVector& node : one.triangle) {
            node = vectorIn(engine, 3);
        }
        VTComputeTriangleNormal(one.triangle[0], one.triangle[1], one.triangle[2], &one.normal, true);
        one.base = vectorIn(engine, 2);
        one.top = vectorIn(engine, 2);
        static_assert(sizeof(Case) == sizeof(PlainCase));
        std::memcpy(&plainCases[i], &one, sizeof(Case));
    }
}

/// Adds up what `intersect` makes of each ray.
template <typename One, typename Intersect>
void shoot(const std::vector<One>& list, Intersect intersect) {
    double sum = 0;
    for (std::size_t i = 0; i < callCount; ++i) {
        sum += intersect(list[i % caseCount]);
    }
    benchmark::DoNotOptimize(sum);
}

/// `call` gets a place for the point and for t.
template <typename Call>
void shootOurs(Call call) {
    shoot(cases, [call](const Case& one) {
        VTVector point;
        double t = 0;
        return call(one, &point, &t) ? t + point.x + point.y + point.z : 0;
    });
}

template <typename Call>
void shootByHand(Call call) {
    shoot(plainCases, [call](const PlainCase& one) {
        double point[3];
        double t = 0;
        return call(one, point, &t) ? t + point[0] + point[1] + point[2] : 0;
    });
}

double dot(const double* a, const double* b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

void cross(const double* a, const double* b, double* out) {
    out[0] = a[1] * b[2] - a[2] * b[1];
    out[1] = a[2] * b[0] - a[0] * b[2];
    out[2] = a[0] * b[1] - a[1] * b[0];
}

void subtract(const double* a, const double* b, double* out) {
    out[0] = a[0] - b[0];
    out[1] = a[1] - b[1];
    out[2] = a[2] - b[2];
}

bool normalize(double* a) {
    const double square = dot(a, a);
    if (!(square > 1e-60)) {
        return false;
    }
    const double length = std::sqrt(square);
    a[0] /= length;
    a[1] /= length;
    a[2] /= length;
    return true;
}

bool planeByHand(const double* normal, const double* onPlane, const double* origin, const double* dir, double* point,
                 double* t) {
    const double slope = dot(normal, dir);
    if (std::fabs(slope) < 1e-60) {
        return false;
    }
    *t = (dot(normal, onPlane) - dot(normal, origin)) / slope;
    for (int i = 0; i < 3; ++i) {
        point[i] = origin[i] + *t * dir[i];
    }
    return true;
}

bool triangleByHand(const double (*nodes)[3], const double* normal, const double* origin, const double* dir,
                    double* point, double* t) {
    if (!planeByHand(normal, nodes[0], origin, dir, point, t) || *t < 0) {
        return false;
    }
    int axis = std::fabs(normal[1]) > std::fabs(normal[0]) ? 1 : 0;
    axis = std::fabs(normal[2]) > std::fabs(normal[axis]) ? 2 : axis;
    const int u = (axis + 1) % 3;
    const int v = (axis + 2) % 3;
    bool inside = false;
    for (int i = 0, last = 2; i < 3; last = i++) {
        const double* a = nodes[last];
        const double* b = nodes[i];
        if ((a[v] >= point[v]) != (b[v] >= point[v])) {
            const bool aAbove = a[u] >= point[u];
            if (aAbove == (b[u] >= point[u])) {
                inside = inside != aAbove;
            } else if (b[u] - (b[v] - point[v]) * (a[u] - b[u]) / (a[v] - b[v]) >= point[u]) {
                inside = !inside;
            }
        }
    }
    return inside;
}

bool cutByHand(const double* normal, const double* onPlane, const double* origin, const double* dir, double* in,
               double* out) {
    const double slope = dot(normal, dir);
    const double start = dot(normal, origin) - dot(normal, onPlane);
    if (slope == 0) {
        return start < 0;
    }
    const double t = -start / slope;
    if (slope > 0) {
        *out = t > *in && t < *out ? t : *out;
        return t >= *in;
    }
    *in = t > *in && t < *out ? t : *in;
    return t <= *out;
}

bool cylinderByHand(const double* base, const double* top, double radius, const double* origin, const double* dir,
                    double* point, double* t) {
    double axis[3];
    double offset[3];
    double across[3];
    subtract(top, base, axis);
    normalize(axis);
    subtract(origin, base, offset);
    cross(dir, axis, across);
    const double length = std::sqrt(dot(across, across));
    double in = -1e30;
    double out = 1e30;
    if (length == 0) {
        const double along = dot(offset, axis);
        if (!(dot(offset, offset) - along * along <= radius * radius)) {
            return false;
        }
    } else {
        across[0] /= length;
        across[1] /= length;
        across[2] /= length;
        const double distance = std::fabs(dot(offset, across));
        if (distance > radius) {
            return false;
        }
        double turned[3];
        double outward[3];
        cross(offset, axis, turned);
        cross(across, axis, outward);
        normalize(outward);
        const double middle = -dot(turned, across) / length;
        const double half = std::fabs(std::sqrt(radius * radius - distance * distance) / dot(dir, outward));
        in = middle - half;
        out = middle + half;
    }
    const double down[] = {-axis[0], -axis[1], -axis[2]};
    if (!cutByHand(down, base, origin, dir, &in, &out) || !cutByHand(axis, top, origin, dir, &in, &out) ||
        !(out > in)) {
        return false;
    }
    *t = in;
    for (int i = 0; i < 3; ++i) {
        point[i] = origin[i] + in * dir[i];
    }
    return true;
}

/// A million nodes of which about half are duplicates, and the polygons that name them all.
constexpr int nodeCount = 1'000'000;

std::vector<VTVector> nodes(nodeCount);
std::vector<int> polygons(nodeCount);
std::vector<int> order(nodeCount);

void makeNodes() {
    std::mt19937 engine(5);
    for (int i = 0; i < nodeCount; ++i) {
        nodes[i] = VTVector(engine() % 100, engine() % 100, engine() % 70);
        polygons[i] = i;
    }
}

} // namespace

int main(int argc, char** argv) {
    orvbench::Claims claims(9);
    claims.add("VTPlaneRayIntersect(10M)", 1.2,
               {makeCases,
                [] {
                    shootOurs([](const Case& one, VTVector* point, double* t) {
                        return VTPlaneRayIntersect(one.normal, one.base, one.origin, one.dir, point, t);
                    });
                }},
               {makeCases, [] {
                    shootByHand([](const PlainCase& one, double* point, double* t) {
                        return planeByHand(one.normal, one.base, one.origin, one.dir, point, t);
                    });
                }});
    claims.add("VTRayTriangleIntersect(10M)", 1.2,
               {makeCases,
                [] {
                    shootOurs([](const Case& one, VTVector* point, double* t) {
                        return VTRayTriangleIntersect(one.triangle, one.normal, one.origin, one.dir, point, t);
                    });
                }},
               {makeCases, [] {
                    shootByHand([](const PlainCase& one, double* point, double* t) {
                        return triangleByHand(one.triangle, one.normal, one.origin, one.dir, point, t);
                    });
                }});
    claims.add("VTRayCylinderIntersect(10M)", 1.2,
               {makeCases,
                [] {
                    shootOurs([](const Case& one, VTVector* point, double* t) {
                        return VTRayCylinderIntersect(one.base, one.top, 1, one.origin, one.dir, point, t);
                    });
                }},
               {makeCases, [] {
                    shootByHand([](const PlainCase& one, double* point, double* t) {
                        return cylinderByHand(one.base, one.top, 1, one.origin, one.dir, point, t);
                    });
                }});
    claims.add("VTRemoveDuplicatedNodes(1M)", 2.0,
               {makeNodes, [] { VTRemoveDuplicatedNodes(polygons.data(), nodeCount, nodes.data(), nodeCount); }},
               {makeNodes, [] {
                    const int components[] = {0, 1, 2};
                    VTVectorIndexQSort(nodes.data(), order.data(), nodeCount, components);
                }});
    return claims.run(argc, argv);
}
