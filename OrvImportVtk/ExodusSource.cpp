#include "OrvImportVtk/ExodusSource.h"

#include <vtk_netcdf.h>
#include <vtkCompositeDataPipeline.h>
#include <vtkExodusIIReader.h>
#include <vtkExodusIIReaderPrivate.h>
#include <vtkInformation.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkObjectFactory.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <set>

namespace orv::imp::cae {
namespace {

/// VTK puts variables together by their names, and not always those that belong together. This tells their own names.
struct Names : vtkExodusIIReaderPrivate {
    static const std::vector<ArrayInfoType>& arrays(vtkExodusIIReaderPrivate* file, int objectType) {
        return (file->*&Names::ArrayInfo)[objectType];
    }
};

constexpr int OBJECT_TYPES[] = {vtkExodusIIReader::NODAL, vtkExodusIIReader::ELEM_BLOCK};

ug::ResultMapping mappingOf(int objectType) {
    return objectType == vtkExodusIIReader::NODAL ? ug::PER_NODE : ug::PER_ELEMENT;
}

/// VTK believes that a file's index is whole, does not survive one that is not, and tells of it on the console.
class Index {
public:
    explicit Index(const std::string& filename)
        : m_filename(filename), m_status(nc_open(filename.c_str(), NC_NOWRITE, &m_file)) {}

    ~Index() {
        if (m_status == NC_NOERR) {
            nc_close(m_file);
        }
    }

    Index(const Index&) = delete;
    Index& operator=(const Index&) = delete;

    bool check(ug::Error* error) const {
        if (m_status != NC_NOERR) {
            return ug::fail(error, Str(std::string("cannot be opened as an Exodus II file: ") + nc_strerror(m_status)));
        }
        std::error_code failed;
        const std::uintmax_t size = std::filesystem::file_size(m_filename, failed);
        if (failed || (isClassic() && size < classicSize())) {
            return ug::fail(error, "ends too early");
        }
        return isWhole() || ug::fail(error, "is no Exodus II file, or has no whole index of its blocks of elements");
    }

private:
    bool isWhole() const {
        const std::size_t blocks = length("num_el_blk");
        if (blocks == 0 || length("num_nodes") == 0 || blocks > length("num_elem") || !hasAttributes() ||
            !(has("coordx") || has("coord")) || !has("eb_prop1")) {
            return false;
        }
        std::vector<int> ids(blocks);
        int variable = 0;
        nc_inq_varid(m_file, "eb_prop1", &variable);
        if (nc_get_var_int(m_file, variable, ids.data()) != NC_NOERR ||
            std::set<int>(ids.begin(), ids.end()).size() != blocks) {
            return false;
        }
        for (std::size_t b = 1; b <= blocks; ++b) {
            const std::string number = std::to_string(b);
            if (length("num_el_in_blk" + number) > 0 &&
                (nc_inq_varid(m_file, ("connect" + number).c_str(), &variable) != NC_NOERR ||
                 nc_inq_att(m_file, variable, "elem_type", nullptr, nullptr) != NC_NOERR ||
                 length("num_nod_per_el" + number) == 0)) {
                return false;
            }
        }
        return hasValues("num_nod_var", "name_nod_var") && hasValues("num_elem_var", "name_elem_var");
    }

    bool hasAttributes() const {
        for (const char* name : {"version", "api_version", "floating_point_word_size"}) {
            if (nc_inq_att(m_file, NC_GLOBAL, name, nullptr, nullptr) != NC_NOERR) {
                return false;
            }
        }
        return true;
    }

    bool hasValues(const char* countName, const char* namesName) const {
        return length(countName) == 0 || has(namesName);
    }

    bool has(const std::string& variable) const {
        int id = 0;
        return nc_inq_varid(m_file, variable.c_str(), &id) == NC_NOERR;
    }

    std::size_t length(const std::string& dimension) const {
        int id = 0;
        std::size_t count = 0;
        return nc_inq_dimid(m_file, dimension.c_str(), &id) == NC_NOERR && nc_inq_dimlen(m_file, id, &count) == NC_NOERR
                   ? count
                   : 0;
    }

    bool isClassic() const {
        int format = 0;
        return nc_inq_format(m_file, &format) == NC_NOERR &&
               (format == NC_FORMAT_CLASSIC || format == NC_FORMAT_64BIT_OFFSET);
    }

    // The bytes that header and values take at least; NetCDF reads zeros behind the end of such a file.
    std::uintmax_t classicSize() const {
        int dimensions = 0;
        int variables = 0;
        int attributes = 0;
        nc_inq(m_file, &dimensions, &variables, &attributes, nullptr);
        std::uintmax_t size = 32 + attributesSize(NC_GLOBAL, attributes);
        char name[NC_MAX_NAME + 1] = "";
        for (int d = 0; d < dimensions; ++d) {
            nc_inq_dimname(m_file, d, name);
            size += 8 + paddedLength(name);
        }
        for (int v = 0; v < variables; ++v) {
            size += variableSize(v);
        }
        return size;
    }

