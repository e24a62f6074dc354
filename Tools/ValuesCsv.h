#pragma once

#include "Tools/Output.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvapp {

/// A text as a CSV field by RFC 4180: in double quotes, with those inside doubled, when it holds a comma, a double
/// quote or a line end.
std::string csvField(std::string_view text);

/// All values of a result as CSV: `state,part,id` and the components, one line for each item, ended by a line feed.
class ValuesCsv {
public:
    /// Throws CommandError when the file cannot be written there; "-" is standard output.
    ValuesCsv(const std::string& path, const std::vector<std::string>& components);

    /// Writes one part in one state. A number reads back as the same value; an undefined one leaves its field empty.
    /// @param ids one for each item
    /// @param values item after item, as many doubles each as there are components
    void add(const std::string& state, const std::string& part, std::span<const int> ids,
             std::span<const double> values);

    /// Call it once, behind the last add(): without it there is no file.
    void commit();

private:
    OutputFile m_file;
    std::size_t m_dimension;
};

} // namespace orvapp
