#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/Error.h"

#include <memory>
#include <span>
#include <string>

namespace orv::imp::cae {

class CaeReader;
struct CaeModule;

/// A kind of file that can be read. Made either by a function or by a module.
struct CaeReaderEntry {
    const char* name;        ///< As people call the program or format.
    const char* description; ///< What ReaderInfo tells.
    const char* extensions;  ///< As in ReaderInfo.
    const char* contents;    ///< As in FormatInfo.
    std::unique_ptr<CaeReader> (*create)();
    const CaeModule* module;
    bool isSpread = false; ///< Also behind two numbers: "a.e.4.0" is the first of four files of parallel processes.
};

/// All of them.
std::span<const CaeReaderEntry> caeReaders();

/// The characters behind the last dot of a file's name, in small letters; a dot in a folder's name does not count.
ORV_API std::string fileExtension(const std::string& filename);

/// The reader for a file, by its extension, or by the one that stands before two numbers. Null, with a text that tells
/// what there is, when there is none.
const CaeReaderEntry* findCaeReader(const Str& filename, ug::Error* error);

/// A new reader of that kind, for this file. Null, with a text that names the file, when its module cannot be opened.
std::unique_ptr<CaeReader> createCaeReader(const CaeReaderEntry& entry, const Str& filename, ug::Error* error);

} // namespace orv::imp::cae
