#pragma once

#include "OrvUnstructGrid/ZtfxArray_p.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orv::ug {

/// The bytes of one entry on their way into a container. They are not copied: what they are made from has to live as
/// long as they are read.
class ZtfxPayload {
public:
    void setBytes(std::span<const std::byte> bytes);

    /// Reals in several pieces, which become 32 bits wide each when all of them can.
    void setReals(std::vector<std::span<const double>> pieces);

    /// What was set, as an array of items with that many values each; its id is 0. One pass over the bytes.
    /// @param type of what was set by setBytes()
    ZtfxArray describe(ZtfxType type, std::uint64_t components) const;

    std::uint64_t byteCount() const;

    /// Back to the first byte.
    void rewind();
    /// The next bytes, up to `count`. Returns how many; 0 behind the last one.
    std::size_t read(char* out, std::size_t count);

private:
    std::size_t refill();

    std::vector<std::span<const double>> m_reals;
    std::span<const std::byte> m_bytes;
    bool m_isNarrow = false;

    std::size_t m_piece = 0;              ///< The next of m_reals.
    std::span<const double> m_unnarrowed; ///< Of the piece before it.
    std::span<const std::byte> m_next;    ///< What read() gives first.
    std::vector<float> m_floats;
};

} // namespace orv::ug
