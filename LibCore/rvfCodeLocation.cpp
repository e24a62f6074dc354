#include "LibCore/rvfCodeLocation.h"

namespace rvf {

CodeLocation::CodeLocation(const char* file, const char* function, const char* shortFunction, int line)
    : m_file(file), m_function(function), m_shortFunction(shortFunction), m_line(line) {}

const char* CodeLocation::file() const {
    return m_file;
}

const char* CodeLocation::function() const {
    return m_function;
}

const char* CodeLocation::shortFunction() const {
    return m_shortFunction;
}

int CodeLocation::line() const {
    return m_line;
}

} // namespace rvf
