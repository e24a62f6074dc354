#include "Tools/ResultWords.h"

namespace orvapp {

const char* typeWord(orv::ug::ResultType type) {
    switch (type) {
    case orv::ug::SCALAR:
        return "scalar";
    case orv::ug::VECTOR:
        return "vector";
    case orv::ug::DISPLACEMENT:
        return "displacement";
    case orv::ug::SYMMETRIC_TENSOR:
        return "tensor";
    case orv::ug::NO_RESULT_TYPE:
        break;
    }
    return "unknown";
}

const char* mappingWord(orv::ug::ResultMapping mapping) {
    switch (mapping) {
    case orv::ug::PER_NODE:
        return "node";
    case orv::ug::PER_ELEMENT:
        return "element";
    case orv::ug::PER_ELEMENT_NODE:
        return "element_node";
    case orv::ug::PER_ELEMENT_SURFACE:
        return "element_surface";
    case orv::ug::UNKNOWN_MAPPING:
        break;
    }
    return "unknown";
}

orv::ug::ResultType typeOfWord(std::string_view word) {
    for (const auto type : {orv::ug::SCALAR, orv::ug::VECTOR, orv::ug::DISPLACEMENT, orv::ug::SYMMETRIC_TENSOR}) {
        if (word == typeWord(type)) {
            return type;
        }
    }
    return orv::ug::NO_RESULT_TYPE;
}

orv::ug::ResultMapping mappingOfWord(std::string_view word) {
    for (const auto mapping :
         {orv::ug::PER_NODE, orv::ug::PER_ELEMENT, orv::ug::PER_ELEMENT_NODE, orv::ug::PER_ELEMENT_SURFACE}) {
        if (word == mappingWord(mapping)) {
            return mapping;
        }
    }
    return orv::ug::UNKNOWN_MAPPING;
}

const char* referenceTypeWord(orv::ug::StateInfo::ReferenceType type) {
    switch (type) {
    case orv::ug::StateInfo::TIME:
        return "time";
    case orv::ug::StateInfo::FREQUENCY:
        return "frequency";
    case orv::ug::StateInfo::LOAD_CASE:
        return "loadcase";
    }
    return "state";
}

const char* placeWord(orv::ug::ResultMapping mapping) {
    return mapping == orv::ug::PER_NODE ? "node" : "element";
}

std::vector<std::string> componentNames(orv::ug::ResultType type) {
    switch (type) {
    case orv::ug::SCALAR:
        return {"value"};
    case orv::ug::VECTOR:
    case orv::ug::DISPLACEMENT:
        return {"X", "Y", "Z"};
    case orv::ug::SYMMETRIC_TENSOR:
        return {"XX", "YY", "ZZ", "XY", "YZ", "ZX"};
    case orv::ug::NO_RESULT_TYPE:
        break;
    }
    return {};
}

} // namespace orvapp
