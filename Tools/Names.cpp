#include "Tools/Names.h"

#include "OrvCore/EditDistance.h"
#include "OrvCore/Str.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace orvapp {

namespace {

template <class Predicate>
std::vector<std::size_t> positions(const std::vector<std::string>& names, Predicate accepts) {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (accepts(names[i])) {
            found.push_back(i);
        }
    }
    return found;
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return lower;
}

} // namespace

std::vector<std::size_t> selectNames(const std::vector<std::string>& names, const std::string& pattern) {
    std::vector<std::size_t> equal = positions(names, [&](const std::string& name) { return name == pattern; });
    if (!equal.empty()) {
        return equal;
    }
    const orv::Str wildcard(pattern);
    return positions(names, [&](const std::string& name) { return orv::Str(name).matches(wildcard); });
}

std::string nearestName(const std::vector<std::string>& names, std::string_view typed) {
    const std::string wanted = lowerCase(typed);
    std::size_t least = std::max<std::size_t>(1, wanted.size() / 3) + 1;
    std::string nearest;
    for (const std::string& name : names) {
        const std::size_t distance = orv::editDistance(lowerCase(name), wanted);
        if (distance < least) {
            least = distance;
            nearest = name;
        }
    }
    return nearest;
}

std::string didYouMean(const std::vector<std::string>& names, std::string_view typed) {
    const std::string nearest = nearestName(names, typed);
    return nearest.empty() ? "" : "; did you mean \"" + nearest + "\"?";
}

std::string listed(const std::vector<std::string>& names, std::size_t limit) {
    std::unordered_set<std::string> seen;
    std::string list;
    for (const std::string& name : names) {
        if (seen.insert(name).second && seen.size() <= limit) {
            list += (list.empty() ? "\"" : ", \"") + name + '"';
        }
    }
    return seen.size() <= limit ? list : list + " and " + std::to_string(seen.size() - limit) + " more";
}

} // namespace orvapp
