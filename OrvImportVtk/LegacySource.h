#pragma once

#include "OrvImportVtk/LegacyIndex.h"
#include "OrvImportVtk/VtkSource.h"

namespace orv::imp::cae {

/// VTK's older files, .vtk, with any of its meshes. One step. It reads no more than what is asked for, which VTK's own
/// reader of such files cannot do; nor does that notice when a file has been cut.
class LegacySource : public VtkSource {
public:
    bool open(const std::string& filename, VtkContents* contents, ug::Error* error) override;
    vtkSmartPointer<vtkDataObject> read(std::size_t step, std::span<const std::size_t> arrays,
                                        ug::Error* error) override;
    void release() override;

private:
    CaeFile m_file;
    LegacyIndex m_index;
};

} // namespace orv::imp::cae
