#pragma once

#include "LibCore/rvfExport.h"

namespace rvf {

/// The place in the source that a log message comes from. Holds the pointers it is given, so they have to be texts that
/// live as long as the program; none of them is copied.
class ORV_API CodeLocation {
public:
    /// @param file           source path, "Folder/Unit"
    /// @param function       full signature of the function
    /// @param shortFunction  bare name of the function
    /// @param line           line in the file, from 1
    CodeLocation(const char* file, const char* function, const char* shortFunction, int line);

    const char* file() const;
    const char* function() const;
    const char* shortFunction() const;
    int line() const;

private:
    const char* m_file;
    const char* m_function;
    const char* m_shortFunction;
    int m_line;
};

} // namespace rvf
