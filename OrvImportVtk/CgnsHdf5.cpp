#include "OrvImportVtk/CgnsHdf5.h"

#include "OrvImportCae/Hdf5Check.h"
#include "OrvImportVtk/HdfLibrary.h"

#include <array>
#include <cstdint>
#include <set>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr int MOST_NODES_DEEP = 64;
constexpr int MOST_DIMENSIONS = 12;
constexpr std::size_t LONGEST_NAME = 255;
constexpr std::size_t LONGEST_LINK = 512; // To another file: its name, and the way there.

// What the CGNS library has room for.
constexpr std::pair<const char*, std::size_t> ATTRIBUTE_SIZES[] = {{"name", 33}, {"label", 33}, {"type", 3}};

// Deflated data are at most that much larger than what the file has of them.
constexpr hsize_t MOST_BYTES_PER_BYTE = 1100;

/// Goes through a file, node by node.
class Walk {
public:
    bool checkGroup(hid_t group, int depth) {
        for (const auto& [name, size] : ATTRIBUTE_SIZES) {
            if (!checkAttribute(group, name, size)) {
                return false;
            }
        }
        H5G_info_t info;
        const HdfId properties(H5Gget_create_plist(group), H5Pclose);
        unsigned order = 0;
        if (depth > MOST_NODES_DEEP || H5Gget_info(group, &info) < 0 ||
            H5Pget_link_creation_order(properties, &order) < 0) {
            return false;
        }
        // Both ways to the children are gone, one by one: going through all at once the library frees what it has not.
        const bool isOrdered = (order & H5P_CRT_ORDER_INDEXED) != 0;
        for (hsize_t i = 0; i < info.nlinks; ++i) {
            std::string name;
            if ((isOrdered && !readName(group, H5_INDEX_CRT_ORDER, i, &name)) ||
                !readName(group, H5_INDEX_NAME, i, &name) || !checkChild(group, name, depth)) {
                return false;
            }
        }
        return true;
    }

private:
    static bool readName(hid_t group, H5_index_t index, hsize_t i, std::string* name) {
        std::array<char, LONGEST_NAME + 1> text = {};
        const ssize_t length =
            H5Lget_name_by_idx(group, ".", index, H5_ITER_NATIVE, i, text.data(), text.size(), H5P_DEFAULT);
        *name = text.data();
        return length > 0 && std::size_t(length) <= LONGEST_NAME;
    }

    bool checkChild(hid_t group, const std::string& name, int depth) {
        H5L_info_t link;
        if (H5Lget_info(group, name.c_str(), &link, H5P_DEFAULT) < 0 ||
            (link.type == H5L_TYPE_EXTERNAL && link.u.val_size > LONGEST_LINK)) {
            return false;
        }
        const HdfId child(H5Oopen(group, name.c_str(), H5P_DEFAULT), H5Oclose);
        H5O_info_t info;
        if (child < 0 || H5Oget_info2(child, &info, H5O_INFO_BASIC) < 0) {
            return false;
        }
        if (!m_seen.emplace(info.fileno, info.addr).second) {
            return true;
        }
        return info.type == H5O_TYPE_GROUP     ? checkGroup(child, depth + 1)
               : info.type == H5O_TYPE_DATASET ? checkData(child)
                                               : true;
    }

    // It may be missing, which the CGNS library survives.
    static bool checkAttribute(hid_t group, const char* name, std::size_t size) {
        const htri_t isThere = H5Aexists(group, name);
        if (isThere <= 0) {
            return isThere == 0;
        }
        const HdfId attribute(H5Aopen(group, name, H5P_DEFAULT), H5Aclose);
        if (attribute < 0) {
            return false;
        }
        const HdfId type(H5Aget_type(attribute), H5Tclose);
        const HdfId space(H5Aget_space(attribute), H5Sclose);
        return type >= 0 && space >= 0 && H5Tget_class(type) == H5T_STRING && H5Tis_variable_str(type) == 0 &&
               H5Tget_size(type) <= size && H5Sget_simple_extent_npoints(space) == 1;
    }

    static bool checkData(hid_t data) {
        const HdfId type(H5Dget_type(data), H5Tclose);
        const HdfId space(H5Dget_space(data), H5Sclose);
        if (type < 0 || space < 0 || H5Sget_simple_extent_ndims(space) > MOST_DIMENSIONS) {
            return false;
        }
        const H5T_class_t kind = H5Tget_class(type);
        const hssize_t count = H5Sget_simple_extent_npoints(space);
        const hsize_t stored = H5Dget_storage_size(data);
        return (kind == H5T_INTEGER || kind == H5T_FLOAT) && count >= 0 &&
               hsize_t(count) / MOST_BYTES_PER_BYTE <= stored;
    }

    std::set<std::pair<unsigned long, haddr_t>> m_seen;
};

} // namespace

bool checkCgnsHdf5(const std::string& filename, ug::Error* error) {
    if (!checkHdf5File(filename, error)) {
        return false;
    }
    const HdfSilence silence;
    if (H5Fis_hdf5(filename.c_str()) <= 0) {
        return true;
    }
    const HdfId file(H5Fopen(filename.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT), H5Fclose);
    const HdfId root(file < 0 ? -1 : H5Gopen2(file, "/", H5P_DEFAULT), H5Gclose);
    return (root >= 0 && Walk().checkGroup(root, 0)) || ug::fail(error, "is damaged, or no CGNS file");
}

} // namespace orv::imp::cae
