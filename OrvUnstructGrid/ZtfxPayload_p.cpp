#include "OrvUnstructGrid/ZtfxPayload_p.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace orv::ug {
namespace {

constexpr std::size_t FLOAT_CHUNK = std::size_t(1) << 12;

} // namespace

void ZtfxPayload::setBytes(std::span<const std::byte> bytes) {
    m_reals.clear();
    m_bytes = bytes;
    m_isNarrow = false;
    rewind();
}

void ZtfxPayload::setReals(std::vector<std::span<const double>> pieces) {
    m_reals = std::move(pieces);
    m_bytes = {};
    m_isNarrow = std::all_of(m_reals.begin(), m_reals.end(), fitsFloat32);
    rewind();
}

ZtfxArray ZtfxPayload::describe(ZtfxType type, std::uint64_t components) const {
    ZtfxArray array;
    array.type = !m_reals.empty() && m_isNarrow ? ZtfxType::FLOAT32 : type;
    array.components = components;
    array.items = byteCount() / ztfxTypeSize(array.type) / components;
    ZtfxHasher hasher;
    ZtfxPayload reader = *this;
    reader.rewind();
    while (!reader.m_next.empty() || reader.refill() > 0) {
        hasher.update(reader.m_next.data(), reader.m_next.size());
        reader.m_next = {};
    }
    array.checksum = hasher.checksum();
    return array;
}

std::uint64_t ZtfxPayload::byteCount() const {
    std::uint64_t count = m_bytes.size();
    for (const std::span<const double> piece : m_reals) {
        count += piece.size() * (m_isNarrow ? sizeof(float) : sizeof(double));
    }
    return count;
}

void ZtfxPayload::rewind() {
    m_piece = 0;
    m_unnarrowed = {};
    m_next = m_bytes;
}

std::size_t ZtfxPayload::read(char* out, std::size_t count) {
    std::size_t done = 0;
    while (done < count && (!m_next.empty() || refill() > 0)) {
        const std::size_t chunk = std::min(count - done, m_next.size());
        std::memcpy(out + done, m_next.data(), chunk);
        m_next = m_next.subspan(chunk);
        done += chunk;
    }
    return done;
}

// The next piece, or as much of it as the floats hold.
std::size_t ZtfxPayload::refill() {
    while (m_unnarrowed.empty() && m_piece < m_reals.size()) {
        m_unnarrowed = m_reals[m_piece++];
    }
    if (!m_isNarrow) {
        m_next = std::as_bytes(std::exchange(m_unnarrowed, {}));
        return m_next.size();
    }
    m_floats.resize(std::min(m_unnarrowed.size(), FLOAT_CHUNK));
    narrowToFloat32(m_unnarrowed.data(), m_floats.size(), m_floats.data());
    m_unnarrowed = m_unnarrowed.subspan(m_floats.size());
    m_next = std::as_bytes(std::span(m_floats));
    return m_next.size();
}

} // namespace orv::ug
