#include "OrvImportVtk/XmlSource.h"

#include "OrvImportVtk/XmlReaders.h"

#include <vtkDataArraySelection.h>
#include <vtkDataObject.h>
#include <vtkDataSetAttributes.h>
#include <vtkInformation.h>
#include <vtkInformationVector.h>
#include <vtkStreamingDemandDrivenPipeline.h>

namespace orv::imp::cae {
namespace {

bool isNumeric(vtkInformation* info) {
    return info->Get(vtkDataObject::FIELD_ARRAY_TYPE()) != VTK_STRING;
}

// Ids and marks of the mesh are not results. Files of old call the marks so.
bool isOfTheMesh(vtkInformation* info, const std::string& name) {
    const int attributes = info->Get(vtkDataObject::FIELD_ACTIVE_ATTRIBUTE());
    return name == vtkDataSetAttributes::GhostArrayName() || name == "vtkGhostLevels" ||
           (attributes & 1 << vtkDataSetAttributes::GLOBALIDS) != 0;
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
    m_reader = makeXmlReader(filename);
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
    if (updateVtk([this] { m_reader->Update(); }, error)) {
        return m_reader->GetOutputDataObject(0);
    }
    release(); // What it holds is not to be taken for what was asked for the next time.
    return nullptr;
}

void XmlSource::release() {
    m_reader->GetOutputDataObject(0)->ReleaseData();
}

} // namespace orv::imp::cae
