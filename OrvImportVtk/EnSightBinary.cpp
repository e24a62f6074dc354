#include "OrvImportVtk/EnSightBinary.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::int64_t TEXT_SIZE = 80;
constexpr std::int64_t MARK_SIZE = 4;
constexpr std::size_t NUMBER_SIZE = 4;
constexpr std::size_t NUMBERS_AT_ONCE = 8192;
constexpr std::string_view STEP_BEGIN = "BEGIN TIME STEP";

std::uint32_t swapped(std::uint32_t bytes) {
    return bytes << 24 | (bytes & 0xff00) << 8 | (bytes >> 8 & 0xff00) | bytes >> 24;
}

std::string trimmed(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    const std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
    return std::string(text.substr(begin, text.find_last_not_of(' ') + 1 - begin)); // npos + 1 is 0.
}

} // namespace

EnSightBinary::EnSightBinary(std::unique_ptr<CaeFile> file, std::int64_t offset, Form form, ug::Error* error)
    : EnSightFile(std::move(file), form, error), m_offset(offset) {}

bool EnSightBinary::readText(std::string_view what, std::string* text) {
    if (!endRecord()) {
        return false;
    }
    setTextOffset(m_offset);
    if (form() == FORTRAN_BINARY) {
        do { // What has no numbers may be an empty record.
            if (!endRecord() || !beginRecord(what)) {
                return false;
            }
        } while (m_recordSize == 0);
        if (m_recordSize != TEXT_SIZE) {
            return fail("expected " + std::string(what) + " of 80 bytes, found a record of " +
                        std::to_string(m_recordSize));
        }
    }
    std::array<char, TEXT_SIZE> bytes;
    if (!readBytes(what, bytes.size(), bytes.data())) {
        return false;
    }
    *text = trimmed({bytes.data(), bytes.size()});
    return endRecord();
}

bool EnSightBinary::readPartNumber(int* number) {
    if (form() == C_BINARY && !m_knowsOrder) {
        std::uint32_t bytes = 0;
        file().read(m_offset, reinterpret_cast<char*>(&bytes), NUMBER_SIZE);
        m_isSwapped = swapped(bytes) < bytes;
        m_knowsOrder = true;
    }
    std::vector<int> numbers;
    if (!readInts("a part", 1, 1, std::numeric_limits<int>::max(), &numbers)) {
        return false;
    }
    *number = numbers[0];
    return true;
}

bool EnSightBinary::skipNumbers(std::string_view what, std::size_t count) {
    return hasRoomFor(what, count) && readBytes(what, count * NUMBER_SIZE, nullptr);
}

bool EnSightBinary::readIntPieces(std::string_view what, std::size_t count, int lowest, int highest,
                                  const TakeInts& take) {
    const auto isWrong = [lowest, range = std::uint32_t(highest) - std::uint32_t(lowest)](int number) {
        return std::uint32_t(number) - std::uint32_t(lowest) > range;
    };
    return eachPiece<int>(what, count, [&](std::span<const int> piece) {
        std::uint32_t hasWrong = 0;
        for (const int number : piece) {
            hasWrong |= std::uint32_t(isWrong(number));
        }
        if (hasWrong) {
            const int number = *std::find_if(piece.begin(), piece.end(), isWrong);
            return failToFindAll(m_offset, what, count,
                                 std::to_string(number) + " where " + std::to_string(lowest) + " to " +
                                     std::to_string(highest) + " are");
        }
        take(piece);
        return true;
    });
}

bool EnSightBinary::readFloatsTo(std::string_view what, std::size_t count, float* first, std::size_t stride) {
    if (stride == 1) {
        return hasRoomFor(what, count) && readNumbers(what, count, first);
    }
    return eachPiece<float>(what, count, [&first, stride](std::span<const float> piece) {
        for (std::size_t i = 0; i < piece.size(); ++i) {
            first[i * stride] = piece[i];
        }
        first += piece.size() * stride;
        return true;
    });
}

bool EnSightBinary::isAtEnd() {
    return m_recordLeft == 0 && m_offset + (m_isInRecord ? MARK_SIZE : 0) >= file().size();
}

std::size_t EnSightBinary::room() const {
    return std::size_t(std::max<std::int64_t>(file().size() - m_offset, 0)) / NUMBER_SIZE;
}

std::int64_t EnSightBinary::offset() const {
    return m_offset;
}

