#pragma once

#include "OrvImportVtk/FoamCase.h"
#include "OrvImportVtk/VtkSource.h"

class vtkOpenFOAMReader;

namespace orv::imp::cae {

/// OpenFOAM: the case in the folder of the file, whose contents do not matter. The mesh and its patches are parts, the
/// folders of times are steps, volume fields are of cells and faces, point fields of points. Polyhedra become
/// tetrahedra and pyramids around a point in their middle, all with the cell's values. VTK keeps values as floats.
class FoamSource : public VtkSource {
public:
    FoamSource();
    ~FoamSource() override;

    bool open(const std::string& filename, VtkContents* contents, ug::Error* error) override;
    vtkSmartPointer<vtkDataObject> read(std::size_t step, std::span<const std::size_t> arrays,
                                        ug::Error* error) override;
    void release() override;

private:
    void makeReader();
    void listSteps(VtkContents* contents);
    void listArrays(VtkContents* contents);
    void select(const CaeArray& array, bool isWanted);
    bool checkArray(const CaeArray& array, const FoamTime& time, std::set<std::string>* uniform,
                    ug::Error* error) const;

    std::string m_filename;
    FoamCase m_case;
    vtkSmartPointer<vtkOpenFOAMReader> m_reader;
    std::vector<CaeArray> m_arrays;
    std::vector<std::size_t> m_times; ///< For each step its time in the case; none when no time has anything.
};

} // namespace orv::imp::cae
