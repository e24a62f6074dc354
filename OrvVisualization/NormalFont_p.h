#pragma once

#include <cstddef>
#include <span>

namespace orv::vis {

/// The bytes of DejaVu Sans, a TrueType file, as they were when the library was built.
std::span<const std::byte> normalFontFile();

} // namespace orv::vis
