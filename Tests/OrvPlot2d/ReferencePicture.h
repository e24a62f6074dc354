#pragma once

#include <gtest/gtest.h>

#include <string>

namespace orvtest {

/// Whether a PNG shows what Tests/data/plots/<name>.png does.
///
/// Other releases of the drawing library smooth edges a little differently: up to 20 pixels may differ by more than 48
/// of 255 in a colour, which is less than a letter, and any number by less.
///
/// When they differ, and when there is no such picture yet, the candidate is written beside the test program, for the
/// eye to judge and, if it is right, to be copied.
testing::AssertionResult showsReference(const std::string& pngFile, const std::string& name);

} // namespace orvtest
