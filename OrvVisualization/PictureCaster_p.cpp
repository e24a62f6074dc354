#include "OrvVisualization/PictureCaster_p.h"

#include "OrvVisualization/Image.h"
#include "OrvVisualization/View.h"

#include <algorithm>
#include <cmath>

namespace orv::vis {
namespace {

/// Channels that differ by less are one colour to the eye.
constexpr float evenColor = 0.04F;

/// A border between colours that differ by less looks smooth with half the rays.
constexpr float strongColor = 0.25F;

/// In pixels, how far a neighbour is out of the plane where the surface goes on.
constexpr double evenDepth = 1.0;

rvf::Color3f mix(const rvf::Color3f& from, const rvf::Color3f& to, double share) {
    const auto s = static_cast<float>(share);
    return {from.r() + (to.r() - from.r()) * s, from.g() + (to.g() - from.g()) * s, from.b() + (to.b() - from.b()) * s};
}

rvf::Color3f withLine(const PictureSample& sample) {
    return mix(sample.color, PictureCaster::lineColor, sample.line * PictureCaster::lineOpacity);
}

float difference(const rvf::Color3f& a, const rvf::Color3f& b) {
    return std::max({std::abs(a.r() - b.r()), std::abs(a.g() - b.g()), std::abs(a.b() - b.b())});
}

/// How far a point is before the surface at a sample, in pixels.
double pixelsBefore(const PictureSample& sample, const Vec3d& point) {
    return (point - sample.place.point) * sample.place.normal / sample.pixelSize;
}

/// Whether one of two neighbours is before the surface that the other one is on. Where two surfaces join, each is
/// before or behind the other alike.
bool isStep(const PictureSample& a, const PictureSample& b) {
    const double first = pixelsBefore(a, b.place.point);
    const double second = pixelsBefore(b, a.place.point);
    return first * second < 0.0 && std::max(std::abs(first), std::abs(second)) > evenDepth;
}

bool isBefore(const PictureSample& a, const PictureSample& b, const Ray& ray) {
    return (a.place.point - b.place.point) * ray.direction() < 0.0;
}

PictureBorder borderBetween(const PictureSample& a, const PictureSample& b) {
    if (!a.place.shape && !b.place.shape) {
        return PictureBorder::NONE;
    }
    if (!a.place.shape || !b.place.shape || isStep(a, b)) {
        return PictureBorder::STEP;
    }
    const float contrast = difference(a.color, b.color);
    if (contrast < evenColor) {
        return PictureBorder::NONE;
    }
    return contrast < strongColor ? PictureBorder::WEAK_COLOR : PictureBorder::COLOR;
}

} // namespace

const rvf::Color3f PictureCaster::lineColor = {0.05F, 0.05F, 0.07F};

PictureCaster::PictureCaster(const View& view, const PictureScene& scene, const ScalarRange& range, int width,
                             int height)
    : m_view(view), m_scene(scene), m_rays(*view.camera(), width, height), m_shading(view.colorMap(), range) {
    if (view.isLit()) {
        m_shading.setLight(m_rays.forward(), m_rays.up(), m_rays.right());
    }
}

void PictureCaster::castAll(Image* image) {
    castRow(0, &m_below);
    for (int y = 0; y < m_rays.height(); ++y) {
        m_above.swap(m_row);
        m_row.swap(m_below);
        castRow(y + 1, &m_below);
        std::uint8_t* bytes = image->row(y);
        for (int x = 0; x < m_rays.width(); ++x, bytes += 3) {
            const PictureBorder border = borderAt(x, y);
            const rvf::Color3f color = border == PictureBorder::NONE ? withLine(m_row[x]) : castMore(x, y, border);
            bytes[0] = color.rByte();
            bytes[1] = color.gByte();
            bytes[2] = color.bByte();
        }
    }
}

/// An empty row below the last.
void PictureCaster::castRow(int y, Row* row) const {
    row->clear();
    for (int x = 0; y < m_rays.height() && x < m_rays.width(); ++x) {
        row->push_back(cast(m_rays.through(x + 0.5, y + 0.5), y + 0.5, 1));
    }
}

/// @param y of the ray in the picture
PictureSample PictureCaster::cast(const Ray& ray, double y, int raysPerSide) const {
    const SeenPoint seen = m_scene.meet(ray);
    PictureSample sample;
    if (!seen.shape) {
        sample.color = background(y);
        return sample;
    }
    const RayHit& hit = seen.hit;
    const Vec3d normal = hit.normal * ray.direction() <= 0.0 ? hit.normal : -hit.normal;
    sample.place = {seen.shape, hit.primitive, hit.triangle, hit.point, normal};
    sample.color = m_shading.colorOf(seen, ray.direction());
    sample.pixelSize = m_rays.pixelSize(hit.point);
    if (m_view.areEdgesShown()) {
        sample.line = lineCoverage(sample.place, m_rays.stepsOn(hit.point, normal, ray.direction()), raysPerSide);
    }
    return sample;
}

rvf::Color3f PictureCaster::background(double y) const {
    return mix(m_view.backgroundTop(), m_view.backgroundBottom(), y / m_rays.height());
}

/// Left, right, above and below; null beyond the picture.
std::array<const PictureSample*, 4> PictureCaster::neighboursOf(int x, int y) const {
    return {x > 0 ? &m_row[x - 1] : nullptr, x + 1 < m_rays.width() ? &m_row[x + 1] : nullptr,
            y > 0 ? &m_above[x] : nullptr, y + 1 < m_rays.height() ? &m_below[x] : nullptr};
}

PictureBorder PictureCaster::borderAt(int x, int y) const {
    PictureBorder border = PictureBorder::NONE;
    if (m_view.antialiasing() > 1) {
        for (const PictureSample* neighbour : neighboursOf(x, y)) {
            border = neighbour ? std::max(border, borderBetween(m_row[x], *neighbour)) : border;
        }
    }
    return border;
}

/// Rays that are all in rows and columns of their own, so that a steep border has as many shades as there are rays.
rvf::Color3f PictureCaster::castMore(int x, int y, PictureBorder border) const {
    const int n = border == PictureBorder::WEAK_COLOR ? std::max(m_view.antialiasing() / 2, 2) : m_view.antialiasing();
    const double count = n * n;
    const bool hasOutline = border == PictureBorder::STEP && m_view.areEdgesShown();
    float sums[3] = {};
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i < n; ++i) {
            const double rayY = y + (j * n + i + 0.5) / count;
            const Ray ray = m_rays.through(x + (i * n + j + 0.5) / count, rayY);
            PictureSample sample = cast(ray, rayY, n);
            if (hasOutline) {
                sample.line = std::max(sample.line, outline(x, y, ray, sample));
            }
            const rvf::Color3f color = withLine(sample);
            for (int k = 0; k < 3; ++k) {
                sums[k] += color.ptr()[k];
            }
        }
    }
    const auto share = static_cast<float>(1.0 / count);
    return {sums[0] * share, sums[1] * share, sums[2] * share};
}

/// What is covered by lines of which the surface draws one half only, as it ends there: the other half, over what is
/// seen behind.
double PictureCaster::outline(int x, int y, const Ray& ray, const PictureSample& behind) const {
    double covered = outlineOf(m_row[x], ray, behind);
    for (const PictureSample* neighbour : neighboursOf(x, y)) {
        covered = neighbour ? std::max(covered, outlineOf(*neighbour, ray, behind)) : covered;
    }
    return covered;
}

double PictureCaster::outlineOf(const PictureSample& before, const Ray& ray, const PictureSample& behind) const {
    if (!before.place.shape || (behind.place.shape && !(isStep(before, behind) && isBefore(before, behind, ray)))) {
        return 0.0;
    }
    FacePoint place = before.place;
    place.point = ray.origin() + ray.direction() * (((before.place.point - ray.origin()) * place.normal) /
                                                    (ray.direction() * place.normal));
    return outerLineCoverage(place, m_rays.stepsOn(place.point, place.normal, ray.direction()), m_view.antialiasing());
}

} // namespace orv::vis
