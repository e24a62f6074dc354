#include "OrvImportVtk/CollectionSource.h"

#include "OrvImportCae/CaeReaders.h"
#include "OrvImportVtk/VtkPieces.h"
#include "OrvImportVtk/XmlSource.h"

#include <pugixml.hpp>

#include <vtkCompositeDataSet.h>
#include <vtkDataSet.h>
#include <vtkInformation.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

namespace orv::imp::cae {
namespace {

constexpr int DEEPEST = 8;

std::string joined(const std::string& first, const std::string& second) {
    return first + (first.empty() || second.empty() ? "" : "/") + second;
}

std::string bareFileName(const std::string& path) {
    const std::string name = path.substr(path.find_last_of('/') + 1); // npos + 1 is 0.
    return name.substr(0, name.find_last_of('.'));
}

std::unique_ptr<VtkSource> makeMember(const std::string& filename, int depth) {
    const std::string extension = fileExtension(filename);
    if (extension == "vtm" || (extension.starts_with('p') && extension != "pvd")) {
        return std::make_unique<CollectionSource>(depth + 1);
    }
    return std::make_unique<XmlSource>();
}

} // namespace

CollectionSource::CollectionSource(int depth) : m_depth(depth) {}

void CollectionSource::setProgress(ug::ProgressMeter* progress) {
    VtkSource::setProgress(progress);
    for (const Member& member : m_members) {
        member.source->setProgress(progress);
    }
}

bool CollectionSource::open(const std::string& filename, VtkContents* contents, ug::Error* error) {
    if (m_depth > DEEPEST) {
        return ug::fail(error, "is within too many collections");
    }
    m_folder = filename.substr(0, filename.find_last_of('/') + 1); // npos + 1 is 0.
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_file(filename.c_str());
    if (!parsed) {
        return ug::fail(error,
                        Str("is no XML file, at byte " + std::to_string(parsed.offset) + ": " + parsed.description()));
    }
    const pugi::xml_node file = document.child("VTKFile");
    if (const pugi::xml_node collection = file.child("Collection")) {
        if (!listEntries(collection, contents, error)) {
            return false;
        }
    } else if (const pugi::xml_node blocks = file.child("vtkMultiBlockDataSet")) {
        contents->steps = {vtkOnlyStep()};
        listBlocks(blocks, std::string());
    } else {
        for (const char* kind :
             {"PUnstructuredGrid", "PPolyData", "PStructuredGrid", "PRectilinearGrid", "PImageData"}) {
            for (const pugi::xml_node& piece : file.child(kind).children("Piece")) {
                const std::string source = piece.attribute("Source").as_string();
                m_members.push_back({0, bareFileName(source), source, nullptr, {}});
            }
        }
        contents->steps = {vtkOnlyStep()};
    }
    if (m_members.empty()) {
        return ug::fail(error, "names no files of a collection, of blocks or of pieces");
    }
    std::map<std::size_t, VtkNames> names;
    for (Member& member : m_members) {
        if (!openMember(&member, &names[member.step], contents, error)) {
            return false;
        }
    }
    dropWholeSteps(contents);
    return true;
}

vtkSmartPointer<vtkDataObject> CollectionSource::read(std::size_t step, std::span<const std::size_t> arrays,
                                                      ug::Error* error) {
    vtkNew<vtkMultiBlockDataSet> output;
    const double count =
        double(std::ranges::count_if(m_members, [step](const Member& member) { return member.step == step; }));
    double done = 0.0;
    for (Member& member : m_members) {
        if (member.step != step) {
            continue;
        }
        const ug::ProgressMeter::Step stepOfRead(progress(), done / count, (done + 1.0) / count);
        ++done;
        std::vector<std::size_t> wanted;
        for (std::size_t i = 0; i < member.arrays.size(); ++i) {
            if (std::find(arrays.begin(), arrays.end(), member.arrays[i]) != arrays.end()) {
                wanted.push_back(i);
            }
        }
        ug::Error reason;
        const vtkSmartPointer<vtkDataObject> block = member.source->read(0, wanted, &reason);
        if (!block) {
            ug::fail(error, Str(member.filename + ": ") + reason.message());
            return nullptr;
        }
        const unsigned int index = output->GetNumberOfBlocks();
        output->SetBlock(index, block);
        if (!member.name.empty()) {
            output->GetMetaData(index)->Set(vtkCompositeDataSet::NAME(), member.name.c_str());
        }
    }
    return output;
}

void CollectionSource::release() {
    for (Member& member : m_members) {
        member.source->release();
    }
}

bool CollectionSource::listEntries(const pugi::xml_node& root, VtkContents* contents, ug::Error* error) {
    std::set<double> times;
    std::set<std::string> parts;
    for (const pugi::xml_node& entry : root.children("DataSet")) {
        times.insert(entry.attribute("timestep").as_double());
        parts.insert(entry.attribute("part").as_string());
    }
    const std::vector<double> sorted(times.begin(), times.end());
    const bool hasTimes = !root.child("DataSet").attribute("timestep").empty();
    contents->steps = hasTimes ? vtkTimeSteps(sorted) : std::vector{vtkOnlyStep()};
    contents->hasOneMesh = contents->steps.size() == 1;
    for (const pugi::xml_node& entry : root.children("DataSet")) {
        const std::string file = entry.attribute("file").as_string();
        if (file.empty()) {
            return ug::fail(error, "has a DataSet that names no file");
        }
        const double time = entry.attribute("timestep").as_double();
        const std::string part = parts.size() > 1 ? std::string("part ") + entry.attribute("part").as_string() : "";
        const char* name = entry.attribute("name").as_string();
        const std::size_t step = std::size_t(std::distance(times.begin(), times.find(time)));
        m_members.push_back({hasTimes ? step : 0, *name ? name : part, file, nullptr, {}});
    }
    return true;
}

void CollectionSource::listBlocks(const pugi::xml_node& node, const std::string& name) {
    for (const pugi::xml_node& child : node.children()) {
        const std::string own = child.attribute("name").as_string();
        if (const std::string file = child.attribute("file").as_string(); !file.empty()) {
            m_members.push_back({0, joined(name, own.empty() ? bareFileName(file) : own), file, nullptr, {}});
        } else {
            listBlocks(child, joined(name, own));
        }
    }
}

bool CollectionSource::openMember(Member* member, VtkNames* names, VtkContents* contents, ug::Error* error) {
    const std::string filename = member->filename.starts_with('/') ? member->filename : m_folder + member->filename;
    member->source = makeMember(filename, m_depth);
    member->source->setProgress(progress());
    VtkContents read;
    ug::Error reason;
    if (!member->source->open(filename, &read, &reason)) {
        return ug::fail(error, Str(member->filename + ": ") + reason.message());
    }
    addArrays(read.arrays, member, contents);
    for (const std::string& part : read.parts) {
        const std::string name = names->makeUnique(joined(member->name, part));
        if (std::find(contents->parts.begin(), contents->parts.end(), name) == contents->parts.end()) {
            contents->parts.push_back(name);
        }
    }
    contents->warnings.insert(contents->warnings.end(), read.warnings.begin(), read.warnings.end());
    return true;
}

void CollectionSource::addArrays(const std::vector<CaeArray>& arrays, Member* member, VtkContents* contents) {
    for (const CaeArray& array : arrays) {
        const auto known = std::find_if(contents->arrays.begin(), contents->arrays.end(), [&](const CaeArray& a) {
            return a.name == array.name && a.mapping == array.mapping && a.componentCount == array.componentCount;
        });
        member->arrays.push_back(std::size_t(known - contents->arrays.begin()));
        if (known == contents->arrays.end()) {
            contents->arrays.push_back(array);
        }
        std::vector<std::size_t>& steps = contents->arrays[member->arrays.back()].steps;
        if (std::find(steps.begin(), steps.end(), member->step) == steps.end()) {
            steps.push_back(member->step);
        }
    }
}

// An array that all steps have needs no list of them.
void CollectionSource::dropWholeSteps(VtkContents* contents) {
    for (CaeArray& array : contents->arrays) {
        std::sort(array.steps.begin(), array.steps.end());
        if (array.steps.size() == contents->steps.size()) {
            array.steps.clear();
        }
    }
}

} // namespace orv::imp::cae
