#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PimplPointerHolder.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvCore/Str.h"
#include "OrvVisualization/Outline.h"

namespace orv::vis {

class FontPrivate;

/// The shapes and widths of letters, at any size.
///
/// Letters are neither hinted nor rounded to pixels, so all lengths are proportional to the size. Sizes and lengths
/// have the same unit: that of whatever is drawn on. A text is one line, written from left to right; a character that
/// the font lacks, a line break too, is drawn as the font's box for missing ones.
class ORV_API Font : public RefCountedObject {
public:
    /// DejaVu Sans, which is part of the library: nothing is read from the machine, and pictures look the same on all
    /// of them. It is opened once; each call gives the same font.
    static PtrRef<Font> createNormalFont();

    ~Font() override;

    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;

    /// What to draw with unless there is a reason for another size: 12, in pixels of a small picture or in points on
    /// paper.
    double normalSize() const;

    /// How far letters reach above the baseline. That of the font as a whole, so lines of text line up.
    double ascent(double size) const;
    /// How far letters reach below the baseline; positive.
    double descent(double size) const;
    /// From one baseline to the next.
    double lineHeight(double size) const;

    /// How far the pen moves with a text, with pairs such as "AV" moved together. 0 for the empty text.
    double width(const Str& text, double size) const;

    /// What to fill, by the non-zero rule, to draw a text whose pen begins at (x, y) on the baseline.
    Outline outline(const Str& text, double size, double x = 0.0, double y = 0.0) const;

private:
    Font();

    internal::PimplPointerHolder<FontPrivate> m_private;
};

} // namespace orv::vis
