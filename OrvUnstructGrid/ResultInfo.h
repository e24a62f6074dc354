#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/ResultType.h"

#include <vector>

namespace orv::ug {

class CustomResultGenerator;
class ResultInfoRecord;

/// A description of one result: what it is called, what its items are and where they sit; for a custom result also
/// what it is computed from. It holds no values.
///
/// A cheap handle: copies share one immutable record. setName() gives the copy that it is called on a record of its
/// own, so a name given to one copy does not reach the others.
///
/// A result is known by its type and its id together. A file's results get small ids from their data source, which
/// mean nothing in another one. A custom result gets an id that is unique in the process when it is made, and keeps
/// it when it is added to a directory, so a nested expression works before any of it is registered, and two custom
/// results are never equal unless one is a copy of the other.
class ORV_API ResultInfo {
public:
    /// An invalid record: id -1, no name, NO_RESULT_TYPE, UNKNOWN_MAPPING.
    ResultInfo();

    /// A result that a data source reads.
    /// @param id not negative, unique among the results of this type in the data source, and below 2^30, where the ids
    ///           of custom results begin
    ResultInfo(ResultType type, int id, const Str& name, ResultMapping mapping);

    /// A custom result, computed from `arguments` by `generator`. Copies the arguments and takes a reference on the
    /// generator, which is null only by mistake: the result is then custom, but nothing can compute it.
    ResultInfo(ResultType type, const Str& name, ResultMapping mapping, std::vector<ResultInfo>& arguments,
               const CustomResultGenerator* generator);

    ResultInfo(const ResultInfo& other);
    ResultInfo& operator=(const ResultInfo& other);
    ~ResultInfo();

    /// Same type and same id, and both custom or both not. The name is not compared. Two invalid records are equal.
    bool operator==(const ResultInfo& other) const;

    int id() const;
    Str name() const;
    ResultType type() const;
    ResultMapping resultMapping() const;
    /// True when the id is not negative.
    bool isValid() const;
    bool isCustom() const;

    /// Renames this copy; the identity stays.
    void setName(const Str& name);

    /// The result of the same data source that this one was derived from by its file or solver, such as the tensor
    /// that a stored invariant belongs to: its id, or -1.
    int baseResultId() const;
    /// Its type, or NO_RESULT_TYPE.
    ResultType baseResultType() const;
    /// Like setName(), for this copy alone.
    void setBaseResult(int id, ResultType type);

    /// The arguments in the generator's order; empty unless custom.
    const std::vector<ResultInfo>& customResultArguments() const;

    /// What computes a custom result; null on any other.
    const CustomResultGenerator* customResultGenerator() const;

private:
    friend class ResultInfoRecord;

    PtrRef<ResultInfoRecord> m_record;
};

} // namespace orv::ug
