#include "OrvImportVtk/CgnsSource.h"

#include "OrvImportVtk/CgnsAdf.h"
#include "OrvImportVtk/CgnsElements.h"
#include "OrvImportVtk/CgnsHdf5.h"
#include "OrvImportVtk/VtkMessages.h"
#include "OrvImportVtk/VtkPieces.h"

#include <vtkCellType.h>
#include <vtkCGNSReader.h>
#include <vtkDataArraySelection.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <exception>
#include <functional>
#include <iostream>
#include <set>
#include <sstream>
#include <string_view>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::size_t MOST_NAMES = 5; // In a warning.

// What VTK says of solutions that are neither of nodes nor of cells, which opening has told already.
constexpr const char* CENTERING_WARNING = "centering is not supported";
constexpr std::string_view CENTERING_LINE = "Bad Centering encountered !Only Vertex and CellCenter are supported\n";

/// While one lives, what C++ programs print as errors is kept here; VTK's reader of CGNS does that besides its
/// messages.
class ErrorStream {
public:
    ErrorStream() : m_before(std::cerr.rdbuf(m_text.rdbuf())) {}

    ~ErrorStream() {
        std::cerr.rdbuf(m_before);
    }

    ErrorStream(const ErrorStream&) = delete;
    ErrorStream& operator=(const ErrorStream&) = delete;

    std::string text() const {
        std::string line = m_text.str();
        for (std::size_t at; (at = line.find(CENTERING_LINE)) != std::string::npos;) {
            line.erase(at, CENTERING_LINE.size());
        }
        std::replace(line.begin(), line.end(), '\n', ' ');
        line.erase(line.find_last_not_of(' ') + 1); // npos + 1 is 0.
        return line;
    }

private:
    std::ostringstream m_text;
    std::streambuf* m_before;
};

// Whatever VTK has to say is about a file that is not as it takes it to be.
bool run(const std::function<void()>& update, ug::Error* error) {
    VtkMessages messages;
    messages.takeWarningsForErrors();
    messages.ignore(CENTERING_WARNING);
    const ErrorStream stream;
    const HdfSilence silence;
    try {
        update();
    } catch (const std::exception& exception) { // Of vectors that are too long, or for want of memory.
        return ug::fail(error, Str(std::string("VTK cannot read it: ") + exception.what()));
    }
    if (messages.hasErrors() || !stream.text().empty()) {
        return ug::fail(error, Str(messages.errors().empty() ? stream.text() : messages.errors()));
    }
    return true;
}

std::string textOf(const CgnsLeftOut::value_type& leftOut) {
    const auto& [what, names] = leftOut;
    std::string text = what + " are left out: ";
    for (std::size_t i = 0; i < std::min(names.size(), MOST_NAMES); ++i) {
        text += (i == 0 ? "'" : ", '") + names[i] + "'";
    }
    return text + (names.size() > MOST_NAMES ? " and " + std::to_string(names.size() - MOST_NAMES) + " more" : "");
}

// A step counts once for each array, whatever zones have it there.
void addArray(const CaeArray& array, std::size_t step, std::vector<CaeArray>* arrays) {
    auto known = std::find_if(arrays->begin(), arrays->end(), [&](const CaeArray& other) {
        return other.name == array.name && other.mapping == array.mapping;
    });
    if (known == arrays->end()) {
        known = arrays->insert(known, array);
    }
    if (known->steps.empty() || known->steps.back() != step) {
        known->steps.push_back(step);
    }
}

bool isSameMesh(const CgnsZone& zone) {
    return std::all_of(zone.steps.begin(), zone.steps.end(), [&](const CgnsZoneStep& step) {
        return step.hasGrid == zone.steps[0].hasGrid && step.grid == zone.steps[0].grid;
    });
}

// VTK has no name for pyramids of 13 nodes, though it knows them otherwise; nothing else that it leaves nameless
// has 13.
void namePyramids(vtkDataObject* output) {
    constexpr vtkIdType NODES = 13;
    for (const VtkPiece& piece : piecesOf(output)) {
        auto* grid = vtkUnstructuredGrid::SafeDownCast(piece.data);
        vtkUnsignedCharArray* types = grid ? grid->GetCellTypesArray() : nullptr;
        for (vtkIdType cell = 0; types && cell < types->GetNumberOfTuples(); ++cell) {
            if (types->GetValue(cell) == VTK_EMPTY_CELL && grid->GetCells()->GetCellSize(cell) == NODES) {
                types->SetValue(cell, VTK_QUADRATIC_PYRAMID);
            }
        }
    }
}

} // namespace

