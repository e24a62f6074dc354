#include "OrvImportCae/MshResults.h"

#include "OrvImportCae/MshData.h"

#include <cstdio>
#include <set>
#include <tuple>
#include <utility>

namespace orv::imp::cae {
namespace {

ug::ResultType typeOf(const MshDataSection& section) {
    switch (section.componentCount) {
    case 1:
        return ug::SCALAR;
    case 3: {
        const Str name = Str(section.name).toLower();
        const std::string text = name.toStdString();
        const bool isDisplacement = text.find("displacement") != std::string::npos || text == "disp" || text == "u";
        return isDisplacement ? ug::DISPLACEMENT : ug::VECTOR;
    }
    case MSH_TENSOR_COMPONENTS:
        return ug::SYMMETRIC_TENSOR;
    default:
        return ug::NO_RESULT_TYPE;
    }
}

std::string stateName(std::int64_t step, double time, int id, std::set<std::string>* taken) {
    char text[80];
    std::snprintf(text, sizeof text, "Step %lld, time %.7g", static_cast<long long>(step), time);
    std::string name = text;
    if (!taken->insert(name).second) {
        name += " (state " + std::to_string(id) + ")";
    }
    return name;
}

/// Gathers what belongs together.
class ResultGatherer {
public:
    ResultGatherer(const CaeFile& file, const MshSections& sections, std::vector<std::string>* warnings)
        : m_file(file), m_sections(sections), m_warnings(*warnings) {}

    MshResults run() {
        for (std::size_t i = 0; i < m_sections.data.size(); ++i) {
            const MshDataSection& section = m_sections.data[i];
            const ug::ResultType type = typeOf(section);
            if (type == ug::NO_RESULT_TYPE) {
                leaveOut(section, "has " + std::to_string(section.componentCount) + " components");
            } else if (type == ug::SYMMETRIC_TENSOR && !startsSymmetric(section)) {
                leaveOut(section, "has tensors that are not symmetric");
            } else {
                m_sectionsOf[{section.step, section.time}][resultIndex(section, type)].push_back(i);
            }
        }
        makeStates();
        return std::move(m_results);
    }

private:
    using Key = std::tuple<std::string, ug::ResultMapping, ug::ResultType>;

    void leaveOut(const MshDataSection& section, const std::string& reason) {
        m_warnings.push_back(m_file.place(section.header) + ": " + quotedForPeople(section.name) + " " + reason +
                             " and is left out");
    }

    bool startsSymmetric(const MshDataSection& section) const {
        return startsWithSymmetricTensors(m_file, m_sections.isBinary, section);
    }

    std::size_t resultIndex(const MshDataSection& section, ug::ResultType type) {
        const auto [found, isNew] =
            m_indexes.try_emplace({section.name, section.mapping, type}, m_results.infos.size());
        if (isNew) {
            const Str name(section.name.empty() ? mshSectionName(section.mapping) : section.name);
            m_results.infos.emplace_back(type, int(found->second) + 1, name, section.mapping);
        }
        return found->second;
    }

    void makeStates() {
        std::set<std::string> names;
        for (auto& [key, sections] : m_sectionsOf) {
            const int id = int(m_results.states.size()) + 1;
            const auto& [step, time] = key;
            const Str name(stateName(step, time, id, &names));
            m_results.states.push_back({ug::StateInfo(id, name, ug::StateInfo::TIME, time), std::move(sections)});
        }
        if (m_results.states.empty()) {
            m_results.states.push_back({ug::StateInfo(1, "Mesh", ug::StateInfo::TIME, 0.0), {}});
        }
    }

    const CaeFile& m_file;
    const MshSections& m_sections;
    std::vector<std::string>& m_warnings;
    std::map<Key, std::size_t> m_indexes;
    std::map<std::pair<std::int64_t, double>, std::map<std::size_t, std::vector<std::size_t>>> m_sectionsOf;
    MshResults m_results;
};

} // namespace

MshResults makeMshResults(const CaeFile& file, const MshSections& sections, std::vector<std::string>* warnings) {
    return ResultGatherer(file, sections, warnings).run();
}

} // namespace orv::imp::cae
