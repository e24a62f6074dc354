#pragma once

#include "OrvImportVtk/CgnsIndex.h"
#include "OrvImportVtk/VtkSource.h"

#include <vtkSmartPointer.h>

class vtkCGNSReader;

namespace orv::imp::cae {

/// CGNS: zones as parts, solutions at their nodes and in their cells, times. VTK tells only of the first zone what
/// there is, and trusts files blindly, so an index of our own goes ahead of it.
class CgnsSource : public VtkSource {
public:
    CgnsSource();
    ~CgnsSource() override;

    bool open(const std::string& filename, VtkContents* contents, ug::Error* error) override;
    vtkSmartPointer<vtkDataObject> read(std::size_t step, std::span<const std::size_t> arrays,
                                        ug::Error* error) override;
    void release() override;

private:
    void chooseBases(CgnsLeftOut* leftOut);
    void describe(VtkContents* contents) const;
    bool openReader(ug::Error* error);

    std::string m_filename;
    std::vector<CgnsBase> m_bases;
    std::vector<std::size_t> m_chosen; ///< Of the bases.
    std::vector<double> m_times;       ///< None when the file has no times.
    std::vector<CaeArray> m_arrays;
    vtkSmartPointer<vtkCGNSReader> m_reader;
};

} // namespace orv::imp::cae
