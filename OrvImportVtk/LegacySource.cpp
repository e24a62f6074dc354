#include "OrvImportVtk/LegacySource.h"

#include "OrvImportVtk/LegacyMesh.h"

#include <vtkDataSet.h>

namespace orv::imp::cae {

bool LegacySource::open(const std::string& filename, VtkContents* contents, ug::Error* error) {
    if (!m_file.open(filename, error)) {
        return false;
    }
    m_file.tellProgress(progress(), 0, m_file.size());
    if (!indexLegacyFile(&m_file, &m_index, error)) {
        return false;
    }
    if (m_index.endsWithinLine) {
        contents->warnings.push_back(
            "the file ends without a line end; if it has been cut, its last number may be wrong");
    }
    contents->title = m_index.title;
    contents->steps = {vtkOnlyStep()};
    contents->parts = {std::string()};
    for (const LegacyArray& array : m_index.arrays) {
        contents->arrays.push_back(array.array);
    }
    return true;
}

vtkSmartPointer<vtkDataObject> LegacySource::read(std::size_t, std::span<const std::size_t> arrays, ug::Error* error) {
    m_file.tellProgress(progress(), 0, m_file.size());
    if (!m_file.checkUnchanged(error)) {
        return nullptr;
    }
    return readLegacyMesh(&m_file, m_index, arrays, error);
}

void LegacySource::release() {}

} // namespace orv::imp::cae
