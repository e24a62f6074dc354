#pragma once

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace orvtest {

/// One table of the solver's print-out.
struct DatTable {
    struct Row {
        int id = 0; ///< The node's number, or the element's.
        std::vector<double> values;
    };

    std::string title; ///< Up to a bracket or "for", such as "displacements".
    std::vector<Row> rows;
};

/// Reads the tables of a print-out that have a given title. In tables by element the point's number is left out.
inline std::vector<DatTable> readDat(const std::string& filename, const std::string& title, bool byElement = false) {
    std::vector<DatTable> tables;
    std::ifstream file(filename);
    for (std::string line; std::getline(file, line);) {
        if (line.find_first_not_of(" -+.0123456789E") != std::string::npos) {
            const bool isWanted = line.starts_with(" " + title + " (") || line.starts_with(" " + title + " for");
            tables.push_back({isWanted ? title : std::string(), {}});
            continue;
        }
        std::istringstream words(line);
        DatTable::Row row;
        double point = 0.0;
        if (!tables.empty() && words >> row.id && (!byElement || words >> point)) {
            for (double value; words >> value;) {
                row.values.push_back(value);
            }
            tables.back().rows.push_back(row);
        }
    }
    std::erase_if(tables, [](const DatTable& table) { return table.title.empty(); });
    return tables;
}

} // namespace orvtest
