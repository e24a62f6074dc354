#pragma once

#include "Tools/ResultFile.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvapp {

/// Throws CommandError: the file and the text.
[[noreturn]] void refuse(const ResultFile& file, const std::string& text);

/// The positions that a pattern selects, ascending. Throws CommandError, with what there is, when it selects nothing.
/// @param what what the names are of, such as "state"
std::vector<std::size_t> choose(const ResultFile& file, const std::string& what, const std::vector<std::string>& names,
                                const std::string& pattern);

/// The positions that any of the patterns selects, each of which has to select something; all without patterns.
std::vector<std::size_t> chooseAny(const ResultFile& file, const std::string& what,
                                   const std::vector<std::string>& names, const std::vector<std::string>& patterns);

inline std::string nameOf(const FilePart& part) {
    return part.name;
}

/// Of a state or a result.
template <class Info>
std::string nameOf(const Info& info) {
    return info.name().toStdString();
}

template <class T>
std::vector<std::string> namesOf(const std::vector<T>& things) {
    std::vector<std::string> names;
    names.reserve(things.size());
    for (const T& thing : things) {
        names.push_back(nameOf(thing));
    }
    return names;
}

template <class T>
std::vector<T> picked(const std::vector<T>& all, const std::vector<std::size_t>& indexes) {
    std::vector<T> some;
    some.reserve(indexes.size());
    for (const std::size_t index : indexes) {
        some.push_back(all[index]);
    }
    return some;
}

} // namespace orvapp
