#include "OrvImportVtk/HdfFile.h"

#include "OrvImportCae/Hdf5Check.h"
#include "OrvImportVtk/HdfLibrary.h"

#include <algorithm>
#include <filesystem>

namespace orv::imp::cae {
namespace {

bool failToHold(const std::string& path, std::uint64_t count, ug::Error* error) {
    return ug::fail(error, Str("'" + path + "' does not hold the expected " + std::to_string(count) + " numbers"));
}

herr_t takeDescription(unsigned int, const H5E_error2_t* error, void* text) {
    *static_cast<std::string*>(text) = error->desc;
    return 1; // Stops at the first, which is the cause of the others.
}

std::string lastCause() {
    std::string text = "no reason is given";
    H5Ewalk2(H5E_DEFAULT, H5E_WALK_UPWARD, takeDescription, &text);
    return text;
}

bool failToRead(const std::string& path, ug::Error* error) {
    return ug::fail(error, Str("'" + path + "' cannot be read: " + lastCause()));
}

/// What a group has. They are sorted here: HDF5 runs over damaged lists that it has to sort.
struct Links {
    explicit Links(hid_t group) {
        if (group >= 0) {
            H5Literate(group, H5_INDEX_NAME, H5_ITER_NATIVE, nullptr, add, this);
        }
        std::sort(own.begin(), own.end());
        std::sort(elsewhere.begin(), elsewhere.end());
    }

    static herr_t add(hid_t, const char* name, const H5L_info_t* link, void* links) {
        const bool isOwn = link->type == H5L_TYPE_HARD || link->type == H5L_TYPE_SOFT;
        (isOwn ? static_cast<Links*>(links)->own : static_cast<Links*>(links)->elsewhere).emplace_back(name);
        return 0;
    }

