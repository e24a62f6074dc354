#include "OrvImportVtk/XmlSource.h"

#include "OrvImportCae/CaeReaders.h"

#include <vtkDataArraySelection.h>
#include <vtkDataObject.h>
#include <vtkDataSetAttributes.h>
#include <vtkInformation.h>
#include <vtkInformationVector.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkStreamingDemandDrivenPipeline.h>
#include <vtkTypeInt64Array.h>
#include <vtkXMLDataElement.h>
#include <vtkXMLImageDataReader.h>
#include <vtkXMLPolyDataReader.h>
#include <vtkXMLRectilinearGridReader.h>
#include <vtkXMLStructuredGridReader.h>
#include <vtkXMLUnstructuredGridReader.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

namespace orv::imp::cae {
namespace {

/// Looks at where the nodes of cells begin, which VTK's readers take on trust: they make room for as many nodes as the
/// last one tells, and write beyond it when that number is damaged.
template <class Base>
class CheckedReader : public Base {
protected:
    bool hasOffsets(vtkXMLDataElement* cells, vtkIdType cellCount) {
        vtkXMLDataElement* element = cells ? this->FindDataArrayWithName(cells, "offsets") : nullptr;
        if (!element || cellCount < 1) {
            return true;
        }
        constexpr vtkIdType BEST_COMPRESSION = 8192;
        std::error_code failed;
        const auto size = std::filesystem::file_size(this->FileName, failed);
        const vtkIdType most = failed ? 0 : vtkIdType(size) * BEST_COMPRESSION;
        if (cellCount > most) {
            return false;
        }
        vtkNew<vtkTypeInt64Array> offsets;
        offsets->SetNumberOfTuples(cellCount);
        const float progressEnd = std::exchange(this->ProgressRange[1], this->ProgressRange[0]); // No steps back.
        const bool isRead = this->ReadArrayValues(element, 0, offsets, 0, cellCount) != 0;
        this->ProgressRange[1] = progressEnd;
        if (!isRead) {
            return false;
        }
        const vtkTypeInt64* values = offsets->GetPointer(0);
        return values[0] >= 0 && std::is_sorted(values, values + cellCount) && values[cellCount - 1] <= most;
    }

    int failWithOffsets() {
        vtkErrorMacro("The offsets of the cells are damaged");
        return 0;
    }
};

/// Passes over the faces of polyhedra, too, which become no elements: VTK does not survive faces that are damaged.
class GridReader : public CheckedReader<vtkXMLUnstructuredGridReader> {
public:
    static GridReader* New();

protected:
    int ReadPiece(vtkXMLDataElement* piece) override {
        const int isRead = vtkXMLUnstructuredGridReader::ReadPiece(piece);
        vtkXMLDataElement* cells = isRead ? CellElements[Piece] : nullptr;
        for (int i = 0; cells && i < cells->GetNumberOfNestedElements(); ++i) {
            vtkXMLDataElement* array = cells->GetNestedElement(i);
            const char* name = array->GetAttribute("Name");
            if (name && (std::strcmp(name, "faces") == 0 || std::strcmp(name, "faceoffsets") == 0)) {
                array->SetAttribute("Name", "passed over");
            }
        }
        return isRead;
    }

