#include "Tools/Choice.h"

#include "Tools/CommandError.h"
#include "Tools/Names.h"

#include <set>

namespace orvapp {

void refuse(const ResultFile& file, const std::string& text) {
    throw CommandError(file.path() + ": " + text);
}

std::vector<std::size_t> choose(const ResultFile& file, const std::string& what, const std::vector<std::string>& names,
                                const std::string& pattern) {
    std::vector<std::size_t> found = selectNames(names, pattern);
    if (found.empty()) {
        refuse(file, "there is no " + what + " \"" + pattern + '"' + didYouMean(names, pattern) +
                         (names.empty() ? "" : " (" + what + "s: " + listed(names) + ")"));
    }
    return found;
}

std::vector<std::size_t> chooseAny(const ResultFile& file, const std::string& what,
                                   const std::vector<std::string>& names, const std::vector<std::string>& patterns) {
    std::set<std::size_t> found;
    for (std::size_t i = 0; patterns.empty() && i < names.size(); ++i) {
        found.insert(i);
    }
    for (const std::string& pattern : patterns) {
        const std::vector<std::size_t> selected = choose(file, what, names, pattern);
        found.insert(selected.begin(), selected.end());
    }
    return {found.begin(), found.end()};
}

} // namespace orvapp
