#pragma once

#include <gtest/gtest.h>

#include <string>

namespace orvtest {

/// How like each other two pictures of one size have to be.
struct PictureTolerance {
    int difference; ///< Of 255: how far apart the channels of a pixel may be.
    int pixels;     ///< How many pixels may be farther apart.
};

/// Whether a PNG shows what Tests/data/NAME.png does, which has been looked at.
///
/// When they differ, and when there is no such picture yet, the candidate is written beside the test program, for the
/// eye to judge and, if it is right, to be copied; and what differs, brightened, as another one.
testing::AssertionResult showsReference(const std::string& pngFile, const std::string& name,
                                        const PictureTolerance& tolerance);

} // namespace orvtest
