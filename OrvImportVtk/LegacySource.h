#pragma once

#include "OrvImportVtk/VtkSource.h"

#include <vtkDataSetReader.h>

namespace orv::imp::cae {

/// VTK's older files, .vtk, with any of its meshes. One step. Such a file can only be read whole.
class LegacySource : public VtkSource {
public:
    bool open(const std::string& filename, VtkContents* contents, ug::Error* error) override;
    vtkSmartPointer<vtkDataObject> read(std::size_t step, std::span<const std::size_t> arrays,
                                        ug::Error* error) override;
    void release() override;

private:
    vtkSmartPointer<vtkDataSetReader> m_reader;
};

} // namespace orv::imp::cae
