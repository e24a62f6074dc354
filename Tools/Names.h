#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvapp {

/// The positions of the names that a pattern selects, in order: the names equal to it when there are any, otherwise
/// those that it matches as a wildcard pattern with `*`, `?` and `[...]`.
std::vector<std::size_t> selectNames(const std::vector<std::string>& names, const std::string& pattern);

/// The name that `typed` is most likely a slip of, whatever the case of the letters; empty when none is near.
std::string nearestName(const std::vector<std::string>& names, std::string_view typed);

/// `; did you mean "DISP"?` or nothing.
std::string didYouMean(const std::vector<std::string>& names, std::string_view typed);

/// `"A", "B", "C"`, each name once, and after `limit` of them how many more there are: `"A", "B" and 7 more`.
std::string listed(const std::vector<std::string>& names, std::size_t limit = 12);

} // namespace orvapp