    int ReadPieceData() override {
        return hasOffsets(CellElements[Piece], NumberOfCells[Piece]) ? vtkXMLUnstructuredGridReader::ReadPieceData()
                                                                     : failWithOffsets();
    }
};

vtkStandardNewMacro(GridReader);

class SurfaceReader : public CheckedReader<vtkXMLPolyDataReader> {
public:
    static SurfaceReader* New();

protected:
    int ReadPieceData() override {
        const bool isWhole = hasOffsets(VertElements[Piece], NumberOfVerts[Piece]) &&
                             hasOffsets(LineElements[Piece], NumberOfLines[Piece]) &&
                             hasOffsets(StripElements[Piece], NumberOfStrips[Piece]) &&
                             hasOffsets(PolyElements[Piece], NumberOfPolys[Piece]);
        return isWhole ? vtkXMLPolyDataReader::ReadPieceData() : failWithOffsets();
    }
};

vtkStandardNewMacro(SurfaceReader);

template <class Reader>
vtkSmartPointer<vtkXMLReader> make() {
    return vtkSmartPointer<Reader>::New();
}

struct Kind {
    const char* extension;
    vtkSmartPointer<vtkXMLReader> (*make)();
};

constexpr Kind KINDS[] = {
    {"vtu", make<GridReader>},
    {"vtp", make<SurfaceReader>},
    {"vts", make<vtkXMLStructuredGridReader>},
    {"vtr", make<vtkXMLRectilinearGridReader>},
    {"vti", make<vtkXMLImageDataReader>},
};

vtkSmartPointer<vtkXMLReader> makeReader(const std::string& filename) {
    const std::string extension = fileExtension(filename);
    for (const Kind& kind : KINDS) {
        if (extension == kind.extension) {
            return kind.make();
        }
    }
    return nullptr;
}

bool isNumeric(vtkInformation* info) {
    return info->Get(vtkDataObject::FIELD_ARRAY_TYPE()) != VTK_STRING;
}

// Ids and marks of the mesh are not results.
bool isOfTheMesh(vtkInformation* info, const std::string& name) {
    const int attributes = info->Get(vtkDataObject::FIELD_ACTIVE_ATTRIBUTE());
    return name == vtkDataSetAttributes::GhostArrayName() || (attributes & 1 << vtkDataSetAttributes::GLOBALIDS) != 0;
}

void listArrays(vtkInformationVector* list, ug::ResultMapping mapping, std::vector<CaeArray>* arrays) {
    for (int i = 0; list && i < list->GetNumberOfInformationObjects(); ++i) {
        vtkInformation* info = list->GetInformationObject(i);
        const std::string name = info->Get(vtkDataObject::FIELD_NAME());
        if (!isOfTheMesh(info, name)) {
            arrays->push_back(
                {name, mapping, isNumeric(info) ? info->Get(vtkDataObject::FIELD_NUMBER_OF_COMPONENTS()) : 0});
        }
    }
}

// A program may have noted the time, as the field "TimeValue".
std::vector<ug::StateInfo> stepsOf(vtkInformation* info) {
    const bool hasTime = info->Length(vtkStreamingDemandDrivenPipeline::TIME_STEPS()) == 1;
    return hasTime ? vtkTimeSteps({info->Get(vtkStreamingDemandDrivenPipeline::TIME_STEPS()), 1})
                   : std::vector{vtkOnlyStep()};
}

} // namespace

bool XmlSource::open(const std::string& filename, VtkContents* contents, ug::Error* error) {
    m_reader = makeReader(filename);
    if (!m_reader) {
        return ug::fail(error, "is no VTK XML file by its name");
    }
    watch(m_reader);
    m_reader->SetFileName(filename.c_str());
    if (!updateVtk([this] { m_reader->UpdateInformation(); }, error)) {
        return false;
    }
    vtkInformation* info = m_reader->GetOutputInformation(0);
    listArrays(info->Get(vtkDataObject::POINT_DATA_VECTOR()), ug::PER_NODE, &contents->arrays);
    listArrays(info->Get(vtkDataObject::CELL_DATA_VECTOR()), ug::PER_ELEMENT, &contents->arrays);
    contents->parts = {std::string()};
    contents->steps = stepsOf(info);
    m_arrays = contents->arrays;
    return true;
}

vtkSmartPointer<vtkDataObject> XmlSource::read(std::size_t, std::span<const std::size_t> arrays, ug::Error* error) {
    vtkDataArraySelection* points = m_reader->GetPointDataArraySelection();
    vtkDataArraySelection* cells = m_reader->GetCellDataArraySelection();
    for (const CaeArray& array : m_arrays) {
        (array.mapping == ug::PER_NODE ? points : cells)->DisableArray(array.name.c_str());
    }
    for (const std::size_t array : arrays) {
        (m_arrays[array].mapping == ug::PER_NODE ? points : cells)->EnableArray(m_arrays[array].name.c_str());
    }
    return updateVtk([this] { m_reader->Update(); }, error) ? m_reader->GetOutputDataObject(0) : nullptr;
}

void XmlSource::release() {
    m_reader->GetOutputDataObject(0)->ReleaseData();
}

} // namespace orv::imp::cae
