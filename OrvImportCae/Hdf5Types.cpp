#include "OrvImportCae/Hdf5Types.h"

#include <algorithm>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr int MOST_DEEP = 64;
constexpr std::uint64_t LARGEST_NUMBER = 32; // HDF5 turns the bytes of one in a small buffer.
constexpr std::uint64_t MOST_DIMENSIONS = 32;

/// Reads a type and those that it is made of, one after the other.
class Reader {
public:
    explicit Reader(Hdf5Cursor& message) : m_message(message) {}

    Hdf5Type read(int depth) {
        const std::uint64_t versionAndKind = m_message.number(1);
        Hdf5Type type;
        type.kind = versionAndKind & 15;
        const std::uint64_t version = versionAndKind >> 4;
        m_message.expectBetween("the version of a type", version, 1, 3);
        m_message.expectBetween("the class of a type", type.kind, HDF5_INTEGER, HDF5_ARRAY);
        m_message.expectBetween("the depth of types", std::uint64_t(depth), 0, MOST_DEEP);
        const std::uint64_t flags = m_message.number(3);
        type.size = m_message.number(4);
        m_message.expectBetween("the size of a type", type.size, 1, 0xffffffff);
        readProperties(&type, version, flags, depth);
        return type;
    }

private:
    void readProperties(Hdf5Type* type, std::uint64_t version, std::uint64_t flags, int depth) {
        switch (type->kind) {
        case HDF5_INTEGER:
        case HDF5_BITS:
            readBits(type->size);
            break;
        case HDF5_FLOAT:
            readFloat(type->size, flags);
            break;
        case HDF5_INSTANT:
            m_message.expectBetween("the bits of a time", m_message.number(2), 1, 8 * type->size);
            break;
        case HDF5_OPAQUE:
            m_message.skip(flags & 0xff);
            break;
        case HDF5_COMPOUND:
            readCompound(type, version, flags & 0xffff, depth);
            break;
        case HDF5_REFERENCE:
            m_message.expectBetween("the kind of a reference", flags & 15, 0, 1);
            break;
        case HDF5_ENUM:
            readEnum(type, version, flags & 0xffff, depth);
            break;
        case HDF5_VARIABLE:
            m_message.expectBetween("the kind of a list", flags & 15, 0, 1);
            m_message.expectBetween("the size of a list", type->size, 8 + m_message.sizes().address,
                                    8 + m_message.sizes().address);
            type->parts.push_back(read(depth + 1));
            break;
        case HDF5_ARRAY:
            readArray(type, version, depth);
            break;
        default: // Texts have nothing of their own.
            break;
        }
    }

    // The last one of them that an item has.
    std::uint64_t readBits(std::uint64_t size) {
        m_message.expectBetween("the size of a number", size, 1, LARGEST_NUMBER);
        const std::uint64_t offset = m_message.number(2);
        const std::uint64_t count = m_message.number(2);
        m_message.expectBetween("the bits of a number", count, 1, 8 * size);
        m_message.expectBetween("the last bit of a number", offset + count, 1, 8 * size);
        return offset + count;
    }

    void readFloat(std::uint64_t size, std::uint64_t flags) {
        const std::uint64_t end = readBits(size);
        m_message.expectBetween("the kind of mantissa", flags >> 4 & 3, 0, 2);
        m_message.expectBetween("the bit of a sign", flags >> 8 & 0xff, 0, end - 1);
        for (const char* what : {"the last bit of an exponent", "the last bit of a mantissa"}) {
            const std::uint64_t offset = m_message.number(1);
            const std::uint64_t count = m_message.number(1);
            m_message.expectBetween(what, offset + count, 1, end);
        }
        m_message.skip(4); // What exponents are counted from.
    }

