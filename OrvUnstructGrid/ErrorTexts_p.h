#pragma once

#include "OrvCore/Str.h"
#include "OrvUnstructGrid/ResultInfo.h"

namespace orv::ug {

class DataSourceDirectory;

// What people are told when values cannot be had: which result, state and source, and what to do about it. A source is
// called by its file, or "the data source" when it has no name.

Str sourceText(const DataSourceDirectory& directory);

/// "state 'Step 1' of 'beam.frd'", by the id when the state has no name.
Str stateText(const DataSourceDirectory& directory, int stateId);

Str unknownStateText(const DataSourceDirectory& directory, int stateId);

/// For a result that the directory does not know: an invalid one, a file's or a custom one.
Str unknownResultText(const DataSourceDirectory& directory, const ResultInfo& info);

/// For a result of the file that `needed` is, or rests on, and that is missing from the directory or from the state.
Str unreadableResultText(const DataSourceDirectory& directory, int stateId, const ResultInfo& needed,
                         const ResultInfo& missing);

Str failedReadText(const DataSourceDirectory& directory, int stateId, const ResultInfo& info);

/// For a custom result whose generator is missing or has given up.
Str failedComputationText(const DataSourceDirectory& directory, int stateId, const ResultInfo& info);

} // namespace orv::ug