CgnsSource::CgnsSource() = default;
CgnsSource::~CgnsSource() = default;

bool CgnsSource::open(const std::string& filename, VtkContents* contents, ug::Error* error) {
    m_filename = filename;
    CgnsTree tree;
    CgnsLeftOut leftOut;
    if (!checkCgnsHdf5(filename, error) || !checkCgnsAdf(filename, error) || !tree.open(filename, error) ||
        !readCgnsIndex(tree, &m_bases, &leftOut, error)) {
        return false;
    }
    chooseBases(&leftOut);
    describe(contents);
    m_arrays = contents->arrays;
    for (const auto& one : leftOut) {
        contents->warnings.push_back(textOf(one));
    }
    return !contents->parts.empty() || ug::fail(error, "has no zones");
}

vtkSmartPointer<vtkDataObject> CgnsSource::read(std::size_t step, std::span<const std::size_t> arrays,
                                                ug::Error* error) {
    if (!m_reader && !openReader(error)) {
        return nullptr;
    }
    m_reader->DisableAllPointArrays();
    m_reader->DisableAllCellArrays();
    for (const std::size_t array : arrays) {
        const char* name = m_arrays[array].name.c_str();
        m_arrays[array].mapping == ug::PER_NODE ? m_reader->SetPointArrayStatus(name, 1)
                                                : m_reader->SetCellArrayStatus(name, 1);
    }
    const auto update = [&] { m_times.empty() ? m_reader->Update() : void(m_reader->UpdateTimeStep(m_times[step])); };
    if (!run(update, error)) {
        return nullptr;
    }
    auto* output = vtkMultiBlockDataSet::SafeDownCast(m_reader->GetOutputDataObject(0));
    if (output) {
        namePyramids(output);
    }
    return output && m_chosen.size() == 1 && output->GetNumberOfBlocks() == 1 ? output->GetBlock(0) : output;
}

void CgnsSource::release() {
    m_reader->GetOutputDataObject(0)->ReleaseData();
}

// Those that have the times of the first one.
void CgnsSource::chooseBases(CgnsLeftOut* leftOut) {
    m_times = m_bases[0].times;
    for (std::size_t b = 0; b < m_bases.size(); ++b) {
        if (m_bases[b].times == m_times) {
            m_chosen.push_back(b);
        } else {
            (*leftOut)["bases with other times than the first one"].push_back(m_bases[b].name);
        }
    }
}

void CgnsSource::describe(VtkContents* contents) const {
    contents->steps = m_times.empty() ? std::vector{vtkOnlyStep()} : vtkTimeSteps(m_times);
    VtkNames names;
    for (const std::size_t b : m_chosen) {
        for (const CgnsZone& zone : m_bases[b].zones) {
            if (zone.hasMesh) {
                contents->parts.push_back(
                    names.makeUnique(m_chosen.size() == 1 ? zone.name : m_bases[b].name + "/" + zone.name));
                contents->hasOneMesh = contents->hasOneMesh && isSameMesh(zone);
            }
        }
    }
    for (std::size_t s = 0; s < contents->steps.size(); ++s) {
        for (const std::size_t b : m_chosen) {
            for (const CgnsZone& zone : m_bases[b].zones) {
                for (const std::size_t solution : zone.hasMesh ? zone.steps[s].solutions : std::vector<std::size_t>()) {
                    for (const CaeArray& array : zone.solutions[solution].arrays) {
                        if (zone.solutions[solution].mapping) {
                            addArray(array, s, &contents->arrays);
                        }
                    }
                }
            }
        }
    }
    for (CaeArray& array : contents->arrays) {
        if (array.steps.size() == contents->steps.size()) {
            array.steps.clear();
        }
    }
}

bool CgnsSource::openReader(ug::Error* error) {
    if (!checkCgnsElements(m_filename, m_bases, error)) {
        return false;
    }
    const auto reader = vtkSmartPointer<vtkCGNSReader>::New();
    reader->SetFileName(m_filename.c_str());
    if (!run([&] { reader->UpdateInformation(); }, error)) {
        return false;
    }
    reader->DisableAllBases();
    for (const std::size_t b : m_chosen) {
        reader->SetBaseArrayStatus(m_bases[b].name.c_str(), 1);
    }
    m_reader = reader;
    return true;
}

} // namespace orv::imp::cae
