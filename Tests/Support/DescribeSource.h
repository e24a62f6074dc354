#pragma once

#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/DataSourceInterface.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"

#include <bit>
#include <cstdint>
#include <map>
#include <span>
#include <sstream>
#include <string>

namespace orvtest {

/// Writes down all that a source has, values bit by bit: equal texts mean equal sources. Geometries go by numbers in
/// the order in which states bring them up, so that sharing shows. The file's name is left out.
class SourceDescription {
public:
    explicit SourceDescription(orv::ug::DataSource* source) : m_source(source) {}

    std::string text() {
        const orv::ug::DataSourceDirectory& directory = *m_source->directory();
        m_out << "title " << directory.simulationInfo().title() << "\n";
        for (std::size_t g = 0; g < directory.geometryCountPerState(); ++g) {
            m_out << "geometry " << g << "\n";
            for (const orv::ug::PartInfo& info : directory.partInfos(g)) {
                m_out << "part " << info.id() << " '" << info.name() << "'\n";
            }
        }
        for (const orv::ug::ResultType type : TYPES) {
            for (const orv::ug::ResultInfo& info : directory.resultInfos(type)) {
                m_out << "result " << type << " " << info.id() << " '" << info.name() << "' " << info.resultMapping()
                      << " of " << info.baseResultType() << " " << info.baseResultId() << "\n";
            }
        }
        for (const orv::ug::StateGroupInfo& group : directory.stateGroupInfos()) {
            m_out << "group";
            for (std::size_t i = 0; i < group.stateCount(); ++i) {
                m_out << " " << group.stateId(i);
            }
            m_out << "\n";
        }
        for (std::size_t i = 0; i < m_source->stateCount(); ++i) {
            describeState(directory.stateInfo(i), m_source->state(i));
        }
        return m_out.str();
    }

private:
    static constexpr orv::ug::ResultType TYPES[] = {orv::ug::SCALAR, orv::ug::VECTOR, orv::ug::DISPLACEMENT,
                                                    orv::ug::SYMMETRIC_TENSOR};

    void describeState(const orv::ug::StateInfo& info, orv::ug::DataState* state) {
        m_out << "state " << info.id() << " '" << info.name() << "' " << info.referenceType() << " ";
        const double value[] = {info.referenceValue()};
        describeNumbers(value);
        for (std::size_t g = 0; g < state->geometryCount(); ++g) {
            describeGeometry(*state->geometry(g));
        }
        for (const orv::ug::ResultType type : TYPES) {
            for (const orv::ug::ResultInfo& result : m_source->directory()->resultInfos(type)) {
                if (m_source->directory()->hasResult(info.id(), result)) {
                    describeResult(state, result);
                }
            }
        }
    }

    void describeGeometry(const orv::ug::DataGeometry& geometry) {
        const auto [found, isNew] = m_geometries.try_emplace(geometry.id(), m_geometries.size());
        m_out << "has geometry " << found->second << "\n";
        for (std::size_t p = 0; isNew && p < geometry.partCount(); ++p) {
            const orv::ug::DataPart& part = *geometry.part(p);
            m_out << "part " << part.partId() << "\nnodes ";
            describeNumbers(part.nodes()->coordinates());
            for (std::size_t i = 0; i < part.nodes()->nodeCount(); ++i) {
                m_out << part.nodes()->nodeId(i) << " ";
            }
            for (std::size_t i = 0; i < part.elements()->elementCount(); ++i) {
                m_out << "\nelement " << part.elements()->elementId(i) << " " << int(part.elements()->elementType(i));
                for (const std::uint32_t node : part.elements()->nodeIndexes(i)) {
                    m_out << " " << node;
                }
            }
            m_out << "\n";
        }
    }

    void describeResult(orv::ug::DataState* state, const orv::ug::ResultInfo& info) {
        orv::ug::DataStateSpec spec;
        spec.setResultIds({info});
        orv::ug::Error error;
        m_out << "values of " << info.type() << " " << info.id() << "\n";
        if (!dynamic_cast<orv::ug::DataSourceInterface*>(m_source)->loadDataState(state->id(), spec, &error)) {
            m_out << "FAILED " << error.message() << "\n";
            return;
        }
        for (std::size_t g = 0; g < state->geometryCount(); ++g) {
            orv::ug::DataResult* result = state->results(state->geometry(g))->find(info);
            for (std::size_t p = 0; p < result->partCount(); ++p) {
                describeNumbers(result->values(p)->span());
                if (auto* scalar = dynamic_cast<orv::ug::DataResultScalar*>(result)) {
                    const double range[] = {scalar->part(p)->minimum(), scalar->part(p)->maximum()};
                    describeNumbers(range);
                }
            }
        }
    }

    void describeNumbers(std::span<const double> numbers) {
        m_out << std::hex;
        for (const double number : numbers) {
            m_out << std::bit_cast<std::uint64_t>(number) << " ";
        }
        m_out << std::dec << "\n";
    }

    orv::ug::DataSource* m_source;
    std::ostringstream m_out;
    std::map<int, std::size_t> m_geometries;
};

inline std::string described(orv::ug::DataSource* source) {
    return SourceDescription(source).text();
}

} // namespace orvtest
