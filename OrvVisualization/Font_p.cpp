#include "OrvVisualization/Font_p.h"

#include "LibCore/rvfAssert.h"
#include "OrvVisualization/NormalFont_p.h"

#include <freetype/ftoutln.h>

#include <span>

namespace orv::vis {
namespace {

/// Writes down what FreeType tells of an outline.
class OutlineWriter {
public:
    explicit OutlineWriter(Outline* outline) : m_outline(outline) {}

    void write(FT_Outline* source) {
        FT_Outline_Funcs functions = {};
        functions.move_to = [](const FT_Vector* to, void* self) { return of(self).moveTo(pointOf(*to)); };
        functions.line_to = [](const FT_Vector* to, void* self) { return of(self).lineTo(pointOf(*to)); };
        functions.conic_to = [](const FT_Vector* control, const FT_Vector* to, void* self) {
            return of(self).conicTo(pointOf(*control), pointOf(*to));
        };
        functions.cubic_to = [](const FT_Vector* control1, const FT_Vector* control2, const FT_Vector* to, void* self) {
            return of(self).cubicTo(pointOf(*control1), pointOf(*control2), pointOf(*to));
        };
        FT_Outline_Decompose(source, &functions, this);
        close();
    }

private:
    static OutlineWriter& of(void* self) {
        return *static_cast<OutlineWriter*>(self);
    }

    static OutlinePoint pointOf(const FT_Vector& point) {
        return {double(point.x), -double(point.y)};
    }

    /// All answer that FreeType may go on.
    int moveTo(const OutlinePoint& end) {
        close();
        return add({OutlineStep::Kind::MOVE, end, {}, {}});
    }

    int lineTo(const OutlinePoint& end) {
        return add({OutlineStep::Kind::LINE, end, {}, {}});
    }

    /// The same curve with a control more: each is two thirds of the way to the one of the conic.
    int conicTo(const OutlinePoint& control, const OutlinePoint& end) {
        const OutlinePoint& begin = m_outline->back().end;
        return cubicTo(twoThirds(begin, control), twoThirds(end, control), end);
    }

    int cubicTo(const OutlinePoint& control1, const OutlinePoint& control2, const OutlinePoint& end) {
        return add({OutlineStep::Kind::CURVE, end, control1, control2});
    }

    void close() {
        if (!m_outline->empty()) {
            add({OutlineStep::Kind::CLOSE, {}, {}, {}});
        }
    }

    int add(const OutlineStep& step) {
        m_outline->push_back(step);
        return 0;
    }

    static OutlinePoint twoThirds(const OutlinePoint& from, const OutlinePoint& to) {
        return {from.x + (to.x - from.x) * 2.0 / 3.0, from.y + (to.y - from.y) * 2.0 / 3.0};
    }

    Outline* m_outline;
};

} // namespace

FontPrivate::FontPrivate() {
    const std::span<const std::byte> file = normalFontFile();
    FT_Error error = FT_Init_FreeType(&m_library);
    RVF_ASSERT(error == 0);
    error =
        FT_New_Memory_Face(m_library, reinterpret_cast<const FT_Byte*>(file.data()), FT_Long(file.size()), 0, &m_face);
    RVF_ASSERT(error == 0);
}

FontPrivate::~FontPrivate() {
    FT_Done_FreeType(m_library);
}

double FontPrivate::unitsPerSize() const {
    return m_face->units_per_EM;
}

double FontPrivate::ascent() const {
    return m_face->ascender;
}

double FontPrivate::descent() const {
    return -m_face->descender;
}

double FontPrivate::lineHeight() const {
    return m_face->height;
}

unsigned FontPrivate::indexOf(wchar_t character) const {
    return FT_Get_Char_Index(m_face, FT_ULong(character));
}

const FontPrivate::Glyph& FontPrivate::glyph(unsigned index) const {
    const auto [entry, isNew] = m_glyphs.try_emplace(index);
    Glyph& glyph = entry->second;
    if (isNew && FT_Load_Glyph(m_face, index, FT_LOAD_NO_SCALE) == 0) {
        glyph.advance = double(m_face->glyph->advance.x);
        OutlineWriter(&glyph.outline).write(&m_face->glyph->outline);
    }
    return glyph;
}

double FontPrivate::kerning(unsigned index, unsigned next) const {
    FT_Vector kerning = {};
    FT_Get_Kerning(m_face, index, next, FT_KERNING_UNSCALED, &kerning);
    return double(kerning.x);
}

} // namespace orv::vis
