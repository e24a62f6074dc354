#pragma once

#include "LibCore/rvfExport.h"

namespace rvf {

/// The named colours.
class ORV_API Color3 {
public:
    enum ColorIdent : int {
        RED = 0,           ///< 255, 0, 0
        GREEN = 1,         ///< 0, 255, 0
        BLUE = 2,          ///< 0, 0, 255
        YELLOW = 3,        ///< 255, 255, 0
        CYAN = 4,          ///< 0, 255, 255
        MAGENTA = 5,       ///< 255, 0, 255
        WHITE = 6,         ///< 255, 255, 255
        BLACK = 7,         ///< 0, 0, 0
        LIGHT_GRAY = 8,    ///< 192, 192, 192
        GRAY = 9,          ///< 128, 128, 128
        DARK_GRAY = 10,    ///< 64, 64, 64
        BROWN = 11,        ///< 165, 42, 42
        CRIMSON = 12,      ///< 220, 20, 60
        DARK_BLUE = 13,    ///< 0, 0, 139
        DARK_YELLOW = 14,  ///< 139, 139, 0
        DARK_CYAN = 15,    ///< 0, 139, 139
        DARK_GREEN = 16,   ///< 0, 100, 0
        DARK_MAGENTA = 17, ///< 139, 0, 139
        DARK_ORANGE = 18,  ///< 255, 140, 0
        DARK_RED = 19,     ///< 139, 0, 0
        DARK_VIOLET = 20,  ///< 148, 0, 211
        DEEP_PINK = 21,    ///< 255, 20, 147
        FOREST_GREEN = 22, ///< 34, 139, 34
        GOLD = 23,         ///< 255, 215, 0
        GREEN_YELLOW = 24, ///< 173, 255, 47
        INDIGO = 25,       ///< 75, 0, 130
        OLIVE = 26,        ///< 128, 128, 0
        ORANGE = 27,       ///< 255, 165, 0
        ORANGE_RED = 28,   ///< 255, 69, 0
        ORCHID = 29,       ///< 218, 112, 214
        PINK = 30,         ///< 255, 192, 203
        PURPLE = 31,       ///< 128, 0, 128
        SEA_GREEN = 32,    ///< 46, 139, 87
        SKY_BLUE = 33,     ///< 135, 206, 235
        VIOLET = 34,       ///< 238, 130, 238
        YELLOW_GREEN = 35, ///< 154, 205, 50
        SLATE_TEAL = 36    ///< 81, 134, 148
    };
};

class Color3ub;

/// A colour of three floats, 0 to 1. A value; nothing keeps it in range.
class ORV_API Color3f {
public:
    /// Black.
    Color3f();
    Color3f(float r, float g, float b);
    /// The bytes of that colour / 255. Asserts as Color3ub does.
    Color3f(Color3::ColorIdent ident);
    /// The bytes / 255.
    Color3f(const Color3ub& color);

    /// Exact, channel by channel.
    bool operator==(const Color3f& other) const;

    const float& r() const;
    const float& g() const;
    const float& b() const;
    float& r();
    float& g();
    float& b();
    void set(float r, float g, float b);

    /// Red, green and blue, one behind the other.
    const float* ptr() const;

    /// Each channel / 255.
    static Color3f fromByteColor(unsigned char r, unsigned char g, unsigned char b);

    /// Whether all channels lie from 0 to 1.
    bool isValid() const;

    /// The channel as a byte, rounded, and 0 or 255 outside the range. A Color3ub made of this colour cuts off instead.
    unsigned char rByte() const;
    unsigned char gByte() const;
    unsigned char bByte() const;

private:
    float m_rgb[3] = {};
};

/// A colour of three bytes. A value.
class ORV_API Color3ub {
public:
    /// Black.
    Color3ub();
    Color3ub(unsigned char r, unsigned char g, unsigned char b);
    /// A value that is no ident fails with the message "Unknown ColorIdent" and gives black.
    Color3ub(Color3::ColorIdent ident);
    /// Each channel times 255, cut off to a whole number, and of that the lowest eight bits: it neither rounds, as
    /// Color3f::rByte() does, nor keeps to the range. A red of 0.999 gives 254, a red of 2 gives 254 too. Infinities
    /// and NaN give 0.
    Color3ub(const Color3f& color);

    bool operator==(const Color3ub& other) const;

    const unsigned char& r() const;
    const unsigned char& g() const;
    const unsigned char& b() const;
    unsigned char& r();
    unsigned char& g();
    unsigned char& b();
    void set(unsigned char r, unsigned char g, unsigned char b);

    /// Red, green and blue, one behind the other.
    const unsigned char* ptr() const;

private:
    unsigned char m_rgb[3] = {};
};

} // namespace rvf
