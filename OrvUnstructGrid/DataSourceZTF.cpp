#include "OrvUnstructGrid/DataSourceZTF.h"

#include "OrvUnstructGrid/Error.h"

namespace orv::ug {

DataSourceZTF::DataSourceZTF(int id) : DataSourceLazy(id) {}

DataSourceZTF::~DataSourceZTF() = default;

bool DataSourceZTF::openFile(const Str& filename, Error* error) {
    return fail(error, filename + ": this version has no reader for ZTF files");
}

bool DataSourceZTF::readResult(const ResultInfo& info, DataState*, Error* error) {
    return fail(error, "Result '" + info.name() + "' cannot be read: no ZTF file is open");
}

} // namespace orv::ug
