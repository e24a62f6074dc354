#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orv::ug {

/// What the values of an array in a ZTFx file are, all of them little-endian.
enum class ZtfxType : std::uint8_t {
    FLOAT64,
    FLOAT32, ///< Stands for doubles that it holds exactly. The largest float stands for UNDEFINED_DOUBLE.
    INT32,
    UINT32,
    UINT8
};

/// The name in the index, such as "float64".
std::string_view ztfxTypeName(ZtfxType type);
std::optional<ZtfxType> ztfxTypeOf(std::string_view name);
/// The bytes of one value.
std::size_t ztfxTypeSize(ZtfxType type);

/// A 128-bit XXH3 hash.
struct ZtfxChecksum {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    auto operator<=>(const ZtfxChecksum&) const = default;

    /// 32 hexadecimal digits.
    std::string text() const;
    static std::optional<ZtfxChecksum> fromText(std::string_view text);
};

/// Makes a checksum piece by piece.
class ZtfxHasher {
public:
    ZtfxHasher();
    ~ZtfxHasher();

    void update(const void* bytes, std::size_t count);
    ZtfxChecksum checksum() const;

private:
    struct State;

    std::unique_ptr<State> m_state;
};

/// One array of a file.
struct ZtfxArray {
    std::uint64_t id = 0; ///< The number in the name of its entry.
    ZtfxType type = ZtfxType::FLOAT64;
    std::uint64_t items = 0;
    std::uint64_t components = 1; ///< The values of one item.
    ZtfxChecksum checksum;        ///< Of the bytes, as they are before compression and encryption.

    auto operator<=>(const ZtfxArray&) const = default;

    bool isReal() const;
    std::uint64_t valueCount() const;
    std::uint64_t byteCount() const;
    /// In memory reals are doubles.
    std::uint64_t memoryByteCount() const;
};

/// The name of the entry with that number.
std::string ztfxEntryName(std::uint64_t id);

/// True when ZtfxType::FLOAT32 gives back all values bit by bit.
bool fitsFloat32(std::span<const double> values);

void narrowToFloat32(const double* values, std::size_t count, float* out);
void widenFloat32(const float* values, std::size_t count, double* out);

} // namespace orv::ug
