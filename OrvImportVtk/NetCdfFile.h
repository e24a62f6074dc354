#pragma once

#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// A NetCDF file, classic or of HDF5, that is read by the names of its variables. Whoever reads says what shape they
/// expect, and gets memory for no more than the file can hold.
class NetCdfFile {
public:
    using Shape = std::vector<std::size_t>;

    NetCdfFile() = default;
    ~NetCdfFile();

    NetCdfFile(const NetCdfFile&) = delete;
    NetCdfFile& operator=(const NetCdfFile&) = delete;

    /// Once per object.
    bool open(const std::string& filename, ug::Error* error);

    /// Bytes.
    std::uintmax_t size() const {
        return m_size;
    }

    /// 0 when there is no such dimension. Nothing tells that there are as many values.
    std::size_t length(const std::string& dimension) const;

    /// Of a variable, none when there is no such variable.
    Shape shape(const std::string& variable) const;
    bool has(const std::string& variable) const;

    /// The text of an attribute of a variable, or of the file when that is empty; empty when there is no such text.
    std::string text(const std::string& variable, const char* attribute) const;

    /// Reads the numbers behind `leading` indexes, which have that shape, in the order of the file.
    /// @return false when there are no such numbers: none of that name and shape, or none that Number can hold
    template <class Number>
    bool read(const std::string& variable, const Shape& leading, const Shape& shape,
              std::vector<Number>* numbers) const;

    /// Reads so many texts, without blanks around them and what follows a NUL. None when there are no such texts.
    std::vector<std::string> readTexts(const std::string& variable, std::size_t count) const;

private:
    struct Block;

    bool findBlock(const std::string& variable, const Shape& leading, const Shape& shape, Block* block) const;

    int m_id = -1; ///< NetCDF's, negative when none is open.
    std::uintmax_t m_size = 0;
};

} // namespace orv::imp::cae
