#pragma once

#include "OrvImportVtk/EnSightFile.h"

namespace orv::imp::cae {

/// Texts have 80 bytes, numbers 4. In files of Fortran both are records, with their size before and behind them, where
/// it does not matter how many records a list of numbers is spread over. The order of bytes shows in the first size, or
/// in the first part's number, which is small.
class EnSightBinary : public EnSightFile {
public:
    EnSightBinary(std::unique_ptr<CaeFile> file, std::int64_t offset, Form form, ug::Error* error);

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

    bool beginRecord(std::string_view what);
    bool endRecord();
    bool readBytes(std::string_view what, std::size_t count, char* bytes);
    template <class Number>
    bool readNumbers(std::string_view what, std::size_t count, Number* numbers);
    template <class Number, class TakePiece>
    bool eachPiece(std::string_view what, std::size_t count, TakePiece take);
    std::uint32_t inOrder(std::uint32_t bytes) const;

    std::int64_t m_offset;
    bool m_isSwapped = false;
    bool m_knowsOrder = false;
    bool m_isInRecord = false;
    std::int64_t m_recordSize = 0;
    std::int64_t m_recordLeft = 0; ///< Bytes of the record that have not been read.
};

} // namespace orv::imp::cae