// The mark is a text of 80 bytes, and nothing else looks like it.
bool EnSightBinary::goToStep(std::size_t step) {
    constexpr std::int64_t CHUNK = 1 << 16;
    std::vector<char> chunk(CHUNK);
    std::int64_t at = 0;
    std::size_t found = 0;
    while (true) {
        const std::string_view bytes(chunk.data(), file().read(at, chunk.data(), chunk.size()));
        const std::size_t begin = bytes.find(STEP_BEGIN);
        if (begin == std::string_view::npos) {
            if (bytes.size() < chunk.size()) {
                break;
            }
            at += CHUNK - std::int64_t(STEP_BEGIN.size());
            continue;
        }
        at += std::int64_t(begin + STEP_BEGIN.size());
        if (++found == step + 1) {
            m_offset = at - std::int64_t(STEP_BEGIN.size()) + TEXT_SIZE + (form() == FORTRAN_BINARY ? MARK_SIZE : 0);
            return true;
        }
    }
    setTextOffset(file().size());
    return fail("expected a step more, found " + std::to_string(found));
}

// In a file of Fortran.
bool EnSightBinary::beginRecord(std::string_view what) {
    std::uint32_t mark = 0;
    if (file().read(m_offset, reinterpret_cast<char*>(&mark), MARK_SIZE) < std::size_t(MARK_SIZE)) {
        return failAt(m_offset, "expected " + std::string(what) + ", found the end of the file");
    }
    if (!m_knowsOrder) {
        m_isSwapped = swapped(mark) < mark;
        m_knowsOrder = true;
    }
    // Records beyond 2 GiB come in pieces; the sizes of those that go on are negative.
    m_recordSize = std::abs(std::int64_t(std::bit_cast<std::int32_t>(inOrder(mark))));
    if (m_recordSize > file().size() - m_offset - 2 * MARK_SIZE) {
        return failAt(m_offset, "expected " + std::string(what) + ", found a record of " +
                                    std::to_string(m_recordSize) + " bytes where the file has less");
    }
    m_offset += MARK_SIZE;
    m_recordLeft = m_recordSize;
    m_isInRecord = true;
    return true;
}

bool EnSightBinary::endRecord() {
    if (!m_isInRecord) {
        return true;
    }
    std::uint32_t mark = 0;
    file().read(m_offset, reinterpret_cast<char*>(&mark), MARK_SIZE);
    if (m_recordLeft > 0 || std::abs(std::int64_t(std::bit_cast<std::int32_t>(inOrder(mark)))) != m_recordSize) {
        return failAt(m_offset, "expected the end of a record of " + std::to_string(m_recordSize) + " bytes");
    }
    m_offset += MARK_SIZE;
    m_isInRecord = false;
    return true;
}

bool EnSightBinary::readBytes(std::string_view what, std::size_t count, char* bytes) {
    for (std::size_t done = 0; done < count;) {
        std::size_t part = count - done;
        if (form() == FORTRAN_BINARY) {
            if (m_recordLeft == 0 && !(endRecord() && beginRecord(what))) {
                return false;
            }
            part = std::min(part, std::size_t(m_recordLeft));
            m_recordLeft -= std::int64_t(part);
        }
        const bool isThere =
            bytes ? file().read(m_offset, bytes + done, part) == part : std::int64_t(part) <= file().size() - m_offset;
        if (!isThere) {
            return failAt(m_offset, "expected " + std::string(what) + ", found the end of the file");
        }
        m_offset += std::int64_t(part);
        done += part;
    }
    return true;
}

template <class Number>
bool EnSightBinary::readNumbers(std::string_view what, std::size_t count, Number* numbers) {
    if (!readBytes(what, count * NUMBER_SIZE, reinterpret_cast<char*>(numbers))) {
        return false;
    }
    if (m_isSwapped) {
        std::transform(numbers, numbers + count, numbers, [](Number number) {
            return std::bit_cast<Number>(swapped(std::bit_cast<std::uint32_t>(number)));
        });
    }
    return true;
}

// Pieces that stay in the caches of a processor until they have been taken.
template <class Number, class TakePiece>
bool EnSightBinary::eachPiece(std::string_view what, std::size_t count, TakePiece take) {
    if (!hasRoomFor(what, count)) {
        return false;
    }
    std::vector<Number> numbers(std::min(count, NUMBERS_AT_ONCE));
    for (std::size_t done = 0; done < count; done += numbers.size()) {
        numbers.resize(std::min(numbers.size(), count - done));
        if (!readNumbers(what, numbers.size(), numbers.data()) || !take(numbers)) {
            return false;
        }
    }
    return true;
}

std::uint32_t EnSightBinary::inOrder(std::uint32_t bytes) const {
    return m_isSwapped ? swapped(bytes) : bytes;
}

} // namespace orv::imp::cae
