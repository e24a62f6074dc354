#include "Tools/ValuesCsv.h"

#include "OrvCore/Defines.h"
#include "Tools/NumberText.h"

namespace orvapp {

std::string csvField(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        return std::string(text);
    }
    std::string field = "\"";
    for (const char c : text) {
        field += c == '"' ? "\"\"" : std::string(1, c);
    }
    return field + '"';
}

ValuesCsv::ValuesCsv(const std::string& path, const std::vector<std::string>& components)
    : m_file(path), m_dimension(components.size()) {
    std::string header = "state,part,id";
    for (const std::string& component : components) {
        header += ',' + component;
    }
    m_file.write(header + '\n');
}

void ValuesCsv::add(const std::string& state, const std::string& part, std::span<const int> ids,
                    std::span<const double> values) {
    const std::string place = csvField(state) + ',' + csvField(part) + ',';
    std::string line;
    for (std::size_t item = 0; item < ids.size(); ++item) {
        line = place;
        line += std::to_string(ids[item]);
        for (const double value : values.subspan(item * m_dimension, m_dimension)) {
            line += ',';
            if (value != orv::UNDEFINED_DOUBLE) {
                line += shortestNumber(value);
            }
        }
        line += '\n';
        m_file.write(line);
    }
}

void ValuesCsv::commit() {
    m_file.commit();
}

} // namespace orvapp
