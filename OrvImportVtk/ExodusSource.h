#pragma once

#include "OrvImportVtk/VtkSource.h"

class vtkExodusIIReader;

namespace orv::imp::cae {

/// Exodus II: blocks of elements as parts, variables of nodes and elements, time steps. Points are where the file has
/// them, displacements are not added. Sets are left out.
class ExodusSource : public VtkSource {
public:
    ExodusSource();
    ~ExodusSource() override;

    bool open(const std::string& filename, VtkContents* contents, ug::Error* error) override;
    vtkSmartPointer<vtkDataObject> read(std::size_t step, std::span<const std::size_t> arrays,
                                        ug::Error* error) override;
    void release() override;

private:
    class Reader;

    vtkSmartPointer<Reader> m_reader;
    std::vector<VtkArray> m_arrays;
    std::vector<double> m_times; ///< None when the file has no step.
};

} // namespace orv::imp::cae
