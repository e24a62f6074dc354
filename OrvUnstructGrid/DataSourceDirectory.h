#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/PartInfo.h"
#include "OrvUnstructGrid/ResultInfo.h"
#include "OrvUnstructGrid/SimulationInfo.h"
#include "OrvUnstructGrid/StateGroupInfo.h"
#include "OrvUnstructGrid/StateInfo.h"

#include <cstddef>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orv::ug {

class DataSource;

/// The records of what a data source contains, known without loading any of it. Owned by the data source.
///
/// All answers are copies. Results of one type keep the order in which they were added, custom ones behind the file's.
class ORV_API DataSourceDirectory {
public:
    /// @param owner told when a custom result goes, so that its values go too; may be null
    explicit DataSourceDirectory(DataSource* owner);
    ~DataSourceDirectory();

    DataSourceDirectory(const DataSourceDirectory&) = delete;
    DataSourceDirectory& operator=(const DataSourceDirectory&) = delete;

    /// In file order.
    std::vector<StateInfo> stateInfos() const;
    std::size_t stateCount() const;
    /// The record at a position in stateInfos(), without a copy of the list; an undefined one when there is none.
    StateInfo stateInfo(std::size_t index) const;
    /// The record, or an undefined one.
    StateInfo findStateInfo(int stateId) const;
    /// The position in stateInfos(); UNDEFINED_SIZE_T when there is no such state.
    std::size_t stateIndex(int stateId) const;
    std::vector<StateGroupInfo> stateGroupInfos() const;

    std::size_t geometryCountPerState() const;
    /// In the order of the geometry's parts and of the same number; empty when there is no such geometry.
    std::vector<PartInfo> partInfos(std::size_t geometryIndex) const;
    /// The record, or an undefined one.
    PartInfo findPartInfo(std::size_t geometryIndex, int partId) const;

    SimulationInfo simulationInfo() const;
    /// What the reader wants people to know although the file opened, such as that its end is missing.
    std::vector<Str> warnings() const;

    std::vector<ResultInfo> scalarResultInfos() const;
    std::vector<ResultInfo> vectorResultInfos() const;
    std::vector<ResultInfo> displacementResultInfos() const;
    std::vector<ResultInfo> symmetricTensorResultInfos() const;
    /// The same by type; empty for any other value.
    std::vector<ResultInfo> resultInfos(ResultType type) const;

    /// The record, or an invalid one.
    ResultInfo findResultInfo(ResultType type, int resultId) const;
    ResultInfo findScalarResultInfo(int resultId) const;

    /// Whether the result has values in that state. A custom result has when it is registered here and everything in
    /// the file that it rests on has; a custom result that rests on nothing has in every state.
    bool hasResult(int stateId, ResultInfo info) const;

    /// What must stand in this directory for a custom result to be computed, each once, in the order of the arguments:
    /// the file's results among the arguments, also those that this directory lacks; the custom arguments that are
    /// registered here, under the name that they have here; and in place of a custom argument that is not, such as
    /// `a + b` in `(a + b) * c`, what it rests on in turn. Empty for a result that is not custom.
    std::vector<ResultInfo> customResultBaseDependencies(ResultInfo info) const;

    /// Registers a custom result. One that is registered already gets the new name and keeps its place. Nothing happens
    /// for a result without a type and for one that is not custom.
    void setCustomResultInfo(ResultInfo info);

    /// Takes a custom result out and has its values dropped in all states. Nothing happens when it is not registered
    /// or not custom.
    void removeCustomResultInfo(ResultInfo info);

    /// @name For the data source that fills the directory
    /// @{
    void setSimulationInfo(const SimulationInfo& info);
    void addWarning(const Str& warning);
    /// Asserts that the id is new here, "findStateInfo(info.id()).id() == -1", and "info.id() >= 0"; nothing happens
    /// behind a failed assertion.
    void addStateInfo(const StateInfo& info);
    void addStateGroupInfo(const StateGroupInfo& info);
    /// Replaces all groups.
    void setStateGroupInfos(std::vector<StateGroupInfo> infos);
    /// Appends the records of the next geometry.
    void addGeometryPartInfos(std::vector<PartInfo> parts);
    /// Appends a record to the parts of a geometry. Asserts "geometryIndex < geometryCountPerState()"; nothing happens
    /// behind a failed assertion.
    void addPartInfo(std::size_t geometryIndex, const PartInfo& info);
    /// Appends a file's result, in front of the custom ones of its type. Asserts "info.isValid() && !info.isCustom()",
    /// "isResultType(info.type())" and "!findResultInfo(info.type(), info.id()).isValid()"; nothing happens behind a
    /// failed assertion.
    void addResultInfo(const ResultInfo& info);
    /// Notes that a file's result has values in a state. Both must have been added: asserts "stateIsKnown" and
    /// "resultIsKnown"; nothing happens behind a failed assertion.
    void setHasResult(int stateId, const ResultInfo& info);
    /// @}

private:
    using ResultKey = std::pair<ResultType, int>;

    /// A result and, for a file's, by the index of each state whether it has values there.
    struct ResultEntry {
        ResultInfo info;
        std::vector<bool> hasValues;
    };

    const ResultEntry* findEntry(ResultType type, int resultId) const;
    bool isRegistered(const ResultInfo& info) const;
    void insertEntry(std::size_t position, const ResultInfo& info);
    void indexEntriesFrom(ResultType type, std::size_t position);

    DataSource* m_owner;
    SimulationInfo m_simulationInfo;
    std::vector<Str> m_warnings;
    std::vector<StateInfo> m_states;
    std::unordered_map<int, std::size_t> m_stateIndexes;
    std::vector<StateGroupInfo> m_stateGroups;
    std::vector<std::vector<PartInfo>> m_parts;
    std::vector<ResultEntry> m_results[SYMMETRIC_TENSOR]; ///< By type, less 1.
    std::map<ResultKey, std::size_t> m_resultIndexes;     ///< Positions in the lists of m_results.
};

} // namespace orv::ug
