#pragma once

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Support/TestPaths.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvtest {

inline std::string vtkFile(const std::string& name) {
    return testDataFolder() + "/vtk/" + name;
}

/// An open file; its states are empty when that failed, which is a failure of the test.
inline orv::PtrRef<orv::imp::cae::DataSourceCae> openVtk(const std::string& path) {
    orv::PtrRef<orv::imp::cae::DataSourceCae> source(new orv::imp::cae::DataSourceCae(1));
    orv::ug::Error error;
    EXPECT_TRUE(source->openFiles({path}, &error)) << error.message();
    return source;
}

/// The result of that name, of any type.
inline orv::ug::ResultInfo findResult(orv::imp::cae::DataSourceCae* source, const std::string& name,
                                      orv::ug::ResultMapping mapping = orv::ug::PER_NODE) {
    for (const orv::ug::ResultType type :
         {orv::ug::SCALAR, orv::ug::VECTOR, orv::ug::DISPLACEMENT, orv::ug::SYMMETRIC_TENSOR}) {
        for (const orv::ug::ResultInfo& info : source->directory()->resultInfos(type)) {
            if (info.name() == orv::Str(name) && info.resultMapping() == mapping) {
                return info;
            }
        }
    }
    return {};
}

inline bool load(orv::imp::cae::DataSourceCae* source, int stateId, const std::vector<orv::ug::ResultInfo>& infos,
                 orv::ug::Error* error = nullptr) {
    orv::ug::DataStateSpec spec;
    spec.setResultIds(infos);
    return source->loadDataState(stateId, spec, error);
}

} // namespace orvtest
