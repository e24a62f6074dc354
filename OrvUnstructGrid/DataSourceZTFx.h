#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/DataSourceLazy.h"

namespace orv::ug {

/// A data source for the library's own file format with several cases in one file, extension "ztfx".
///
/// This version reads none of these files yet: every open fails with a text that says so, names the case and
/// tells whether a password was set.
class ORV_API DataSourceZTFx : public DataSourceLazy {
public:
    explicit DataSourceZTFx(int id);
    ~DataSourceZTFx() override;

    /// Kept for the open that follows; the empty text means none.
    void setPassword(const Str& password);

    /// Opens the case at that index of the file.
    bool openCase(const Str& filename, std::size_t caseIndex, Error* error);

    /// Opens the case with that id. The name may carry a bar and the id behind it, which are not part of the path.
    bool openCaseById(const Str& filename, int caseId, Error* error);

protected:
    bool readResult(const ResultInfo& info, DataState* state, Error* error) override;

private:
    bool refuse(const Str& filename, const Str& what, Error* error) const;

    Str m_password;
};

} // namespace orv::ug
