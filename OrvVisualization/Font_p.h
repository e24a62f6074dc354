#pragma once

#include "OrvVisualization/Outline.h"

#include <ft2build.h>

#include <freetype/freetype.h>

#include <unordered_map>

namespace orv::vis {

/// The outlines of a font, in its own units, of which unitsPerSize() make up the size. Each letter is read once.
class FontPrivate {
public:
    struct Glyph {
        double advance = 0.0;
        Outline outline; ///< y down.
    };

    /// Opens the normal font.
    FontPrivate();
    ~FontPrivate();

    FontPrivate(const FontPrivate&) = delete;
    FontPrivate& operator=(const FontPrivate&) = delete;

    double unitsPerSize() const;
    double ascent() const;
    double descent() const;
    double lineHeight() const;

    /// Number of the glyph of a character; 0 is the box for missing ones.
    unsigned indexOf(wchar_t character) const;
    const Glyph& glyph(unsigned index) const;
    /// What is added to the advance of the first one before the second one; mostly negative or 0.
    double kerning(unsigned index, unsigned next) const;

private:
    FT_Library m_library = nullptr;
    FT_Face m_face = nullptr;
    mutable std::unordered_map<unsigned, Glyph> m_glyphs;
};

} // namespace orv::vis
