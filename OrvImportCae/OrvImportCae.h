#pragma once

/// @file
/// Readers of other programs' result files.
///
/// A file becomes an ug::DataSource: imp::cae::DataSourceCae::openFiles() reads its structure, and loading a state
/// reads values. Which files there are readers for is told by imp::cae::DataSourceCae::supportedFormats().
///
/// | file | program | what becomes of it |
/// | --- | --- | --- |
/// | `.frd` | CalculiX | one geometry with a part for each material, every increment and mode a state |
/// | `.msh` | Gmsh | one geometry with a part for each physical group or entity, every step of a view a state |

#include "OrvImportCae/DataSourceCae.h"
#include "OrvImportCae/FileRelation.h"
#include "OrvImportCae/ReaderInfo.h"
