#include "OrvImportVtk/NetCdfHdf.h"

#include "OrvImportVtk/HdfFile.h"

namespace orv::imp::cae {
namespace {

/// Variables are data sets of the root. So are dimensions, with their length and without values.
class HdfNetCdfFile : public NetCdfFile {
public:
    using NetCdfFile::NetCdfFile;

    bool open(const std::string& filename, ug::Error* error) {
        return m_file.open(filename, error);
    }

    std::size_t length(const std::string& dimension) const override {
        const std::optional<HdfShape> shape = m_file.shape("/" + dimension);
        return shape && shape->sizes.size() == 1 ? shape->sizes[0] : 0;
    }

    std::string text(const std::string& variable, const char* attribute) const override {
        return trimmed(m_file.text("/" + variable, attribute).value_or(std::string()));
    }

protected:
    std::optional<Variable> find(const std::string& variable) const override {
        const std::optional<HdfShape> shape = m_file.shape("/" + variable);
        if (!shape || !shape->isThere || !(shape->isNumeric || shape->isCharacters)) {
            return std::nullopt;
        }
        return Variable{Shape(shape->sizes.begin(), shape->sizes.end()), shape->isNumeric};
    }

    bool get(const std::string& variable, const Shape& start, const Shape& count, double* numbers) const override {
        return m_file.readBlock("/" + variable, start, count, numbers);
    }

    bool get(const std::string& variable, const Shape& start, const Shape& count, int* numbers) const override {
        return m_file.readBlock("/" + variable, start, count, numbers);
    }

    bool get(const std::string& variable, const Shape& start, const Shape& count, long long* numbers) const override {
        return m_file.readBlock("/" + variable, start, count, numbers);
    }

    bool get(const std::string& variable, const Shape& start, const Shape& count, char* text) const override {
        return m_file.readBlock("/" + variable, start, count, text);
    }

private:
    HdfFile m_file;
};

} // namespace

std::unique_ptr<NetCdfFile> openNetCdfHdf(const std::string& filename, std::uintmax_t size, ug::Error* error) {
    auto file = std::make_unique<HdfNetCdfFile>(size);
    return file->open(filename, error) ? std::move(file) : nullptr;
}

} // namespace orv::imp::cae
