#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/DataSourceLazy.h"

#include <memory>

namespace orv::ug {

struct ZtfContents;
class ZtfFile;

/// A data source that is a file of the library's older format, extension "ztf": one case as text that people can read
/// and write. ZTFWriter makes such files; Docs/formats.md describes them.
///
/// Opening reads the file to its end, takes in the meshes and the directory, and notes where values stand. These are
/// read when a state is loaded, straight from the file, which therefore stays open. A file that changes meanwhile makes
/// loads fail. Every text of a failure names file and line.
class ORV_API DataSourceZTF : public DataSourceLazy {
public:
    explicit DataSourceZTF(int id);
    ~DataSourceZTF() override;

    /// Works once: a source that holds a file refuses. When it fails the source is as empty as before, and another
    /// file can be tried. A file without states opens: only its parts and results can be listed.
    virtual bool openFile(const Str& filename, Error* error);

protected:
    bool readResult(const ResultInfo& info, DataState* state, Error* error) override;

private:
    void install(const Str& filename);

    std::unique_ptr<ZtfFile> m_file;
    std::unique_ptr<ZtfContents> m_contents;
};

} // namespace orv::ug
