#include "OrvImportVtk/VtkSource.h"

#include "OrvImportVtk/CgnsSource.h"
#include "OrvImportVtk/CollectionSource.h"
#include "OrvImportVtk/EnSightSource.h"
#include "OrvImportVtk/ExodusSource.h"
#include "OrvImportVtk/FoamSource.h"
#include "OrvImportVtk/HdfSource.h"
#include "OrvImportVtk/LegacySource.h"
#include "OrvImportVtk/VtkMessages.h"
#include "OrvImportVtk/VtkPieces.h"
#include "OrvImportVtk/XmlSource.h"

#include <vtkAbstractArray.h>
#include <vtkAlgorithm.h>
#include <vtkCallbackCommand.h>
#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataObject.h>
#include <vtkDataSet.h>
#include <vtkNew.h>
#include <vtkPointData.h>

#include <algorithm>
#include <array>
#include <charconv>
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

std::string shortText(double number) {
    std::array<char, 32> text;
    return std::string(text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr);
}

void listArrays(vtkDataSetAttributes* attributes, ug::ResultMapping mapping, std::vector<CaeArray>* arrays) {
    for (int i = 0; i < attributes->GetNumberOfArrays(); ++i) {
        vtkAbstractArray* array = attributes->GetAbstractArray(i);
        if (!array || !array->GetName() || array == attributes->GetAbstractAttribute(vtkDataSetAttributes::GLOBALIDS) ||
            array->GetName() == std::string(vtkDataSetAttributes::GhostArrayName())) {
            continue;
        }
        const bool isKnown = std::any_of(arrays->begin(), arrays->end(), [&](const CaeArray& known) {
            return known.mapping == mapping && known.name == array->GetName();
        });
        if (!isKnown) {
            arrays->push_back(
                {array->GetName(), mapping, vtkDataArray::SafeDownCast(array) ? array->GetNumberOfComponents() : 0});
        }
    }
}

} // namespace

VtkSource::~VtkSource() = default;

void VtkSource::setProgress(ug::ProgressMeter* progress) {
    m_progress = progress;
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
        const int id = int(steps.size()) + 1;
        steps.emplace_back(id, Str("Time " + shortText(time)), ug::StateInfo::TIME, time);
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

void listVtkArrays(vtkDataObject* output, std::vector<CaeArray>* arrays) {
    for (const VtkPiece& piece : piecesOf(output)) {
        listArrays(piece.data->GetPointData(), ug::PER_NODE, arrays);
        listArrays(piece.data->GetCellData(), ug::PER_ELEMENT, arrays);
    }
}

} // namespace orv::imp::cae
