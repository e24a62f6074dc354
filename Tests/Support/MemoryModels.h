#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/DataSourceMemory.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orvtest {

/// A part of `cubeCount` unit cubes in a row along x, from `x` on: 4 nodes in each plane, 8 nodes to a cube.
inline void fillWithCubes(orv::ug::DataPart* part, std::size_t cubeCount, double x) {
    std::vector<double> coordinates;
    for (std::size_t plane = 0; plane <= cubeCount; ++plane) {
        const double at = x + static_cast<double>(plane);
        coordinates.insert(coordinates.end(), {at, 0, 0, at, 1, 0, at, 1, 1, at, 0, 1});
    }
    std::vector<std::uint32_t> connectivity;
    for (std::uint32_t cube = 0; cube < cubeCount; ++cube) {
        // The plane at the lower x is the bottom: seen from the other one its nodes run counter-clockwise.
        for (std::uint32_t node = 0; node < 8; ++node) {
            connectivity.push_back(4 * cube + node);
        }
    }
    part->nodes()->set(std::move(coordinates), {});
    part->elements()->set(std::vector<orv::ug::ElementType>(cubeCount, orv::ug::HEXAHEDRON), std::move(connectivity),
                          {});
}

/// The number that MemoryModel sets, one for each double: ten thousands tell the result's id, thousands the state,
/// hundreds the result's type, tens the part (counted through all geometries), ones the item (its last digit) and
/// tenths the component.
inline double modelValue(int stateId, const orv::ug::ResultInfo& info, std::size_t part, std::size_t item,
                         std::size_t component) {
    return 10000.0 * info.id() + 1000.0 * stateId + 100.0 * static_cast<int>(info.type()) +
           10.0 * static_cast<double>(part) + static_cast<double>(item % 10) + 0.1 * static_cast<double>(component);
}

/// A source in memory, named "memory.model", to navigate and compute in:
///
/// | geometry | parts: cubes in them |
/// |---|---|
/// | 0 | "Base" 1, "Column" 2, "Roof" 1 |
/// | 1 | "Bolt" 1, "Nut" 3 |
///
/// States with ids 1, 2, 3, named "Step 1" and so on, at the times 0.5, 1.0, 1.5. All results exist in all states but
/// for "Velocity", which state 1 lacks; state 3 also lacks "Pressure". Values are those of modelValue().
struct MemoryModel {
    orv::PtrRef<orv::ug::DataSourceMemory> source;

    orv::ug::ResultInfo temperature;  ///< Scalar per node, id 1.
    orv::ug::ResultInfo pressure;     ///< Scalar per element, id 2.
    orv::ug::ResultInfo velocity;     ///< Vector per node, id 1.
    orv::ug::ResultInfo displacement; ///< Displacement per node, id 1, named "Motion".
    orv::ug::ResultInfo stress;       ///< Symmetric tensor per element, id 1.

    explicit MemoryModel(int sourceId = 1) : source(new orv::ug::DataSourceMemory(sourceId)) {
        using namespace orv::ug;
        source->setName("memory.model");
        addGeometry({{"Base", 1}, {"Column", 2}, {"Roof", 1}});
        addGeometry({{"Bolt", 1}, {"Nut", 3}});
        for (int id = 1; id <= 3; ++id) {
            source->addState(StateInfo(id, "Step " + std::to_string(id), StateInfo::TIME, 0.5 * id));
        }
        temperature = source->addResult(SCALAR, "Temperature", PER_NODE);
        pressure = source->addResult(SCALAR, "Pressure", PER_ELEMENT);
        velocity = source->addResult(VECTOR, "Velocity", PER_NODE);
        displacement = source->addResult(DISPLACEMENT, "Motion", PER_NODE);
        stress = source->addResult(SYMMETRIC_TENSOR, "Stress", PER_ELEMENT);
        for (int id = 1; id <= 3; ++id) {
            setAllValues(id, temperature);
            setAllValues(id, displacement);
            setAllValues(id, stress);
        }
        setAllValues(1, pressure);
        setAllValues(2, pressure);
        setAllValues(2, velocity);
        setAllValues(3, velocity);
    }

    orv::ug::DataState* state(int id) {
        return source->state(source->stateIndex(id));
    }

    /// Sets modelValue() on all parts.
    void setAllValues(int stateId, const orv::ug::ResultInfo& info) {
        std::size_t partInModel = 0;
        for (std::size_t g = 0; g < state(stateId)->geometryCount(); ++g) {
            const orv::ug::DataGeometry* geometry = state(stateId)->geometry(g);
            for (std::size_t p = 0; p < geometry->partCount(); ++p, ++partInModel) {
                setPartValues(stateId, info, g, p, partInModel);
            }
        }
    }

private:
    struct Part {
        const char* name;
        std::size_t cubeCount;
    };

    void addGeometry(const std::vector<Part>& parts) {
        const std::size_t geometry = source->directory()->geometryCountPerState();
        source->addGeometry();
        for (std::size_t p = 0; p < parts.size(); ++p) {
            fillWithCubes(source->addPart(geometry, parts[p].name), parts[p].cubeCount, 10.0 * static_cast<double>(p));
        }
    }

    void setPartValues(int stateId, const orv::ug::ResultInfo& info, std::size_t geometry, std::size_t part,
                       std::size_t partInModel) {
        const std::size_t itemCount = state(stateId)->geometry(geometry)->part(part)->itemCount(info.resultMapping());
        std::vector<double> values;
        for (std::size_t item = 0; item < itemCount; ++item) {
            for (std::size_t c = 0; c < orv::ug::doublesPerItem(info.type()); ++c) {
                values.push_back(modelValue(stateId, info, partInModel, item, c));
            }
        }
        source->setValues(stateId, info, geometry, part, values, nullptr);
    }
};

} // namespace orvtest