    std::vector<std::string> own;
    std::vector<std::string> elsewhere; ///< In other files.
};

std::vector<std::uint64_t> sizesOf(hid_t space) {
    hsize_t sizes[H5S_MAX_RANK] = {};
    const int rank = H5Sget_simple_extent_dims(space, sizes, nullptr);
    return rank < 0 ? std::vector<std::uint64_t>{0} : std::vector<std::uint64_t>(sizes, sizes + rank);
}

// That their bits lie within the items, the check of the file has told.
bool isNumeric(hid_t type) {
    const H5T_class_t kind = H5Tget_class(type);
    return kind == H5T_INTEGER || kind == H5T_FLOAT;
}

// Of this file. To ask for more than that takes HDF5 long.
bool isInOneBlock(hid_t set) {
    return H5Dget_offset(set) != HADDR_UNDEF;
}

// As many numbers as whole chunks have, if there are any, so that none is read twice.
hsize_t numbersAtOnce(hid_t set) {
    constexpr hsize_t USUAL = hsize_t(1) << 16;
    hsize_t chunk = 1;
    if (!isInOneBlock(set)) {
        const HdfId properties(H5Dget_create_plist(set), H5Pclose);
        if (H5Pget_layout(properties) == H5D_CHUNKED && (H5Pget_chunk(properties, 1, &chunk) != 1 || chunk == 0)) {
            return USUAL;
        }
    }
    return chunk < USUAL ? USUAL / chunk * chunk : chunk;
}

// No more memory is asked for than a file of this size can fill.
bool isThere(hid_t set, hid_t space, std::size_t itemSize, std::uint64_t fileSize) {
    if (!isInOneBlock(set)) {
        const HdfId properties(H5Dget_create_plist(set), H5Pclose);
        if (properties < 0 || H5Pget_layout(properties) == H5D_VIRTUAL || H5Pget_external_count(properties) != 0) {
            return false;
        }
    }
    const hssize_t count = H5Sget_simple_extent_npoints(space);
    const std::uint64_t stored = std::min<std::uint64_t>(H5Dget_storage_size(set), fileSize);
    return count >= 0 && itemSize > 0 && std::uint64_t(count) <= stored * DENSEST_PACKING / itemSize;
}

} // namespace

HdfFile::~HdfFile() {
    if (m_id >= 0) {
        const HdfSilence silence;
        H5Fclose(m_id);
    }
}

bool HdfFile::open(const std::string& filename, ug::Error* error) {
    const HdfSilence silence;
    std::error_code failed;
    m_size = std::filesystem::file_size(filename, failed);
    if (failed) {
        return ug::fail(error, Str("cannot be opened: " + failed.message()));
    }
    if (!checkHdf5File(filename, error)) {
        return false;
    }
    m_id = H5Fopen(filename.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT);
    return m_id >= 0 || ug::fail(error, Str("cannot be opened as an HDF5 file: " + lastCause()));
}

bool HdfFile::hasGroup(const std::string& path) const {
    const HdfSilence silence;
    return HdfId(H5Gopen2(m_id, path.c_str(), H5P_DEFAULT), H5Gclose) >= 0;
}

std::vector<std::string> HdfFile::names(const std::string& group) const {
    const HdfSilence silence;
    return Links(HdfId(H5Gopen2(m_id, group.c_str(), H5P_DEFAULT), H5Gclose)).own;
}

std::vector<std::string> HdfFile::namesElsewhere(const std::string& group) const {
    const HdfSilence silence;
    return Links(HdfId(H5Gopen2(m_id, group.c_str(), H5P_DEFAULT), H5Gclose)).elsewhere;
}

std::optional<HdfShape> HdfFile::shape(const std::string& path) const {
    const HdfSilence silence;
    const HdfId set(H5Dopen2(m_id, path.c_str(), H5P_DEFAULT), H5Dclose);
    if (set < 0) {
        return std::nullopt;
    }
    const HdfId space(H5Dget_space(set), H5Sclose);
    const HdfId type(H5Dget_type(set), H5Tclose);
    const std::size_t itemSize = H5Tget_size(type);
    return HdfShape{sizesOf(space), isNumeric(type), H5Tget_class(type) == H5T_FLOAT && itemSize == sizeof(float),
                    H5Tget_class(type) == H5T_STRING && H5Tis_variable_str(type) == 0 && itemSize == 1,
                    isThere(set, space, itemSize, m_size)};
}

std::optional<std::string> HdfFile::text(const std::string& object, const char* attribute) const {
    constexpr std::size_t LONGEST = 1000;
    const HdfSilence silence;
    const HdfId id(H5Aopen_by_name(m_id, object.c_str(), attribute, H5P_DEFAULT, H5P_DEFAULT), H5Aclose);
    const HdfId type(id < 0 ? -1 : H5Aget_type(id), H5Tclose);
    const HdfId space(id < 0 ? -1 : H5Aget_space(id), H5Sclose);
    if (type < 0 || space < 0 || H5Tget_class(type) != H5T_STRING || H5Tis_variable_str(type) != 0 ||
        H5Sget_simple_extent_npoints(space) != 1 || H5Tget_size(type) > LONGEST) {
        return std::nullopt;
    }
    std::string text(H5Tget_size(type), '\0');
    if (H5Aread(id, type, text.data()) < 0) {
        return std::nullopt;
    }
    return text.substr(0, text.find('\0'));
}

bool HdfFile::numbers(const std::string& object, const char* attribute, std::span<double> values) const {
    const HdfSilence silence;
    const HdfId id(H5Aopen_by_name(m_id, object.c_str(), attribute, H5P_DEFAULT, H5P_DEFAULT), H5Aclose);
    const HdfId type(id < 0 ? -1 : H5Aget_type(id), H5Tclose);
    const HdfId space(id < 0 ? -1 : H5Aget_space(id), H5Sclose);
    return type >= 0 && space >= 0 && isNumeric(type) &&
           H5Sget_simple_extent_npoints(space) == hssize_t(values.size()) &&
           H5Aread(id, H5T_NATIVE_DOUBLE, values.data()) >= 0;
}

bool HdfFile::read(const std::string& path, std::span<float> values, ug::Error* error) const {
    return readValues(path, H5T_NATIVE_FLOAT, values.size(), values.data(), error);
}

bool HdfFile::read(const std::string& path, std::span<double> values, ug::Error* error) const {
    return readValues(path, H5T_NATIVE_DOUBLE, values.size(), values.data(), error);
}

bool HdfFile::read(const std::string& path, std::span<long long> values, ug::Error* error) const {
    return readValues(path, H5T_NATIVE_LLONG, values.size(), values.data(), error);
}

bool HdfFile::read(const std::string& path, std::span<unsigned char> values, ug::Error* error) const {
    return readValues(path, H5T_NATIVE_UCHAR, values.size(), values.data(), error);
}

bool HdfFile::readPieces(const std::string& path, std::uint64_t count, const TakeNumbers& take,
                         ug::Error* error) const {
    const HdfSilence silence;
    const HdfId set(H5Dopen2(m_id, path.c_str(), H5P_DEFAULT), H5Dclose);
    const HdfId space(set < 0 ? -1 : H5Dget_space(set), H5Sclose);
    if (space < 0 || H5Sget_simple_extent_ndims(space) != 1 || H5Sget_simple_extent_npoints(space) != hssize_t(count)) {
        return failToHold(path, count, error);
    }
    std::vector<long long> numbers(std::min<hsize_t>(count, numbersAtOnce(set)));
    for (hsize_t first = 0; first < count; first += numbers.size()) {
        numbers.resize(std::min<hsize_t>(numbers.size(), count - first));
        const hsize_t size = numbers.size();
        const HdfId memory(H5Screate_simple(1, &size, nullptr), H5Sclose);
        if (memory < 0 || H5Sselect_hyperslab(space, H5S_SELECT_SET, &first, nullptr, &size, nullptr) < 0 ||
            H5Dread(set, H5T_NATIVE_LLONG, memory, space, H5P_DEFAULT, numbers.data()) < 0) {
            return failToRead(path, error);
        }
        if (!take(numbers)) {
            return false;
        }
    }
    return true;
}

bool HdfFile::readBlock(const std::string& path, std::span<const std::size_t> start, std::span<const std::size_t> count,
                        double* values) const {
    return readBlock(path, start, count, H5T_NATIVE_DOUBLE, values);
}

bool HdfFile::readBlock(const std::string& path, std::span<const std::size_t> start, std::span<const std::size_t> count,
                        int* values) const {
    return readBlock(path, start, count, H5T_NATIVE_INT, values);
}

bool HdfFile::readBlock(const std::string& path, std::span<const std::size_t> start, std::span<const std::size_t> count,
                        long long* values) const {
    return readBlock(path, start, count, H5T_NATIVE_LLONG, values);
}

bool HdfFile::readBlock(const std::string& path, std::span<const std::size_t> start, std::span<const std::size_t> count,
                        char* values) const {
    return readBlock(path, start, count, H5T_C_S1, values);
}

bool HdfFile::readBlock(const std::string& path, std::span<const std::size_t> start, std::span<const std::size_t> count,
                        std::int64_t type, void* values) const {
    const HdfSilence silence;
    const HdfId set(H5Dopen2(m_id, path.c_str(), H5P_DEFAULT), H5Dclose);
    const HdfId space(set < 0 ? -1 : H5Dget_space(set), H5Sclose);
    if (space < 0 || H5Sget_simple_extent_ndims(space) != int(start.size()) || start.size() != count.size()) {
        return false;
    }
    const std::vector<hsize_t> from(start.begin(), start.end());
    const std::vector<hsize_t> counts(count.begin(), count.end());
    const HdfId memory(H5Screate_simple(int(counts.size()), counts.data(), nullptr), H5Sclose);
    return memory >= 0 &&
           H5Sselect_hyperslab(space, H5S_SELECT_SET, from.data(), nullptr, counts.data(), nullptr) >= 0 &&
           H5Dread(set, type, memory, space, H5P_DEFAULT, values) >= 0;
}

bool HdfFile::readValues(const std::string& path, std::int64_t type, std::size_t count, void* values,
                         ug::Error* error) const {
    const HdfSilence silence;
    const HdfId set(H5Dopen2(m_id, path.c_str(), H5P_DEFAULT), H5Dclose);
    const HdfId space(set < 0 ? -1 : H5Dget_space(set), H5Sclose);
    if (space < 0 || H5Sget_simple_extent_npoints(space) != hssize_t(count)) {
        return failToHold(path, count, error);
    }
    return count == 0 || H5Dread(set, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, values) >= 0 || failToRead(path, error);
}

} // namespace orv::imp::cae
