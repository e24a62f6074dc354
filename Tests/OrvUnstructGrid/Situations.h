#pragma once

#include "OrvCore/PropertySetCollection.h"
#include "OrvUnstructGrid/Situation.h"
#include "OrvUnstructGrid/ZtfWords_p.h"

#include <bit>
#include <cstdint>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

namespace orvtest {

/// Writes a property down by the index of its kind and its value, numbers bit by bit.
struct PropertyDescription {
    std::string operator()(int value) const {
        return "int " + std::to_string(value);
    }
    std::string operator()(bool value) const {
        return value ? "true" : "false";
    }
    std::string operator()(double value) const {
        std::ostringstream out;
        out << "double " << std::hex << std::bit_cast<std::uint64_t>(value);
        return out.str();
    }
    std::string operator()(const orv::Str& value) const {
        return "text" + std::to_string(value.size()) + orv::ug::quotedZtfText(value);
    }
    std::string operator()(const orv::Vec3d& value) const {
        return "vector " + (*this)(std::vector<double>{value.x(), value.y(), value.z()});
    }
    std::string operator()(const std::vector<double>& value) const {
        std::string text = "numbers";
        for (const double number : value) {
            text += " " + (*this)(number);
        }
        return text;
    }
};

/// Writes down all that a situation holds; equal texts mean equal situations.
inline std::string described(const orv::ug::Situation& situation) {
    std::ostringstream out;
    const PropertyDescription describe;
    out << describe(situation.name()) << "\n"
        << describe(situation.description()) << "\n"
        << describe(situation.sourceModelFile()) << "\n";
    const orv::PropertySetCollection* collection = situation.propertyCollection();
    out << (collection ? "properties\n" : "no properties\n");
    for (std::size_t i = 0; collection && i < collection->count(); ++i) {
        out << " set " << describe(collection->propertySet(i)->classType()) << "\n";
        for (const auto& [key, value] : collection->propertySet(i)->values()) {
            out << "  " << describe(key) << " " << std::visit(describe, value) << "\n";
        }
    }
    for (const auto& [key, value] : situation.allUserData()) {
        out << describe(key) << " = " << describe(value) << "\n";
    }
    out << situation.unknownXml();
    return out.str();
}

} // namespace orvtest
