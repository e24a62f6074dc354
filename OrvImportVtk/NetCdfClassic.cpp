#include "OrvImportVtk/NetCdfClassic.h"

#include "OrvImportVtk/NetCdfHeader.h"

#include <vtk_netcdf.h>

namespace orv::imp::cae {
namespace {

constexpr int MOST_RANKS = 8;

class ClassicFile : public NetCdfFile {
public:
    ClassicFile(int id, std::uintmax_t size) : NetCdfFile(size), m_id(id) {}

    ~ClassicFile() override {
        nc_close(m_id);
    }

    std::size_t length(const std::string& dimension) const override {
        int id = 0;
        std::size_t count = 0;
        const bool isThere =
            nc_inq_dimid(m_id, dimension.c_str(), &id) == NC_NOERR && nc_inq_dimlen(m_id, id, &count) == NC_NOERR;
        return isThere ? count : 0;
    }

    std::string text(const std::string& variable, const char* attribute) const override {
        const int id = variable.empty() ? NC_GLOBAL : idOf(variable);
        nc_type type = NC_NAT;
        std::size_t count = 0;
        if (nc_inq_att(m_id, id, attribute, &type, &count) != NC_NOERR || type != NC_CHAR) {
            return {};
        }
        std::string text(count, '\0');
        nc_get_att_text(m_id, id, attribute, text.data());
        return trimmed(text);
    }

protected:
    std::optional<Variable> find(const std::string& variable) const override {
        const int id = idOf(variable);
        nc_type type = NC_NAT;
        int rank = 0;
        int dimensions[MOST_RANKS] = {};
        if (nc_inq_vartype(m_id, id, &type) != NC_NOERR || nc_inq_varndims(m_id, id, &rank) != NC_NOERR ||
            rank > MOST_RANKS || nc_inq_vardimid(m_id, id, dimensions) != NC_NOERR) {
            return std::nullopt;
        }
        Variable found{Shape(std::size_t(rank), 0), type != NC_CHAR};
        for (std::size_t r = 0; r < found.shape.size(); ++r) {
            nc_inq_dimlen(m_id, dimensions[r], &found.shape[r]);
        }
        return found;
    }

    bool get(const std::string& variable, const Shape& start, const Shape& count, double* numbers) const override {
        return nc_get_vara_double(m_id, idOf(variable), start.data(), count.data(), numbers) == NC_NOERR;
    }

    bool get(const std::string& variable, const Shape& start, const Shape& count, int* numbers) const override {
        return nc_get_vara_int(m_id, idOf(variable), start.data(), count.data(), numbers) == NC_NOERR;
    }

    bool get(const std::string& variable, const Shape& start, const Shape& count, long long* numbers) const override {
        return nc_get_vara_longlong(m_id, idOf(variable), start.data(), count.data(), numbers) == NC_NOERR;
    }

    bool get(const std::string& variable, const Shape& start, const Shape& count, char* text) const override {
        return nc_get_vara_text(m_id, idOf(variable), start.data(), count.data(), text) == NC_NOERR;
    }

private:
    // One that no variable has when there is none of that name.
    int idOf(const std::string& variable) const {
        constexpr int NOTHING = -2; // -1 is the file itself.
        int id = NOTHING;
        return nc_inq_varid(m_id, variable.c_str(), &id) == NC_NOERR ? id : NOTHING;
    }

    int m_id; ///< NetCDF's.
};

} // namespace

std::unique_ptr<NetCdfFile> openNetCdfClassic(const std::string& filename, std::istream& file, std::uintmax_t size,
                                              ug::Error* error) {
    if (!checkNetCdfHeader(file, size, error)) {
        return nullptr;
    }
    int id = -1;
    if (const int status = nc_open(filename.c_str(), NC_NOWRITE, &id); status != NC_NOERR) {
        ug::fail(error, Str(std::string("cannot be opened by NetCDF: ") + nc_strerror(status)));
        return nullptr;
    }
    return std::make_unique<ClassicFile>(id, size);
}

} // namespace orv::imp::cae
