#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"
#include "OrvImportCae/ReaderInfo.h"
#include "OrvUnstructGrid/DataSourceLazy.h"

#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

namespace orv::imp::cae {

struct CaeContents;

/// A data source that is a result file of another program, see supportedFormats().
///
/// Opening takes in the mesh and the directory, and no values: these are read when a state is loaded, straight from
/// the file, which therefore stays open. A file that changes meanwhile makes loads fail. That a file ends too early,
/// and what had to be left out, is told in the directory's warnings; a load can add some.
class ORV_API DataSourceCae : public ug::DataSourceLazy {
public:
    explicit DataSourceCae(int id);
    ~DataSourceCae() override;

    /// Opens the first file by its extension, in small or capital letters, and adds the others as openSecondaryFile()
    /// does. Works once: a source that holds a file refuses. When it fails, for whichever file, the source is as empty
    /// as before, and another file can be tried.
    virtual bool openFiles(const std::vector<Str>& filenames, ug::Error* error);

    /// Adds the states and results of a further result file on the same mesh.
    ///
    /// Its states come behind those that are there and get new ids, above all others. A state whose name is taken gets
    /// the file's name and its id behind it. Results of the same name, type and mapping are one result from then on;
    /// others are new, and a warning tells where a name stands for another type than before. When states of different
    /// reference types come together, each type has a group of states.
    ///
    /// Refuses a file with another mesh, and names the first difference: parts, then for each part nodes with their
    /// numbers and coordinates, and elements with their numbers, types and nodes. Coordinates may differ by a part in
    /// 100,000, which is what is lost in text files. A failure leaves the source as it was.
    virtual bool openSecondaryFile(const Str& filename, ug::Error* error);

    /// The kinds of files that openFiles() reads.
    static std::vector<ReaderInfo> supportedFormats();

    /// The same kinds with all that there is to tell of them.
    static std::vector<FormatInfo> formats();

protected:
    void beginLoad(const std::vector<ug::ResultInfo>& infos, const ug::DataState& state) override;
    void endLoad(const ug::DataState& state) override;
    bool readResult(const ug::ResultInfo& info, ug::DataState* state, ug::Error* error) override;
    bool readScalars(const ug::ResultInfo& info, const ug::DataState& state, const ug::ScalarPlace& place,
                     std::span<double> values) override;

private:
    struct File;
    struct StateSource {
        File* file;
        int stateId; ///< In that file.
    };

    static std::unique_ptr<File> openFile(const Str& filename, CaeContents* contents, ug::Error* error);
    void install(std::unique_ptr<File> file, const CaeContents& contents);
    std::vector<ug::ResultInfo> addResults(const std::vector<ug::ResultInfo>& infos, File* file);
    ug::ResultInfo findOrName(const ug::ResultInfo& info, const Str& filename);
    void addStates(const CaeContents& contents, const std::vector<ug::ResultInfo>& results, File* file);

    std::vector<std::unique_ptr<File>> m_files; ///< The primary one first.
    PtrRef<ug::DataGeometry> m_geometry;        ///< What all files share.
    std::unordered_map<int, StateSource> m_stateSources;
};

} // namespace orv::imp::cae
