#pragma once

#include "OrvCore/Vec3d.h"

#include <cstddef>
#include <optional>
#include <string>

namespace orvapp {

/// What is seen at a place of a picture.
struct PickedItem {
    std::string part;
    bool isSection = false; ///< Of the cutting plane: then there is neither element nor node.
    std::optional<int> element;
    std::optional<std::size_t> surface; ///< Of the element, counted from 0; none on beams and points.
    std::optional<int> node;            ///< The nearest one that is seen.
    orv::Vec3d point;                   ///< On the shape as it is shown.
    std::optional<double> value;        ///< That gives the point its colour.
    std::optional<double> itemValue;    ///< At the node, or in the element.
};

/// What `orvapp pick` tells.
struct PickReport {
    std::string state;
    std::string result; ///< Empty when the picture shows none.
    std::string place;  ///< Where itemValue stands: "node" or "element".
    std::optional<PickedItem> item;
};

} // namespace orvapp
