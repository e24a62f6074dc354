#include "OrvImportVtk/NetCdfFile.h"

#include "OrvImportVtk/NetCdfClassic.h"
#include "OrvImportVtk/NetCdfHdf.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace orv::imp::cae {
namespace {

constexpr std::uintmax_t BEST_DEFLATION = 1032; // No file of HDF5 holds more than so many times its size.
constexpr std::string_view HDF5_MAGIC = "\211HDF\r\n\032\n";

} // namespace

NetCdfFile::~NetCdfFile() = default;

bool NetCdfFile::has(const std::string& variable) const {
    return find(variable).has_value();
}

NetCdfFile::Shape NetCdfFile::shape(const std::string& variable) const {
    const std::optional<Variable> found = find(variable);
    return found ? found->shape : Shape();
}

template <class Number>
bool NetCdfFile::read(const std::string& variable, const Shape& leading, const Shape& shape,
                      std::vector<Number>* numbers) const {
    const std::optional<Variable> found = find(variable);
    if (!found || found->isNumeric == std::is_same_v<Number, char> ||
        found->shape.size() != leading.size() + shape.size() ||
        !std::equal(leading.begin(), leading.end(), found->shape.begin(), std::less<std::size_t>()) ||
        !std::equal(shape.begin(), shape.end(), found->shape.end() - std::ptrdiff_t(shape.size()))) {
        return false;
    }
    std::size_t itemCount = 1;
    for (const std::size_t count : shape) {
        if (count == 0 || count > m_size * BEST_DEFLATION / itemCount) {
            return false;
        }
        itemCount *= count;
    }
    Shape start = leading;
    start.resize(found->shape.size(), 0);
    Shape counts(leading.size(), 1);
    counts.insert(counts.end(), shape.begin(), shape.end());
    numbers->resize(itemCount);
    return get(variable, start, counts, numbers->data());
}

template bool NetCdfFile::read(const std::string&, const Shape&, const Shape&, std::vector<double>*) const;
template bool NetCdfFile::read(const std::string&, const Shape&, const Shape&, std::vector<int>*) const;
template bool NetCdfFile::read(const std::string&, const Shape&, const Shape&, std::vector<long long>*) const;

std::vector<std::string> NetCdfFile::readTexts(const std::string& variable, std::size_t count) const {
    const Shape found = shape(variable);
    std::vector<char> all;
    if (found.size() != 2 || !read(variable, {}, {count, found[1]}, &all)) {
        return {};
    }
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < count; ++i) {
        texts.push_back(trimmed(std::string(&all[i * found[1]], found[1])));
    }
    return texts;
}

std::string NetCdfFile::trimmed(std::string text) {
    text.erase(std::min(text.find('\0'), text.size()));
    text.erase(text.find_last_not_of(" \n") + 1); // npos + 1 is 0.
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::unique_ptr<NetCdfFile> openNetCdfFile(const std::string& filename, ug::Error* error) {
    std::ifstream file(filename, std::ios::binary);
    std::error_code failed;
    const std::uintmax_t size = std::filesystem::file_size(filename, failed);
    if (!file || failed) {
        ug::fail(error, "cannot be opened");
        return nullptr;
    }
    std::string magic(HDF5_MAGIC.size(), '\0');
    file.read(magic.data(), std::streamsize(magic.size()));
    file.clear();
    file.seekg(0);
    return magic == HDF5_MAGIC ? openNetCdfHdf(filename, size, error) : openNetCdfClassic(filename, file, size, error);
}

} // namespace orv::imp::cae
