#pragma once

#include "OrvImportVtk/FoamFile.h"
#include "OrvUnstructGrid/ResultType.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// A file with the values of a field at one time.
struct FoamFieldFile {
    std::string path;   ///< In the case's folder.
    std::string object; ///< What the file calls the field.
    std::size_t region;
    ug::ResultMapping mapping;
    int componentCount;
    bool isInternal; ///< Written without values on patches.
};

/// A folder with a time for its name.
struct FoamTime {
    std::string name;
    double value;
    std::vector<FoamFieldFile> fields = {};
    std::set<std::size_t> newFaces = {};  ///< The regions that have another mesh from then on.
    std::set<std::size_t> newPoints = {}; ///< Those whose points have moved.
};

/// A mesh of its own; most cases have one.
struct FoamRegion {
    std::string name;                 ///< Empty for the one that belongs to the case itself.
    std::string partPrefix;           ///< What names of its parts begin with.
    std::string selectionPrefix;      ///< What VTK's names of what may be selected begin with.
    std::vector<std::string> patches; ///< All that have faces, in any of its meshes.
};

/// The folder of an OpenFOAM case: what is in it, and whether that is in order. VTK's reader tells neither which steps
/// have which fields nor which patches there are before it has read them.
class FoamCase {
public:
    /// Lists what there is, and reads the headers of all fields, and the boundaries of all meshes.
    /// @param folder with a slash at its end
    bool open(const std::string& folder, ug::Error* error);

    const std::vector<FoamTime>& times() const {
        return m_times;
    }

    const std::vector<FoamRegion>& regions() const {
        return m_regions;
    }

    /// Clouds of particles, as VTK calls them.
    const std::set<std::string>& clouds() const {
        return m_clouds;
    }

    /// What is left out, and why.
    const std::vector<std::string>& warnings() const {
        return m_warnings;
    }

    /// Whether the files of all meshes at this time are such that VTK gets along with them.
    bool checkMeshes(std::size_t time, ug::Error* error) const;

    /// The same for a field.
    /// @param uniform told of the parts with one value for all items
    bool checkField(const FoamFieldFile& field, std::set<std::string>* uniform, ug::Error* error) const;

private:
    bool findRegions(ug::Error* error);
    bool findTimes(ug::Error* error);
    bool listFields(FoamTime* time, const std::string& path, std::size_t region, ug::Error* error);
    bool listClouds(const FoamTime& time, const FoamRegion& region, ug::Error* error);
    void dropDoubles(FoamTime* time);
    bool readBoundaries(ug::Error* error);
    bool readBoundary(const std::string& folder, FoamRegion* region, std::int64_t* endFace, ug::Error* error) const;
    bool checkMesh(std::size_t time, std::size_t region, ug::Error* error) const;
    bool countFaces(const std::string& folder, std::uint64_t* count, ug::Error* error) const;
    bool openChecked(const std::string& path, FoamFile* file, ug::Error* error) const;
    std::string meshFolder(std::size_t time, std::size_t region, std::set<std::size_t> FoamTime::*news) const;
    bool isFile(const std::string& path) const;
    void warn(const std::string& text);

    std::string m_folder;
    std::vector<FoamRegion> m_regions;
    std::vector<FoamTime> m_times;
    std::set<std::string> m_clouds;
    std::vector<std::string> m_warnings;
    std::set<std::string> m_told; ///< Fields that are left out.
};

} // namespace orv::imp::cae
