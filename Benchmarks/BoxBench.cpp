// Ten million rays against a box, two in five of them hits, beside the quadrant method as a caller would write it for
// arrays of three doubles.

#include "LibUnstructGrid/VTOBoundingBox.h"

#include "Benchmarks/Claims.h"

#include <random>
#include <vector>

namespace {

constexpr std::size_t callCount = 10'000'000;
constexpr std::size_t rayCount = 4096; // They stay in the cache: the test is measured, not the memory.

struct Ray {
    double origin[3];
    double dir[3];
};

std::vector<Ray> rays;
VTBox box(-1, -2, -3, 3, 2, 1);
double boxMin[3] = {-1, -2, -3};
double boxMax[3] = {3, 2, 1};
double sum;
long hits;

void makeRays() {
    std::mt19937 engine(5);
    const auto random = [&engine](double low, double high) {
        return low + (high - low) * (static_cast<double>(engine()) / 4294967296.0);
    };
    rays.resize(rayCount);
    for (Ray& ray : rays) {
        for (int i = 0; i < 3; ++i) {
            ray.origin[i] = random(-10, 10);
            ray.dir[i] = random(-4, 4) - ray.origin[i];
        }
    }
    sum = 0;
    hits = 0;
    // No box that the compiler could build into the rival's loop.
    benchmark::DoNotOptimize(boxMin);
    benchmark::DoNotOptimize(boxMax);
}

/// A. Woo, "Fast Ray-Box Intersection", Graphics Gems, 1990.
bool handWritten(const double* minB, const double* maxB, const double* origin, const double* dir, double* t,
                 double* coord) {
    enum Quadrant { right, left, middle };
    Quadrant quadrant[3];
    double candidatePlane[3] = {};
    bool inside = true;
    for (int i = 0; i < 3; ++i) {
        if (origin[i] < minB[i]) {
            quadrant[i] = left;
            candidatePlane[i] = minB[i];
            inside = false;
        } else if (origin[i] > maxB[i]) {
            quadrant[i] = right;
            candidatePlane[i] = maxB[i];
            inside = false;
        } else {
            quadrant[i] = middle;
        }
    }
    if (inside) {
        for (int i = 0; i < 3; ++i) {
            coord[i] = origin[i];
        }
        *t = 0;
        return true;
    }
    double maxT[3];
    for (int i = 0; i < 3; ++i) {
        maxT[i] = quadrant[i] != middle && dir[i] != 0 ? (candidatePlane[i] - origin[i]) / dir[i] : -1;
    }
    int whichPlane = 0;
    for (int i = 1; i < 3; ++i) {
        if (maxT[whichPlane] < maxT[i]) {
            whichPlane = i;
        }
    }
    if (maxT[whichPlane] < 0) {
        return false;
    }
    for (int i = 0; i < 3; ++i) {
        if (whichPlane != i) {
            coord[i] = origin[i] + maxT[whichPlane] * dir[i];
            if (coord[i] < minB[i] || coord[i] > maxB[i]) {
                return false;
            }
        } else {
            coord[i] = candidatePlane[i];
        }
    }
    *t = maxT[whichPlane];
    return true;
}

void shootOurs() {
    for (std::size_t n = 0; n < callCount; ++n) {
        const Ray& ray = rays[n % rayCount];
        double distance = 0;
        VTVector point;
        if (box.RayIntersect(VTVector(ray.origin[0], ray.origin[1], ray.origin[2]),
                             VTVector(ray.dir[0], ray.dir[1], ray.dir[2]), &distance, &point)) {
            ++hits;
            sum += distance + point.x;
        }
    }
    benchmark::DoNotOptimize(sum);
}

void shootRival() {
    for (std::size_t n = 0; n < callCount; ++n) {
        const Ray& ray = rays[n % rayCount];
        double distance = 0;
        double point[3];
        if (handWritten(boxMin, boxMax, ray.origin, ray.dir, &distance, point)) {
            ++hits;
            sum += distance + point[0];
        }
    }
    benchmark::DoNotOptimize(sum);
}

} // namespace

int main(int argc, char** argv) {
    orvbench::Claims claims;
    claims.add("VTBox::RayIntersect(10M)", 1.2, {makeRays, shootOurs}, {makeRays, shootRival});
    const int result = claims.run(argc, argv);
    std::printf("%ld of %zu rays hit\n", hits, callCount);
    return result;
}
