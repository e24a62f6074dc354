#pragma once

#include "OrvImportVtk/EnSightCase.h"
#include "OrvImportVtk/EnSightFile.h"
#include "OrvImportVtk/EnSightMesh.h"
#include "OrvImportVtk/VtkSource.h"

#include <optional>
#include <vector>

namespace orv::imp::cae {

/// EnSight Gold, ASCII and binary: parts by their names, variables of nodes and elements, times, and meshes that change
/// when the case file says so. VTK only gives the meshes that the files are read into: its reader does not survive
/// damaged ones, and takes wrong values for right ones.
class EnSightSource : public VtkSource {
public:
    bool open(const std::string& filename, VtkContents* contents, ug::Error* error) override;
    vtkSmartPointer<vtkDataObject> read(std::size_t step, std::span<const std::size_t> arrays,
                                        ug::Error* error) override;
    void release() override;

private:
    /// @return the form of the mesh's file; nothing on failure
    std::optional<EnSightFile::Form> readMesh(double time, std::vector<EnSightPart>* parts, ug::Error* error) const;

    EnSightCase m_case;
    std::vector<double> m_times; ///< One, if nothing depends on time.
};

} // namespace orv::imp::cae
