#include "OrvImportCae/CaeMeshDifference.h"

#include "OrvImportCae/CaeNumber.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace orv::imp::cae {
namespace {

constexpr double COORDINATE_TOLERANCE = 1e-5;

bool isSameCoordinate(double a, double b) {
    const bool areBothNaN = std::isnan(a) && std::isnan(b);
    return a == b || areBothNaN || std::abs(a - b) <= COORDINATE_TOLERANCE * std::max(std::abs(a), std::abs(b));
}

std::string placeText(const ug::DataNodes& nodes, std::size_t index) {
    const Vec3d place = nodes.node(index);
    return "at (" + caeNumberText(place.x()) + ", " + caeNumberText(place.y()) + ", " + caeNumberText(place.z()) + ")";
}

/// Looks at two meshes side by side.
class Comparer {
public:
    Comparer(const CaeMesh& further, const CaeMesh& open) : m_further(further), m_open(open) {}

    Str run() const {
        const std::size_t furtherCount = m_further.geometry->partCount();
        const std::size_t openCount = m_open.geometry->partCount();
        if (furtherCount != openCount) {
            return tell("there are", std::to_string(furtherCount) + " parts", std::to_string(openCount));
        }
        for (std::size_t p = 0; p < openCount; ++p) {
            const std::string name = "part '" + m_open.parts[p].name().toStdString() + "'";
            const ug::DataPart& further = *m_further.geometry->part(p);
            const ug::DataPart& open = *m_open.geometry->part(p);
            Str text = compareNodes(name, *further.nodes(), *open.nodes());
            text = text.isEmpty() ? compareElements(name, further, open) : text;
            if (!text.isEmpty()) {
                return text;
            }
        }
        return Str();
    }

private:
    Str compareNodes(const std::string& part, const ug::DataNodes& further, const ug::DataNodes& open) const {
        if (further.nodeCount() != open.nodeCount()) {
            return tell(part + " has", std::to_string(further.nodeCount()) + " nodes",
                        std::to_string(open.nodeCount()));
        }
        for (std::size_t i = 0; i < open.nodeCount(); ++i) {
            if (further.nodeId(i) != open.nodeId(i)) {
                return tell("node " + std::to_string(i + 1) + " of " + part + " bears",
                            "the number " + std::to_string(further.nodeId(i)), std::to_string(open.nodeId(i)));
            }
            if (!std::equal(&further.coordinates()[3 * i], &further.coordinates()[3 * i] + 3,
                            &open.coordinates()[3 * i], isSameCoordinate)) {
                return tell("node " + std::to_string(open.nodeId(i)) + " is", placeText(further, i),
                            placeText(open, i));
            }
        }
        return Str();
    }

    Str compareElements(const std::string& part, const ug::DataPart& furtherPart, const ug::DataPart& openPart) const {
        const ug::DataElements& further = *furtherPart.elements();
        const ug::DataElements& open = *openPart.elements();
        if (further.elementCount() != open.elementCount()) {
            return tell(part + " has", std::to_string(further.elementCount()) + " elements",
                        std::to_string(open.elementCount()));
        }
        for (std::size_t i = 0; i < open.elementCount(); ++i) {
            if (further.elementId(i) != open.elementId(i)) {
                return tell("element " + std::to_string(i + 1) + " of " + part + " bears",
                            "the number " + std::to_string(further.elementId(i)), std::to_string(open.elementId(i)));
            }
            const std::string element = "element " + std::to_string(open.elementId(i));
            if (further.elementType(i) != open.elementType(i)) {
                return tell(element + " is of the type", ug::elementTypeInfo(further.elementType(i)).name,
                            ug::elementTypeInfo(open.elementType(i)).name);
            }
            const std::span<const std::uint32_t> furtherNodes = further.nodeIndexes(i);
            const std::span<const std::uint32_t> openNodes = open.nodeIndexes(i);
            const auto [a, b] = std::mismatch(furtherNodes.begin(), furtherNodes.end(), openNodes.begin());
            if (a != furtherNodes.end()) {
                // Its number, which is the same in both files as far as nodes go.
                return tell(element + " has as its node " + std::to_string(a - furtherNodes.begin() + 1),
                            std::to_string(openPart.nodes()->nodeId(*a)), std::to_string(openPart.nodes()->nodeId(*b)));
            }
        }
        return Str();
    }

    Str tell(const std::string& subject, const std::string& inFurther, const std::string& inOpen) const {
        return Str(subject + " " + inFurther) + " in \"" + m_further.filename + "\" and " + Str(inOpen) + " in \"" +
               m_open.filename + "\"";
    }

    const CaeMesh& m_further;
    const CaeMesh& m_open;
};

} // namespace

Str tellMeshDifference(const CaeMesh& further, const CaeMesh& open) {
    return Comparer(further, open).run();
}

} // namespace orv::imp::cae
