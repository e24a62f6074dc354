#include "OrvImportCae/TecReader.h"

#include "OrvUnstructGrid/DataResultGroup.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace orv::imp::cae {
namespace {

// "X", "x [m]", "CoordinateX"
bool isAxis(const std::string& variable, char axis) {
    const std::string name = Str(variable).toLower().toStdString();
    return name.substr(0, name.find_first_of(" ([,")) == std::string(1, axis) ||
           name == std::string("coordinate") + axis;
}

// A zone that belongs to a time.
bool isOfATime(const TecZone& zone, bool hasStrands) {
    return zone.time && !(hasStrands && zone.strand.value_or(0) <= 0);
}

} // namespace

bool TecReader::Source::readPart(const TecZone& zone, ug::DataNodes* nodes, ug::DataElements* elements,
                                 ug::Error* error) const {
    std::vector<double> coordinates(3 * zone.nodeCount);
    std::vector<TecTarget> targets;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (axes[axis] != NONE && zone.columns[axes[axis]].isThere) {
            targets.push_back({&zone.columns[axes[axis]], coordinates.data() + axis, 3});
        }
    }
    std::vector<ug::ElementType> types;
    std::vector<std::uint32_t> connectivity;
    if (!file.checkUnchanged(error) || !readTecColumns(file, targets, zone.nodeCount, error) ||
        !readTecCells(file, zone, coordinates, &types, &connectivity, error)) {
        return false;
    }
    nodes->set(std::move(coordinates), {});
    elements->set(std::move(types), std::move(connectivity), {});
    return true;
}

bool TecReader::Source::isSameMesh(const TecZone& a, const TecZone& b) const {
    const auto isSame = [](const TecColumn& one, const TecColumn& other) {
        return one.isThere == other.isThere && one.offset == other.offset && one.place == other.place;
    };
    return a.cellType == b.cellType && a.cells == b.cells && a.sizes == b.sizes &&
           std::all_of(axes.begin(), axes.end(),
                       [&](std::size_t axis) { return axis == NONE || isSame(a.columns[axis], b.columns[axis]); });
}

bool TecReader::open(const Str& filename, CaeContents* contents, ug::Error* error) {
    return m_source->file.open(filename.toStdString(), error) && readStructure(contents, error);
}

bool TecReader::openDescriptor(int descriptor, const Str& filename, CaeContents* contents, ug::Error* error) {
    return m_source->file.openDescriptor(descriptor, filename.toStdString(), error) && readStructure(contents, error);
}

// Meshes that change from step to step stay with their states.
void TecReader::adoptGeometry(const PtrRef<ug::DataGeometry>& geometry) {
    if (m_geometries.size() == 1) {
        m_geometries[0] = geometry;
    }
}

bool TecReader::readResult(const ug::ResultInfo& info, int stateId, const ug::ResultInfo& intoInfo,
                           ug::DataState* state, std::vector<Str>*, ug::Error* error) {
    if (!m_source->file.checkUnchanged(error)) {
        return false;
    }
    const auto step = std::size_t(stateId - 1);
    const auto found = std::find(m_results.begin(), m_results.end(), info);
    const CaeField& field = m_fields[std::size_t(found - m_results.begin())];
    const ug::DataGeometry* geometry = m_geometries[m_geometries.size() == 1 ? 0 : step].get();
    ug::DataResult* result = state->results(geometry)->findOrAdd(intoInfo);
    for (std::size_t p = 0; p < m_parts.size(); ++p) {
        if (m_parts[p].zones[step] == NONE) {
            continue;
        }
        const TecZone& zone = m_source->zones.zones[m_parts[p].zones[step]];
        const std::uint64_t count = field.mapping == ug::PER_NODE ? zone.nodeCount : zone.cellCount;
        ug::DataPartValues* values = result->values(p);
        values->allocate(count);
        values->fillUndefined();
        std::vector<TecTarget> targets;
        for (std::size_t c = 0; c < field.components.size(); ++c) {
            if (const TecColumn* column = findColumn(field.components[c].array, p, step)) {
                targets.push_back({column, values->values() + c, field.components.size()});
            }
        }
        if (!readTecColumns(m_source->file, targets, count, error)) {
            return false;
        }
    }
    updateRanges(result);
    return true;
}

