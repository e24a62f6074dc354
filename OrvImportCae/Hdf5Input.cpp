#include "OrvImportCae/Hdf5Input.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::size_t SUM_SIZE = 4;

// Blocks do not overlap, so a good file has no more of them than its size, besides beginnings that are read twice.
constexpr std::uint64_t MOST_READ = 4;
constexpr std::uint64_t READ_ANYWAY = 1 << 16;

std::uint64_t littleEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return value;
}

std::uint32_t rotated(std::uint32_t value, int bits) {
    return value << bits | value >> (32 - bits);
}

} // namespace

Hdf5Cursor::Hdf5Cursor(std::string_view bytes, std::uint64_t position, const Hdf5Sizes& sizes, const char* what)
    : m_bytes(bytes), m_position(position), m_sizes(&sizes), m_what(what) {}

std::uint64_t Hdf5Cursor::number(std::size_t size) {
    return littleEndian(bytes(size));
}

std::uint64_t Hdf5Cursor::address() {
    const std::string_view found = bytes(m_sizes->address);
    return std::all_of(found.begin(), found.end(), [](char c) { return c == '\xff'; }) ? HDF5_UNDEFINED
                                                                                       : littleEndian(found);
}

std::uint64_t Hdf5Cursor::length() {
    return number(m_sizes->length);
}

std::string_view Hdf5Cursor::text() {
    const std::size_t end = m_bytes.find('\0', m_at);
    if (end == std::string_view::npos) {
        fail(std::string("expected a zero behind a text in ") + m_what + ", found none");
    }
    const std::string_view found = m_bytes.substr(m_at, end - m_at);
    m_at = end + 1;
    return found;
}

std::string_view Hdf5Cursor::bytes(std::uint64_t size) {
    if (size > left()) {
        fail("expected " + std::to_string(size) + " more bytes in " + m_what + ", found " + std::to_string(left()));
    }
    const std::string_view found = m_bytes.substr(m_at, std::size_t(size));
    m_at += std::size_t(size);
    return found;
}

void Hdf5Cursor::skip(std::uint64_t size) {
    bytes(size);
}

Hdf5Cursor Hdf5Cursor::piece(std::uint64_t size, const char* what) {
    const std::uint64_t begin = position();
    return Hdf5Cursor(bytes(size), begin, *m_sizes, what);
}

void Hdf5Cursor::expect(std::string_view magic) {
    const Hdf5Cursor before = *this;
    const std::string_view found = bytes(magic.size());
    if (found != magic) {
        before.fail("expected " + quotedForPeople(magic) + " of " + m_what + ", found " + quotedForPeople(found));
    }
}

void Hdf5Cursor::expectBetween(const char* what, std::uint64_t found, std::uint64_t least, std::uint64_t most) const {
    if (found < least || found > most) {
        failAtLast(std::string("expected ") + what + " of " + m_what + " to be " +
                   (least == most ? std::to_string(least) : std::to_string(least) + " to " + std::to_string(most)) +
                   ", found " + std::to_string(found));
    }
}

std::uint64_t Hdf5Cursor::position() const {
    return m_position + m_at;
}

std::uint64_t Hdf5Cursor::left() const {
    return m_bytes.size() - m_at;
}

const Hdf5Sizes& Hdf5Cursor::sizes() const {
    return *m_sizes;
}

void Hdf5Cursor::fail(const std::string& text) const {
    throw Hdf5Damage{position(), text};
}

void Hdf5Cursor::failAtLast(const std::string& text) const {
    throw Hdf5Damage{position() - std::min<std::uint64_t>(m_at, 1), text};
}

Hdf5Cursor Hdf5Block::cursor(const Hdf5Sizes& sizes, const char* what) const {
    return Hdf5Cursor({bytes.data(), bytes.size()}, position, sizes, what);
}

bool Hdf5Input::open(const std::string& filename, ug::Error* error) {
    return m_file.open(filename, error);
}

const std::string& Hdf5Input::name() const {
    return m_file.name();
}

std::uint64_t Hdf5Input::fileSize() const {
    return std::uint64_t(m_file.size());
}

void Hdf5Input::setBase(std::uint64_t base) {
    m_base = base;
}

void Hdf5Input::setSizes(const Hdf5Sizes& sizes) {
    m_sizes = sizes;
}

