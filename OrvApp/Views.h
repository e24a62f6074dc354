#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PimplPointerHolder.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/RefCountedObject.h"

#include <cstddef>

namespace orv::vis {
class View;
}

namespace orv::app {

class Selection;
class ViewsPrivate;

/// What there is to know about a view besides the view itself: nothing yet. Each one is like every other.
class ViewInfo {
public:
    ViewInfo() = default;
};

/// The views of the process, in the order of adding, each with a Selection of its own, and which of them is the current
/// one.
///
/// Views and models do not know each other here: a new view shows nothing, and no operation looks at Models. The
/// pointers that come back do not own. A view lives as long as it is listed, or longer where the caller holds it in a
/// PtrRef; its selection goes with its place in the list.
///
/// While there are views, one is current: unlike in the other catalogues there is no way to select nothing. A literal 0
/// stands for an index and for a null pointer alike: write 0ul where an operation takes either.
///
/// One thread at a time.
class ORV_API Views : public RefCountedObject {
public:
    /// Made at the first call, gone at process exit.
    static Views* instance();

    std::size_t count() const;

    /// Null when there are no views; otherwise as get() of the current index.
    vis::View* current() const;

    /// Asserts "m_currentIndex != orv::UNDEFINED_SIZE_T" and "index < count()" when there are views and none is
    /// current.
    ViewInfo currentViewInfo() const;

    /// Asserts "index != orv::UNDEFINED_SIZE_T" for a view that is not listed, null included, and then, as
    /// setCurrentIndex(), "index < count()". Behind the failed assertions no view is current, and asking for the
    /// current one is a mistake until another is set.
    void setCurrent(vis::View* view);

    /// UNDEFINED_SIZE_T when there are no views.
    std::size_t currentIndex() const;

    /// Asserts "index < count()", for UNDEFINED_SIZE_T too. The value stands even when the assertion has failed.
    void setCurrentIndex(std::size_t index);

    /// UNDEFINED_SIZE_T for a view that is not listed.
    std::size_t indexOf(const vis::View* view) const;

    /// Asserts "index < count()"; null behind the failed assertion.
    vis::View* get(std::size_t index) const;

    /// Appends a new view with a new, empty selection, and makes it current.
    PtrRef<vis::View> add();

    /// Asserts "index < count()".
    ViewInfo viewInfo(std::size_t index) const;
    ViewInfo viewInfo(vis::View* view) const;

    /// Takes a view and its selection off the list.
    ///
    /// The current index is clamped to the new count and otherwise stays: removing a view in front of the current one,
    /// or the current one itself, makes its successor current. Of A, B and C with C current, removing A leaves C
    /// current; of A, B, C and D with C current, removing A makes D current. Without views it is UNDEFINED_SIZE_T;
    /// removing the only view when none was current asserts "m_currentIndex == 0", which does no harm.
    ///
    /// Asserts "index < count()"; nothing is removed behind the failed assertion.
    /// @return always true
    bool remove(std::size_t index);
    /// Asserts "index != orv::UNDEFINED_SIZE_T" for a view that is not listed, and then as above.
    bool remove(vis::View* view);

    /// Removes the current view, if there is one. Always true.
    bool removeCurrent();

    /// Null when there are no views. Asserts "m_currentIndex != orv::UNDEFINED_SIZE_T" when there are views and none is
    /// current; null behind the failed assertion.
    Selection* currentViewSelection() const;

    /// The selection of a view, the same object as long as the view is listed.
    /// Asserts "index < count()", for a view that is not listed too; null behind the failed assertion.
    Selection* viewSelection(std::size_t index) const;
    Selection* viewSelection(vis::View* view) const;

private:
    Views();
    ~Views() override;

    internal::PimplPointerHolder<ViewsPrivate> m_private;
};

} // namespace orv::app
