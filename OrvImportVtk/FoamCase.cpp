#include "OrvImportVtk/FoamCase.h"

#include "OrvImportVtk/FoamDictionary.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <map>
#include <utility>

namespace orv::imp::cae {
namespace {

namespace fs = std::filesystem;

struct Kind {
    const char* text;
    int componentCount;
};

constexpr Kind KINDS[] = {{"Scalar", 1}, {"Vector", 3}, {"SphericalTensor", 1}, {"SymmTensor", 6}, {"Tensor", 9}};

// Names of what is in a folder, sorted; none if there is no such folder.
std::vector<std::string> namesIn(const std::string& folder, bool areFolders) {
    std::vector<std::string> names;
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed)) {
        std::error_code ignored;
        if (entry->is_directory(ignored) == areFolders) {
            names.push_back(entry->path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

// VTK passes over these.
bool isBackup(const std::string& name) {
    return name.ends_with("~") || name.ends_with("_0") || name.ends_with(".bak") || name.ends_with(".BAK") ||
           name.ends_with(".old") || name.ends_with(".save");
}

bool isTime(const std::string& name, double* value) {
    char* end = nullptr;
    *value = std::strtod(name.c_str(), &end);
    return *end == '\0' && name.find_first_not_of("0123456789+-.eE") == std::string::npos && name[0] != '.' &&
           name[0] != 'e' && name[0] != 'E';
}

// Whether a class is that of a field which VTK reads: volScalarField, pointVectorField, volTensorField::Internal ...
bool isReadable(const std::string& className, FoamFieldFile* field) {
    const std::pair<const char*, ug::ResultMapping> places[] = {{"vol", ug::PER_ELEMENT}, {"point", ug::PER_NODE}};
    for (const auto& [place, mapping] : places) {
        for (const Kind& kind : KINDS) {
            const std::string name = std::string(place) + kind.text + "Field";
            const bool isInternal = mapping == ug::PER_ELEMENT && className == name + "::Internal";
            if (className == name || isInternal) {
                field->mapping = mapping;
                field->componentCount = kind.componentCount;
                field->isInternal = isInternal;
                return true;
            }
        }
    }
    return false;
}

// Fields of a mesh that nothing is made of.
bool isOfOtherPlaces(const std::string& className) {
    return className.ends_with("Field") && (className.starts_with("surface") || className.starts_with("area") ||
                                            className.starts_with("vol") || className.starts_with("point"));
}

std::string inFolder(const std::string& folder, const std::string& name) {
    return name.empty() ? folder : folder + "/" + name;
}

// One that counts faces.
bool readNumber(const FoamEntry* entry, std::int64_t* number) {
    const bool isThere = entry && entry->kind == FoamEntry::OTHER && entry->value.kind == FoamToken::LABEL &&
                         entry->value.label >= 0 && entry->value.label <= std::numeric_limits<std::int32_t>::max();
    *number = isThere ? entry->value.label : 0;
    return isThere;
}

bool checkBoundaryField(const FoamFile& file, const FoamEntries& patches, ug::Error* error) {
    for (const FoamEntry& patch : patches) {
        const FoamEntry* value = findFoamEntry(patch.entries, "value");
        if (!isFoamPattern(patch.key)) {
            return file.fail(error, "the regular expression \"" + patch.key + "\" of patches is not understood");
        }
        if (patch.kind == FoamEntry::NOTHING || (value && value->kind == FoamEntry::NOTHING)) {
            return file.fail(error, "the patch \"" + patch.key + "\" has no value");
        }
    }
    return true;
}

} // namespace

bool FoamCase::open(const std::string& folder, ug::Error* error) {
    m_folder = folder;
    return findRegions(error) && findTimes(error) && readBoundaries(error);
}

bool FoamCase::findRegions(ug::Error* error) {
    const bool hasOwnMesh = isFile("constant/polyMesh/faces");
    std::vector<std::string> others;
    for (const std::string& name : namesIn(m_folder + "constant", true)) {
        if (isFile("constant/" + name + "/polyMesh/faces")) {
            others.push_back(name);
        }
    }
    if (hasOwnMesh) {
        m_regions.push_back({"", others.empty() ? "" : "defaultRegion/", "", {}});
    }
    for (const std::string& name : others) {
        m_regions.push_back({name, name + "/", "/" + name + "/", {}});
    }
    if (!m_regions.empty()) {
        return true;
    }
    for (const std::string& name : namesIn(m_folder, true)) {
        if (name.starts_with("processor")) {
            return ug::fail(error, "is a case that has been decomposed, with meshes only in the folders of its "
                                   "processors; put it together by reconstructParMesh and reconstructPar");
        }
    }
    return ug::fail(error, "is beside no mesh: there is no constant/polyMesh/faces in its folder");
}

bool FoamCase::findTimes(ug::Error* error) {
    for (const std::string& name : namesIn(m_folder, true)) {
        if (double value = 0; isTime(name, &value)) {
            m_times.push_back({name, value});
        }
    }
    std::sort(m_times.begin(), m_times.end(), [](const FoamTime& a, const FoamTime& b) { return a.value < b.value; });
    for (std::size_t t = 0; t < m_times.size(); ++t) {
        FoamTime& time = m_times[t];
        if (t > 0 && m_times[t - 1].value == time.value) {
            return ug::fail(error, Str("has two folders for one time, " + m_times[t - 1].name + " and " + time.name));
        }
        for (std::size_t r = 0; r < m_regions.size(); ++r) {
            const std::string path = inFolder(time.name, m_regions[r].name);
            if (isFile(path + "/polyMesh/faces")) {
                time.newFaces.insert(r);
            }
            if (isFile(path + "/polyMesh/points")) {
                time.newPoints.insert(r);
            }
            if (!listFields(&time, path, r, error) || !listClouds(time, m_regions[r], error)) {
                return false;
            }
        }
        dropDoubles(&time);
    }
    return true;
}

// VTK reads the headers of all files in a folder, so all of them have to be in order.
bool FoamCase::listFields(FoamTime* time, const std::string& path, std::size_t region, ug::Error* error) {
    for (const std::string& name : namesIn(m_folder + path, false)) {
        FoamFile file(m_folder);
        if (isBackup(name) || !file.openBeginning(path + "/" + name, nullptr) || !file.hasHeader()) {
            continue;
        }
        if (!file.readHeader(error)) {
            return false;
        }
        FoamFieldFile field{path + "/" + name, file.objectName(), region, ug::PER_ELEMENT, 0, false};
        if (isReadable(file.className(), &field)) {
            time->fields.push_back(std::move(field));
        } else if (isOfOtherPlaces(file.className()) && m_told.insert(field.object).second) {
            warn("'" + field.object + "' is left out: it is a " + file.className());
        }
    }
    return true;
}

bool FoamCase::listClouds(const FoamTime& time, const FoamRegion& region, ug::Error* error) {
    const std::string path = inFolder(time.name, region.name) + "/lagrangian";
    for (const std::string& name : namesIn(m_folder + path, true)) {
        FoamTime ignored;
        if (m_clouds.insert(region.selectionPrefix + "lagrangian/" + name).second) {
            warn("the particles '" + name + "' are left out");
        }
        if (!listFields(&ignored, path + "/" + name, 0, error)) {
            return false;
        }
    }
    return true;
}

// Of several files that hold the same field, such as a copy of it, VTK would take the last one.
void FoamCase::dropDoubles(FoamTime* time) {
    std::map<std::pair<std::string, ug::ResultMapping>, std::vector<const FoamFieldFile*>> files;
    std::set<std::pair<std::string, ug::ResultMapping>> doubles;
    for (const FoamFieldFile& field : time->fields) {
        std::vector<const FoamFieldFile*>& same = files[{field.object, field.mapping}];
        const auto other = std::find_if(same.begin(), same.end(),
                                        [&](const FoamFieldFile* file) { return file->region == field.region; });
        if (other != same.end()) {
            doubles.insert({field.object, field.mapping});
            warn("'" + field.object + "' is left out at the time " + time->name + ": it is in " + (*other)->path +
                 " and in " + field.path);
        }
        same.push_back(&field);
    }
    std::erase_if(time->fields, [&](const FoamFieldFile& field) {
        return doubles.contains({field.object, field.mapping});
    });
}

bool FoamCase::readBoundaries(ug::Error* error) {
    for (std::size_t r = 0; r < m_regions.size(); ++r) {
        std::vector<std::string> folders = {inFolder("constant", m_regions[r].name)};
        for (const FoamTime& time : m_times) {
            if (time.newFaces.contains(r)) {
                folders.push_back(inFolder(time.name, m_regions[r].name));
            }
        }
        for (const std::string& folder : folders) {
            std::int64_t endFace = 0;
            if (!readBoundary(folder, &m_regions[r], &endFace, error)) {
                return false;
            }
        }
    }
    return true;
}

// The patches have their faces one behind the other.
bool FoamCase::readBoundary(const std::string& folder, FoamRegion* region, std::int64_t* endFace,
                            ug::Error* error) const {
    *endFace = 0;
    if (!isFile(folder + "/polyMesh/boundary")) {
        return true;
    }
    FoamFile file(m_folder);
    FoamEntries patches;
    if (!openChecked(folder + "/polyMesh/boundary", &file, error) ||
        !readFoamDictionary(&file, m_folder, &patches, error)) {
        return false;
    }
    for (const FoamEntry& patch : patches) {
        std::int64_t start = 0;
        std::int64_t count = 0;
        if (patch.kind != FoamEntry::DICTIONARY || !findFoamEntry(patch.entries, "type") ||
            !readNumber(findFoamEntry(patch.entries, "startFace"), &start) ||
            !readNumber(findFoamEntry(patch.entries, "nFaces"), &count)) {
            return file.fail(error, "expected type, nFaces and startFace of the patch '" + patch.key + "'");
        }
        if (&patch != &patches.front() && start != *endFace) {
            return file.fail(error, "the patch '" + patch.key + "' begins with the face " + std::to_string(start) +
                                        ", expected " + std::to_string(*endFace));
        }
        *endFace = start + count;
        const bool isKnown =
            std::find(region->patches.begin(), region->patches.end(), patch.key) != region->patches.end();
        if (count > 0 && !isKnown) {
            region->patches.push_back(patch.key);
        }
    }
    return true;
}

bool FoamCase::checkMeshes(std::size_t time, ug::Error* error) const {
    for (std::size_t region = 0; region < m_regions.size(); ++region) {
        if (!checkMesh(time, region, error)) {
            return false;
        }
    }
    return true;
}

// VTK makes as many cells as the largest number says, and wants memory for as many items as counts say.
bool FoamCase::checkMesh(std::size_t time, std::size_t region, ug::Error* error) const {
    FoamFile points(m_folder);
    if (!points.openBeginning(meshFolder(time, region, &FoamTime::newPoints) + "/polyMesh/points", error) ||
        !points.readHeader(error) || !points.checkList(*findFoamListType("List<vector>"), error)) {
        return false;
    }
    const std::string folder = meshFolder(time, region, &FoamTime::newFaces);
    std::uint64_t faceCount = 0;
    if (!countFaces(folder, &faceCount, error)) {
        return false;
    }
    for (const char* name : {"/polyMesh/owner", "/polyMesh/neighbour"}) {
        FoamFile file(m_folder);
        std::uint64_t count = 0;
        std::int64_t largest = -1;
        if (!openChecked(folder + name, &file, error) || !file.readLabels(&count, &largest, error)) {
            return false;
        }
        constexpr std::uint64_t CELLS_OF_FACE = 2;
        if (count > faceCount || std::uint64_t(largest + 1) > CELLS_OF_FACE * faceCount) {
            return file.fail(error, "has " + std::to_string(count) + " faces and the cell " + std::to_string(largest) +
                                        ", but the mesh has " + std::to_string(faceCount) + " faces");
        }
    }
    FoamRegion ignored;
    std::int64_t endFace = 0;
    return readBoundary(folder, &ignored, &endFace, error) &&
           (std::uint64_t(endFace) <= faceCount ||
            ug::fail(error, Str(folder + "/polyMesh/boundary has " + std::to_string(endFace) +
                                " faces, but the mesh has " + std::to_string(faceCount))));
}

// The file is large, and its memory serves for the next ones.
bool FoamCase::countFaces(const std::string& folder, std::uint64_t* count, ug::Error* error) const {
    FoamFile faces(m_folder);
    return openChecked(folder + "/polyMesh/faces", &faces, error) && faces.skipFaces(count, error);
}

bool FoamCase::checkField(const FoamFieldFile& field, std::set<std::string>* uniform, ug::Error* error) const {
    FoamFile file(m_folder);
    FoamEntries entries;
    if (!openChecked(field.path, &file, error) || !readFoamDictionary(&file, m_folder, &entries, error)) {
        return false;
    }
    const char* name = field.isInternal ? "value" : "internalField";
    const FoamEntry* inside = findFoamEntry(entries, name);
    if (!inside || inside->kind == FoamEntry::NOTHING) {
        return file.fail(error, std::string("has no ") + name);
    }
    const FoamEntry* boundary = findFoamEntry(entries, "boundaryField");
    if (!field.isInternal &&
        !(boundary && boundary->kind == FoamEntry::DICTIONARY && checkBoundaryField(file, boundary->entries, error))) {
        return file.fail(error, "has no boundaryField");
    }
    const FoamRegion& region = m_regions[field.region];
    if (inside->kind == FoamEntry::UNIFORM) {
        uniform->insert(region.partPrefix + "internalMesh");
    }
    for (const std::string& patch : region.patches) { // Without values it has those of the cells behind it.
        const FoamEntry* entry = field.isInternal ? nullptr : findFoamPatch(boundary->entries, patch);
        const FoamEntry* value = entry ? findFoamEntry(entry->entries, "value") : nullptr;
        if ((value ? value : inside)->kind == FoamEntry::UNIFORM) {
            uniform->insert(region.partPrefix + "boundary/" + patch);
        }
    }
    return true;
}

bool FoamCase::openChecked(const std::string& path, FoamFile* file, ug::Error* error) const {
    return file->open(path, error) && file->readHeader(error);
}

// Where a file of the mesh of that time is: in the folder of the last time that has a new one.
std::string FoamCase::meshFolder(std::size_t time, std::size_t region, std::set<std::size_t> FoamTime::*news) const {
    for (std::size_t t = std::min(time + 1, m_times.size()); t-- > 0;) {
        if ((m_times[t].*news).contains(region)) {
            return inFolder(m_times[t].name, m_regions[region].name);
        }
    }
    return inFolder("constant", m_regions[region].name);
}

bool FoamCase::isFile(const std::string& path) const {
    std::error_code ignored;
    return fs::is_regular_file(m_folder + path, ignored) || fs::is_regular_file(m_folder + path + ".gz", ignored);
}

void FoamCase::warn(const std::string& text) {
    m_warnings.push_back(text);
}

} // namespace orv::imp::cae
