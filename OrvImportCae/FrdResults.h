#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvImportCae/FrdIndex.h"
#include "OrvUnstructGrid/ResultInfo.h"
#include "OrvUnstructGrid/StateGroupInfo.h"
#include "OrvUnstructGrid/StateInfo.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// A result that the blocks of one layout hold.
struct FrdColumns {
    std::size_t result = 0;             ///< In FrdResults::infos.
    std::vector<std::uint32_t> columns; ///< The block's stored columns, in the order of our items.
};

/// A state and its blocks.
struct FrdState {
    ug::StateInfo info;
    std::vector<std::uint32_t> blocks; ///< In FrdIndex::blocks, in file order.
};

/// What the blocks of a file mean as states and results.
struct FrdResults {
    std::vector<ug::ResultInfo> infos;
    std::vector<std::vector<FrdColumns>> layouts; ///< For each of FrdIndex::layouts.
    std::vector<FrdState> states;
    std::vector<ug::StateGroupInfo> stateGroups;
};

/// Makes states and results out of blocks.
///
/// Results bear the name of their block, and what they are is told by the columns that are stored:
/// - one: a scalar,
/// - three of a vector: a vector, for the block DISP a displacement,
/// - six of a tensor, told by names that end with XX, YY and so on, as contact results come in the same form: a
///   symmetric tensor,
/// - everything else: a scalar `BLOCK.COMPONENT` for each.
/// A name may stand for different columns in different blocks, which is why columns belong to layouts.
///
/// Blocks with the same state number make a state, whose id that number is. Should blocks with the same number differ
/// in value or kind, or come twice, then the later ones are a state of their own with the next free number, and a
/// warning tells: no increment is lost. Kinds 0 and 1 are times, 2 is a frequency, others are load cases. When a file
/// mixes these, each has a group of states.
///
/// A state is named after what the file tells of it: "Step 1, increment 3, time 0.3", "Mode 2, frequency 13096.03",
/// "Mode 1, nodal diameter 2, frequency 51.4", "Step 1, increment 1, buckling factor 314.36"; without a step "State 4,
/// time 0.3". Values have up to seven digits. Names that would come twice get " (state 4)" behind them.
FrdResults makeFrdResults(const CaeFile& file, const FrdIndex& index, std::vector<std::string>* warnings);

} // namespace orv::imp::cae
