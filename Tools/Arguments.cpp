#include "Tools/Arguments.h"

#include "OrvVisualization/Camera.h"
#include "OrvVisualization/Image.h"
#include "Tools/CommandError.h"
#include "Tools/Names.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace orvapp {

namespace {

[[noreturn]] void refuseArgument(const std::string& text, const std::string& expected) {
    throw CommandError('"' + text + "\" is not " + expected);
}

std::vector<std::string_view> piecesOf(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        pieces.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return pieces;
}

/// A whole text that is a finite number; a decimal point in any locale.
template <class Number>
std::optional<Number> numberOf(std::string_view text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole && std::isfinite(double(number)) ? std::optional<Number>(number) : std::nullopt;
}

/// So many numbers with a separator between them, or none.
template <class Number>
std::vector<Number> numbersOf(std::string_view text, char separator, std::size_t count) {
    std::vector<Number> numbers;
    for (const std::string_view piece : piecesOf(text, separator)) {
        if (const std::optional<Number> number = numberOf<Number>(piece)) {
            numbers.push_back(*number);
        } else {
            return {};
        }
    }
    return numbers.size() == count ? numbers : std::vector<Number>();
}

std::optional<orv::Vec3d> vectorOf(std::string_view text) {
    const std::vector<double> numbers = numbersOf<double>(text, ',', 3);
    return numbers.empty() ? std::nullopt : std::optional(orv::Vec3d(numbers[0], numbers[1], numbers[2]));
}

bool hasLength(const orv::Vec3d& vector) {
    return vector.length() > 0.0 && std::isfinite(vector.length());
}

struct NamedView {
    const char* name;
    orv::vis::StandardView view;
};

constexpr NamedView VIEWS[] = {
    {"iso", orv::vis::StandardView::ISOMETRIC}, {"front", orv::vis::StandardView::FRONT},
    {"back", orv::vis::StandardView::BACK},     {"left", orv::vis::StandardView::LEFT},
    {"right", orv::vis::StandardView::RIGHT},   {"top", orv::vis::StandardView::TOP},
    {"bottom", orv::vis::StandardView::BOTTOM},
};

struct NamedColors {
    const char* name;
    orv::vis::ColorMap::Kind kind;
};

constexpr NamedColors COLORS[] = {
    {"viridis", orv::vis::ColorMap::Kind::VIRIDIS},
    {"rainbow", orv::vis::ColorMap::Kind::RAINBOW},
};

struct NamedColor {
    const char* name;
    rvf::Color3::ColorIdent color;
};

constexpr NamedColor BACKGROUNDS[] = {
    {"white", rvf::Color3::WHITE},
    {"grey", rvf::Color3::GRAY},
    {"black", rvf::Color3::BLACK},
};

template <class Named, std::size_t N>
const Named* find(const Named (&all)[N], std::string_view name) {
    const Named* found = nullptr;
    for (const Named& named : all) {
        found = name == named.name ? &named : found;
    }
    return found;
}

template <class Named, std::size_t N>
std::vector<std::string> namesOf(const Named (&all)[N]) {
    std::vector<std::string> names;
    for (const Named& named : all) {
        names.emplace_back(named.name);
    }
    return names;
}

Viewpoint viewpointOf(orv::vis::StandardView view) {
    orv::vis::Camera camera;
    camera.setStandardView(view, {0, 0, 0});
    Viewpoint viewpoint;
    camera.toLookAt(&viewpoint.toEye, nullptr, &viewpoint.up);
    return viewpoint;
}

rvf::Color3f parseColor(std::string_view text) {
    if (const NamedColor* named = find(BACKGROUNDS, text)) {
        return named->color;
    }
    unsigned rgb = 0;
    const char* end = text.data() + text.size();
    if (text.size() == 7 && text[0] == '#' && std::from_chars(text.data() + 1, end, rgb, 16).ptr == end) {
        return rvf::Color3ub(std::uint8_t(rgb >> 16), std::uint8_t(rgb >> 8), std::uint8_t(rgb));
    }
    const std::string name(text);
    refuseArgument(name, "a colour" + didYouMean(namesOf(BACKGROUNDS), name) + " (" + listed(namesOf(BACKGROUNDS)) +
                             " or \"#rrggbb\")");
}

} // namespace

