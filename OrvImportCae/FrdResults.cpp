#include "OrvImportCae/FrdResults.h"

#include "OrvCore/Defines.h"
#include "OrvImportCae/CaeReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr int VECTOR_ENTITY = 2;
constexpr int TENSOR_ENTITY = 4;
constexpr int VALUE_DIGITS = 7;

bool allAre(const FrdLayout& layout, int entity) {
    return std::all_of(layout.components.begin(), layout.components.end(),
                       [entity](const FrdComponent& component) { return component.entity == entity; });
}

// The place of a tensor's component in our items, from the axes at the end of its name; 6 for any other name.
std::size_t tensorItem(const std::string& name) {
    constexpr std::string_view AXES[][2] = {{"XX", "XX"}, {"YY", "YY"}, {"ZZ", "ZZ"},
                                            {"XY", "YX"}, {"YZ", "ZY"}, {"ZX", "XZ"}};
    for (std::size_t i = 0; i < 6; ++i) {
        if (name.ends_with(AXES[i][0]) || name.ends_with(AXES[i][1])) {
            return i;
        }
    }
    return 6;
}

// Column numbers by item, when `itemOf` gives each of the items 0, 1, ... once; otherwise nothing.
template <class ItemOf>
std::vector<std::uint32_t> columnsByItem(const FrdLayout& layout, ItemOf itemOf) {
    const std::size_t count = layout.components.size();
    std::vector<std::uint32_t> columns(count, std::uint32_t(count));
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t item = itemOf(layout.components[i]);
        if (item >= count || columns[item] != count) {
            return {};
        }
        columns[item] = std::uint32_t(i);
    }
    return columns;
}

std::vector<std::uint32_t> vectorColumns(const FrdLayout& layout) {
    if (layout.components.size() != 3 || !allAre(layout, VECTOR_ENTITY)) {
        return {};
    }
    return columnsByItem(layout, [](const FrdComponent& component) { return std::size_t(component.index - 1); });
}

std::vector<std::uint32_t> tensorColumns(const FrdLayout& layout) {
    if (layout.components.size() != 6 || !allAre(layout, TENSOR_ENTITY)) {
        return {};
    }
    return columnsByItem(layout, [](const FrdComponent& component) { return tensorItem(component.name); });
}

/// Gives results their ids, from 1 for each type, in the order in which blocks bring them up.
class ResultRegister {
public:
    std::size_t find(ug::ResultType type, const std::string& name) {
        const auto [found, isNew] = m_results.try_emplace({type, name}, m_infos.size());
        if (isNew) {
            m_infos.emplace_back(type, ++m_lastIds[type], Str(name), ug::PER_NODE);
        }
        return found->second;
    }

    std::vector<ug::ResultInfo> take() {
        return std::move(m_infos);
    }

private:
    std::map<std::pair<ug::ResultType, std::string>, std::size_t> m_results;
    std::vector<ug::ResultInfo> m_infos;
    std::array<int, ug::SYMMETRIC_TENSOR + 1> m_lastIds = {};
};

std::vector<FrdColumns> scalarsOf(const FrdLayout& layout, ResultRegister& results) {
    std::vector<FrdColumns> scalars;
    std::set<std::string> taken;
    for (std::size_t i = 0; i < layout.components.size(); ++i) {
        // Without a name of its own a component goes by its number.
        const std::string& name = layout.components[i].name;
        const bool isFree = !name.empty() && taken.insert(name).second;
        const std::string component = isFree ? name : std::to_string(i + 1);
        scalars.push_back({results.find(ug::SCALAR, layout.name + "." + component), {std::uint32_t(i)}});
    }
    return scalars;
}

std::vector<FrdColumns> resultsOf(const FrdLayout& layout, ResultRegister& results) {
    if (layout.components.size() == 1) {
        return {{results.find(ug::SCALAR, layout.name), {0}}};
    }
    if (std::vector<std::uint32_t> columns = vectorColumns(layout); !columns.empty()) {
        const ug::ResultType type = layout.name == "DISP" ? ug::DISPLACEMENT : ug::VECTOR;
        return {{results.find(type, layout.name), std::move(columns)}};
    }
    if (std::vector<std::uint32_t> columns = tensorColumns(layout); !columns.empty()) {
        return {{results.find(ug::SYMMETRIC_TENSOR, layout.name), std::move(columns)}};
    }
    return scalarsOf(layout, results);
}

