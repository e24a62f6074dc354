#pragma once

#include "Tools/Picture.h"

#include <optional>
#include <string>
#include <vector>

namespace orvapp {

struct PickOptions {
    PictureOptions picture;
    std::string at;               ///< A pixel of the picture; empty for a ray.
    std::vector<std::string> ray; ///< Its origin and its direction; empty for a pixel.
    bool json = false;
};

/// `orvapp pick`: what is seen at a pixel of the picture that `orvapp render` would draw, or where a ray meets the
/// model. Throws CommandError or OutputClosed.
void runPick(const PickOptions& options);

} // namespace orvapp
