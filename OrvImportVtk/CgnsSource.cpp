#include "OrvImportVtk/CgnsSource.h"

#include "OrvImportVtk/CgnsAdf.h"
#include "OrvImportVtk/CgnsHdf5.h"
#include "OrvImportVtk/CgnsMesh.h"
#include "OrvImportVtk/VtkPieces.h"

#include <vtkCompositeDataSet.h>
#include <vtkInformation.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkPointSet.h>

#include <algorithm>

namespace orv::imp::cae {
namespace {

constexpr std::size_t MOST_NAMES = 5; // In a warning.

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
    return std::all_of(zone.steps.begin(), zone.steps.end(),
                       [&](const CgnsZoneStep& step) { return step.grid == zone.steps[0].grid; });
}

} // namespace

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
    m_parts = contents->parts;
    m_arrays = contents->arrays;
    for (const auto& one : leftOut) {
        contents->warnings.push_back(textOf(one));
    }
    return !contents->parts.empty() || ug::fail(error, "has no zones");
}

vtkSmartPointer<vtkDataObject> CgnsSource::read(std::size_t step, std::span<const std::size_t> arrays,
                                                ug::Error* error) {
    auto output = vtkSmartPointer<vtkMultiBlockDataSet>::New();
    bool isRead = false;
    return updateVtk([&] { isRead = readZones(step, arrays, output, error); }, error) && isRead ? output : nullptr;
}

// Nothing is kept.
void CgnsSource::release() {}

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

bool CgnsSource::readZones(std::size_t step, std::span<const std::size_t> arrays, vtkMultiBlockDataSet* output,
                           ug::Error* error) const {
    CgnsTree tree;
    CgnsNode root;
    if (!tree.open(m_filename, error) || !tree.findRoot(&root, error)) {
        return false;
    }
    for (const std::size_t b : m_chosen) {
        CgnsNode base;
        if (!tree.find(root, m_bases[b].name, &base, error)) {
            return false;
        }
        for (const CgnsZone& zone : m_bases[b].zones) {
            if (!zone.hasMesh) {
                continue;
            }
            CgnsNode node;
            ug::Error reason;
            vtkSmartPointer<vtkPointSet> mesh;
            if (tree.find(base, zone.name, &node, &reason)) {
                mesh = readZone(tree, node, m_bases[b], zone, step, arrays, &reason);
            }
            if (!mesh) {
                return ug::fail(error, Str("zone '" + zone.name + "': ") + reason.message());
            }
            const unsigned int part = output->GetNumberOfBlocks();
            output->SetBlock(part, mesh);
            output->GetMetaData(part)->Set(vtkCompositeDataSet::NAME(), m_parts[part].c_str());
        }
    }
    return true;
}

vtkSmartPointer<vtkPointSet> CgnsSource::readZone(const CgnsTree& tree, const CgnsNode& node, const CgnsBase& base,
                                                  const CgnsZone& zone, std::size_t step,
                                                  std::span<const std::size_t> arrays, ug::Error* error) const {
    vtkSmartPointer<vtkPointSet> mesh = readCgnsMesh(tree, node, zone, step, error);
    if (!mesh || !zone.steps[step].grid) {
        return mesh;
    }
    // Of arrays of one name the last one stays, by the names of the solutions.
    std::vector<std::size_t> solutions = zone.steps[step].solutions;
    std::sort(solutions.begin(), solutions.end(),
              [&](std::size_t a, std::size_t b) { return zone.solutions[a].name < zone.solutions[b].name; });
    for (const std::size_t s : solutions) {
        const CgnsSolution& solution = zone.solutions[s];
        for (const CaeArray& array : solution.arrays) {
            if (solution.mapping && isWanted(array, arrays) &&
                !addCgnsArray(tree, node, zone, solution, array, base.physicalDimension, mesh, error)) {
                return nullptr;
            }
        }
    }
    return mesh;
}

bool CgnsSource::isWanted(const CaeArray& array, std::span<const std::size_t> arrays) const {
    return std::any_of(arrays.begin(), arrays.end(), [&](std::size_t wanted) {
        return m_arrays[wanted].name == array.name && m_arrays[wanted].mapping == array.mapping;
    });
}

} // namespace orv::imp::cae
