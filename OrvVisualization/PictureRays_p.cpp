#include "OrvVisualization/PictureRays_p.h"

namespace orv::vis {

PictureRays::PictureRays(const Camera& camera, int width, int height)
    : m_width(width), m_height(height), m_isParallel(camera.isParallel()),
      m_unitsPerPixel(camera.pixelSize(1.0, height)) {
    Vec3d viewReferencePoint;
    camera.toLookAt(&m_eye, &viewReferencePoint, &m_up);
    const Vec3d sight = viewReferencePoint - m_eye;
    m_forward = sight / sight.length();
    m_right = m_forward ^ m_up;
}

Ray PictureRays::through(double x, double y) const {
    const Vec3d aside =
        m_right * ((x - m_width / 2.0) * m_unitsPerPixel) + m_up * ((m_height / 2.0 - y) * m_unitsPerPixel);
    const Vec3d direction = m_isParallel ? m_forward : m_forward + aside;
    Ray ray;
    ray.setOrigin(m_isParallel ? m_eye + aside : m_eye);
    ray.setDirection(direction / direction.length());
    return ray;
}

double PictureRays::pixelSize(const Vec3d& point) const {
    return m_isParallel ? m_unitsPerPixel : m_unitsPerPixel * ((point - m_eye) * m_forward);
}

// The point moves with the picture's plane and slides along the ray until it is on the surface again.
PixelSteps PictureRays::stepsOn(const Vec3d& point, const Vec3d& normal, const Vec3d& direction) const {
    const double size = pixelSize(point);
    const Vec3d slide = direction / (normal * direction);
    return {(m_right - slide * (normal * m_right)) * size, (m_up - slide * (normal * m_up)) * size, direction};
}

int PictureRays::width() const {
    return m_width;
}

int PictureRays::height() const {
    return m_height;
}

const Vec3d& PictureRays::forward() const {
    return m_forward;
}

const Vec3d& PictureRays::right() const {
    return m_right;
}

const Vec3d& PictureRays::up() const {
    return m_up;
}

} // namespace orv::vis
