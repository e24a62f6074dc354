#include "OrvImportVtk/VtkSource.h"

#include "OrvImportCae/CaeReader.h"
#include "OrvImportVtk/CgnsSource.h"
#include "OrvImportVtk/CollectionSource.h"
#include "OrvImportVtk/EnSightSource.h"
#include "OrvImportVtk/ExodusSource.h"
#include "OrvImportVtk/FoamSource.h"
#include "OrvImportVtk/HdfSource.h"
#include "OrvImportVtk/LegacySource.h"
#include "OrvImportVtk/VtkMessages.h"
#include "OrvImportVtk/XmlSource.h"

#include <vtkAlgorithm.h>
#include <vtkCallbackCommand.h>
#include <vtkNew.h>

#include <exception>

namespace orv::imp::cae {
namespace {

template <class Source>
std::unique_ptr<VtkSource> create() {
    return std::make_unique<Source>();
}

struct Format {
    const char* name;
    std::unique_ptr<VtkSource> (*create)();
};

constexpr Format FORMATS[] = {
    {"VTK XML", create<XmlSource>},          {"VTK XML collections", create<CollectionSource>},
    {"VTK legacy", create<LegacySource>},    {"Exodus II", create<ExodusSource>},
    {"EnSight Gold", create<EnSightSource>}, {"VTKHDF", create<HdfSource>},
    {"OpenFOAM", create<FoamSource>},        {"CGNS", create<CgnsSource>},
};

} // namespace

VtkSource::~VtkSource() = default;

void VtkSource::setProgress(ug::ProgressMeter* progress) {
    m_progress = progress;
}

bool VtkSource::readNumber(std::size_t, std::size_t, std::size_t, std::size_t, double*) const {
    return false;
}

// The observer goes with the algorithm, which is the source's own.
void VtkSource::watch(vtkAlgorithm* algorithm) {
    vtkNew<vtkCallbackCommand> command;
    command->SetClientData(this);
    command->SetCallback([](vtkObject* caller, unsigned long, void* source, void*) {
        if (ug::ProgressMeter* meter = static_cast<VtkSource*>(source)->m_progress) {
            meter->tell(static_cast<vtkAlgorithm*>(caller)->GetProgress());
        }
    });
    algorithm->AddObserver(vtkCommand::ProgressEvent, command);
}

ug::ProgressMeter* VtkSource::progress() const {
    return m_progress;
}

std::unique_ptr<VtkSource> createVtkSource(const std::string& formatName) {
    for (const Format& format : FORMATS) {
        if (formatName == format.name) {
            return format.create();
        }
    }
    return nullptr;
}

ug::StateInfo vtkOnlyStep() {
    return ug::StateInfo(1, "State 1", ug::StateInfo::TIME, UNDEFINED_DOUBLE);
}

std::vector<ug::StateInfo> vtkTimeSteps(std::span<const double> times) {
    std::vector<ug::StateInfo> steps;
    for (const double time : times) {
        steps.push_back(timeState(int(steps.size()) + 1, time));
    }
    return steps;
}

bool updateVtk(const std::function<void()>& update, ug::Error* error) {
    const VtkMessages messages;
    try {
        update();
    } catch (const std::exception&) { // Sizes beyond any memory; VTK throws nothing else.
        return ug::fail(error, "needs more memory than there is, or is damaged");
    }
    return !messages.hasErrors() || ug::fail(error, Str(messages.errors()));
}

} // namespace orv::imp::cae
