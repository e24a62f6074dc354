#pragma once

#include "OrvCore/Defines.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/PartInfo.h"

#include <cstddef>

namespace orv::ug {
class DataPart;
class DataSource;
class DataSourceDirectory;
class DataState;
} // namespace orv::ug

namespace orv::app {

/// What stands behind Parts.
class PartsPrivate {
public:
    std::size_t count() const;
    ug::DataPart* current() const;
    ug::PartInfo currentInfo() const;
    void setCurrent(ug::DataPart* part);
    std::size_t currentIndex() const;
    void setCurrentIndex(std::size_t index);
    ug::DataPart* get(std::size_t index) const;
    ug::DataPart* get(const Str& pattern) const;
    std::size_t indexOf(const ug::DataPart* part) const;
    ug::PartInfo info(std::size_t index) const;
    std::size_t geometryIndex(std::size_t index) const;
    std::size_t geometryIndex(const ug::DataPart* part) const;

private:
    /// Null without a current model, when it has no data source, and when no state is current in it.
    ug::DataState* currentState() const;
    /// Null without a current model, and when it has no data source.
    const ug::DataSourceDirectory* currentDirectory() const;

    std::size_t m_currentIndex = UNDEFINED_SIZE_T;
};

} // namespace orv::app
