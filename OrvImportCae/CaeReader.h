#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/DataSourceInterface.h"
#include "OrvUnstructGrid/DataState.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/PartInfo.h"
#include "OrvUnstructGrid/ProgressMeter.h"
#include "OrvUnstructGrid/ResultInfo.h"
#include "OrvUnstructGrid/StateGroupInfo.h"
#include "OrvUnstructGrid/StateInfo.h"

#include <cstddef>
#include <span>
#include <vector>

namespace orv::imp::cae {

/// What a reader found: everything but values. Plain data, so that a file that turns out bad leaves nothing behind.
struct CaeContents {
    /// A state and the results that have values in it, as indexes in `results`.
    struct State {
        ug::StateInfo info;
        std::vector<std::size_t> results;
        PtrRef<ug::DataGeometry> geometry = {}; ///< With the same parts as all others; null when it is the one below.
    };

    Str title;
    PtrRef<ug::DataGeometry> geometry;
    std::vector<ug::PartInfo> parts;
    std::vector<ug::ResultInfo> results;
    std::vector<State> states;
    std::vector<ug::StateGroupInfo> stateGroups;
    std::vector<Str> warnings;
};

/// A state that is called by its time: "Time 0.5".
ORV_API ug::StateInfo timeState(int id, double time);

/// A group of states for each type of reference value, in the order of appearance; none when there is but one type.
ORV_API std::vector<ug::StateGroupInfo> groupStates(const std::vector<ug::StateInfo>& states);

/// Reads the result files of one program. Modules derive from it, too.
class ORV_API CaeReader {
public:
    CaeReader() = default;
    virtual ~CaeReader();

    CaeReader(const CaeReader&) = delete;
    CaeReader& operator=(const CaeReader&) = delete;

    /// Tells this how far reads have come, if need be within the step that goes on. Lives longer than the reader; null,
    /// as at first, for nobody.
    virtual void setProgress(ug::ProgressMeter* progress);

    /// Reads structure and directory, no values. Once per object.
    virtual bool open(const Str& filename, CaeContents* contents, ug::Error* error) = 0;

    /// Reads into this geometry from now on. It has the parts, nodes and elements of the one that open() described,
    /// whose memory is given back.
    virtual void adoptGeometry(const PtrRef<ug::DataGeometry>& geometry) = 0;

    /// Around the reads of a load: these results of this state are going to be read, and the parts of its geometry if
    /// they have not been. These forms do nothing.
    /// @{
    virtual void beginLoad(const std::vector<ug::ResultInfo>& infos, int stateId);
    virtual void endLoad();
    /// @}

    /// Reads one result of one state, all parts. Both go by the ids that open() gave them, and the state has the
    /// result.
    /// @param intoInfo what the result is called where it goes
    /// @param state where it goes
    /// @param warnings what had to be left out is appended, once however often it is read
    virtual bool readResult(const ug::ResultInfo& info, int stateId, const ug::ResultInfo& intoInfo,
                            ug::DataState* state, std::vector<Str>* warnings, ug::Error* error) = 0;

    /// Reads single values of a scalar as DataSourceLazy::readScalars() does. This form answers that it cannot.
    virtual bool readScalars(const ug::ResultInfo& info, int stateId, const ug::ScalarPlace& place,
                             std::span<double> values);

protected:
    ug::ProgressMeter* progress() const;

    /// Of scalars that have been read. It costs nothing before somebody asks for the ranges.
    static void updateRanges(ug::DataResult* result);

private:
    ug::ProgressMeter* m_progress = nullptr;
};

} // namespace orv::imp::cae
