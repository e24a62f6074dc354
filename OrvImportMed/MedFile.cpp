#include "OrvImportMed/MedFile.h"

#include "OrvImportCae/Hdf5Check.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

namespace orv::imp::cae {
namespace {

constexpr med_int OLDEST_VERSION = 3;

bool isSameTime(const std::timespec& a, const std::timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

herr_t addName(hid_t, const char* name, const H5L_info_t*, void* names) {
    static_cast<std::vector<std::string>*>(names)->push_back(name);
    return 0;
}

// What libmedc leaves open when it fails would keep the file open.
void closeForgotten(med_idt file) {
    constexpr unsigned int ALL = H5F_OBJ_DATASET | H5F_OBJ_GROUP | H5F_OBJ_DATATYPE | H5F_OBJ_ATTR | H5F_OBJ_LOCAL;
    const ssize_t count = H5Fget_obj_count(file, ALL);
    std::vector<hid_t> forgotten(count > 0 ? std::size_t(count) : 0);
    if (!forgotten.empty()) {
        H5Fget_obj_ids(file, ALL, forgotten.size(), forgotten.data());
    }
    for (const hid_t id : forgotten) {
        H5Idec_ref(id);
    }
}

} // namespace

// The C library lets its streams be assigned; a descriptor would have to be turned away for all streams of the process.
MedSilence::MedSilence() : m_nowhere(std::fopen("/dev/null", "w")), m_stderr(stderr) {
    if (m_nowhere) {
        stderr = m_nowhere;
    }
}

// HDF5 loses memory over damaged headers of objects, and complains of it at the end of the process if errors are to be
// told. It asks that by the second form of this function, which fails where libmedc has used the first one, and then
// goes by what happens to be on the stack.
MedSilence::~MedSilence() {
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    stderr = m_stderr;
    if (m_nowhere) {
        std::fclose(m_nowhere);
    }
}

MedText::MedText(std::size_t length, std::size_t count) : m_length(length), m_characters(length * count + 1, '\0') {}

std::string MedText::text(std::size_t index) const {
    const char* begin = m_characters.data() + index * m_length;
    std::string text(begin, ::strnlen(begin, m_length));
    text.erase(text.find_last_not_of(' ') + 1); // npos + 1 is 0.
    return text;
}

MedFile::~MedFile() {
    if (m_id >= 0) {
        const MedSilence silence;
        closeForgotten(m_id);
        MEDfileClose(m_id);
    }
}

bool MedFile::open(const std::string& filename, ug::Error* error) {
    m_name = filename;
    struct stat status = {};
    if (::stat(filename.c_str(), &status) != 0) {
        return ug::fail(error, Str("cannot open \"" + filename + "\": " + std::strerror(errno)));
    }
    if (!S_ISREG(status.st_mode)) {
        return ug::fail(error, Str("cannot open \"" + filename + "\": it is not a file"));
    }
    m_size = std::uint64_t(status.st_size);
    m_changed = status.st_mtim;
    ug::Error damage;
    if (!checkHdf5File(filename, &damage)) {
        return ug::fail(error, Str(m_name + ": ") + damage.message());
    }
    m_id = MEDfileOpen(filename.c_str(), MED_ACC_RDONLY);
    med_int version[3] = {};
    if (m_id < 0 || MEDfileNumVersionRd(m_id, &version[0], &version[1], &version[2]) < 0) {
        return ug::fail(error, Str(filename + " is damaged, ends too early or is no MED file that libmedc " +
                                   MED_VERSION_STR + " can read"));
    }
    if (version[0] < OLDEST_VERSION) {
        return fail(error, "version " + std::to_string(version[0]) + "." + std::to_string(version[1]),
                    "expected 3.0 or later; medimport turns older files into such");
    }
    return true;
}

bool MedFile::checkUnchanged(ug::Error* error) const {
    struct stat status = {};
    if (::stat(m_name.c_str(), &status) != 0 || std::uint64_t(status.st_size) != m_size ||
        !isSameTime(status.st_mtim, m_changed)) {
        return ug::fail(error, Str(m_name + " has changed since it was opened"));
    }
    return true;
}

bool MedFile::fits(std::int64_t count, std::size_t bytesEach) const {
    return count >= 0 && std::uint64_t(count) <= m_size * DENSEST_PACKING / bytesEach;
}

// In the order of the file: HDF5 runs over damaged lists that it has to sort.
std::vector<std::string> MedFile::names(const std::string& path) const {
    std::vector<std::string> names;
    const hid_t group = H5Gopen2(m_id, path.c_str(), H5P_DEFAULT);
    if (group >= 0) {
        H5Literate(group, H5_INDEX_NAME, H5_ITER_NATIVE, nullptr, addName, &names);
        H5Gclose(group);
    }
    return names;
}

std::optional<std::size_t> MedFile::extent(const std::string& path) const {
    const hid_t set = H5Dopen2(m_id, path.c_str(), H5P_DEFAULT);
    if (set < 0) {
        return std::nullopt;
    }
    const hid_t space = H5Dget_space(set);
    const hssize_t count = space < 0 ? -1 : H5Sget_simple_extent_npoints(space);
    H5Sclose(space);
    H5Dclose(set);
    return count < 0 ? std::nullopt : std::optional<std::size_t>(count);
}

bool MedFile::hasExtent(const std::string& path, std::size_t count) const {
    return extent(path) == count;
}

bool MedFile::fail(ug::Error* error, const std::string& object, const std::string& what) const {
    return ug::fail(error, Str(m_name + ": " + object + ": " + what));
}

std::string medStepPath(med_int number, med_int iteration) {
    char path[64];
    std::snprintf(path, sizeof path, "%020d%020d", number, iteration);
    return path;
}

} // namespace orv::imp::cae
