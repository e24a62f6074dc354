#pragma once

#include "OrvVisualization/View.h"
#include "Tools/Arguments.h"

#include <string>

namespace orvapp {

/// How a picture is drawn, besides what is to be seen in it; texts as Arguments.h understands them.
struct LookOptions {
    std::string colors = "viridis";
    int bands = 0;     ///< 0 for colours that go over into each other.
    std::string range; ///< Of the colours; empty for that of what is shown.
    std::string background = "white";
    bool hasEdges = true;
    bool hasLight = true;
};

void setLook(const LookOptions& options, orv::vis::View* view);

/// Throws CommandError unless a name ends in .png.
void checkPictureName(const std::string& path);

/// Draws what a view shows and writes it as a PNG file. Throws CommandError.
void writePicture(const orv::vis::View& view, PictureSize size, const std::string& path);

} // namespace orvapp
