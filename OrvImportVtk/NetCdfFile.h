#pragma once

#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// A NetCDF file that is read by the names of its variables. Whoever reads says what shape they expect, and gets memory
/// for no more than the file can hold.
class NetCdfFile {
public:
    using Shape = std::vector<std::size_t>;

    explicit NetCdfFile(std::uintmax_t size) : m_size(size) {}
    virtual ~NetCdfFile();

    NetCdfFile(const NetCdfFile&) = delete;
    NetCdfFile& operator=(const NetCdfFile&) = delete;

    /// Bytes.
    std::uintmax_t size() const {
        return m_size;
    }

    /// 0 when there is no such dimension. Nothing tells that there are as many values.
    virtual std::size_t length(const std::string& dimension) const = 0;

    /// The text of an attribute of a variable, or of the file when that is empty; empty when there is no such text.
    virtual std::string text(const std::string& variable, const char* attribute) const = 0;

    bool has(const std::string& variable) const;

    /// Empty when there is no such variable.
    Shape shape(const std::string& variable) const;

    /// Reads the numbers behind `leading` indexes, which have that shape, in the order of the file.
    /// @return false when there are no such numbers: none of that name and shape, or none that Number can hold
    template <class Number>
    bool read(const std::string& variable, const Shape& leading, const Shape& shape,
              std::vector<Number>* numbers) const;

    /// Reads so many texts, without blanks around them and what follows a NUL. None when there are no such texts.
    std::vector<std::string> readTexts(const std::string& variable, std::size_t count) const;

protected:
    struct Variable {
        Shape shape;
        bool isNumeric = false; ///< Otherwise characters.
    };

    /// Null when there is no such variable of numbers or characters.
    virtual std::optional<Variable> find(const std::string& variable) const = 0;

    /// Reads `count` of each dimension from `start` on. All of it is within the variable.
    /// @{
    virtual bool get(const std::string& variable, const Shape& start, const Shape& count, double* numbers) const = 0;
    virtual bool get(const std::string& variable, const Shape& start, const Shape& count, int* numbers) const = 0;
    virtual bool get(const std::string& variable, const Shape& start, const Shape& count, long long* numbers) const = 0;
    virtual bool get(const std::string& variable, const Shape& start, const Shape& count, char* text) const = 0;
    /// @}

    static std::string trimmed(std::string text);

private:
    std::uintmax_t m_size;
};

/// One of the classic formats, which is read by the NetCDF library once its header has been checked, or of HDF5, which
/// is read by HDF5: the NetCDF library follows references within it wherever damage leads them.
std::unique_ptr<NetCdfFile> openNetCdfFile(const std::string& filename, ug::Error* error);

} // namespace orv::imp::cae