bool TecReader::readStructure(CaeContents* contents, ug::Error* error) {
    if (!readTecZones(m_source->file, &m_source->zones, error) || !findAxes(error) || !arrange(error)) {
        return false;
    }
    contents->title = Str(m_source->zones.title);
    makeGeometries(contents);
    describeResults(contents);
    describeStates(contents);
    return true;
}

bool TecReader::findAxes(ug::Error* error) {
    const std::vector<std::string>& variables = m_source->zones.variables;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const auto found = std::find_if(variables.begin(), variables.end(), [axis](const std::string& variable) {
            return isAxis(variable, char('x' + axis));
        });
        if (found != variables.end()) {
            m_source->axes[axis] = std::size_t(found - variables.begin());
        } else if (axis < 2) {
            return ug::fail(error, Str(m_source->file.name() + ": none of its variables is called " + char('X' + axis) +
                                       ", so there are no coordinates"));
        }
    }
    for (const TecZone& zone : m_source->zones.zones) {
        for (const std::size_t axis : m_source->axes) {
            if (axis != NONE && zone.columns[axis].isOfCells) {
                return m_source->file.fail(zone.offset, "the zone has coordinates of cells", error);
            }
        }
    }
    return true;
}

// Gives zones their parts and steps.
bool TecReader::arrange(ug::Error* error) {
    constexpr std::size_t MOST = 1000000;
    const std::vector<TecZone>& zones = m_source->zones.zones;
    const bool hasStrands =
        std::any_of(zones.begin(), zones.end(), [](const TecZone& zone) { return zone.strand.value_or(0) > 0; });
    std::set<double> times;
    for (const TecZone& zone : zones) {
        if (isOfATime(zone, hasStrands)) {
            times.insert(*zone.time);
        }
    }
    m_times.assign(times.begin(), times.end());
    const std::size_t steps = std::max<std::size_t>(m_times.size(), 1);

    using Key = std::pair<std::int64_t, std::size_t>; // The strand, or -1, and how many of it have been there.
    std::map<Key, std::size_t> parts;
    std::map<std::pair<std::int64_t, double>, std::size_t> counts;
    std::map<std::string, std::size_t> names;
    for (std::size_t z = 0; z < zones.size(); ++z) {
        const TecZone& zone = zones[z];
        const bool isStatic = !isOfATime(zone, hasStrands);
        const std::int64_t strand = hasStrands ? zone.strand.value_or(0) : 0;
        const Key key = isStatic ? Key(-1, z) : Key(strand, counts[{strand, *zone.time}]++);
        const auto [found, isNew] = parts.try_emplace(key, m_parts.size());
        if (isNew) {
            if ((m_parts.size() + 1) * steps > MOST) {
                return m_source->file.fail(zone.offset, "there are too many parts and times", error);
            }
            const std::string name = zone.title.empty() ? "Zone " + std::to_string(z + 1) : zone.title;
            const std::size_t sameNames = ++names[name];
            m_parts.push_back({sameNames == 1 ? name : name + " (" + std::to_string(sameNames) + ")",
                               std::vector<std::size_t>(steps, isStatic ? z : NONE)});
        }
        if (!isStatic) {
            const auto step = std::size_t(std::distance(times.begin(), times.find(*zone.time)));
            m_parts[found->second].zones[step] = z;
        }
    }
    return true;
}

bool TecReader::hasOneMesh() const {
    return std::all_of(m_parts.begin(), m_parts.end(), [this](const Part& part) {
        return std::all_of(part.zones.begin(), part.zones.end(), [&](std::size_t z) {
            return z != NONE && part.zones[0] != NONE &&
                   m_source->isSameMesh(m_source->zones.zones[part.zones[0]], m_source->zones.zones[z]);
        });
    });
}

