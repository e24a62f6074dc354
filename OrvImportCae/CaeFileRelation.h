#pragma once

#include "OrvCore/Str.h"
#include "OrvImportCae/CaeReader.h"
#include "OrvImportCae/FileRelation.h"
#include "OrvUnstructGrid/Error.h"

#include <memory>
#include <vector>

namespace orv::imp::cae {

/// A file that has been opened together with others.
struct CaeOpenFile {
    Str name;
    std::unique_ptr<CaeReader> reader;
    CaeContents contents;
    Str meshDifference; ///< From the first file, in words; empty when it has an earlier file's geometry.
};

/// Lets a file have the geometry of an earlier one when that is the same mesh. Otherwise notes the difference, unless
/// there is one already.
void shareCaeMesh(const CaeOpenFile& earlier, CaeOpenFile* file);

/// Settles what the files are to each other, which is `wanted` unless that is FROM_CONTENTS. Their meshes have been
/// read and shared. False with a text when they do not go together in that way, or in none.
bool settleCaeRelation(const std::vector<CaeOpenFile>& files, FileRelation wanted, FileRelation* relation,
                       ug::Error* error);

} // namespace orv::imp::cae
