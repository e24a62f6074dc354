#include "OrvVisualization/Image.h"

#include "LibCore/rvfAssert.h"
#include "OrvVisualization/PngFile_p.h"

#include <algorithm>

namespace orv::vis {

bool Image::isValidSize(int width, int height) {
    return width >= 1 && height >= 1 && width <= MAXIMUM_SIDE && height <= MAXIMUM_SIDE &&
           std::size_t(width) * std::size_t(height) <= MAXIMUM_PIXELS;
}

Image::Image(int width, int height, Format format) : m_format(format) {
    RVF_ASSERT(isValidSize(width, height));
    if (isValidSize(width, height)) {
        m_width = width;
        m_height = height;
        m_bytes.resize(std::size_t(width) * std::size_t(height) * std::size_t(channelCount()));
    }
}

bool Image::isEmpty() const {
    return m_bytes.empty();
}

int Image::width() const {
    return m_width;
}

int Image::height() const {
    return m_height;
}

Image::Format Image::format() const {
    return m_format;
}

int Image::channelCount() const {
    return m_format == Format::RGBA ? 4 : 3;
}

std::span<std::uint8_t> Image::bytes() {
    return m_bytes;
}

std::span<const std::uint8_t> Image::bytes() const {
    return m_bytes;
}

std::uint8_t* Image::row(int y) {
    return m_bytes.data() + offsetOf(0, y);
}

const std::uint8_t* Image::row(int y) const {
    return m_bytes.data() + offsetOf(0, y);
}

rvf::Color3ub Image::color(int x, int y) const {
    RVF_ASSERT(contains(x, y));
    if (!contains(x, y)) {
        return {};
    }
    const std::uint8_t* pixel = &m_bytes[offsetOf(x, y)];
    return {pixel[0], pixel[1], pixel[2]};
}

std::uint8_t Image::alpha(int x, int y) const {
    RVF_ASSERT(contains(x, y));
    if (!contains(x, y)) {
        return 0;
    }
    return m_format == Format::RGBA ? m_bytes[offsetOf(x, y) + 3] : 255;
}

void Image::setPixel(int x, int y, const rvf::Color3ub& color, std::uint8_t alpha) {
    RVF_ASSERT(contains(x, y));
    if (!contains(x, y)) {
        return;
    }
    std::uint8_t* pixel = &m_bytes[offsetOf(x, y)];
    pixel[0] = color.r();
    pixel[1] = color.g();
    pixel[2] = color.b();
    if (m_format == Format::RGBA) {
        pixel[3] = alpha;
    }
}

bool Image::contains(int x, int y) const {
    return x >= 0 && y >= 0 && x < m_width && y < m_height;
}

void Image::fill(const rvf::Color3ub& color, std::uint8_t alpha) {
    const std::uint8_t pixel[] = {color.r(), color.g(), color.b(), alpha};
    const std::size_t step = std::size_t(channelCount());
    for (std::size_t offset = 0; offset < m_bytes.size(); offset += step) {
        std::copy_n(pixel, step, m_bytes.begin() + std::ptrdiff_t(offset));
    }
}

bool Image::writePng(const Str& path, Str* reason) const {
    return writePngFile(*this, path, reason);
}

bool Image::readPng(const Str& path, Str* reason) {
    return readPngFile(path, this, reason);
}

std::size_t Image::offsetOf(int x, int y) const {
    return (std::size_t(y) * std::size_t(m_width) + std::size_t(x)) * std::size_t(channelCount());
}

} // namespace orv::vis
