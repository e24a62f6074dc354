#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/CustomResultGenerator.h"
#include "OrvUnstructGrid/DataSourceMemory.h"

#include <cmath>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace orvtest {

/// Texts that tell all doubles apart, the two zeros included, but not one NaN from another.
inline std::vector<std::string> exact(const std::vector<double>& values) {
    std::vector<std::string> texts;
    for (double value : values) {
        char text[40];
        std::snprintf(text, sizeof(text), "%a", value);
        texts.push_back(std::isnan(value) ? "nan" : text);
    }
    return texts;
}

/// Elements as DataElements takes them.
struct ElementList {
    std::vector<orv::ug::ElementType> types;
    std::vector<std::uint32_t> nodes;
};

/// A custom result; takes the generator over.
inline orv::ug::ResultInfo customResult(orv::ug::ResultType type, orv::ug::ResultMapping mapping,
                                        std::vector<orv::ug::ResultInfo> arguments,
                                        orv::ug::CustomResultGenerator* generator) {
    return {type, "custom", mapping, arguments, generator};
}

/// A source in memory with one state, for generators to compute in. Parts are numbered through all geometries.
class GeneratorModel {
public:
    GeneratorModel() {
        source->addGeometry();
    }

    /// The parts that follow go to the new geometry.
    void addGeometry() {
        source->addGeometry();
        ++m_geometryCount;
    }

    void addPart(std::size_t nodeCount, ElementList elements) {
        const std::size_t geometry = m_geometryCount - 1;
        orv::ug::DataPart* part = source->addPart(geometry, "part");
        part->nodes()->set(std::vector<double>(3 * nodeCount), {});
        part->elements()->set(std::move(elements.types), std::move(elements.nodes), {});
        const std::size_t indexInGeometry =
            m_parts.empty() || m_parts.back().first != geometry ? 0 : m_parts.back().second + 1;
        m_parts.emplace_back(geometry, indexInGeometry);
    }

    /// A result of the source with the values of each part.
    orv::ug::ResultInfo add(orv::ug::ResultType type, orv::ug::ResultMapping mapping,
                            const std::vector<std::vector<double>>& valuesOfParts) {
        const orv::ug::ResultInfo info = source->addResult(type, "result", mapping);
        state();
        for (std::size_t p = 0; p < valuesOfParts.size(); ++p) {
            source->setValues(1, info, m_parts[p].first, m_parts[p].second, valuesOfParts[p], nullptr);
        }
        return info;
    }

    orv::ug::DataState* state() {
        if (source->stateCount() == 0) {
            source->addState(orv::ug::StateInfo(1, "state", orv::ug::StateInfo::TIME, 0));
        }
        return source->state(0);
    }

    bool generate(const orv::ug::ResultInfo& info) {
        return orv::ug::CustomResultGenerator::compute(source.get(), info, state());
    }

    std::size_t partCount() const {
        return m_parts.size();
    }

    orv::ug::DataPart* part(std::size_t index) {
        return state()->geometry(m_parts[index].first)->part(m_parts[index].second);
    }

    orv::ug::DataResultGroup* group(std::size_t partIndex) {
        return state()->results(state()->geometry(m_parts[partIndex].first));
    }

    /// One part's values; null when the result is not there.
    orv::ug::DataPartValues* partValues(const orv::ug::ResultInfo& info, std::size_t partIndex) {
        orv::ug::DataResult* result = group(partIndex)->find(info);
        return result ? result->values(m_parts[partIndex].second) : nullptr;
    }

    std::vector<double> values(const orv::ug::ResultInfo& info, std::size_t partIndex) {
        const orv::ug::DataPartValues* values = partValues(info, partIndex);
        return values ? std::vector<double>(values->span().begin(), values->span().end()) : std::vector<double>();
    }

    /// The minimum and maximum that the part of a scalar result tells.
    std::pair<double, double> range(const orv::ug::ResultInfo& info, std::size_t partIndex) {
        const auto* scalar = static_cast<orv::ug::DataPartScalar*>(partValues(info, partIndex));
        return {scalar->minimum(), scalar->maximum()};
    }

    orv::PtrRef<orv::ug::DataSourceMemory> source = new orv::ug::DataSourceMemory(1);

private:
    std::size_t m_geometryCount = 1;
    std::vector<std::pair<std::size_t, std::size_t>> m_parts; ///< Geometry and part in it.
};

} // namespace orvtest
