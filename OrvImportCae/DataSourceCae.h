#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"
#include "OrvImportCae/FileRelation.h"
#include "OrvImportCae/ReaderInfo.h"
#include "OrvUnstructGrid/DataSourceLazy.h"

#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

namespace orv::imp::cae {

struct CaeContents;
struct CaeOpenFile;

/// A data source that is a result file of another program, see supportedFormats().
///
/// Opening takes in the mesh and the directory, and no values: these are read when a state is loaded, straight from
/// the file, which therefore stays open. A file that changes meanwhile makes loads fail. That a file ends too early,
/// and what had to be left out, is told in the directory's warnings; a load can add some.
class ORV_API DataSourceCae : public ug::DataSourceLazy {
public:
    explicit DataSourceCae(int id);
    ~DataSourceCae() override;

    /// Opens a file by its extension, in small or capital letters, or several as one. Works once: a source that holds
    /// a file refuses. When it fails, for whichever file, the source is as empty as before, and another file can be
    /// tried.
    ///
    /// What several files are to each other is told by setFileRelation(), or else by what they hold, the first of these
    /// that fits:
    /// 1. All have the same mesh: steps. Their states follow one another in the order of the names, as
    ///    openSecondaryFile() adds them.
    /// 2. They have the same states, as many and with the same reference values or all without any: pieces. These are
    ///    steps nevertheless when two neighbours or the first and another one have the same mesh, or when, without
    ///    reference values, the mesh just moves: each file has the elements of the one before it, and their boxes have
    ///    in every direction half of the smaller one in common.
    /// 3. No two files have a reference value in common: steps whose mesh changes.
    ///
    /// Steps whose mesh changes have meshes of their own, with as many parts as the first file and, when these are
    /// several, with the same names.
    ///
    /// Pieces make one model: the states of the first file with the parts of all, one file after the other. A part
    /// that is alone in its file is called by that ("rank0.vtu"), others by both ("rank0.vtu: Wing"); by the whole name
    /// as given where files in several folders have the same name. Results are one when they have the same name, type
    /// and mapping, and undefined on the parts of files that do not have them. Nodes on the border of pieces are in
    /// each of them. Files of other programs than the first are welcome in both cases.
    ///
    /// All meshes are read when there is more than one file.
    virtual bool openFiles(const std::vector<Str>& filenames, ug::Error* error);

    /// Settles for openFiles() what several files are to each other; FROM_CONTENTS until set. Files that cannot be that
    /// are refused: pieces need the same states, steps the same parts.
    void setFileRelation(FileRelation relation);

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

    bool openFile(const Str& filename, CaeOpenFile* file, ug::Error* error);
    bool openTogether(const std::vector<Str>& filenames, std::vector<CaeOpenFile>* files, ug::Error* error);
    void install(CaeOpenFile file);
    std::vector<ug::ResultInfo> addResults(const std::vector<ug::ResultInfo>& infos, File* file);
    ug::ResultInfo findOrName(const ug::ResultInfo& info, const Str& filename);
    void addStates(const CaeContents& contents, const std::vector<ug::ResultInfo>& results, File* file);

    std::vector<std::unique_ptr<File>> m_files; ///< The primary one first.
    FileRelation m_relation = FileRelation::FROM_CONTENTS;
    PtrRef<ug::DataGeometry> m_geometry; ///< Of the first file.
    std::unordered_map<int, StateSource> m_stateSources;
};

} // namespace orv::imp::cae
