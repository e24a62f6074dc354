#pragma once

#include "OrvCore/Defines.h"
#include "Tests/OrvApp/GeneratorModel.h"

#include <cstdint>
#include <limits>
#include <random>
#include <vector>

namespace orvtest {

/// Random parts and values, the same on every machine.
class RandomMesh {
public:
    explicit RandomMesh(unsigned seed) : m_engine(seed) {}

    /// Parts of up to 30 nodes with up to 60 elements of all types, over several geometries. Some have no nodes, some
    /// no elements; nodes repeat within elements.
    void fill(GeneratorModel* model, std::size_t partCount) {
        for (std::size_t p = 0; p < partCount; ++p) {
            if (p > 0 && below(8) == 0) {
                model->addGeometry();
            }
            const std::uint32_t nodeCount = below(31);
            ElementList elements;
            for (std::uint32_t e = nodeCount > 0 ? below(61) : 0; e > 0; --e) {
                elements.types.push_back(static_cast<orv::ug::ElementType>(below(orv::ug::ELEMENT_TYPE_COUNT)));
                for (std::uint8_t n = orv::ug::elementTypeInfo(elements.types.back()).nodeCount; n > 0; --n) {
                    elements.nodes.push_back(below(nodeCount));
                }
            }
            model->addPart(nodeCount, elements);
        }
    }

    /// Numbers from -2 to 2 and, one in eight, one of those that break sloppy arithmetic.
    std::vector<double> values(std::size_t count) {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        const double special[] = {orv::UNDEFINED_DOUBLE,
                                  -orv::UNDEFINED_DOUBLE,
                                  infinity,
                                  -infinity,
                                  0.0,
                                  -0.0,
                                  5e-324,
                                  std::numeric_limits<double>::quiet_NaN()};
        std::vector<double> list;
        for (std::size_t i = 0; i < count; ++i) {
            list.push_back(below(8) == 0 ? special[below(8)] : below(1 << 30) * 0x1p-28 - 2);
        }
        return list;
    }

    orv::ug::ResultInfo addValues(GeneratorModel* model, orv::ug::ResultType type, orv::ug::ResultMapping mapping) {
        model->state();
        std::vector<std::vector<double>> valuesOfParts;
        for (std::size_t p = 0; p < model->partCount(); ++p) {
            valuesOfParts.push_back(values(model->part(p)->itemCount(mapping) * orv::ug::doublesPerItem(type)));
        }
        return model->add(type, mapping, valuesOfParts);
    }

private:
    std::uint32_t below(std::uint32_t bound) {
        return m_engine() % bound;
    }

    std::mt19937 m_engine;
};

} // namespace orvtest
