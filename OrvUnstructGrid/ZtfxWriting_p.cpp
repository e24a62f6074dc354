#include "OrvUnstructGrid/ZtfxWriting_p.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/ErrorTexts_p.h"

#include <algorithm>
#include <set>

namespace orv::ug {
namespace {

Str number(std::size_t value) {
    return Str(std::to_string(value));
}

/// Custom results become ordinary ones.
std::vector<ResultInfo> resultsOfFile(const std::vector<ResultInfo>& planned) {
    const ResultIds ids = idsInFile(planned);
    std::vector<ResultInfo> results;
    for (const ResultInfo& info : planned) {
        const int id = ids.at({info.type(), info.id()});
        ResultInfo& result = results.emplace_back(info.type(), id, info.name(), info.resultMapping());
        const auto base = ids.find({info.baseResultType(), info.baseResultId()});
        if (base != ids.end()) {
            result.setBaseResult(base->second, base->first.first);
        }
    }
    return results;
}

std::vector<StateGroupInfo> groupsOf(const DataSourceDirectory& directory, const std::vector<StateInfo>& states) {
    std::set<int> written;
    for (const StateInfo& info : states) {
        written.insert(info.id());
    }
    std::vector<StateGroupInfo> groups;
    for (const StateGroupInfo& group : directory.stateGroupInfos()) {
        std::vector<int> ids;
        for (std::size_t i = 0; i < group.stateCount(); ++i) {
            if (written.contains(group.stateId(i))) {
                ids.push_back(group.stateId(i));
            }
        }
        if (!ids.empty()) {
            groups.emplace_back(std::move(ids));
        }
    }
    return groups;
}

std::vector<std::vector<PartInfo>> geometriesOf(const DataSourceDirectory& directory, const WritePlan& plan) {
    std::vector<std::vector<PartInfo>> geometries;
    for (std::size_t g = 0; g < plan.parts.size(); ++g) {
        const std::vector<PartInfo> infos = directory.partInfos(g);
        std::vector<PartInfo>& written = geometries.emplace_back();
        for (const std::size_t part : plan.parts[g]) {
            written.push_back(infos[part]);
        }
    }
    return geometries;
}

// The directory's records of parts are those of every state.
bool isAsInDirectory(const DataState& state, const DataSourceDirectory& directory) {
    bool isSame = state.geometryCount() == directory.geometryCountPerState();
    for (std::size_t g = 0; isSame && g < state.geometryCount(); ++g) {
        isSame = state.geometry(g)->partCount() == directory.partInfos(g).size();
    }
    return isSame;
}

bool areUndefined(const std::vector<std::span<const double>>& pieces) {
    return std::all_of(pieces.begin(), pieces.end(), [](std::span<const double> piece) {
        return std::all_of(piece.begin(), piece.end(), [](double value) { return value == UNDEFINED_DOUBLE; });
    });
}

template <class Value>
ZtfxContainer::Make bytesMaker(std::span<const Value> values) {
    return [values](ZtfxPayload* payload, Error*) {
        payload->setBytes(std::as_bytes(values));
        return true;
    };
}

ZtfxContainer::Make realsMaker(std::span<const double> values) {
    return [values](ZtfxPayload* payload, Error*) {
        payload->setReals({values});
        return true;
    };
}

} // namespace

ZtfxWriting::ZtfxWriting(const std::vector<ZtfxPlannedCase>& cases, ZtfxContainer* container, bool isEncrypted)
    : m_cases(cases), m_container(container), m_isEncrypted(isEncrypted) {}

// The index is the last entry, as only the values tell which arrays there are.
bool ZtfxWriting::addEntries(Error* error) {
    addText(ZTFX_HEADER_NAME, true, [this] { return makeZtfxHeader(m_isEncrypted); });
    for (const ZtfxPlannedCase& planned : m_cases) {
        if (!addCase(planned, error)) {
            return false;
        }
    }
    for (std::size_t c = 0; c < m_cases.size(); ++c) {
        addFields(c);
    }
    addText(ZTFX_INDEX_NAME, false, [this] { return makeZtfxIndex(m_index); });
    return true;
}

void ZtfxWriting::addText(const char* name, bool isBare, std::function<std::string()> makeText) {
    m_container->addEntry(name, isBare, [this, makeText](ZtfxPayload* payload, Error*) {
        m_text = makeText();
        payload->setBytes(std::as_bytes(std::span(m_text)));
        return true;
    });
}

bool ZtfxWriting::addCase(const ZtfxPlannedCase& planned, Error* error) {
    const DataSourceDirectory& directory = *planned.source->directory();
    ZtfxCase& contents = m_index.cases.emplace_back();
    contents.info = {planned.id, planned.name, directory.simulationInfo()};
    contents.warnings = directory.warnings();
    contents.geometries = geometriesOf(directory, planned.plan);
    contents.results = resultsOfFile(planned.plan.results);
    contents.groups = groupsOf(directory, planned.plan.states);
    for (const StateInfo& info : planned.plan.states) {
        if (!addState(planned, info, &contents, error)) {
            return false;
        }
    }
    return true;
}

bool ZtfxWriting::addState(const ZtfxPlannedCase& planned, const StateInfo& info, ZtfxCase* contents, Error* error) {
    const DataSourceDirectory& directory = *planned.source->directory();
    const DataState* state = planned.source->state(planned.source->stateIndex(info.id()));
    if (!state || !isAsInDirectory(*state, directory)) {
        return fail(error, "The parts of " + stateText(directory, info.id()) + " are not those of its directory");
    }
    if (!state->readGeometries(error)) {
        return false;
    }
    ZtfxState& written = contents->states.emplace_back();
    written.info = info;
    for (std::size_t g = 0; g < state->geometryCount(); ++g) {
        if (!addMesh(*state->geometry(g), planned.plan.parts[g], contents, &written, error)) {
            return false;
        }
    }
    for (std::size_t r = 0; r < planned.plan.results.size(); ++r) {
        if (directory.hasResult(info.id(), planned.plan.results[r])) {
            written.fields.push_back({r, std::vector<std::uint64_t>(state->geometryCount(), ZTFX_NO_ARRAY)});
        }
    }
    return true;
}

// Different objects with the same content are one mesh.
bool ZtfxWriting::addMesh(const DataGeometry& geometry, const std::vector<std::size_t>& parts, ZtfxCase* contents,
                          ZtfxState* state, Error* error) {
    const auto [known, isNew] = m_meshes.try_emplace({&geometry, parts});
    ZtfxMesh& mesh = known->second;
    for (std::size_t p = 0; isNew && p < parts.size(); ++p) {
        if (!addPart(*geometry.part(parts[p]), &mesh.emplace_back(), error)) {
            return false;
        }
    }
    const auto inCase = std::find(contents->meshes.begin(), contents->meshes.end(), mesh);
    state->meshes.push_back(static_cast<std::size_t>(inCase - contents->meshes.begin()));
    if (inCase == contents->meshes.end()) {
        contents->meshes.push_back(mesh);
    }
    return true;
}

bool ZtfxWriting::addPart(const DataPart& part, ZtfxPart* written, Error* error) {
    if (!part.isConsistent()) {
        return fail(error,
                    Str("Part %1 cannot be written: its elements name nodes that it does not have").arg(part.partId()));
    }
    written->coordinates = addMeshArray(ZtfxType::FLOAT64, 3, realsMaker(part.nodes()->coordinates()));
    written->nodeIds = addMeshArray(ZtfxType::INT32, 1, bytesMaker(part.nodes()->ids()));
    written->elementTypes = addMeshArray(ZtfxType::UINT8, 1, bytesMaker(part.elements()->types()));
    written->connectivity = addMeshArray(ZtfxType::UINT32, 1, bytesMaker(part.elements()->connectivity()));
    written->elementIds = addMeshArray(ZtfxType::INT32, 1, bytesMaker(part.elements()->ids()));
    return true;
}

std::uint64_t ZtfxWriting::addMeshArray(ZtfxType type, std::uint64_t components, ZtfxContainer::Make make) {
    ZtfxPayload payload;
    make(&payload, nullptr);
    if (payload.byteCount() == 0) {
        return ZTFX_NO_ARRAY;
    }
    const std::uint64_t id = intern(payload.describe(type, components), m_lastId + 1);
    if (id > m_lastId) {
        m_lastId = id;
        m_container->addEntry(ztfxEntryName(id), false, std::move(make));
    }
    return id;
}

void ZtfxWriting::addFields(std::size_t caseIndex) {
    const std::vector<ZtfxState>& states = m_index.cases[caseIndex].states;
    for (std::size_t s = 0; s < states.size(); ++s) {
        for (std::size_t f = 0; f < states[s].fields.size(); ++f) {
            for (std::size_t g = 0; g < states[s].meshes.size(); ++g) {
                const Place place = {caseIndex, s, f, g, ++m_lastId};
                m_container->addEntry(
                    ztfxEntryName(place.id), false,
                    [this, place](ZtfxPayload* payload, Error* error) { return makeField(place, payload, error); });
            }
        }
    }
}

// An array that is there already, and one without any defined value, leave their entry empty.
bool ZtfxWriting::makeField(const Place& place, ZtfxPayload* payload, Error* error) {
    const ZtfxPlannedCase& planned = m_cases[place.caseIndex];
    ZtfxState& state = m_index.cases[place.caseIndex].states[place.state];
    ZtfxField& field = state.fields[place.field];
    const ResultInfo& info = planned.plan.results[field.result];
    if (place.geometry == 0 && !borrow(planned.source.get(), state.info.id(), info, error)) {
        return false;
    }
    std::vector<std::span<const double>> values;
    if (!gatherValues(place, info, &values, error)) {
        return false;
    }
    payload->setBytes({});
    if (areUndefined(values)) {
        return true;
    }
    payload->setReals(std::move(values));
    std::uint64_t& array = field.arrays[place.geometry];
    array = intern(payload->describe(ZtfxType::FLOAT64, doublesPerItem(info.type())), place.id);
    if (array != place.id) {
        payload->setBytes({});
    }
    return true;
}

bool ZtfxWriting::borrow(DataSource* source, int stateId, const ResultInfo& info, Error* error) {
    DataState* state = source->state(source->stateIndex(stateId));
    if (state != m_borrowedFrom) {
        m_loan.reset();
        m_loan = std::make_unique<ResultLoan>(source, state);
        m_borrowedFrom = state;
    }
    return m_loan->take(info, error);
}

bool ZtfxWriting::gatherValues(const Place& place, const ResultInfo& info, std::vector<std::span<const double>>* values,
                               Error* error) const {
    const ZtfxPlannedCase& planned = m_cases[place.caseIndex];
    const StateInfo& stateInfo = m_index.cases[place.caseIndex].states[place.state].info;
    const DataState* state = planned.source->state(planned.source->stateIndex(stateInfo.id()));
    const DataGeometry* geometry = state->geometry(place.geometry);
    const DataResult* result = state->results(geometry)->find(info);
    for (const std::size_t p : planned.plan.parts[place.geometry]) {
        const DataPartValues* part = result ? result->values(p) : nullptr;
        if (!part || part->itemCount() != geometry->part(p)->itemCount(info.resultMapping())) {
            return fail(error, "Result '" + info.name() + "' has not one item for each that part " + number(p) +
                                   " of " + stateText(*planned.source->directory(), stateInfo.id()) + " needs");
        }
        values->push_back(part->span());
    }
    return true;
}

// The id of an equal array that is in the file already, or else `id`, under which it is there from now on.
std::uint64_t ZtfxWriting::intern(ZtfxArray array, std::uint64_t id) {
    const auto [known, isNew] = m_ids.try_emplace(array, id);
    if (isNew) {
        array.id = id;
        m_index.arrays.push_back(array);
    }
    return known->second;
}

} // namespace orv::ug
