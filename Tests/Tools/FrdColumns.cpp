#include "Tests/Tools/FrdColumns.h"

#include <cstdlib>
#include <fstream>
#include <set>

namespace orvtest {

namespace {

std::string column(const std::string& line, std::size_t begin, std::size_t width) {
    return line.size() > begin ? line.substr(begin, width) : "";
}

int integer(const std::string& line, std::size_t begin, std::size_t width) {
    return std::atoi(column(line, begin, width).c_str());
}

} // namespace

NodeValues readBlock(const std::string& path, int state, const std::string& name) {
    std::ifstream file(path);
    std::string line;
    bool isState = false;
    bool isBlock = false;
    NodeValues values;
    while (std::getline(file, line)) {
        const std::string key = column(line, 0, 3);
        if (column(line, 2, 4) == "100C") {
            isState = integer(line, 58, 5) == state;
        } else if (key == " -4") {
            isBlock = isState && column(line, 5, 8).compare(0, name.size() + 1, name + ' ') == 0;
        } else if (key == " -3") {
            isBlock = false;
        } else if (isBlock && key == " -1") {
            std::vector<double>& item = values[integer(line, 3, 10)];
            for (std::size_t begin = 13; begin + 12 <= line.size(); begin += 12) {
                item.push_back(std::strtod(column(line, begin, 12).c_str(), nullptr));
            }
        }
    }
    return values;
}

std::vector<int> nodesOfMaterial(const std::string& path, int material) {
    std::ifstream file(path);
    std::string line;
    bool isElements = false;
    bool isMaterial = false;
    std::set<int> nodes;
    while (std::getline(file, line)) {
        const std::string key = column(line, 0, 3);
        if (column(line, 0, 6) == "    3C") {
            isElements = true;
        } else if (key == " -3") {
            isElements = false;
        } else if (isElements && key == " -1") {
            isMaterial = integer(line, 23, 5) == material;
        } else if (isElements && isMaterial && key == " -2") {
            for (std::size_t begin = 3; begin + 10 <= line.size(); begin += 10) {
                nodes.insert(integer(line, begin, 10));
            }
        }
    }
    return {nodes.begin(), nodes.end()};
}

Range range(const NodeValues& values, const std::vector<int>& nodes, std::size_t component) {
    const double first = values.at(nodes.front())[component];
    Range range{first, nodes.front(), first, nodes.front(), 0.0};
    for (const int node : nodes) {
        const double value = values.at(node)[component];
        if (value < range.min) {
            range.min = value;
            range.minAt = node;
        }
        if (value > range.max) {
            range.max = value;
            range.maxAt = node;
        }
        range.average += value / double(nodes.size());
    }
    return range;
}

} // namespace orvtest
