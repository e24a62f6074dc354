#pragma once

#include "OrvImportVtk/VtkSource.h"

#include <vtkGenericEnSightReader.h>

namespace orv::imp::cae {

/// EnSight Gold, ASCII and binary: parts by their names, variables of nodes and elements, times, and meshes that change
/// when the case file says so.
class EnSightSource : public VtkSource {
public:
    bool open(const std::string& filename, VtkContents* contents, ug::Error* error) override;
    vtkSmartPointer<vtkDataObject> read(std::size_t step, std::span<const std::size_t> arrays,
                                        ug::Error* error) override;
    void release() override;

private:
    vtkSmartPointer<vtkGenericEnSightReader> m_reader;
    std::vector<VtkArray> m_arrays;
    std::vector<double> m_times; ///< None when nothing depends on time.
};

} // namespace orv::imp::cae
