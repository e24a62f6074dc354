#include "OrvImportVtk/LegacySource.h"

#include "OrvImportVtk/LegacyCheck.h"
#include "OrvImportVtk/VtkMessages.h"

#include <vtkDataSet.h>

namespace orv::imp::cae {

bool LegacySource::open(const std::string& filename, VtkContents* contents, ug::Error* error) {
    if (!checkLegacyFile(filename, &contents->warnings, error)) {
        return false;
    }
    m_reader = vtkSmartPointer<vtkDataSetReader>::New();
    watch(m_reader);
    m_reader->SetFileName(filename.c_str());
    m_reader->ReadAllScalarsOn();
    m_reader->ReadAllVectorsOn();
    m_reader->ReadAllNormalsOn();
    m_reader->ReadAllTensorsOn();
    m_reader->ReadAllColorScalarsOn();
    m_reader->ReadAllTCoordsOn();
    m_reader->ReadAllFieldsOn();
    const vtkSmartPointer<vtkDataObject> output = read(0, {}, error);
    if (!output) {
        return false;
    }
    contents->title = m_reader->GetHeader() ? m_reader->GetHeader() : "";
    contents->steps = {vtkOnlyStep()};
    contents->parts = {std::string()};
    listVtkArrays(output, &contents->arrays);
    release();
    return true;
}

vtkSmartPointer<vtkDataObject> LegacySource::read(std::size_t, std::span<const std::size_t>, ug::Error* error) {
    VtkMessages messages;
    messages.takeWarningsForErrors();
    m_reader->Update();
    if (messages.hasErrors()) {
        ug::fail(error, Str(messages.errors()));
        return nullptr;
    }
    vtkDataObject* output = m_reader->GetOutputDataObject(0);
    if (!vtkDataSet::SafeDownCast(output)) {
        ug::fail(error, "holds no mesh");
        return nullptr;
    }
    return output;
}

void LegacySource::release() {
    m_reader->GetOutputDataObject(0)->ReleaseData();
}

} // namespace orv::imp::cae
