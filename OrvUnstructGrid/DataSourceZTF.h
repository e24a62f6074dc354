#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/DataSourceLazy.h"

namespace orv::ug {

/// A data source for the library's older file format, extension "ztf".
///
/// This version reads none of these files yet: openFile() fails with a text that says so.
class ORV_API DataSourceZTF : public DataSourceLazy {
public:
    explicit DataSourceZTF(int id);
    ~DataSourceZTF() override;

    virtual bool openFile(const Str& filename, Error* error);

protected:
    bool readResult(const ResultInfo& info, DataState* state, Error* error) override;
};

} // namespace orv::ug
