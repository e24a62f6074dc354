#pragma once

#include <array>
#include <cstdint>

namespace orv::vis {

/// Colours from dark blue over green to yellow, each 0xRRGGBB, that look equally far apart and grow lighter all the
/// way, so that they are told apart in grey and by the colour-blind too.
extern const std::array<std::uint32_t, 256> VIRIDIS;

} // namespace orv::vis
