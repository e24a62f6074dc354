#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvImportCae/MshSections.h"
#include "OrvUnstructGrid/ResultInfo.h"
#include "OrvUnstructGrid/StateInfo.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// A state and its values.
struct MshState {
    ug::StateInfo info;
    /// For each of its results, as an index in MshResults::infos, the sections that hold values, as indexes in
    /// MshSections::data: several when each partition has one.
    std::map<std::size_t, std::vector<std::size_t>> sections;
};

/// What the sections of values mean as states and results.
struct MshResults {
    std::vector<ug::ResultInfo> infos;
    std::vector<MshState> states;
};

/// Makes states and results out of the sections of values.
///
/// The first text tag names the result; sections of another kind or another count of components are another result, of
/// the same name. One component is a scalar; three are a vector, or a displacement when the name has "displacement" in
/// it, or is "disp" or "u", in small or capital letters. Nine are a symmetric tensor: a section whose first items are
/// not symmetric is left out with a warning, as is one with any other count.
///
/// Sections with the same step and time make a state. States come in this order, with the ids 1, 2, 3 and so on, and
/// are called "Step 3, time 0.5". A file without values, a mere mesh, has one state "Mesh", so that there is something
/// to look at.
MshResults makeMshResults(const CaeFile& file, const MshSections& sections, std::vector<std::string>* warnings);

} // namespace orv::imp::cae
