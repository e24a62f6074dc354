#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orv::imp::cae {

struct EnSightPlace;

/// Reads the texts and numbers of a mesh or a variable one after the other. Everything fails with the place in the file
/// and what was expected there, where `what` is the word for that. No count is believed: never is more memory taken
/// than the rest of the file can fill.
class EnSightFile {
public:
    enum Form { ASCII, C_BINARY, FORTRAN_BINARY };

    virtual ~EnSightFile();

    EnSightFile(const EnSightFile&) = delete;
    EnSightFile& operator=(const EnSightFile&) = delete;

    /// The file of a mesh tells its form with its first text; what comes behind is the next one. All errors go to
    /// `error`. Null on failure.
    static std::unique_ptr<EnSightFile> openMesh(const EnSightPlace& place, ug::Error* error);

    /// The file of a variable has the form of its mesh.
    static std::unique_ptr<EnSightFile> openVariable(const EnSightPlace& place, Form form, ug::Error* error);

    Form form() const;

    /// Whatever is there, without blanks at its ends.
    virtual bool readText(std::string_view what, std::string* text) = 0;

    /// A text that tells what comes next. "" at the end of the file, or of the step.
    bool readKeyword(std::string_view what, std::string* text);

    /// Stands in front of all other numbers.
    virtual bool readPartNumber(int* number) = 0;

    /// How many things follow that take at least so many numbers each.
    bool readCount(std::string_view what, std::size_t numbersOfEach, std::size_t* count);

    virtual bool skipNumbers(std::string_view what, std::size_t count) = 0;

    /// Gets numbers that follow one another.
    using TakeInts = std::function<void(std::span<const int>)>;

    /// Whole numbers, none below `lowest` or above `highest`, some at a time. Those before a wrong one may be given
    /// out.
    virtual bool readIntPieces(std::string_view what, std::size_t count, int lowest, int highest,
                               const TakeInts& take) = 0;

    /// The same as a list, which is replaced.
    bool readInts(std::string_view what, std::size_t count, int lowest, int highest, std::vector<int>* numbers);

    /// Number i goes to `first[i * stride]`.
    virtual bool readFloatsTo(std::string_view what, std::size_t count, float* first, std::size_t stride) = 0;

    /// The same as a list, which is replaced.
    bool readFloats(std::string_view what, std::size_t count, std::vector<float>* numbers);

    /// Tells what was expected in place of the last text. Always false.
    bool failToFind(std::string_view what, std::string_view text) const;

    /// Tells anything about the last text. Always false.
    bool fail(const std::string& text) const;

    /// False when the file ends before so many numbers.
    bool hasRoomFor(std::string_view what, std::size_t count) const;

protected:
    EnSightFile(std::unique_ptr<CaeFile> file, Form form, ug::Error* error);

    /// Nothing is left in the file.
    virtual bool isAtEnd() = 0;
    /// How many numbers the rest of the file has at most.
    virtual std::size_t room() const = 0;
    /// The next byte.
    virtual std::int64_t offset() const = 0;
    /// To what stands behind the mark that a step begins with; false when there are fewer.
    virtual bool goToStep(std::size_t step) = 0;

    bool failAt(std::int64_t offset, const std::string& text) const;
    /// "expected 8 coordinates, found FOUND"
    bool failToFindAll(std::int64_t offset, std::string_view what, std::size_t count, std::string_view found) const;

    const CaeFile& file() const;
    void setTextOffset(std::int64_t offset);

private:
    static std::unique_ptr<EnSightFile> open(std::unique_ptr<CaeFile> file, std::int64_t offset, Form form,
                                             const EnSightPlace& place, ug::Error* error);

    std::unique_ptr<CaeFile> m_file;
    Form m_form;
    ug::Error* m_error;
    std::int64_t m_textOffset = 0;
};

} // namespace orv::imp::cae
