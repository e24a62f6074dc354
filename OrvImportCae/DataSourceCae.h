#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"
#include "OrvImportCae/ReaderInfo.h"
#include "OrvUnstructGrid/DataSourceLazy.h"

#include <memory>
#include <span>
#include <vector>

namespace orv::imp::cae {

class CaeReader;
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
    /// does. Works once: a source that holds a file refuses. When it fails the source is as empty as before, and
    /// another file can be tried.
    virtual bool openFiles(const std::vector<Str>& filenames, ug::Error* error);

    /// Adds a further result file to the open one. CalculiX's files refuse that, as each has its own mesh.
    virtual bool openSecondaryFile(const Str& filename, ug::Error* error);

    /// The kinds of files that openFiles() reads.
    static std::vector<ReaderInfo> supportedFormats();

protected:
    bool readResult(const ug::ResultInfo& info, ug::DataState* state, ug::Error* error) override;
    bool readScalars(const ug::ResultInfo& info, const ug::DataState& state, const ug::ScalarPlace& place,
                     std::span<double> values) override;

private:
    void install(const Str& filename, const CaeContents& contents);

    std::unique_ptr<CaeReader> m_reader;
};

} // namespace orv::imp::cae
