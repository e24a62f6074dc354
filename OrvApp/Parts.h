#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PimplPointerHolder.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/PartInfo.h"

#include <cstddef>

namespace orv::ug {
class DataPart;
}

namespace orv::app {

class PartsPrivate;

/// The parts of the current model's current state, and which of them is the current one.
///
/// The parts of all geometries of the state stand in one list: geometry after geometry, and part after part within
/// each. An index is a position in that list. With geometries of 3 and 2 parts the indexes 0 to 2 belong to the first
/// geometry and 3 and 4 to the second.
///
/// The current index is a plain number. Models::add(), and opening a model through it, sets it to the first part, or to
/// UNDEFINED_SIZE_T when the new model has no parts. Nothing else resets it: after a model has been closed, another one
/// made current, or the state changed, it means whatever part is at that position then, or none.
///
/// The pointers that come back do not own. One thread at a time.
class ORV_API Parts : public RefCountedObject {
public:
    /// Made at the first call, gone at process exit.
    static Parts* instance();

    /// 0 when no state is current.
    std::size_t count() const;

    /// Null when there are no parts. Asserts "m_currentIndex != orv::UNDEFINED_SIZE_T", and "index < count()" when an
    /// index of an earlier model or state is beyond the end; null behind the failed assertions.
    ug::DataPart* current() const;

    /// An undefined record when there are no parts; otherwise as info() of the current index, which must be in range.
    ug::PartInfo currentInfo() const;

    /// Asserts "index != orv::UNDEFINED_SIZE_T" for a part that is not in the list, null included; behind the failed
    /// assertion no part is current. To select nothing, call setCurrentIndex(UNDEFINED_SIZE_T).
    void setCurrent(ug::DataPart* part);

    /// As it was set last, whatever is open now.
    std::size_t currentIndex() const;

    /// Asserts "index < count() || index == orv::UNDEFINED_SIZE_T". The value stands even when the assertion has
    /// failed.
    void setCurrentIndex(std::size_t index);

    /// Asserts "index < count()"; null behind the failed assertion.
    ug::DataPart* get(std::size_t index) const;

    /// The one part whose name matches a wildcard pattern, see Str::matches(); null when none does or no state is
    /// current. Asserts "foundCount < 2" when several match, and then gives null too, never the first of them. Parts of
    /// different geometries with the same name are several.
    ug::DataPart* get(const Str& pattern) const;

    /// UNDEFINED_SIZE_T for a part that is not in the current state. Mind: with no current state at all the answer is
    /// 0, for any part.
    std::size_t indexOf(const ug::DataPart* part) const;

    /// The record of a part; an undefined one for a part with a negative id.
    /// Asserts "index < count()" and "part"; no defined answer behind a failed assertion.
    ug::PartInfo info(std::size_t index) const;
    /// A literal 0 stands for an index and for a null pointer alike: write 0ul for the index.
    ug::PartInfo info(ug::DataPart* part) const;

    /// The position, among the geometries of the current state, of the one that holds the part; UNDEFINED_SIZE_T when
    /// there is none. The form with an index asserts "index < count()" first.
    std::size_t geometryIndex(std::size_t index) const;
    std::size_t geometryIndex(const ug::DataPart* part) const;

private:
    Parts();
    ~Parts() override;

    internal::PimplPointerHolder<PartsPrivate> m_private;
};

} // namespace orv::app
