#pragma once

#include "OrvCore/Str.h"
#include "OrvUnstructGrid/StateInfo.h"

#include <cstddef>
#include <vector>

namespace orv::ug {
class DataSource;
class DataSourceDirectory;
class DataState;
class UnstructGridModel;
} // namespace orv::ug

namespace orv::app {

/// What stands behind States. Keeps nothing: every question goes to the current model anew.
class StatesPrivate {
public:
    std::size_t count() const;
    ug::DataState* current() const;
    ug::StateInfo currentInfo() const;
    void setCurrentInfo(ug::StateInfo info);
    std::size_t currentIndex() const;
    void setCurrentIndex(std::size_t index);
    std::size_t indexOf(ug::StateInfo info) const;
    ug::StateInfo info(std::size_t index) const;
    ug::StateInfo info(const Str& pattern) const;
    /// The one entry whose name matches the pattern.
    ug::StateInfo wildCardInfo(const std::vector<ug::StateInfo>& infos, const Str& pattern) const;

private:
    /// Null when no model is current.
    ug::UnstructGridModel* currentModel() const;
    /// Null without a current model, or when it has none.
    ug::DataSource* currentDataSource() const;
    /// Null without a current data source.
    const ug::DataSourceDirectory* currentDirectory() const;
};

} // namespace orv::app
