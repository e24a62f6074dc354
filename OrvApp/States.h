#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PimplPointerHolder.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/StateInfo.h"

#include <cstddef>

namespace orv::ug {
class DataState;
}

namespace orv::app {

class StatesPrivate;

/// The states (time steps, eigenfrequencies, load cases) of the current model, and which of them is the current one.
///
/// Nothing is kept here: the list is that of the current model's data source, in file order, and the current state is
/// the one in the model's spec. So the answers follow the current model by themselves, and each model remembers its own
/// current state. An index is a position in the list.
///
/// One thread at a time.
class ORV_API States : public RefCountedObject {
public:
    /// Made at the first call, gone at process exit.
    static States* instance();

    /// 0 without a current model, or when it has no data source.
    std::size_t count() const;

    /// The current model's current state with what has been loaded of it; null when there are no states or none is
    /// current. The data source owns it.
    ug::DataState* current() const;

    /// The record of the current state; an undefined record when there are no states or none is current.
    ug::StateInfo currentInfo() const;

    /// Makes the state with the id of `info` the current one.
    /// Asserts "index != orv::UNDEFINED_SIZE_T" when there is no such state, with a message that says "View" although a
    /// state is meant; no defined outcome behind a failed assertion, unless there is no current model, and then nothing
    /// happens.
    void setCurrentInfo(ug::StateInfo info);

    /// UNDEFINED_SIZE_T without a current model, and when no state is current. With a model without a data source
    /// asserts "dataSource"; no defined answer behind the failed assertion.
    std::size_t currentIndex() const;

    /// Makes a state of the current model its current one, and brings the model up to date. Other models, also those on
    /// the same data source, keep their state.
    /// Asserts "index < count()". Behind the failed assertion nothing happens when there is no current model; otherwise
    /// there is no defined outcome.
    void setCurrentIndex(std::size_t index);

    /// The first state with the same id; name and value are not compared. UNDEFINED_SIZE_T when there is none.
    std::size_t indexOf(ug::StateInfo info) const;

    /// Asserts "index < count()"; no defined answer behind the failed assertion, but an undefined record when there are
    /// no states at all.
    ug::StateInfo info(std::size_t index) const;

    /// The one state whose name matches a wildcard pattern, see Str::matches(); an undefined record when none does.
    /// Asserts "foundCount < 2" when several match, and then gives an undefined record too, never the first of them. (A
    /// state with the id -1 of an undefined record does not count as a first match.)
    ug::StateInfo info(const Str& pattern) const;

private:
    States();
    ~States() override;

    internal::PimplPointerHolder<StatesPrivate> m_private;
};

} // namespace orv::app
