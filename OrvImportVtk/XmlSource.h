#pragma once

#include "OrvImportVtk/VtkSource.h"

#include <vtkXMLReader.h>

namespace orv::imp::cae {

/// VTK's XML files of one mesh: .vtu, .vtp, .vts, .vtr and .vti. One step.
class XmlSource : public VtkSource {
public:
    bool open(const std::string& filename, VtkContents* contents, ug::Error* error) override;
    vtkSmartPointer<vtkDataObject> read(std::size_t step, std::span<const std::size_t> arrays,
                                        ug::Error* error) override;
    void release() override;

private:
    vtkSmartPointer<vtkXMLReader> m_reader;
    std::vector<CaeArray> m_arrays;
};

} // namespace orv::imp::cae
