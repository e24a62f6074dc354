#pragma once

#include "Tools/Picture.h"
#include "Tools/PictureLook.h"

#include <string>

namespace orvapp {

struct SituationCaptureOptions {
    PictureOptions picture;
    LookOptions look;
    std::string folder;
    std::string name; ///< Empty for that of the file.
    std::string description;
    bool isRecovery = false; ///< The folder is the recovery folder of an application.
    bool json = false;
};

struct SituationApplyOptions {
    std::string place;
    std::string out;
    std::string file;         ///< To open in place of the one that the situation names; empty for that.
    std::string passwordFile; ///< Empty when the file is not protected.
    std::string size;         ///< Empty for that of the capture.
};

/// `orvapp situation capture`: what `orvapp render` would draw, as a situation in a folder. Throws CommandError or
/// OutputClosed.
void runSituationCapture(const SituationCaptureOptions& options);

/// `orvapp situation apply`: the picture of a situation, pixel for pixel the one that would have been drawn when it was
/// captured. Throws CommandError, also when the model has no longer what the situation shows, or OutputClosed.
void runSituationApply(const SituationApplyOptions& options);

} // namespace orvapp
