#include "OrvImportCae/Hdf5Header.h"

#include <algorithm>
#include <set>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr const char* HEADER = "an object header";
constexpr std::string_view MAGIC = "OHDR";
constexpr std::string_view CONTINUATION_MAGIC = "OCHK";
constexpr std::uint64_t SUM_SIZE = 4;

enum Flag : std::uint64_t { SIZE_MASK = 3, HAS_ORDER = 4, HAS_PHASE = 16, HAS_TIMES = 32, ALL_FLAGS = 63 };

constexpr std::uint64_t IS_SHARED = 2; // Of messages.

/// Reads a header, block after block.
class Reader {
public:
    explicit Reader(Hdf5Input& input) : m_input(input) {}

    Hdf5Header read(std::uint64_t address) {
        m_seen.insert(address);
        const Hdf5Block begin = m_input.readSome(address, LONGEST_PREFIX, HEADER);
        Hdf5Cursor prefix = begin.cursor(m_input.sizes(), HEADER);
        m_isSummed = std::string_view(begin.bytes.data(), begin.bytes.size()).starts_with(MAGIC);
        m_isSummed ? readSummed(address, prefix) : readPlain(address, prefix);
        for (std::size_t next = 0; next < m_continuations.size(); ++next) {
            readContinuation(m_continuations[next].first, m_continuations[next].second);
        }
        return std::move(m_header);
    }

private:
    // Signature, version, flags, times, limits of attributes and a size of eight bytes.
    static constexpr std::uint64_t LONGEST_PREFIX = 4 + 1 + 1 + 16 + 4 + 8;

    void readPlain(std::uint64_t address, Hdf5Cursor& prefix) {
        constexpr std::uint64_t PREFIX_SIZE = 16; // With four bytes of nothing.
        prefix.expectBetween("the version", prefix.number(1), 1, 1);
        prefix.skip(1 + 2 + 4); // Messages are counted, but go as far as the size says.
        const std::uint64_t size = prefix.number(4);
        Hdf5Cursor messages = keep(m_input.read(address, PREFIX_SIZE + size, HEADER));
        messages.skip(PREFIX_SIZE);
        readMessages(messages);
    }

    void readSummed(std::uint64_t address, Hdf5Cursor& prefix) {
        const std::uint64_t begin = prefix.position();
        prefix.expect(MAGIC);
        prefix.expectBetween("the version", prefix.number(1), 2, 2);
        const std::uint64_t flags = prefix.number(1);
        prefix.expectBetween("the flags", flags, 0, ALL_FLAGS);
        m_hasOrder = (flags & HAS_ORDER) != 0;
        prefix.skip((flags & HAS_TIMES) != 0 ? 16 : 0);
        prefix.skip((flags & HAS_PHASE) != 0 ? 4 : 0);
        const std::uint64_t size = prefix.number(std::size_t(1) << (flags & SIZE_MASK));
        m_input.expectRoom(address, size, HEADER); // So that the sum does not run over.
        const std::uint64_t prefixSize = prefix.position() - begin;
        Hdf5Cursor messages = keep(m_input.readSummed(address, prefixSize + size + SUM_SIZE, HEADER));
        messages.skip(prefixSize);
        readMessages(messages);
    }

    void readContinuation(std::uint64_t address, std::uint64_t size) {
        constexpr const char* CONTINUATION = "the continuation of an object header";
        if (!m_seen.insert(address).second) {
            m_input.fail(address, "expected blocks of an object header to be different, found this one twice");
        }
        if (!m_isSummed) {
            readMessages(keep(m_input.read(address, size, CONTINUATION)));
            return;
        }
        Hdf5Cursor messages = keep(m_input.readSummed(address, size, CONTINUATION));
        messages.expect(CONTINUATION_MAGIC);
        readMessages(messages);
    }

    // What is too short for a message is a gap, but not at the beginning.
    void readMessages(Hdf5Cursor messages) {
        const std::uint64_t headSize = m_isSummed ? (m_hasOrder ? 6 : 4) : 8;
        for (bool isFirst = true; messages.left() >= headSize || (isFirst && messages.left() > 0); isFirst = false) {
            const std::uint64_t type = messages.number(m_isSummed ? 1 : 2);
            const std::uint64_t size = messages.number(2);
            const std::uint64_t flags = messages.number(1);
            messages.skip(headSize - (m_isSummed ? 4 : 5));
            Hdf5Cursor body = messages.piece(size, "a message of an object header");
            m_header.messages.push_back({type, (flags & IS_SHARED) != 0, body});
            if (type == HDF5_CONTINUATION) {
                const std::uint64_t address = body.address();
                m_continuations.emplace_back(address, body.length());
            }
        }
    }

    Hdf5Cursor keep(Hdf5Block block) {
        m_header.blocks.push_back(std::move(block));
        return m_header.blocks.back().cursor(m_input.sizes(), HEADER);
    }

    Hdf5Input& m_input;
    Hdf5Header m_header;
    std::vector<std::pair<std::uint64_t, std::uint64_t>> m_continuations; ///< Addresses and sizes.
    std::set<std::uint64_t> m_seen;
    bool m_isSummed = false;
    bool m_hasOrder = false;
};

} // namespace

const Hdf5Message* Hdf5Header::find(std::uint64_t type) const {
    const auto found = std::find_if(messages.begin(), messages.end(),
                                    [&](const Hdf5Message& message) { return message.type == type; });
    return found == messages.end() ? nullptr : &*found;
}

Hdf5Header readHdf5Header(Hdf5Input& input, std::uint64_t address) {
    return Reader(input).read(address);
}

} // namespace orv::imp::cae
