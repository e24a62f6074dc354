#include "OrvImportVtk/EnSightFile.h"

#include "OrvImportVtk/EnSightAscii.h"
#include "OrvImportVtk/EnSightBinary.h"
#include "OrvImportVtk/EnSightCase.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::int64_t TEXT_SIZE = 80;
constexpr std::int64_t MARK_SIZE = 4;
constexpr std::string_view STEP_END = "END TIME STEP";

} // namespace

EnSightFile::EnSightFile(std::unique_ptr<CaeFile> file, Form form, ug::Error* error)
    : m_file(std::move(file)), m_form(form), m_error(error) {}

EnSightFile::~EnSightFile() = default;

std::unique_ptr<EnSightFile> EnSightFile::openMesh(const EnSightPlace& place, ug::Error* error) {
    auto file = std::make_unique<CaeFile>();
    if (!file->open(place.filename, error)) {
        return nullptr;
    }
    std::array<char, MARK_SIZE + TEXT_SIZE> begin = {};
    file->read(0, begin.data(), begin.size());
    const std::string_view text(begin.data(), begin.size());
    if (text.starts_with("C Binary") || text.starts_with("C binary")) {
        return open(std::move(file), TEXT_SIZE, C_BINARY, place, error);
    }
    if (text.substr(MARK_SIZE).starts_with("Fortran Binary") || text.substr(MARK_SIZE).starts_with("Fortran binary")) {
        return open(std::move(file), MARK_SIZE + TEXT_SIZE + MARK_SIZE, FORTRAN_BINARY, place, error);
    }
    return open(std::move(file), 0, ASCII, place, error);
}

std::unique_ptr<EnSightFile> EnSightFile::openVariable(const EnSightPlace& place, Form form, ug::Error* error) {
    auto file = std::make_unique<CaeFile>();
    return file->open(place.filename, error) ? open(std::move(file), 0, form, place, error) : nullptr;
}

EnSightFile::Form EnSightFile::form() const {
    return m_form;
}

bool EnSightFile::readKeyword(std::string_view what, std::string* text) {
    if (isAtEnd()) {
        text->clear();
        return true;
    }
    if (!readText(what, text)) {
        return false;
    }
    if (text->empty()) {
        return failToFind(what, *text);
    }
    if (*text == STEP_END) {
        text->clear();
    }
    return true;
}

bool EnSightFile::readCount(std::string_view what, std::size_t numbersOfEach, std::size_t* count) {
    constexpr std::string_view NUMBER_OF = "number of ";
    std::vector<int> number;
    if (!readInts(std::string(NUMBER_OF) + std::string(what), 1, 0, std::numeric_limits<int>::max(), &number)) {
        return false;
    }
    *count = std::size_t(number[0]);
    return hasRoomFor(what, *count * numbersOfEach);
}

bool EnSightFile::readInts(std::string_view what, std::size_t count, int lowest, int highest,
                           std::vector<int>* numbers) {
    numbers->clear();
    numbers->reserve(std::min(count, room()));
    return readIntPieces(what, count, lowest, highest, [numbers](std::span<const int> piece) {
        numbers->insert(numbers->end(), piece.begin(), piece.end());
    });
}

bool EnSightFile::readFloats(std::string_view what, std::size_t count, std::vector<float>* numbers) {
    if (!hasRoomFor(what, count)) {
        return false;
    }
    numbers->resize(count);
    return readFloatsTo(what, count, numbers->data(), 1);
}

bool EnSightFile::failToFind(std::string_view what, std::string_view text) const {
    return fail("expected " + std::string(what) + ", found " + quotedForPeople(text));
}

bool EnSightFile::fail(const std::string& text) const {
    return failAt(m_textOffset, text);
}

bool EnSightFile::hasRoomFor(std::string_view what, std::size_t count) const {
    return count <= room() ||
           failToFindAll(offset(), what, count, "room for " + std::to_string(room()) + " numbers in the file");
}

bool EnSightFile::failAt(std::int64_t offset, const std::string& text) const {
    return m_file->fail(offset, text, m_error);
}

bool EnSightFile::failToFindAll(std::int64_t offset, std::string_view what, std::size_t count,
                                std::string_view found) const {
    return failAt(offset, "expected " + std::to_string(count) + " numbers of " + std::string(what) + ", found " +
                              std::string(found));
}

const CaeFile& EnSightFile::file() const {
    return *m_file;
}

void EnSightFile::setTextOffset(std::int64_t offset) {
    m_textOffset = offset;
}

std::unique_ptr<EnSightFile> EnSightFile::open(std::unique_ptr<CaeFile> file, std::int64_t offset, Form form,
                                               const EnSightPlace& place, ug::Error* error) {
    std::unique_ptr<EnSightFile> opened;
    if (form == ASCII) {
        opened = std::make_unique<EnSightAscii>(std::move(file), error);
    } else {
        file->noteBinaryAt(0);
        opened = std::make_unique<EnSightBinary>(std::move(file), offset, form, error);
    }
    return !place.step || opened->goToStep(*place.step) ? std::move(opened) : nullptr;
}

} // namespace orv::imp::cae
