#pragma once

#include "OrvImportVtk/EnSightFile.h"

namespace orv::imp::cae {

/// Texts are lines, numbers are words. Lines that begin with "#" are comments, and between numbers blank ones do not
/// count. A number that the file ends with needs a line end behind it, as it may have been cut otherwise.
class EnSightAscii : public EnSightFile {
public:
    EnSightAscii(std::unique_ptr<CaeFile> file, ug::Error* error);

    bool readText(std::string_view what, std::string* text) override;
    bool readPartNumber(int* number) override;
    bool skipNumbers(std::string_view what, std::size_t count) override;
    bool readIntPieces(std::string_view what, std::size_t count, int lowest, int highest,
                       const TakeInts& take) override;
    bool readFloatsTo(std::string_view what, std::size_t count, float* first, std::size_t stride) override;

private:
    bool isAtEnd() override;
    std::size_t room() const override;
    std::int64_t offset() const override;
    bool goToStep(std::size_t step) override;

    bool nextLine();
    template <class TakeWord>
    bool eachWord(std::string_view what, std::size_t count, TakeWord take);

    CaeLines m_lines;
    std::string_view m_rest; ///< Of the current line.
};

} // namespace orv::imp::cae