const Hdf5Sizes& Hdf5Input::sizes() const {
    return m_sizes;
}

Hdf5Block Hdf5Input::read(std::uint64_t address, std::uint64_t size, const char* what) {
    expectRoom(address, size, what);
    m_done += size;
    if (m_done > MOST_READ * fileSize() + READ_ANYWAY) {
        fail(address, std::string("expected blocks that do not overlap, found ") + what + " among too many");
    }
    const std::uint64_t position = m_base + address;
    const char* bytes = m_bytes.at(std::int64_t(position), std::size_t(size));
    if (!bytes) {
        fail(address, std::string(what) + " cannot be read");
    }
    return {std::vector<char>(bytes, bytes + size), position};
}

Hdf5Block Hdf5Input::readSummed(std::uint64_t address, std::uint64_t size, const char* what) {
    Hdf5Block block = read(address, size, what);
    if (size < SUM_SIZE) {
        fail(address,
             std::string("expected room for the sum of ") + what + ", found " + std::to_string(size) + " bytes");
    }
    const std::string_view bytes(block.bytes.data(), std::size_t(size));
    if (hdf5Sum(bytes.substr(0, bytes.size() - SUM_SIZE)) != littleEndian(bytes.substr(bytes.size() - SUM_SIZE))) {
        fail(address, std::string("expected the bytes of ") + what + " to give the sum behind them");
    }
    block.bytes.resize(bytes.size() - SUM_SIZE);
    return block;
}

Hdf5Block Hdf5Input::readSome(std::uint64_t address, std::uint64_t most, const char* what) {
    expectRoom(address, 1, what);
    return read(address, std::min(most, fileSize() - m_base - address), what);
}

void Hdf5Input::expectRoom(std::uint64_t address, std::uint64_t size, const char* what) const {
    const std::uint64_t room = fileSize() - m_base;
    if (address > room || size > room - address) {
        throw Hdf5Damage{address > room ? fileSize() : m_base + address,
                         std::string("expected ") + what + " within the file, found " +
                             (address == HDF5_UNDEFINED
                                  ? "it nowhere"
                                  : std::to_string(size) + " bytes of it at byte " + std::to_string(address))};
    }
}

void Hdf5Input::fail(std::uint64_t address, const std::string& text) const {
    throw Hdf5Damage{m_base + address, text};
}

std::uint32_t hdf5Sum(std::string_view bytes) {
    std::uint32_t a = 0xdeadbeef + std::uint32_t(bytes.size());
    std::uint32_t b = a;
    std::uint32_t c = a;
    const auto add = [&] { // The next three numbers, with zeros behind the last byte.
        a += std::uint32_t(littleEndian(bytes.substr(0, 4)));
        bytes.remove_prefix(std::min<std::size_t>(bytes.size(), 4));
        b += std::uint32_t(littleEndian(bytes.substr(0, 4)));
        bytes.remove_prefix(std::min<std::size_t>(bytes.size(), 4));
        c += std::uint32_t(littleEndian(bytes.substr(0, 4)));
        bytes.remove_prefix(std::min<std::size_t>(bytes.size(), 4));
    };
    const auto mix = [](std::uint32_t& x, std::uint32_t& y, std::uint32_t& z, int bits) {
        x -= z;
        x ^= rotated(z, bits);
        z += y;
    };
    while (bytes.size() > 12) {
        add();
        mix(a, b, c, 4);
        mix(b, c, a, 6);
        mix(c, a, b, 8);
        mix(a, b, c, 16);
        mix(b, c, a, 19);
        mix(c, a, b, 4);
    }
    if (bytes.empty()) {
        return c;
    }
    add();
    const auto finish = [](std::uint32_t& x, std::uint32_t y, int bits) {
        x ^= y;
        x -= rotated(y, bits);
    };
    finish(c, b, 14);
    finish(a, c, 11);
    finish(b, a, 25);
    finish(c, b, 16);
    finish(a, c, 4);
    finish(b, a, 14);
    finish(c, b, 24);
    return c;
}

std::uint64_t hdf5Product(std::uint64_t a, std::uint64_t b) {
    constexpr std::uint64_t LARGEST = std::numeric_limits<std::uint64_t>::max();
    return a != 0 && b > LARGEST / a ? LARGEST : a * b;
}

} // namespace orv::imp::cae
