#pragma once

namespace orv::plt {

/// A place on the picture: x to the right, y down, in units of the picture.
struct Point {
    double x = 0.0;
    double y = 0.0;

    bool operator==(const Point&) const = default;
};

struct Rect {
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;

    bool operator==(const Rect&) const = default;

    double width() const;
    double height() const;
    Point center() const;

    /// Borders belong to it.
    bool contains(const Point& point) const;
    /// Whether they have more than borders in common.
    bool overlaps(const Rect& other) const;
};

/// Cuts a segment down to what lies in `rect`, also when its ends are as far away as doubles reach.
/// @return false, with the ends as they were, when nothing does
bool clipSegment(Point* from, Point* to, const Rect& rect);

} // namespace orv::plt
