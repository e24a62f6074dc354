#include "OrvImportMed/MedComponents.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <span>
#include <string_view>

namespace orv::imp::cae {
namespace {

constexpr std::string_view TENSOR_AXES[] = {"XX", "YY", "ZZ", "XY", "YZ", "XZ"};
constexpr std::string_view VECTOR_AXES[] = {"X", "Y", "Z"};

/// A kind of result and how its components are called.
struct Gathering {
    ug::ResultType type;
    std::span<const std::string_view> axes; ///< In the order of our items.
    std::size_t requiredCount;              ///< So many of the axes have to be there; the others are 0 when missing.
    std::string_view stem;                  ///< What stands before the axis; any stem when it is ANY_STEM.
    bool takesWholeField;                   ///< Only when no other component is there.
};

constexpr std::string_view ANY_STEM = "*";

constexpr Gathering GATHERINGS[] = {
    {ug::SYMMETRIC_TENSOR, TENSOR_AXES, 4, ANY_STEM, false},
    {ug::DISPLACEMENT, VECTOR_AXES, 2, "D", false},
    {ug::VECTOR, VECTOR_AXES, 3, ANY_STEM, true},
};

/// Fields of code_aster with the components DX, DY, DZ that are no displacements: velocities, accelerations, forces.
constexpr std::string_view NO_DISPLACEMENTS[] = {"VITE",      "ACCE",      "VITE_ABSOLU", "ACCE_ABSOLU",
                                                 "FORC_NODA", "REAC_NODA", "FORC_EXTE"};

bool isDisplacement(std::string_view field) {
    return std::none_of(std::begin(NO_DISPLACEMENTS), std::end(NO_DISPLACEMENTS),
                        [field](std::string_view quantity) { return field.ends_with(quantity); });
}

/// One field while its components are handed out.
class Gatherer {
public:
    Gatherer(const std::string& field, const std::vector<std::string>& components)
        : m_field(field), m_components(components), m_isTaken(components.size(), false) {}

    std::vector<MedColumns> run() {
        if (isNamelessVector()) {
            return {{m_field, ug::VECTOR, {0, 1, 2}}};
        }
        for (std::size_t i = 0; i < m_components.size(); ++i) {
            if (!m_isTaken[i] && !gather(i)) {
                addScalar(i);
            }
        }
        return std::move(m_results);
    }

private:
    bool isNamelessVector() const {
        return m_components.size() == 3 && std::all_of(m_components.begin(), m_components.end(),
                                                       [](const std::string& name) { return name.empty(); });
    }

    // Makes a result of the component and what belongs to it.
    bool gather(std::size_t component) {
        for (const Gathering& gathering : GATHERINGS) {
            if (gathering.takesWholeField && m_components.size() != gathering.axes.size()) {
                continue;
            }
            for (const std::string_view axis : gathering.axes) {
                const std::string_view name = m_components[component];
                if (!name.ends_with(axis)) {
                    continue;
                }
                const std::string stem(name.substr(0, name.size() - axis.size()));
                if ((gathering.stem == ANY_STEM || gathering.stem == stem) && take(gathering, stem)) {
                    return true;
                }
            }
        }
        return false;
    }

    bool take(const Gathering& gathering, const std::string& stem) {
        std::vector<int> columns;
        for (std::size_t i = 0; i < gathering.axes.size(); ++i) {
            columns.push_back(find(stem + std::string(gathering.axes[i])));
            if (columns.back() == MedColumns::ZERO && i < gathering.requiredCount) {
                return false;
            }
        }
        for (const int column : columns) {
            if (column != MedColumns::ZERO) {
                m_isTaken[std::size_t(column)] = true;
            }
        }
        const bool isFirst = m_isTaken.front() && m_results.empty();
        const ug::ResultType type =
            gathering.type == ug::DISPLACEMENT && !isDisplacement(m_field) ? ug::VECTOR : gathering.type;
        m_results.push_back({isFirst ? m_field : m_field + "." + (stem.empty() ? "tensor" : stem), type, columns});
        return true;
    }

    int find(const std::string& name) const {
        for (std::size_t i = 0; i < m_components.size(); ++i) {
            if (!m_isTaken[i] && m_components[i] == name) {
                return int(i);
            }
        }
        return MedColumns::ZERO;
    }

    void addScalar(std::size_t component) {
        m_isTaken[component] = true;
        const std::string& name = m_components[component];
        const bool isFree = !name.empty() && m_names.insert(name).second;
        const std::string suffix = "." + (isFree ? name : std::to_string(component + 1));
        m_results.push_back({m_components.size() == 1 ? m_field : m_field + suffix, ug::SCALAR, {int(component)}});
    }

    const std::string& m_field;
    const std::vector<std::string>& m_components;
    std::vector<bool> m_isTaken;
    std::set<std::string> m_names;
    std::vector<MedColumns> m_results;
};

} // namespace

std::vector<MedColumns> gatherMedComponents(const std::string& field, const std::vector<std::string>& components) {
    return Gatherer(field, components).run();
}

} // namespace orv::imp::cae
