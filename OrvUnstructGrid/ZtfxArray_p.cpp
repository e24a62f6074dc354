#include "OrvUnstructGrid/ZtfxArray_p.h"

#include "OrvCore/Defines.h"

#include <xxhash.h>
#if defined(__x86_64__)
#include <xxh_x86dispatch.h> // The same functions, in the widest registers that this processor has.
#endif

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdio>
#include <limits>
#include <new>

namespace orv::ug {
namespace {

// The arrays go to the file and come back as they lie in memory.
static_assert(std::endian::native == std::endian::little, "this format needs a little-endian machine");
static_assert(sizeof(float) == 4 && sizeof(double) == 8 && std::numeric_limits<double>::is_iec559);

struct TypeFacts {
    ZtfxType type;
    std::string_view name;
    std::size_t size;
};

constexpr std::array<TypeFacts, 5> TYPES = {{{ZtfxType::FLOAT64, "float64", 8},
                                             {ZtfxType::FLOAT32, "float32", 4},
                                             {ZtfxType::INT32, "int32", 4},
                                             {ZtfxType::UINT32, "uint32", 4},
                                             {ZtfxType::UINT8, "uint8", 1}}};

const TypeFacts& factsOf(ZtfxType type) {
    return TYPES[static_cast<std::size_t>(type)];
}

constexpr float UNDEFINED_FLOAT = std::numeric_limits<float>::max();

inline float narrowed(double value) {
    return value == UNDEFINED_DOUBLE ? UNDEFINED_FLOAT : static_cast<float>(value);
}

inline double widened(float value) {
    return value == UNDEFINED_FLOAT ? UNDEFINED_DOUBLE : static_cast<double>(value);
}

std::optional<std::uint64_t> hexNumber(std::string_view digits) {
    std::uint64_t number = 0;
    const auto [end, problem] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    const bool isWhole = problem == std::errc() && end == digits.data() + digits.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

} // namespace

std::string_view ztfxTypeName(ZtfxType type) {
    return factsOf(type).name;
}

std::optional<ZtfxType> ztfxTypeOf(std::string_view name) {
    const auto found = std::find_if(TYPES.begin(), TYPES.end(), [name](const TypeFacts& f) { return f.name == name; });
    return found != TYPES.end() ? std::optional(found->type) : std::nullopt;
}

std::size_t ztfxTypeSize(ZtfxType type) {
    return factsOf(type).size;
}

std::string ZtfxChecksum::text() const {
    char digits[33];
    std::snprintf(digits, sizeof digits, "%016llx%016llx", static_cast<unsigned long long>(high),
                  static_cast<unsigned long long>(low));
    return digits;
}

std::optional<ZtfxChecksum> ZtfxChecksum::fromText(std::string_view text) {
    if (text.size() != 32) {
        return std::nullopt;
    }
    const std::optional<std::uint64_t> high = hexNumber(text.substr(0, 16));
    const std::optional<std::uint64_t> low = hexNumber(text.substr(16));
    return high && low ? std::optional(ZtfxChecksum{*high, *low}) : std::nullopt;
}

struct ZtfxHasher::State {
    XXH3_state_t* xxh = XXH3_createState();

    State() {
        if (!xxh) {
            throw std::bad_alloc();
        }
        XXH3_128bits_reset(xxh);
    }

    ~State() {
        XXH3_freeState(xxh);
    }

    State(const State&) = delete;
    State& operator=(const State&) = delete;
};

ZtfxHasher::ZtfxHasher() : m_state(std::make_unique<State>()) {}

ZtfxHasher::~ZtfxHasher() = default;

void ZtfxHasher::update(const void* bytes, std::size_t count) {
    XXH3_128bits_update(m_state->xxh, bytes, count);
}

ZtfxChecksum ZtfxHasher::checksum() const {
    const XXH128_hash_t hash = XXH3_128bits_digest(m_state->xxh);
    return {hash.high64, hash.low64};
}

bool ZtfxArray::isReal() const {
    return type == ZtfxType::FLOAT64 || type == ZtfxType::FLOAT32;
}

std::uint64_t ZtfxArray::valueCount() const {
    return items * components;
}

std::uint64_t ZtfxArray::byteCount() const {
    return valueCount() * ztfxTypeSize(type);
}

std::uint64_t ZtfxArray::memoryByteCount() const {
    return isReal() ? valueCount() * sizeof(double) : byteCount();
}

std::string ztfxEntryName(std::uint64_t id) {
    return "data/" + std::to_string(id);
}

// In blocks without a branch inside, so that the compiler handles several values at once; real results are settled by
// the first block.
bool fitsFloat32(std::span<const double> values) {
    constexpr std::size_t BLOCK = 512;
    while (!values.empty()) {
        const std::span<const double> block = values.first(std::min(values.size(), BLOCK));
        std::uint64_t lost = 0;
        for (const double value : block) {
            lost |= std::bit_cast<std::uint64_t>(widened(narrowed(value))) ^ std::bit_cast<std::uint64_t>(value);
        }
        if (lost != 0) {
            return false;
        }
        values = values.subspan(block.size());
    }
    return true;
}

void narrowToFloat32(const double* values, std::size_t count, float* out) {
    std::transform(values, values + count, out, narrowed);
}

void widenFloat32(const float* values, std::size_t count, double* out) {
    std::transform(values, values + count, out, widened);
}

} // namespace orv::ug
