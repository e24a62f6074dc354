#include "OrvImportVtk/XmlSource.h"

#include "OrvImportCae/CaeReaders.h"

#include <vtkDataArraySelection.h>
#include <vtkDataObject.h>
#include <vtkDataSetAttributes.h>
#include <vtkInformation.h>
#include <vtkInformationVector.h>
#include <vtkObjectFactory.h>
#include <vtkStreamingDemandDrivenPipeline.h>
#include <vtkXMLDataElement.h>
#include <vtkXMLImageDataReader.h>
#include <vtkXMLPolyDataReader.h>
#include <vtkXMLRectilinearGridReader.h>
#include <vtkXMLStructuredGridReader.h>
#include <vtkXMLUnstructuredGridReader.h>

#include <cstring>

namespace orv::imp::cae {
namespace {

/// Passes over the faces of polyhedra, which become no elements: VTK does not survive faces that are damaged.
class GridReader : public vtkXMLUnstructuredGridReader {
public:
    static GridReader* New();
    vtkTypeMacro(GridReader, vtkXMLUnstructuredGridReader)

        protected : int ReadPiece(vtkXMLDataElement* piece) override {
        const int isRead = Superclass::ReadPiece(piece);
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
};

vtkStandardNewMacro(GridReader)

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
    {"vtp", make<vtkXMLPolyDataReader>},
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

void listArrays(vtkInformationVector* list, ug::ResultMapping mapping, std::vector<VtkArray>* arrays) {
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
    for (const VtkArray& array : m_arrays) {
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
