#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvImportCae/FrdNumber.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace orv::imp::cae {

/// How the rows of a block are written. The values are the file's own.
enum class FrdForm : std::uint8_t {
    ASCII_SHORT = 0,  ///< Text, five characters for a number of a node or element.
    ASCII_LONG = 1,   ///< Text, ten characters.
    BINARY_FLOAT = 2, ///< Values of four bytes. In the block of elements: binary, whatever its other number is.
    BINARY_DOUBLE = 3 ///< Values of eight bytes.
};

inline bool isBinary(FrdForm form) {
    return form == FrdForm::BINARY_FLOAT || form == FrdForm::BINARY_DOUBLE;
}

/// The characters of a node or element number in text rows.
inline std::size_t frdIdWidth(FrdForm form) {
    return form == FrdForm::ASCII_SHORT ? 5 : FRD_LONG_ID_WIDTH;
}

/// Where the rows of one block are.
struct FrdRows {
    std::int64_t header = 0;  ///< The byte where the block's header line begins.
    std::int64_t begin = 0;   ///< The first row's first byte.
    std::int64_t end = 0;     ///< Behind the last row; text blocks have their line " -3" here.
    std::int64_t count = 0;   ///< The rows that are there, whatever the header announces; in the block of elements the
                              ///< elements.
    std::int64_t rowSize = 0; ///< The bytes that each row should have by its columns.
    std::uint8_t lineEndSize = 1; ///< In text blocks 2 where lines end with carriage return and line feed.
    FrdForm form = FrdForm::ASCII_LONG;

    /// Whether all rows have the same size, as far as the sum tells. Each row is still to be looked at.
    bool isRegular() const {
        return end - begin == count * rowSize;
    }
};

/// One column of a block of results.
struct FrdComponent {
    std::string name;
    int entity = 0; ///< 1 scalar, 2 vector, 4 tensor, 12 vector's amplitude and phase, 14 tensor's.
    int index = 0;  ///< The component's number, of a tensor its row; from 1.

    auto operator<=>(const FrdComponent&) const = default;
};

/// What blocks of results of one kind have in common: name and stored columns. Columns that a viewer shall compute
/// (the magnitude `ALL`) are not among them.
struct FrdLayout {
    std::string name;
    std::vector<FrdComponent> components;

    auto operator<=>(const FrdLayout&) const = default;
};

/// A block of results.
struct FrdResultBlock {
    FrdRows rows;
    std::uint32_t layout = 0; ///< In FrdIndex::layouts.
    int stateNumber = 0;      ///< One counter over the whole file; blocks with the same number make a state.
    int kind = 0;             ///< 0 static, 1 time step, 2 frequency, 3 load step, 4 buckling.
    double value = 0.0;       ///< Time, frequency or factor; UNDEFINED_DOUBLE when the column is blank.
    int step = 0;             ///< 0 when the file does not tell, as are the next two.
    int increment = 0;
    int mode = 0;
    int nodalDiameter = -1; ///< Of a mode of a cyclic structure, otherwise -1.
};

/// The blocks of a file.
struct FrdIndex {
    std::string title;
    std::vector<std::pair<int, std::string>> materials; ///< Number and name.
    FrdRows nodes;
    FrdRows elements; ///< `header` is 0 when the file has none.
    std::vector<FrdLayout> layouts;
    std::vector<FrdResultBlock> blocks; ///< In file order.
    std::vector<std::string> warnings;
};

/// Finds the blocks of a file. It costs a few reads for each block, as the end of a block is looked for where the
/// announced rows of the expected width would end. Only where there is no " -3" the lines are walked, and that line
/// counts, not what the header announces. Binary blocks have no end line: the header of the next block ends them, which
/// is looked for where the announced rows end and, failing that, row by row up to there.
///
/// A file that ends within its results, or without its end line, is read as far as it is whole, and a warning tells.
/// @return false with a text when the file is not of this format, breaks its rules, or does not even hold the mesh
bool readFrdIndex(CaeFile& file, FrdIndex* index, ug::Error* error);

} // namespace orv::imp::cae
