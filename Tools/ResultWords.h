#pragma once

#include "OrvUnstructGrid/ResultType.h"
#include "OrvUnstructGrid/StateInfo.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvapp {

/// How the tables and the JSON spell the enumerations of the data model.

/// "scalar", "vector", "displacement", "tensor", otherwise "unknown".
const char* typeWord(orv::ug::ResultType type);

/// "node", "element", "element_node", "element_surface", otherwise "unknown".
const char* mappingWord(orv::ug::ResultMapping mapping);

/// The enumerators that the two words stand for: NO_RESULT_TYPE and UNKNOWN_MAPPING for any other word.
orv::ug::ResultType typeOfWord(std::string_view word);
orv::ug::ResultMapping mappingOfWord(std::string_view word);

/// "time", "frequency", "loadcase", otherwise "state".
const char* referenceTypeWord(orv::ug::StateInfo::ReferenceType type);

/// Whose number names the place of a value: "element" for all mappings but the one to nodes.
const char* placeWord(orv::ug::ResultMapping mapping);

/// One for each double of an item: "value"; X Y Z; or XX YY ZZ XY YZ ZX.
std::vector<std::string> componentNames(orv::ug::ResultType type);

} // namespace orvapp