    void readCompound(Hdf5Type* type, std::uint64_t version, std::uint64_t count, int depth) {
        m_message.expectBetween("the number of members", count, 1, 0xffff);
        std::size_t offsetSize = 4;
        if (version >= 3) {
            offsetSize = type->size > 0xffffff ? 4 : type->size > 0xffff ? 3 : type->size > 0xff ? 2 : 1;
        }
        for (std::uint64_t i = 0; i < count; ++i) {
            readName(version);
            const std::uint64_t offset = m_message.number(offsetSize);
            const std::uint64_t items = version == 1 ? readOldSizes() : 1;
            Hdf5Type member = read(depth + 1);
            if (items != 1) {
                const std::uint64_t size = hdf5Product(member.size, items);
                member = {HDF5_ARRAY, size, {std::move(member)}, {}};
            }
            m_message.expectBetween("the size of a member", member.size, 1, type->size);
            m_message.expectBetween("the place of a member", offset, 0, type->size - member.size);
            type->parts.push_back(std::move(member));
            type->offsets.push_back(offset);
        }
        expectApart(*type);
    }

    // Members had dimensions of their own before there were arrays.
    std::uint64_t readOldSizes() {
        constexpr std::uint64_t MOST = 4;
        const std::uint64_t rank = m_message.number(1);
        m_message.expectBetween("the dimensions of a member", rank, 0, MOST);
        m_message.skip(3 + 4 + 4);
        std::uint64_t items = 1;
        for (std::uint64_t d = 0; d < MOST; ++d) {
            const std::uint64_t size = m_message.number(4);
            items = d < rank ? hdf5Product(items, size) : items;
        }
        return items;
    }

    void expectApart(const Hdf5Type& type) {
        std::vector<std::pair<std::uint64_t, std::uint64_t>> ranges;
        for (std::size_t i = 0; i < type.parts.size(); ++i) {
            ranges.emplace_back(type.offsets[i], type.offsets[i] + type.parts[i].size);
        }
        std::sort(ranges.begin(), ranges.end());
        for (std::size_t i = 1; i < ranges.size(); ++i) {
            m_message.expectBetween("the place of a member", ranges[i].first, ranges[i - 1].second, type.size);
        }
    }

    void readEnum(Hdf5Type* type, std::uint64_t version, std::uint64_t count, int depth) {
        type->parts.push_back(read(depth + 1));
        m_message.expectBetween("the size of an enumeration", type->size, type->parts[0].size, type->parts[0].size);
        for (std::uint64_t i = 0; i < count; ++i) {
            readName(version);
        }
        m_message.skip(count * type->size);
    }

    void readArray(Hdf5Type* type, std::uint64_t version, int depth) {
        m_message.expectBetween("the version of an array", version, 2, 3);
        const std::uint64_t rank = m_message.number(1);
        m_message.expectBetween("the dimensions of an array", rank, 1, MOST_DIMENSIONS);
        m_message.skip(version == 2 ? 3 : 0);
        std::uint64_t items = 1;
        for (std::uint64_t d = 0; d < rank; ++d) {
            items = hdf5Product(items, m_message.number(4));
        }
        m_message.skip(version == 2 ? 4 * rank : 0);
        type->parts.push_back(read(depth + 1));
        const std::uint64_t size = hdf5Product(items, type->parts[0].size);
        m_message.expectBetween("the size of an array", type->size, size, size);
    }

    // Those of older types fill eights of bytes.
    void readName(std::uint64_t version) {
        const std::size_t size = m_message.text().size() + 1;
        m_message.skip(version < 3 ? (8 - size % 8) % 8 : 0);
    }

    Hdf5Cursor& m_message;
};

} // namespace

bool Hdf5Type::isVariable() const {
    return kind == HDF5_VARIABLE ||
           std::any_of(parts.begin(), parts.end(), [](const Hdf5Type& part) { return part.isVariable(); });
}

Hdf5Type readHdf5Type(Hdf5Cursor& message) {
    return Reader(message).read(0);
}

} // namespace orv::imp::cae
