#pragma once

#include "OrvApp/Selection.h"
#include "OrvApp/Views.h"
#include "OrvCore/Defines.h"
#include "OrvVisualization/View.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace orv::app {

/// What stands behind Views.
class ViewsPrivate {
public:
    std::size_t count() const;
    vis::View* current() const;
    ViewInfo currentInfo() const;
    void setCurrent(vis::View* view);
    std::size_t currentIndex() const;
    void setCurrentIndex(std::size_t index);
    std::size_t indexOf(const vis::View* view) const;
    vis::View* get(std::size_t index) const;
    PtrRef<vis::View> add();
    ViewInfo info(std::size_t index) const;
    bool remove(std::size_t index);
    Selection* currentViewSelection() const;
    Selection* selection(std::size_t index) const;

private:
    std::vector<std::pair<ViewInfo, PtrRef<vis::View>>> m_views;
    std::vector<PtrRef<Selection>> m_selections; ///< Of the views, entry for entry.
    std::size_t m_currentIndex = UNDEFINED_SIZE_T;
};

} // namespace orv::app
