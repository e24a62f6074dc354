#include "LibCore/rvfColor3.h"

#include "LibCore/rvfAssert.h"
#include "LibCore/rvfMath.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace rvf {
namespace {

// In the order of Color3::ColorIdent.
constexpr unsigned char IDENT_COLORS[][3] = {
    {255, 0, 0},    {0, 255, 0},     {0, 0, 255},     {255, 255, 0},  {0, 255, 255}, {255, 0, 255},   {255, 255, 255},
    {0, 0, 0},      {192, 192, 192}, {128, 128, 128}, {64, 64, 64},   {165, 42, 42}, {220, 20, 60},   {0, 0, 139},
    {139, 139, 0},  {0, 139, 139},   {0, 100, 0},     {139, 0, 139},  {255, 140, 0}, {139, 0, 0},     {148, 0, 211},
    {255, 20, 147}, {34, 139, 34},   {255, 215, 0},   {173, 255, 47}, {75, 0, 130},  {128, 128, 0},   {255, 165, 0},
    {255, 69, 0},   {218, 112, 214}, {255, 192, 203}, {128, 0, 128},  {46, 139, 87}, {135, 206, 235}, {238, 130, 238},
    {154, 205, 50}, {81, 134, 148}};
static_assert(std::size(IDENT_COLORS) == Color3::SLATE_TEAL + 1);

unsigned char roundedByte(float channel) {
    const float value = channel * 255.0f + 0.5f;
    if (value >= 255.0f) {
        return 255;
    }
    return value > 0.0f ? static_cast<unsigned char>(value) : 0;
}

unsigned char cutByte(float channel) {
    // The remainder comes first, since a cast of a number beyond the range of int is undefined.
    const float remainder = std::fmod(channel * 255.0f, 256.0f);
    return std::isnan(remainder) ? 0 : static_cast<unsigned char>(static_cast<int>(remainder));
}

} // namespace

Color3f::Color3f() = default;

Color3f::Color3f(float r, float g, float b) : m_rgb{r, g, b} {}

Color3f::Color3f(Color3::ColorIdent ident) : Color3f(Color3ub(ident)) {}

Color3f::Color3f(const Color3ub& color) : Color3f(fromByteColor(color.r(), color.g(), color.b())) {}

bool Color3f::operator==(const Color3f& other) const {
    return std::equal(m_rgb, m_rgb + 3, other.m_rgb);
}

const float& Color3f::r() const {
    return m_rgb[0];
}

const float& Color3f::g() const {
    return m_rgb[1];
}

const float& Color3f::b() const {
    return m_rgb[2];
}

float& Color3f::r() {
    return m_rgb[0];
}

float& Color3f::g() {
    return m_rgb[1];
}

float& Color3f::b() {
    return m_rgb[2];
}

void Color3f::set(float r, float g, float b) {
    *this = Color3f(r, g, b);
}

const float* Color3f::ptr() const {
    return m_rgb;
}

Color3f Color3f::fromByteColor(unsigned char r, unsigned char g, unsigned char b) {
    return Color3f(static_cast<float>(r) / 255.0f, static_cast<float>(g) / 255.0f, static_cast<float>(b) / 255.0f);
}

bool Color3f::isValid() const {
    return std::all_of(m_rgb, m_rgb + 3, [](float channel) { return Math::valueInRange(channel, 0.0f, 1.0f); });
}

unsigned char Color3f::rByte() const {
    return roundedByte(m_rgb[0]);
}

unsigned char Color3f::gByte() const {
    return roundedByte(m_rgb[1]);
}

unsigned char Color3f::bByte() const {
    return roundedByte(m_rgb[2]);
}

Color3ub::Color3ub() = default;

Color3ub::Color3ub(unsigned char r, unsigned char g, unsigned char b) : m_rgb{r, g, b} {}

Color3ub::Color3ub(Color3::ColorIdent ident) {
    const std::size_t index = static_cast<std::size_t>(ident);
    if (index >= std::size(IDENT_COLORS)) {
        RVF_FAIL_MSG("Unknown ColorIdent");
        return;
    }
    std::copy_n(IDENT_COLORS[index], 3, m_rgb);
}

Color3ub::Color3ub(const Color3f& color) : m_rgb{cutByte(color.r()), cutByte(color.g()), cutByte(color.b())} {}

bool Color3ub::operator==(const Color3ub& other) const {
    return std::equal(m_rgb, m_rgb + 3, other.m_rgb);
}

const unsigned char& Color3ub::r() const {
    return m_rgb[0];
}

const unsigned char& Color3ub::g() const {
    return m_rgb[1];
}

const unsigned char& Color3ub::b() const {
    return m_rgb[2];
}

unsigned char& Color3ub::r() {
    return m_rgb[0];
}

unsigned char& Color3ub::g() {
    return m_rgb[1];
}

unsigned char& Color3ub::b() {
    return m_rgb[2];
}

void Color3ub::set(unsigned char r, unsigned char g, unsigned char b) {
    *this = Color3ub(r, g, b);
}

const unsigned char* Color3ub::ptr() const {
    return m_rgb;
}

} // namespace rvf
