#pragma once

#include "Tools/Picture.h"
#include "Tools/PictureLook.h"

#include <string>

namespace orvapp {

struct RenderOptions {
    PictureOptions picture;
    LookOptions look;
    std::string out;
    bool isSeries = false; ///< One picture for each state, numbered.
};

/// `orvapp render`: a picture of a state as a PNG file, or one of each state, and on standard output which they are.
/// Memory is needed for one state at a time. Throws CommandError or OutputClosed.
void runRender(const RenderOptions& options);

} // namespace orvapp
