#pragma once

#include <string>

namespace orvtest {

/// A file of one tetrahedron (element 50, of the material "STEEL, hard") on the nodes 11 to 14, and two states:
///   1 at time 0.5: DISP, D1 being -1 at node 11, 2.5 at 12 and 1.5 at 14, D2 and D3 being 0; nothing for node 13
///   2 at time 1:   NDTEMP, 20 at all nodes; ERROR, without rows
std::string tinyFrd();

} // namespace orvtest
