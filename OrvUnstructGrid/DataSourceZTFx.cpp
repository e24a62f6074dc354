#include "OrvUnstructGrid/DataSourceZTFx.h"

#include "OrvUnstructGrid/Error.h"

#include <string>

namespace orv::ug {

DataSourceZTFx::DataSourceZTFx(int id) : DataSourceLazy(id) {}

DataSourceZTFx::~DataSourceZTFx() = default;

void DataSourceZTFx::setPassword(const Str& password) {
    m_password = password;
}

bool DataSourceZTFx::openCase(const Str& filename, std::size_t caseIndex, Error* error) {
    return refuse(filename, "case " + std::to_string(caseIndex), error);
}

bool DataSourceZTFx::openCaseById(const Str& filename, int caseId, Error* error) {
    return refuse(filename, "case id " + std::to_string(caseId), error);
}

bool DataSourceZTFx::readResult(const ResultInfo& info, DataState*, Error* error) {
    return fail(error, "Result '" + info.name() + "' cannot be read: no ZTFx file is open");
}

bool DataSourceZTFx::refuse(const Str& filename, const Str& what, Error* error) const {
    const Str manner = m_password.isEmpty() ? "" : ", with a password";
    return fail(error,
                filename + ": this version has no reader for ZTFx files (" + what + " was asked for" + manner + ")");
}

} // namespace orv::ug
