#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/DataSourceInterface.h"

#include <cstddef>
#include <span>
#include <vector>

namespace orv::ug {

/// The base of the data sources that know their structure from the start and get values when they are named.
///
/// A subclass fills the directory and the states when it opens, the parts of the meshes maybe by DataPart::readLater(),
/// and reads one result of one state at a time in readResult(). This class settles what to read and to compute, in
/// which order, and what to drop.
class ORV_API DataSourceLazy : public DataSource, public DataSourceInterface {
public:
    explicit DataSourceLazy(int id);
    ~DataSourceLazy() override;

    /// Refuses, with a text, a state or a result that the directory does not know (a custom result must be registered
    /// first) and a result without values in that state. Intermediate results of a nested expression are dropped
    /// as soon as the results that needed them are there. Each result is read or computed once, however often an
    /// expression names it, and an expression may be of any depth.
    bool loadDataState(int stateId, const DataStateSpec& spec, Error* error) final;

    /// Values that are loaded come from memory.
    bool copyScalars(int stateId, const ResultInfo& info, const ScalarPlace& place, std::span<double> values,
                     Error* error) final;

    /// Also takes the bytes of the values off the account of the budget.
    void dropResult(const ResultInfo& info) override;

    /// The bytes of values that states may hold together; 1 GiB until set, and a new limit holds from the next load on.
    /// When a load goes beyond it, values are dropped state by state, the longest unused first, but never those of the
    /// state just loaded nor those of a state that is current in a model. So whoever holds a pointer to values across a
    /// change of state asks anew. Values that cannot be had again are neither dropped nor counted. Up to 256 MiB of the
    /// memory of dropped values stay with the process for the next values of the same size.
    ///
    /// A mesh that one state alone has counts as values of that state do and goes with them, if the file can be asked
    /// for it again: its geometry and parts stay, and who asks them for nodes or elements has these read anew. A mesh
    /// that a model shows, or that several states have, stays.
    void setResultByteBudget(std::size_t bytes);
    std::size_t resultByteBudget() const;

protected:
    /// @name Around what a load reads
    /// The results are those of the file that it is going to read, for whoever reads them together, or with the meshes,
    /// at less cost. These forms do nothing.
    /// @{
    virtual void beginLoad(const std::vector<ResultInfo>& infos, const DataState& state);
    virtual void endLoad(const DataState& state);
    /// @}

    /// Reads one of the file's results into the state's result groups, ranges of scalars included. The state has the
    /// result by the directory and it is not loaded yet. A part that is left without one item for each node or element
    /// is undefined afterwards. False with a text when that fails; the caller clears up.
    virtual bool readResult(const ResultInfo& info, DataState* state, Error* error) = 0;

    /// Reads neighbouring values of one of the file's scalar results by themselves. The state has the result by the
    /// directory, it is not loaded, and the place is good. False when this result or state is not laid out for that, or
    /// when anything is not as expected: the whole result is then loaded instead, which tells what is wrong. This form
    /// always says so.
    virtual bool readScalars(const ResultInfo& info, const DataState& state, const ScalarPlace& place,
                             std::span<double> values);

    /// Whether values that readResult() brought can be dropped and read again.
    virtual bool canReadAgain() const;

    /// Deletes those values of a state that can be had again: the computed ones and, when they can be read again, those
    /// that were read.
    void dropValues(DataState* state);

    /// Adds the result to the geometries that lack it, and fills every part undefined that has not one item for each
    /// node or element.
    static void completeParts(const ResultInfo& info, DataState* state);

private:
    /// A state that has been loaded into, or whose meshes are there, and the bytes there that could be dropped.
    struct StateUse {
        int stateId;
        std::size_t bytes;
    };

    bool planLoad(const DataStateSpec& spec, const DataState& state, std::vector<ResultInfo>* order,
                  Error* error) const;
    bool readAndCarryOut(const std::vector<ResultInfo>& order, DataState* state, Error* error);
    bool readGeometries(std::size_t resultCount, DataState* state, Error* error);
    bool carryOut(const std::vector<ResultInfo>& order, DataState* state, Error* error);
    bool loadOne(const ResultInfo& info, DataState* state, Error* error);
    bool isKnown(const ResultInfo& info) const;
    bool canBeHadAgain(const DataResult& result) const;
    std::size_t countDroppableBytes(const DataState& state) const;
    void noteUse(const DataState& state);
    void noteUnusedMeshes();
    void giveBackMeshes(DataState* state);
    void forgetUse(int stateId);
    void dropBeyondBudget(int loadedStateId);

    std::size_t m_budget = std::size_t(1) << 30;
    std::vector<StateUse> m_uses;     ///< The latest last.
    std::size_t m_droppableBytes = 0; ///< Over all uses.
};

} // namespace orv::ug
