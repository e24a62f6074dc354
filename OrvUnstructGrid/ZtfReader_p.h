#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/PartInfo.h"
#include "OrvUnstructGrid/ResultInfo.h"
#include "OrvUnstructGrid/StateGroupInfo.h"
#include "OrvUnstructGrid/StateInfo.h"
#include "OrvUnstructGrid/ZtfFile_p.h"

#include <cstddef>
#include <span>
#include <unordered_map>
#include <vector>

namespace orv::ug {

/// The words of .ztf files, in the order of the values that they stand for.
inline constexpr const char* ZTF_TYPES[] = {"scalar", "vector", "displacement", "tensor"};
inline constexpr const char* ZTF_MAPPINGS[] = {"node", "element", "element_node", "element_surface"};
inline constexpr const char* ZTF_REFERENCES[] = {"time", "frequency", "load_case", "other"};
/// Where the ids of custom results begin, which a file has none of.
inline constexpr int ZTF_RESULT_ID_END = 1 << 30;

/// A mesh of a file.
struct ZtfGeometry {
    PtrRef<DataGeometry> geometry;
    std::vector<PartInfo> parts;
    std::unordered_map<int, std::size_t> partIndexes; ///< By id.
};

/// Where the values of one result on one part stand in the file.
struct ZtfValues {
    std::size_t geometryIndex = 0; ///< In the state.
    std::size_t partIndex = 0;
    ZtfPlace place;
};

/// A result in a state. Parts that are not among the values are undefined.
struct ZtfField {
    std::size_t result = 0; ///< In ZtfContents::results.
    std::vector<ZtfValues> values;
};

struct ZtfState {
    StateInfo info;
    std::vector<std::size_t> geometries; ///< In ZtfContents::geometries.
    std::vector<ZtfField> fields;
};

/// Everything in a file but values.
struct ZtfContents {
    Str title;
    std::vector<ZtfGeometry> geometries;
    std::vector<ResultInfo> results;
    std::vector<ZtfState> states;
    std::vector<StateGroupInfo> stateGroups;

    /// The meshes that the parts of each state look like: those of the first state, or all when there are no states.
    std::vector<std::size_t> geometriesPerState() const;
};

/// Reads a file from its beginning to its end, meshes included; values are only counted. Nothing in it is trusted: each
/// count, id and index is checked, and no memory is taken for more than what the rest of the file has room for.
bool readZtfContents(ZtfFile& file, ZtfContents* contents, Error* error);

/// Reads what stands at a place that readZtfContents() noted; as many numbers as it counted there.
bool readZtfValues(ZtfLines& lines, const ZtfPlace& place, std::span<double> values);

} // namespace orv::ug
