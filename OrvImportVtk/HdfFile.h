#pragma once

#include "OrvUnstructGrid/Error.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// What a data set of an HDF5 file holds.
struct HdfShape {
    std::vector<std::uint64_t> sizes; ///< The slowest index first; empty for a single value.
    bool isNumeric = false;           ///< Whole numbers or reals.
    bool isFloat = false;             ///< Reals of 32 bits.
    bool isCharacters = false;        ///< Each value is one.
    bool isThere = false;             ///< The file is large enough for the values and has them itself.
};

/// An HDF5 file that is read. Nothing of what HDF5 has to say goes to the console. Objects go by their paths.
class HdfFile {
public:
    HdfFile() = default;
    ~HdfFile();

    HdfFile(const HdfFile&) = delete;
    HdfFile& operator=(const HdfFile&) = delete;

    /// Once per object.
    bool open(const std::string& filename, ug::Error* error);

    bool hasGroup(const std::string& path) const;

    /// The names of what a group has, data sets and other things, without the way to them. What is kept in other files
    /// is not among them.
    std::vector<std::string> names(const std::string& group) const;

    /// Those of what a group has in other files, which is not looked at.
    std::vector<std::string> namesElsewhere(const std::string& group) const;

    /// Null when there is no such data set.
    std::optional<HdfShape> shape(const std::string& path) const;

    /// A text of fixed length. Null when the object has none of that name.
    std::optional<std::string> text(const std::string& object, const char* attribute) const;

    /// Numbers of an attribute; false when the object has not exactly so many there.
    bool numbers(const std::string& object, const char* attribute, std::span<double> values) const;

    /// All values of a data set, whatever kind of numbers they are in the file. There must be exactly so many.
    /// @{
    bool read(const std::string& path, std::span<float> values, ug::Error* error) const;
    bool read(const std::string& path, std::span<double> values, ug::Error* error) const;
    bool read(const std::string& path, std::span<long long> values, ug::Error* error) const;
    bool read(const std::string& path, std::span<unsigned char> values, ug::Error* error) const;
    /// @}

    /// Gets numbers that follow one another; false ends the reading.
    using TakeNumbers = std::function<bool(std::span<const long long>)>;

    /// All numbers of a list, of which there must be exactly so many, some at a time: what takes them finds them in the
    /// caches of a processor. False without a text when `take` says so.
    bool readPieces(const std::string& path, std::uint64_t count, const TakeNumbers& take, ug::Error* error) const;

    /// Some values of a data set: so many along each index from a start on. False when they are not there.
    /// @{
    bool readBlock(const std::string& path, std::span<const std::size_t> start, std::span<const std::size_t> count,
                   double* values) const;
    bool readBlock(const std::string& path, std::span<const std::size_t> start, std::span<const std::size_t> count,
                   int* values) const;
    bool readBlock(const std::string& path, std::span<const std::size_t> start, std::span<const std::size_t> count,
                   long long* values) const;
    bool readBlock(const std::string& path, std::span<const std::size_t> start, std::span<const std::size_t> count,
                   char* values) const;
    /// @}

private:
    bool readBlock(const std::string& path, std::span<const std::size_t> start, std::span<const std::size_t> count,
                   std::int64_t type, void* values) const;
    bool readValues(const std::string& path, std::int64_t type, std::size_t count, void* values,
                    ug::Error* error) const;

    std::int64_t m_id = -1;
    std::uint64_t m_size = 0;
};

} // namespace orv::imp::cae
