#pragma once

#include "OrvCore/Str.h"

namespace orv::vis {

class Image;

/// @param reason told when it fails, with the name; may be null
bool writePngFile(const Image& image, const Str& path, Str* reason);

/// @param image replaced only when all of the file could be read
/// @param reason told when it fails, with the name; may be null
bool readPngFile(const Str& path, Image* image, Str* reason);

} // namespace orv::vis
