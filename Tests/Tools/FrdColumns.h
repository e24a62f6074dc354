#pragma once

#include <map>
#include <string>
#include <vector>

namespace orvtest {

/// What a result block of an ASCII .frd file says, read by columns in the plainest way: an independent source of the
/// numbers that the command is to print.
using NodeValues = std::map<int, std::vector<double>>;

/// The block of that name in the state with that number: node number to stored components.
NodeValues readBlock(const std::string& path, int state, const std::string& name);

/// The nodes of the elements of one material, ascending: what the reader makes a part of.
std::vector<int> nodesOfMaterial(const std::string& path, int material);

/// What can be said of one component of a block on some of its nodes.
struct Range {
    double min;
    int minAt;
    double max;
    int maxAt;
    double average;
};

/// The first node with the smallest and with the largest value, in the order of the nodes given.
Range range(const NodeValues& values, const std::vector<int>& nodes, std::size_t component);

} // namespace orvtest