PictureSize parseSize(const std::string& text) {
    const std::vector<int> numbers = numbersOf<int>(text, 'x', 2);
    if (numbers.empty()) {
        refuseArgument(text, "a size such as 800x600");
    }
    if (!orv::vis::Image::isValidSize(numbers[0], numbers[1])) {
        throw CommandError("a picture has from 1 to " + std::to_string(orv::vis::Image::MAXIMUM_SIDE) +
                           " pixels on each side and at most " + std::to_string(orv::vis::Image::MAXIMUM_PIXELS) +
                           " in all, not " + text);
    }
    return {numbers[0], numbers[1]};
}

Pixel parsePixel(const std::string& text) {
    const std::vector<int> numbers = numbersOf<int>(text, ',', 2);
    if (numbers.empty()) {
        refuseArgument(text, "a pixel such as 120,45");
    }
    return {numbers[0], numbers[1]};
}

orv::Vec3d parseVector(const std::string& text) {
    const std::optional<orv::Vec3d> vector = vectorOf(text);
    if (!vector) {
        refuseArgument(text, "three numbers such as 1,0,-2.5");
    }
    return *vector;
}

Viewpoint parseViewpoint(const std::string& text) {
    if (const NamedView* named = find(VIEWS, text)) {
        return viewpointOf(named->view);
    }
    const std::optional<orv::Vec3d> direction = vectorOf(text);
    if (!direction || !hasLength(*direction)) {
        refuseArgument(text, "a view" + didYouMean(namesOf(VIEWS), text) + " (" + listed(namesOf(VIEWS)) +
                                 " or the direction of the eye such as 1,-2,0.5)");
    }
    return {*direction / direction->length(), {0, 0, 1}};
}

Plane parsePlane(const std::string& text) {
    const std::vector<std::string_view> pieces = piecesOf(text, ':');
    if (pieces.size() == 2) {
        const std::optional<orv::Vec3d> point = vectorOf(pieces[0]);
        const std::optional<orv::Vec3d> normal = vectorOf(pieces[1]);
        if (point && normal && hasLength(*normal)) {
            return {*point, *normal};
        }
    }
    const std::size_t axis = text.size() > 2 && text[1] == '=' ? std::string_view("xyz").find(text[0]) : 3;
    const std::optional<double> place = axis < 3 ? numberOf<double>(text.substr(2)) : std::nullopt;
    if (!place) {
        refuseArgument(text, "a plane such as z=2.5, or a point and a normal such as 0,0,2.5:0,0,1");
    }
    Plane plane;
    plane.point[axis] = *place;
    plane.normal[axis] = 1.0;
    return plane;
}

Deformation parseDeformation(const std::string& text) {
    const std::size_t cross = text.rfind('x');
    if (cross != std::string::npos && cross > 0) {
        if (const std::optional<double> scale = numberOf<double>(std::string_view(text).substr(cross + 1))) {
            return {text.substr(0, cross), *scale};
        }
    }
    if (text.empty()) {
        refuseArgument(text, "a displacement and a scale such as DISPx25");
    }
    return {text, 1.0};
}

std::pair<double, double> parseRange(const std::string& text) {
    const std::vector<double> numbers = numbersOf<double>(text, ',', 2);
    if (numbers.empty() || !orv::vis::ColorMap().setFixedRange(numbers[0], numbers[1])) {
        refuseArgument(text, "a range such as 0,355, the smaller number first");
    }
    return {numbers[0], numbers[1]};
}

orv::vis::ColorMap::Kind parseColors(const std::string& text) {
    const NamedColors* named = find(COLORS, text);
    if (!named) {
        refuseArgument(text, "a colour map" + didYouMean(namesOf(COLORS), text) + " (" + listed(namesOf(COLORS)) + ")");
    }
    return named->kind;
}

orv::imp::cae::FileRelation parseFileRelation(const std::string& text) {
    if (text == "series") {
        return orv::imp::cae::FileRelation::STEPS;
    }
    if (text != "pieces") {
        refuseArgument(text, "what files can be (\"series\", \"pieces\")");
    }
    return orv::imp::cae::FileRelation::PIECES;
}

std::pair<rvf::Color3f, rvf::Color3f> parseBackground(const std::string& text) {
    const std::vector<std::string_view> pieces = piecesOf(text, ',');
    if (pieces.size() > 2) {
        refuseArgument(text, "one colour, or two with a comma between them");
    }
    return {parseColor(pieces.front()), parseColor(pieces.back())};
}

} // namespace orvapp
