#pragma once

#include "OrvImportCae/CaeFields.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ProgressMeter.h"
#include "OrvUnstructGrid/StateInfo.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <vtkSmartPointer.h>

class vtkAlgorithm;
class vtkDataObject;

namespace orv::imp::cae {

/// What a file holds, without any values.
struct VtkContents {
    std::string title;
    std::vector<ug::StateInfo> steps; ///< Ids from 1. At least one.
    std::vector<CaeArray> arrays;     ///< Each name once for points and once for cells.
    std::vector<std::string> parts;   ///< All that any step has. Empty when only the meshes themselves tell.
    bool hasOneMesh = true;           ///< The same in all steps.
    std::vector<std::string> warnings;
};

/// One format that VTK reads, and how its reader is made to read some of it.
class VtkSource {
public:
    VtkSource() = default;
    virtual ~VtkSource();

    VtkSource(const VtkSource&) = delete;
    VtkSource& operator=(const VtkSource&) = delete;

    /// Tells this how far reads have come. Lives longer than the source; null, as at first, for nobody.
    virtual void setProgress(ug::ProgressMeter* progress);

    /// Once per object. Reads no meshes and no arrays where the format allows that.
    virtual bool open(const std::string& filename, VtkContents* contents, ug::Error* error) = 0;

    /// The mesh of a step with these of VtkContents::arrays, by their indexes, and perhaps others.
    /// @return null on failure
    virtual vtkSmartPointer<vtkDataObject> read(std::size_t step, std::span<const std::size_t> arrays,
                                                ug::Error* error) = 0;

    /// Reads the number of a single item of an array of one component: a point or a cell of a part that has been read
    /// before. NaN when the part does not have the array. False when the format is not laid out for that, as this form
    /// says, or when anything is not as expected.
    virtual bool readNumber(std::size_t step, std::size_t array, std::size_t part, std::size_t item,
                            double* number) const;

    /// Gives back the memory of what read() returned last; it is empty from then on.
    virtual void release() = 0;

protected:
    /// Passes on what an algorithm of the source's own tells.
    void watch(vtkAlgorithm* algorithm);
    ug::ProgressMeter* progress() const;

private:
    ug::ProgressMeter* m_progress = nullptr;
};

/// A source for a file of the format of that CaeReaderEntry::name; null when there is none.
std::unique_ptr<VtkSource> createVtkSource(const std::string& formatName);

/// One step without a time.
ug::StateInfo vtkOnlyStep();

/// A step for each time, which is part of its name: "Time 0.5".
std::vector<ug::StateInfo> vtkTimeSteps(std::span<const double> times);

/// Updates an algorithm of VTK: `update` calls it. False with VTK's own texts when it complains.
bool updateVtk(const std::function<void()>& update, ug::Error* error);

} // namespace orv::imp::cae
