#pragma once

#include "OrvImportVtk/FoamFile.h"

#include <string>
#include <vector>

namespace orv::imp::cae {

/// A key of a dictionary with what it holds, as far as that matters.
struct FoamEntry {
    enum Kind { NOTHING, DICTIONARY, UNIFORM, OTHER };

    std::string key;
    Kind kind = NOTHING;                 ///< Of the first value.
    FoamToken value = {};                ///< The first one of kind OTHER, when it is a single word or number.
    std::vector<FoamEntry> entries = {}; ///< Of a dictionary.
};

using FoamEntries = std::vector<FoamEntry>;

/// The first entry of that key; null when there is none.
const FoamEntry* findFoamEntry(const FoamEntries& entries, const std::string& key);

/// Whether a key can be what stands for names of patches: a name, or a regular expression. Of brackets only single
/// characters, sets of them and whole expressions without a repetition.
bool isFoamPattern(const std::string& key);

/// What a field's dictionary says about a patch: the entry of its name, or else the last one whose key is a regular
/// expression that fits the name. Null when there is none.
const FoamEntry* findFoamPatch(const FoamEntries& entries, const std::string& patch);

/// Reads a dictionary, or a list of dictionaries with names, behind the header. Files that it includes by a path beside
/// its own are read along. Refuses what VTK's reader is not up to.
bool readFoamDictionary(FoamFile* file, const std::string& folder, FoamEntries* entries, ug::Error* error);

} // namespace orv::imp::cae
