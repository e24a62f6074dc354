#include "OrvImportVtk/NetCdfFile.h"

#include "OrvImportVtk/NetCdfHeader.h"

#include <vtk_netcdf.h>

#include <algorithm>
#include <filesystem>

namespace orv::imp::cae {
namespace {

constexpr std::uintmax_t BEST_DEFLATION = 1032; // No file of HDF5 holds more than so many times its size.
constexpr int MOST_RANKS = 8;

int get(int file, int variable, const std::size_t* start, const std::size_t* count, double* numbers) {
    return nc_get_vara_double(file, variable, start, count, numbers);
}

int get(int file, int variable, const std::size_t* start, const std::size_t* count, int* numbers) {
    return nc_get_vara_int(file, variable, start, count, numbers);
}

int get(int file, int variable, const std::size_t* start, const std::size_t* count, long long* numbers) {
    return nc_get_vara_longlong(file, variable, start, count, numbers);
}

bool isNumber(nc_type type) {
    return type >= NC_BYTE && type <= NC_UINT64 && type != NC_CHAR;
}

std::string trimmed(std::string text) {
    text.erase(std::min(text.find('\0'), text.size()));
    text.erase(text.find_last_not_of(" \n") + 1); // npos + 1 is 0.
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

} // namespace

struct NetCdfFile::Block {
    int variable = 0;
    nc_type type = NC_NAT;
    Shape start;
    Shape count;
    std::size_t itemCount = 1;
};

NetCdfFile::~NetCdfFile() {
    if (m_id >= 0) {
        nc_close(m_id);
    }
}

bool NetCdfFile::open(const std::string& filename, ug::Error* error) {
    if (!checkNetCdfHeader(filename, error)) {
        return false;
    }
    int id = -1;
    if (const int status = nc_open(filename.c_str(), NC_NOWRITE, &id); status != NC_NOERR) {
        return ug::fail(error, Str(std::string("cannot be opened by NetCDF: ") + nc_strerror(status)));
    }
    m_id = id;
    std::error_code failed;
    m_size = std::filesystem::file_size(filename, failed);
    return !failed || ug::fail(error, "cannot be opened");
}

std::size_t NetCdfFile::length(const std::string& dimension) const {
    int id = 0;
    std::size_t count = 0;
    return nc_inq_dimid(m_id, dimension.c_str(), &id) == NC_NOERR && nc_inq_dimlen(m_id, id, &count) == NC_NOERR ? count
                                                                                                                 : 0;
}

NetCdfFile::Shape NetCdfFile::shape(const std::string& variable) const {
    int id = 0;
    int rank = 0;
    int dimensions[MOST_RANKS] = {};
    if (nc_inq_varid(m_id, variable.c_str(), &id) != NC_NOERR || nc_inq_varndims(m_id, id, &rank) != NC_NOERR ||
        rank < 0 || rank > MOST_RANKS || nc_inq_vardimid(m_id, id, dimensions) != NC_NOERR) {
        return {};
    }
    Shape shape(std::size_t(rank), 0);
    for (std::size_t r = 0; r < shape.size(); ++r) {
        nc_inq_dimlen(m_id, dimensions[r], &shape[r]);
    }
    return shape;
}

bool NetCdfFile::has(const std::string& variable) const {
    int id = 0;
    return nc_inq_varid(m_id, variable.c_str(), &id) == NC_NOERR;
}

std::string NetCdfFile::text(const std::string& variable, const char* attribute) const {
    int id = NC_GLOBAL;
    nc_type type = NC_NAT;
    std::size_t count = 0;
    if ((!variable.empty() && nc_inq_varid(m_id, variable.c_str(), &id) != NC_NOERR) ||
        nc_inq_att(m_id, id, attribute, &type, &count) != NC_NOERR || type != NC_CHAR || count > m_size) {
        return {};
    }
    std::string text(count, '\0');
    return count > 0 && nc_get_att_text(m_id, id, attribute, text.data()) == NC_NOERR ? trimmed(text) : std::string();
}

template <class Number>
bool NetCdfFile::read(const std::string& variable, const Shape& leading, const Shape& shape,
                      std::vector<Number>* numbers) const {
    Block block;
    if (!findBlock(variable, leading, shape, &block) || !isNumber(block.type)) {
        return false;
    }
    numbers->resize(block.itemCount);
    return get(m_id, block.variable, block.start.data(), block.count.data(), numbers->data()) == NC_NOERR;
}

template bool NetCdfFile::read(const std::string&, const Shape&, const Shape&, std::vector<double>*) const;
template bool NetCdfFile::read(const std::string&, const Shape&, const Shape&, std::vector<int>*) const;
template bool NetCdfFile::read(const std::string&, const Shape&, const Shape&, std::vector<long long>*) const;

std::vector<std::string> NetCdfFile::readTexts(const std::string& variable, std::size_t count) const {
    const Shape found = shape(variable);
    Block block;
    if (found.size() != 2 || !findBlock(variable, {}, {count, found[1]}, &block) || block.type != NC_CHAR) {
        return {};
    }
    std::string all(block.itemCount, '\0');
    if (nc_get_vara_text(m_id, block.variable, block.start.data(), block.count.data(), all.data()) != NC_NOERR) {
        return {};
    }
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < count; ++i) {
        texts.push_back(trimmed(all.substr(i * found[1], found[1])));
    }
    return texts;
}

bool NetCdfFile::findBlock(const std::string& variable, const Shape& leading, const Shape& shape, Block* block) const {
    const Shape found = this->shape(variable);
    if (found.size() != leading.size() + shape.size() || found.empty() ||
        nc_inq_varid(m_id, variable.c_str(), &block->variable) != NC_NOERR ||
        nc_inq_vartype(m_id, block->variable, &block->type) != NC_NOERR) {
        return false;
    }
    for (std::size_t r = 0; r < leading.size(); ++r) {
        if (leading[r] >= found[r]) {
            return false;
        }
    }
    if (!std::equal(shape.begin(), shape.end(), found.begin() + std::ptrdiff_t(leading.size()))) {
        return false;
    }
    for (const std::size_t count : shape) {
        if (count == 0 || count > m_size * BEST_DEFLATION / block->itemCount) {
            return false;
        }
        block->itemCount *= count;
    }
    block->start = leading;
    block->start.resize(found.size(), 0);
    block->count.assign(leading.size(), 1);
    block->count.insert(block->count.end(), shape.begin(), shape.end());
    return true;
}

} // namespace orv::imp::cae