void TecReader::makeGeometries(CaeContents* contents) {
    const std::size_t count = hasOneMesh() ? 1 : std::max<std::size_t>(m_times.size(), 1);
    for (std::size_t p = 0; p < m_parts.size(); ++p) {
        contents->parts.emplace_back(int(p) + 1, Str(m_parts[p].name));
    }
    for (std::size_t g = 0; g < count; ++g) {
        m_geometries.emplace_back(new ug::DataGeometry);
        for (std::size_t p = 0; p < m_parts.size(); ++p) {
            ug::DataPart* part = m_geometries.back()->addPart(int(p) + 1);
            if (m_parts[p].zones[g] != NONE) {
                part->readLater([source = m_source, z = m_parts[p].zones[g]](
                                    ug::DataNodes* nodes, ug::DataElements* elements, ug::Error* error) {
                    return source->readPart(source->zones.zones[z], nodes, elements, error);
                });
            }
        }
    }
    contents->geometry = m_geometries[0];
}

void TecReader::describeResults(CaeContents* contents) {
    const TecZones& zones = m_source->zones;
    for (std::size_t v = 0; v < zones.variables.size(); ++v) {
        if (std::find(m_source->axes.begin(), m_source->axes.end(), v) != m_source->axes.end()) {
            continue;
        }
        for (const ug::ResultMapping mapping : {ug::PER_NODE, ug::PER_ELEMENT}) {
            const bool isOfCells = mapping == ug::PER_ELEMENT;
            std::set<std::size_t> steps;
            for (const Part& part : m_parts) {
                for (std::size_t s = 0; s < part.zones.size(); ++s) {
                    const TecColumn* column = part.zones[s] == NONE ? nullptr : &zones.zones[part.zones[s]].columns[v];
                    if (column && column->isThere && column->isOfCells == isOfCells) {
                        steps.insert(s);
                    }
                }
            }
            if (!steps.empty()) {
                m_arrayVariables.push_back(v);
                m_arrays.push_back({zones.variables[v], mapping});
                m_arrays.back().steps.assign(steps.begin(), steps.end());
            }
        }
    }
    std::vector<std::string> warnings; // Of scalars there are none.
    m_fields = makeCaeFields(m_arrays, &warnings);
    std::map<ug::ResultType, int> ids;
    for (const CaeField& field : m_fields) {
        m_results.emplace_back(field.type, ++ids[field.type], Str(field.name), field.mapping);
    }
    contents->results = m_results;
}

void TecReader::describeStates(CaeContents* contents) const {
    std::vector<ug::StateInfo> infos;
    for (const double time : m_times) {
        infos.push_back(timeState(int(infos.size()) + 1, time));
    }
    if (infos.empty()) {
        infos.emplace_back(1, "State 1", ug::StateInfo::TIME, UNDEFINED_DOUBLE);
    }
    for (std::size_t s = 0; s < infos.size(); ++s) {
        CaeContents::State state{infos[s], {}, m_geometries.size() == 1 ? nullptr : m_geometries[s]};
        for (std::size_t f = 0; f < m_fields.size(); ++f) {
            const std::vector<std::size_t>& steps = m_arrays[m_fields[f].components[0].array].steps;
            if (std::binary_search(steps.begin(), steps.end(), s)) {
                state.results.push_back(f);
            }
        }
        contents->states.push_back(std::move(state));
    }
    contents->stateGroups = groupStates(infos);
}

// Null when the part's zone does not have it.
const TecColumn* TecReader::findColumn(std::size_t array, std::size_t part, std::size_t step) const {
    const TecColumn& column = m_source->zones.zones[m_parts[part].zones[step]].columns[m_arrayVariables[array]];
    const bool isOfCells = m_arrays[array].mapping == ug::PER_ELEMENT;
    return column.isThere && column.isOfCells == isOfCells ? &column : nullptr;
}

} // namespace orv::imp::cae
