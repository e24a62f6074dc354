#pragma once

#include "LibCore/rvfColor3.h"
#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orv::vis {

/// A picture of bytes: red, green and blue of the sRGB colour space, and, when it has one, alpha, which the colours are
/// not multiplied with. A value.
///
/// Rows lie one behind the other without gaps, the topmost first; in a row the leftmost pixel is first.
class ORV_API Image {
public:
    enum class Format {
        RGB, ///< 3 bytes a pixel.
        RGBA ///< 4 bytes a pixel: alpha 0 lets everything behind be seen, 255 nothing.
    };

    static constexpr int MAXIMUM_SIDE = 32768;
    /// 200 million bytes of RGB: twice the pixels of the largest screens.
    static constexpr std::size_t MAXIMUM_PIXELS = std::size_t(1) << 26;

    /// Both at least 1 and at most MAXIMUM_SIDE, and not more than MAXIMUM_PIXELS together.
    static bool isValidSize(int width, int height);

    /// Without pixels.
    Image() = default;
    /// Black; with alpha, wholly transparent. Asserts "isValidSize(width, height)"; it has no pixels behind the failed
    /// assertion.
    Image(int width, int height, Format format = Format::RGB);

    bool isEmpty() const;
    int width() const;
    int height() const;
    Format format() const;
    /// Bytes for each pixel.
    int channelCount() const;

    /// All bytes: width() * height() * channelCount() of them.
    std::span<std::uint8_t> bytes();
    std::span<const std::uint8_t> bytes() const;
    /// The bytes of a row. Which row is not checked.
    std::uint8_t* row(int y);
    const std::uint8_t* row(int y) const;

    /// Asserts "contains(x, y)"; black behind the failed assertion.
    rvf::Color3ub color(int x, int y) const;
    /// 255 without alpha. Asserts "contains(x, y)"; 0 behind the failed assertion.
    std::uint8_t alpha(int x, int y) const;
    /// Replaces a pixel. Asserts "contains(x, y)"; nothing is set behind the failed assertion.
    void setPixel(int x, int y, const rvf::Color3ub& color, std::uint8_t alpha = 255);
    bool contains(int x, int y) const;

    /// Replaces all pixels.
    void fill(const rvf::Color3ub& color, std::uint8_t alpha = 255);

    /// Writes a PNG file. It takes the place of an older one only when it is complete.
    /// @param reason told when it fails, with the name; may be null
    bool writePng(const Str& path, Str* reason) const;

    /// Becomes the picture of a PNG file of any kind, in RGBA when that has transparent pixels.
    /// @param reason told when it fails, with the name; may be null
    /// @return false, and nothing changes, when the file is none, is damaged or has a size that is not valid
    bool readPng(const Str& path, Str* reason);

private:
    std::size_t offsetOf(int x, int y) const;

    int m_width = 0;
    int m_height = 0;
    Format m_format = Format::RGB;
    std::vector<std::uint8_t> m_bytes;
};

} // namespace orv::vis
