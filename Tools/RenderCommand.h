#pragma once

#include "Tools/Picture.h"

#include <string>

namespace orvapp {

struct RenderOptions {
    PictureOptions picture;
    std::string out;
    bool isSeries = false; ///< One picture for each state, numbered.
    std::string colors = "viridis";
    int bands = 0;     ///< 0 for colours that go over into each other.
    std::string range; ///< Of the colours; empty for that of what is shown.
    std::string background = "white";
    bool hasEdges = true;
    bool hasLight = true;
};

/// `orvapp render`: a picture of a state as a PNG file, or one of each state, and on standard output which they are.
/// Memory is needed for one state at a time. Throws CommandError or OutputClosed.
void runRender(const RenderOptions& options);

} // namespace orvapp