bool isSameValue(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

/// The blocks of one state, before it has an id.
struct StateBlocks {
    int id = 0;
    std::vector<std::uint32_t> blocks;
};

/// Sorts blocks into states.
class StateGatherer {
public:
    StateGatherer(const CaeFile& file, const FrdIndex& index) : m_file(file), m_index(index) {
        for (const FrdResultBlock& block : index.blocks) {
            m_largestNumber = std::max(m_largestNumber, block.stateNumber);
        }
    }

    std::vector<StateBlocks> run(std::vector<std::string>* warnings) {
        for (std::size_t i = 0; i < m_index.blocks.size(); ++i) {
            const std::size_t state = stateFor(m_index.blocks[i]);
            m_states[state].blocks.push_back(std::uint32_t(i));
            m_names.insert({state, nameOf(m_index.blocks[i])});
        }
        if (m_renumbered > 0) {
            warnings->push_back(m_file.place(m_firstRenumbered) + ": " + std::to_string(m_renumbered) +
                                " states bear numbers that other states have; they are numbered from " +
                                std::to_string(m_largestNumber + 1) + " on, the first one here");
        }
        return std::move(m_states);
    }

private:
    std::string_view nameOf(const FrdResultBlock& block) const {
        return m_index.layouts[block.layout].name;
    }

    // The state that the block belongs to, made when there is none.
    std::size_t stateFor(const FrdResultBlock& block) {
        const auto [latest, isNew] = m_latest.try_emplace(block.stateNumber, m_states.size());
        if (isNew) {
            m_states.push_back({block.stateNumber, {}});
            return latest->second;
        }
        const FrdResultBlock& other = m_index.blocks[m_states[latest->second].blocks.front()];
        const bool isSame = isSameValue(block.value, other.value) && block.kind == other.kind;
        if (!isSame || m_names.contains({latest->second, nameOf(block)})) {
            m_firstRenumbered = m_renumbered == 0 ? block.rows.header : m_firstRenumbered;
            ++m_renumbered;
            latest->second = m_states.size();
            m_states.push_back({m_largestNumber + m_renumbered, {}});
        }
        return latest->second;
    }

    const CaeFile& m_file;
    const FrdIndex& m_index;
    std::vector<StateBlocks> m_states;
    std::map<int, std::size_t> m_latest; // By number, the state that bears it last.
    std::set<std::pair<std::size_t, std::string_view>> m_names;
    int m_largestNumber = 0;
    int m_renumbered = 0;
    std::int64_t m_firstRenumbered = 0;
};

ug::StateInfo::ReferenceType referenceType(int kind) {
    switch (kind) {
    case 0:
    case 1:
        return ug::StateInfo::TIME;
    case 2:
        return ug::StateInfo::FREQUENCY;
    default:
        return ug::StateInfo::LOAD_CASE;
    }
}

std::string valueText(double value) {
    std::array<char, 32> text;
    const std::to_chars_result result =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, VALUE_DIGITS);
    return std::string(text.data(), result.ptr);
}

std::string valueName(int kind) {
    switch (kind) {
    case 0:
    case 1:
        return "time";
    case 2:
        return "frequency";
    case 4:
        return "buckling factor";
    default:
        return "load";
    }
}

std::string stateName(const FrdResultBlock& block, int id) {
    std::string name;
    if (block.mode > 0) {
        name = "Mode " + std::to_string(block.mode);
        if (block.nodalDiameter >= 0) {
            name += ", nodal diameter " + std::to_string(block.nodalDiameter);
        }
    } else if (block.step > 0) {
        name = "Step " + std::to_string(block.step);
        if (block.increment > 0) {
            name += ", increment " + std::to_string(block.increment);
        }
    } else {
        name = "State " + std::to_string(id);
    }
    if (block.value != UNDEFINED_DOUBLE) {
        name += ", " + valueName(block.kind) + " " + valueText(block.value);
    }
    return name;
}

std::vector<FrdState> describeStates(const FrdIndex& index, std::vector<StateBlocks> states) {
    std::vector<std::string> names;
    std::map<std::string_view, int> uses;
    names.reserve(states.size());
    for (const StateBlocks& state : states) {
        names.push_back(stateName(index.blocks[state.blocks.front()], state.id));
        ++uses[names.back()];
    }
    std::vector<FrdState> described;
    described.reserve(states.size());
    for (std::size_t i = 0; i < states.size(); ++i) {
        const FrdResultBlock& block = index.blocks[states[i].blocks.front()];
        const std::string suffix = uses[names[i]] > 1 ? " (state " + std::to_string(states[i].id) + ")" : "";
        described.push_back(
            {ug::StateInfo(states[i].id, Str(names[i] + suffix), referenceType(block.kind), block.value),
             std::move(states[i].blocks)});
    }
    return described;
}

std::vector<ug::StateInfo> infosOf(const std::vector<FrdState>& states) {
    std::vector<ug::StateInfo> infos;
    for (const FrdState& state : states) {
        infos.push_back(state.info);
    }
    return infos;
}

} // namespace

FrdResults makeFrdResults(const CaeFile& file, const FrdIndex& index, std::vector<std::string>* warnings) {
    FrdResults results;
    ResultRegister resultRegister;
    for (const FrdLayout& layout : index.layouts) {
        results.layouts.push_back(resultsOf(layout, resultRegister));
    }
    results.infos = resultRegister.take();
    results.states = describeStates(index, StateGatherer(file, index).run(warnings));
    results.stateGroups = groupStates(infosOf(results.states));
    return results;
}

} // namespace orv::imp::cae
