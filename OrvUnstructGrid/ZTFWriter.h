#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/WriteSelection.h"

namespace orv::ug {

class DataSource;
class Error;
class Progress;

/// Writes a data source to a file of the library's older format, which DataSourceZTF reads: text that people can read.
/// Docs/formats.md describes it.
///
/// What is read back is the same bit by bit: coordinates, numbers of nodes and elements, values that are missing, not a
/// number or infinite, names in any script, groups of states, and which geometries states share. Ids stay, but for
/// those of custom results, which get free ones of their type: in the file they are results like others.
/// Warnings of the directory are not written.
class ORV_API ZTFWriter {
public:
    /// Writes what is selected. Results are loaded one at a time, state by state, and those that were not loaded before
    /// are dropped again, so the memory that is needed is that of one result in one state and what it is computed from.
    /// As with any load, values of states that are not current may be dropped under the source's budget.
    ///
    /// The text goes to a file of another name in the same folder, which takes the place of `filename` when all of it
    /// is on the disk. Until then a file of that name stays as it is, whatever happens; a process that is killed leaves
    /// the other file behind, whose name is `filename` and ".tmp" with numbers. A link is followed. The file may be the
    /// one that the source reads from.
    ///
    /// @param source its states and values are loaded through DataSourceInterface
    /// @param progress told how much of the results is written, ending with 100; may be null
    /// @return false, with the reason in `error` unless that is null, when the selection names what is not there, a
    ///         mesh or a result cannot be loaded, a part's elements name nodes that it has not, or the disk refuses
    bool write(DataSource* source, const WriteSelection& selection, const Str& filename, Progress* progress,
               Error* error);
};

} // namespace orv::ug
