#pragma once

#include "OrvCore/Defines.h"
#include "OrvCore/PropertySet.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/ResultInfo.h"
#include "OrvUnstructGrid/StateInfo.h"

#include <cstddef>
#include <map>
#include <utility>

namespace orv::ug {

class DataSourceDirectory;

// How a situation names states, results and parts: by their id and by what people know them by, so that they are found
// again in a file whose ids have changed. An id counts only together with the name; without it there must be one alone
// that fits.

struct StateReference {
    int id = -1;
    Str name;
    Str referenceType; ///< As a word of .ztf files.
    double referenceValue = UNDEFINED_DOUBLE;

    static StateReference to(const StateInfo& info);
    static StateReference from(const PropertySet& set);
    void putInto(PropertySet* set) const;

    /// The id of the state: the one with this id, name and reference, otherwise the only one with this name and
    /// reference, with this name, or with this reference. -1 when there is none.
    int findIn(const DataSourceDirectory& directory) const;
    /// "state 'Step 1'"
    Str text() const;
};

struct ResultReference {
    ResultType type = NO_RESULT_TYPE;
    int id = -1;
    Str name;
    Str mapping; ///< As a word of .ztf files.
    bool isCustom = false;

    static ResultReference to(const ResultInfo& info);
    /// @param type of the result, which the set does not tell
    static ResultReference from(const PropertySet& set, ResultType type);
    void putInto(PropertySet* set) const;

    /// The id of the result of this type, name and mapping that is custom or not, as this one: the one with this id,
    /// otherwise the only one. -1 when there is none.
    int findIn(const DataSourceDirectory& directory) const;
    /// "scalar 'Mises'", "custom scalar 'Mises' (to be registered first)"
    Str text() const;
};

struct PartReference {
    std::size_t geometryIndex = UNDEFINED_SIZE_T;
    int id = -1;
    Str name;

    static PartReference from(const PropertySet& set);
    void putInto(PropertySet* set) const;
    /// "part 'Wing'"
    Str text() const;
};

/// The parts of a directory, to look up many of them.
class PartCatalogue {
public:
    explicit PartCatalogue(const DataSourceDirectory& directory);

    /// False when there is no such part.
    bool makeReference(std::size_t geometryIndex, int partId, PartReference* reference) const;
    /// The id of the part in the geometry with that index: the one with this id and name, otherwise the only one with
    /// this name. -1 when there is none.
    int find(const PartReference& reference) const;

private:
    std::map<std::pair<std::size_t, int>, Str> m_names;
    std::multimap<std::pair<std::size_t, Str>, int> m_ids;
};

} // namespace orv::ug
