#pragma once

#include "OrvCore/Str.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/ResultInfo.h"

#include <cstddef>
#include <vector>

namespace orv::ug {
class DataSource;
class DataSourceDirectory;
class UnstructGridModel;
} // namespace orv::ug

namespace orv::app {

/// What stands behind Results. Keeps nothing: every question goes to the current model, state and part anew.
class ResultsPrivate {
public:
    unsigned long count() const;
    unsigned long scalarCount() const;
    unsigned long vectorCount() const;
    unsigned long displacementCount() const;
    unsigned long tensorCount() const;

    unsigned long indexOf(ug::ResultInfo info) const;
    unsigned long scalarIndexOf(ug::ResultInfo info) const;
    unsigned long vectorIndexOf(ug::ResultInfo info) const;
    unsigned long displacementIndexOf(ug::ResultInfo info) const;
    unsigned long tensorIndexOf(ug::ResultInfo info) const;
    /// The position among the results of the info's own type.
    unsigned long typedIndexOf(ug::ResultInfo info) const;

    ug::ResultInfo resultInfo(unsigned long index) const;
    ug::ResultInfo resultInfo(const Str& name) const;
    ug::ResultInfo scalarInfo(unsigned long index) const;
    ug::ResultInfo scalarInfo(const Str& name) const;
    ug::ResultInfo vectorInfo(unsigned long index) const;
    ug::ResultInfo vectorInfo(const Str& name) const;
    ug::ResultInfo displacementInfo(unsigned long index) const;
    ug::ResultInfo displacementInfo(const Str& name) const;
    ug::ResultInfo tensorInfo(unsigned long index) const;
    ug::ResultInfo tensorInfo(const Str& name) const;

    /// The results of the current state, or of the whole directory when no state is current: scalars, vectors,
    /// symmetric tensors, displacements, and within a type in the directory's order.
    std::vector<ug::ResultInfo> currentInfos() const;
    /// Those of one type.
    std::vector<ug::ResultInfo> currentInfos(ug::ResultType type) const;

    /// The one entry whose name matches the pattern. An empty list is silent, unlike a list without a match.
    ug::ResultInfo wildCardInfo(const std::vector<ug::ResultInfo>& infos, const Str& pattern) const;

    ug::DataResultScalar* currentDataResultScalar(ug::ResultInfo scalar);
    ug::DataResultScalar* currentDataResultScalar(const Str& name);
    ug::DataPartScalar* currentDataPartScalar(ug::ResultInfo scalar);
    ug::DataPartScalar* currentDataPartScalar(const Str& name);
    ug::DataResultVector* currentDataResultVector(ug::ResultInfo vector);
    ug::DataResultVector* currentDataResultVector(const Str& name);
    ug::DataPartVector* currentDataPartVector(ug::ResultInfo vector);
    ug::DataPartVector* currentDataPartVector(const Str& name);
    ug::DataResultSymmetricTensor* currentDataResultTensor(ug::ResultInfo tensor);
    ug::DataResultSymmetricTensor* currentDataResultTensor(const Str& name);
    ug::DataPartSymmetricTensor* currentDataPartTensor(ug::ResultInfo tensor);
    ug::DataPartSymmetricTensor* currentDataPartTensor(const Str& name);
    ug::DataResultDisplacement* currentDataResultDisplacement(ug::ResultInfo displacement);
    ug::DataResultDisplacement* currentDataResultDisplacement(const Str& name);
    ug::DataPartDisplacement* currentDataPartDisplacement(ug::ResultInfo displacement);
    ug::DataPartDisplacement* currentDataPartDisplacement(const Str& name);

    /// Has the data source bring a result into the current state. True when the data source loads nothing on demand.
    /// The reason for a failed load is not told.
    bool loadResult(ug::ResultInfo info);

    /// The results of the geometry that holds the current part, and the part's index in it. Null, with the index
    /// untouched, when no state or no part is current. A part that stands in several geometries counts for the last.
    ug::DataResultGroup* currentResultGroupAndPartIndex(unsigned long* partIndex) const;

private:
    /// One kind's result out of the current group, loaded when it is not there; `checkAfterLoad` runs behind the load.
    template <class Result, class CheckAfterLoad>
    Result* findOrLoad(const ug::ResultInfo& info, std::size_t (ug::DataResultGroup::*position)(int) const,
                       Result* (ug::DataResultGroup::*get)(std::size_t), CheckAfterLoad checkAfterLoad);

    /// The current part's slice of what `currentResult` gives.
    template <class Part, class Result>
    Part* currentPartOf(const ug::ResultInfo& info, Result* (ResultsPrivate::*currentResult)(ug::ResultInfo));

    /// What `currentData` gives for the result of that name, which is looked up among all types; null without one.
    template <class Data>
    Data* byName(const Str& name, Data* (ResultsPrivate::*currentData)(ug::ResultInfo));

    ug::UnstructGridModel* currentModel() const;
    ug::DataSource* currentDataSource() const;
    const ug::DataSourceDirectory* currentDirectory() const;
};

} // namespace orv::app
