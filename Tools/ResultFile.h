#pragma once

#include "OrvApp/OrvApp.h"
#include "Tools/InputFiles.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvapp {

/// One part of the file, and where it stands.
struct FilePart {
    std::size_t geometryIndex;
    std::size_t partIndex; ///< In its geometry.
    std::string name;
};

/// One of the cases of a file.
struct FileCase {
    std::string path; ///< Opens this case: with a bar and its id when the file has several.
    int id = -1;      ///< -1 when the format has no cases.
    std::string name;
};

/// The cases of a file, or the one that a bar and an id behind its name tell. A file that cannot be read, and one whose
/// format has no cases, is one case without an id.
std::vector<FileCase> casesIn(const std::string& path, const std::string& password);

/// A result file, or several as one, opened as the current model of the catalogues.
class ResultFile {
public:
    /// @param password for a file that is protected
    /// Throws CommandError with the reason when the files cannot be read, do not go together or hold no states.
    explicit ResultFile(const InputFiles& files, const std::string& password = "");

    /// Tells on standard error what the reader noticed: behind the tables, and in front of an error that ends the work.
    ~ResultFile();

    ResultFile(const ResultFile&) = delete;
    ResultFile& operator=(const ResultFile&) = delete;

    /// Of the first file.
    const std::string& path() const;
    orv::ug::DataSource* source() const;
    const orv::ug::DataSourceDirectory& directory() const;

    /// All results, whichever states have them, in the order of the Results catalogue.
    std::vector<orv::ug::ResultInfo> results() const;

    /// Has the meshes of the first state read, which a file may leave until they are needed: parts that cannot be read
    /// look like empty ones. Throws CommandError with the reader's reason.
    void readMeshes() const;

    /// The parts of all geometries, in the order of the Parts catalogue.
    std::vector<FilePart> parts() const;

    /// The states that have values of a result, as indexes in the directory's list.
    std::vector<std::size_t> statesWith(const orv::ug::ResultInfo& result) const;

    /// Makes a state the current one and loads one result into it. Throws CommandError with the reader's reason.
    orv::ug::DataState* load(std::size_t stateIndex, const orv::ug::ResultInfo& result) const;

    /// Adds a custom result to the directory under this name. Gives it as it stands there; a result that is not custom
    /// comes back as it is.
    orv::ug::ResultInfo add(const orv::ug::ResultInfo& result, const std::string& name) const;

    /// Lets go of the values that load() brought, also of what a custom result was computed from.
    void drop(const orv::ug::ResultInfo& result) const;

private:
    std::string m_path;
    orv::ug::DataSource* m_source; ///< Owned by the model, which the catalogue keeps.
};

} // namespace orvapp