    std::uintmax_t variableSize(int variable) const {
        char name[NC_MAX_NAME + 1] = "";
        nc_type type = NC_NAT;
        int rank = 0;
        int dimensions[NC_MAX_VAR_DIMS] = {};
        int attributes = 0;
        nc_inq_var(m_file, variable, name, &type, &rank, dimensions, &attributes);
        std::uintmax_t values = typeSize(type);
        for (int d = 0; d < rank; ++d) {
            std::size_t count = 0;
            nc_inq_dimlen(m_file, dimensions[d], &count);
            values *= count;
        }
        return 28 + paddedLength(name) + 4 * std::uintmax_t(rank) + attributesSize(variable, attributes) + values;
    }

    std::uintmax_t attributesSize(int variable, int attributeCount) const {
        std::uintmax_t size = 0;
        for (int a = 0; a < attributeCount; ++a) {
            char name[NC_MAX_NAME + 1] = "";
            nc_type type = NC_NAT;
            std::size_t count = 0;
            nc_inq_attname(m_file, variable, a, name);
            nc_inq_att(m_file, variable, name, &type, &count);
            size += 12 + paddedLength(name) + count * typeSize(type);
        }
        return size;
    }

    std::uintmax_t typeSize(nc_type type) const {
        std::size_t size = 0;
        nc_inq_type(m_file, type, nullptr, &size);
        return size;
    }

    static std::uintmax_t paddedLength(const char* name) {
        return (std::strlen(name) + 3) / 4 * 4;
    }

    std::string m_filename;
    int m_file = -1;
    int m_status;
};

} // namespace

class ExodusSource::Reader : public vtkExodusIIReader {
public:
    static Reader* New();
    vtkTypeMacro(Reader, vtkExodusIIReader)

        void listArrays(int objectType, std::vector<VtkArray>* arrays) {
        for (const auto& info : Names::arrays(Metadata, objectType)) {
            VtkArray array{info.Name, mappingOf(objectType), info.Components};
            array.componentNames.assign(info.OriginalNames.begin(), info.OriginalNames.end());
            arrays->push_back(std::move(array));
        }
    }
};

vtkStandardNewMacro(ExodusSource::Reader);

ExodusSource::ExodusSource() = default;
ExodusSource::~ExodusSource() = default;

bool ExodusSource::open(const std::string& filename, VtkContents* contents, ug::Error* error) {
    if (!Index(filename).check(error)) {
        return false;
    }
    m_reader = vtkSmartPointer<Reader>::New();
    m_reader->SetFileName(filename.c_str());
    m_reader->ApplyDisplacementsOff();
    m_reader->GenerateObjectIdCellArrayOff();
    m_reader->GenerateGlobalElementIdArrayOn();
    m_reader->GenerateGlobalNodeIdArrayOn();
    if (!updateVtk([this] { m_reader->UpdateInformation(); }, error)) {
        return false;
    }
    for (int i = 0; i < m_reader->GetNumberOfObjects(vtkExodusIIReader::ELEM_BLOCK); ++i) {
        const char* name = m_reader->GetObjectName(vtkExodusIIReader::ELEM_BLOCK, i);
        m_reader->SetObjectStatus(vtkExodusIIReader::ELEM_BLOCK, i, 1);
        contents->parts.push_back(name);
    }
    vtkInformation* info = m_reader->GetOutputInformation(0);
    if (info->Has(vtkCompositeDataPipeline::TIME_STEPS())) {
        const double* times = info->Get(vtkCompositeDataPipeline::TIME_STEPS());
        m_times.assign(times, times + info->Length(vtkCompositeDataPipeline::TIME_STEPS()));
    }
    contents->title = m_reader->GetTitle();
    contents->title.erase(contents->title.find_last_not_of(" \n") + 1); // npos + 1 is 0.
    contents->steps = m_times.empty() ? std::vector{vtkOnlyStep()} : vtkTimeSteps(m_times);
    for (const int objectType : OBJECT_TYPES) {
        m_reader->listArrays(objectType, &m_arrays);
    }
    contents->arrays = m_arrays;
    return true;
}

vtkSmartPointer<vtkDataObject> ExodusSource::read(std::size_t step, std::span<const std::size_t> arrays,
                                                  ug::Error* error) {
    for (const int objectType : OBJECT_TYPES) {
        for (int i = 0; i < m_reader->GetNumberOfObjectArrays(objectType); ++i) {
            m_reader->SetObjectArrayStatus(objectType, m_reader->GetObjectArrayName(objectType, i), 0);
        }
        for (const std::size_t array : arrays) {
            if (m_arrays[array].mapping == mappingOf(objectType)) {
                m_reader->SetObjectArrayStatus(objectType, m_arrays[array].name.c_str(), 1);
            }
        }
    }
    const auto update = [&] { m_times.empty() ? m_reader->Update() : void(m_reader->UpdateTimeStep(m_times[step])); };
    if (!updateVtk(update, error)) {
        return nullptr;
    }
    auto* output = vtkMultiBlockDataSet::SafeDownCast(m_reader->GetOutputDataObject(0));
    return output && output->GetNumberOfBlocks() > 0 ? output->GetBlock(0) : nullptr;
}

void ExodusSource::release() {
    m_reader->GetOutputDataObject(0)->ReleaseData();
}

} // namespace orv::imp::cae
