#pragma once

#include "OrvUnstructGrid/Error.h"

#include <memory>
#include <string>
#include <vector>

namespace orv::imp::cae {

class CaeReader;

/// A shared object with readers that stand on a heavy library. Programs that read light formats never open it.
///
/// It offers two functions with C names: `unsigned int orvModuleVersion()`, which answers Instance::HEADER_VERSION as
/// it was compiled in, and `orv::imp::cae::CaeReader* orvCreateReader(const char* name)`, which makes the reader of
/// that CaeReaderEntry::name for the caller to delete, or answers null. CaeModuleEntry.h declares both.
struct CaeModule {
    const char* name;         ///< Its file is libOrvImport<name>.so.
    const char* option;       ///< Of our build, to have it.
    const char* package;      ///< Debian's, with the library that it stands on.
    const char* buildPackage; ///< Debian's, to build it.
};

/// "libOrvImportVtk.so"
std::string caeModuleFileName(const CaeModule& module);

/// Where module files are looked for: the folders of the environment variable ORV_MODULE_PATH, separated by colons, and
/// then the one of this library.
std::vector<std::string> caeModuleFolders();

/// The file of a module, in the first of the folders that has it; empty when none has.
std::string findCaeModule(const CaeModule& module);

/// Opens the module unless it is open, and makes one of its readers. A module stays open until the process ends.
/// @param error told what to install or build when the module cannot be opened
/// @return null on failure
std::unique_ptr<CaeReader> createReaderOfModule(const CaeModule& module, const char* readerName, ug::Error* error);

} // namespace orv::imp::cae
