#include "OrvUnstructGrid/ZtfxReader_p.h"

#include "OrvCore/Defines.h"

#include <algorithm>
#include <utility>

namespace orv::ug {
namespace {

constexpr std::uint64_t LARGEST_HEADER = 4096;

// No index that was written deflates as well as that; one that was made to fill the memory does.
constexpr std::uint64_t LARGEST_INDEX_RATIO = 64;
constexpr std::uint64_t SMALL_INDEX = std::uint64_t(1) << 20;

constexpr std::size_t LONGEST_CASE_LIST = 50;

Str number(std::uint64_t value) {
    return Str(std::to_string(value));
}

Str caseText(const ZTFxCaseInfo& info) {
    const Str id = std::to_string(info.id);
    return info.name.isEmpty() ? id : id + " (" + info.name + ")";
}

/// The index tells how many nodes and elements there are, but not how many surfaces.
bool needsMesh(const ResultInfo& info) {
    return info.resultMapping() == PER_ELEMENT_SURFACE;
}

std::uint64_t itemCount(const DataGeometry& geometry, ResultMapping mapping, std::size_t partCount) {
    std::uint64_t items = 0;
    for (std::size_t p = 0; p < partCount; ++p) {
        items += geometry.part(p)->itemCount(mapping);
    }
    return items;
}

} // namespace

ZtfxReader::ZtfxReader(const Str& path) : m_archive(std::make_shared<ZtfxArchive>()), m_index(path), m_path(path) {}

bool ZtfxReader::open(const Str& password, Error* error) {
    ZtfxEntry header, index;
    std::string text;
    bool isEncrypted = false;
    if (!m_archive->open(m_path, error) || !m_archive->findEntry(ZTFX_HEADER_NAME, &header, error) ||
        !m_archive->readText(header, LARGEST_HEADER, &text, error) ||
        !parseZtfxHeader(std::move(text), m_path, &isEncrypted, error)) {
        return false;
    }
    if (isEncrypted && password.isEmpty()) {
        return m_archive->fail("the file is protected: a password is needed", error);
    }
    if (isEncrypted) {
        m_archive->setPassword(password.toStdString());
    }
    text.clear();
    return m_archive->findEntry(ZTFX_INDEX_NAME, &index, error) &&
           m_archive->readText(index, SMALL_INDEX + m_archive->fileSize() * LARGEST_INDEX_RATIO, &text, error) &&
           m_index.parse(std::move(text), error);
}

const std::vector<ZTFxCaseInfo>& ZtfxReader::cases() const {
    return m_index.cases();
}

bool ZtfxReader::failWithoutCase(const Str& wanted, Error* error) const {
    Str known;
    for (std::size_t i = 0; i < std::min(cases().size(), LONGEST_CASE_LIST); ++i) {
        known += (i > 0 ? ", " : "") + caseText(cases()[i]);
    }
    if (cases().size() > LONGEST_CASE_LIST) {
        known += " and " + number(cases().size() - LONGEST_CASE_LIST) + " more";
    }
    return m_archive->fail("there is no case " + wanted + ": the file has " + (known.isEmpty() ? "none" : known),
                           error);
}

bool ZtfxReader::openCase(std::size_t caseIndex, Error* error) {
    std::vector<ZtfxArray> arrays;
    if (!m_index.readArrays(&arrays, error) || !m_index.readCase(caseIndex, &m_case, error)) {
        return false;
    }
    m_arrays = std::make_shared<ZtfxArrays>(m_archive, std::move(arrays));
    if (!m_meshes.open(m_case, m_arrays, error)) {
        return false;
    }
    for (const ZtfxState& state : m_case.states) {
        for (const ZtfxField& field : state.fields) {
            if (!checkField(state, field, error)) {
                return false;
            }
        }
    }
    return true;
}

const ZtfxCase& ZtfxReader::contents() const {
    return m_case;
}

std::vector<PtrRef<DataGeometry>> ZtfxReader::geometries(std::size_t stateIndex) const {
    std::vector<PtrRef<DataGeometry>> geometries;
    for (const std::size_t mesh : m_case.states[stateIndex].meshes) {
        geometries.emplace_back(m_meshes.find(geometries.size(), mesh));
    }
    return geometries;
}

bool ZtfxReader::readField(std::size_t stateIndex, const ResultInfo& info, DataState* state, Error* error) const {
    const ZtfxField* field = findField(stateIndex, info);
    for (std::size_t g = 0; g < field->arrays.size(); ++g) {
        const ZtfxArray* array = m_arrays->find(field->arrays[g]);
        const DataGeometry* geometry = state->geometry(g);
        if (array && !readGeometryField(*array, info, *geometry, state->results(geometry)->findOrAdd(info), error)) {
            return false;
        }
    }
    return true;
}

bool ZtfxReader::readScalars(std::size_t stateIndex, const ResultInfo& info, const DataState& state,
                             const ScalarPlace& place, std::span<double> values) {
    const ZtfxArray* array = m_arrays->find(findField(stateIndex, info)->arrays[place.geometryIndex]);
    if (!array) {
        std::fill(values.begin(), values.end(), UNDEFINED_DOUBLE);
        return true;
    }
    const DataGeometry* geometry = state.geometry(place.geometryIndex);
    std::uint64_t offset = 0;
    if (!findOffset(*array, &offset) || (needsMesh(info) && !checkItems(*array, info, *geometry, nullptr))) {
        return false;
    }
    const std::uint64_t item = itemCount(*geometry, info.resultMapping(), place.partIndex) + place.firstItem;
    offset += item * ztfxTypeSize(array->type);
    if (array->type == ZtfxType::FLOAT64) {
        return m_archive->readAt(offset, values.data(), values.size_bytes());
    }
    std::vector<float> floats(values.size());
    const bool isRead = m_archive->readAt(offset, floats.data(), floats.size() * sizeof(float));
    widenFloat32(floats.data(), floats.size(), values.data());
    return isRead;
}

const ZtfxField* ZtfxReader::findField(std::size_t stateIndex, const ResultInfo& info) const {
    const std::vector<ZtfxField>& fields = m_case.states[stateIndex].fields;
    return &*std::find_if(fields.begin(), fields.end(),
                          [&](const ZtfxField& field) { return m_case.results[field.result] == info; });
}

bool ZtfxReader::checkField(const ZtfxState& state, const ZtfxField& field, Error* error) const {
    const ResultInfo& info = m_case.results[field.result];
    for (std::size_t g = 0; g < field.arrays.size(); ++g) {
        if (field.arrays[g] == ZTFX_NO_ARRAY) {
            continue;
        }
        const ZtfxArray* array =
            m_arrays->findFor(field.arrays[g], ZtfxType::FLOAT64, doublesPerItem(info.type()), error);
        if (!array) {
            return false;
        }
        if (!needsMesh(info) && !checkItems(*array, info, *m_meshes.find(g, state.meshes[g]), error)) {
            return false;
        }
    }
    return true;
}

bool ZtfxReader::checkItems(const ZtfxArray& array, const ResultInfo& info, const DataGeometry& geometry,
                            Error* error) const {
    const std::uint64_t expected = itemCount(geometry, info.resultMapping(), geometry.partCount());
    return array.items == expected || m_arrays->fail(array.id,
                                                     "has " + number(array.items) + " items, expected " +
                                                         number(expected) + " for result '" + info.name() + "'",
                                                     error);
}

bool ZtfxReader::readGeometryField(const ZtfxArray& array, const ResultInfo& info, const DataGeometry& geometry,
                                   DataResult* result, Error* error) const {
    ZtfxArrayReader reader(*m_arrays, array);
    if ((needsMesh(info) && !checkItems(array, info, geometry, error)) || !reader.open(error)) {
        return false;
    }
    auto* scalars = dynamic_cast<DataResultScalar*>(result);
    for (std::size_t p = 0; p < geometry.partCount(); ++p) {
        DataPartValues* values = result->values(p);
        values->allocate(geometry.part(p)->itemCount(info.resultMapping()));
        if (!reader.readDoubles(values->values(), values->span().size(), error)) {
            return false;
        }
        if (scalars) {
            scalars->part(p)->updateMinMaxWhenAsked();
        }
    }
    return reader.finish(error);
}

bool ZtfxReader::findOffset(const ZtfxArray& array, std::uint64_t* offset) {
    const auto known = m_offsets.find(array.id);
    if (known != m_offsets.end()) {
        *offset = known->second;
        return true;
    }
    ZtfxEntry entry;
    if (!m_arrays->findEntry(array, &entry, nullptr) || !entry.isPlain || !m_archive->locate(entry, offset, nullptr)) {
        return false;
    }
    m_offsets[array.id] = *offset;
    return true;
}

} // namespace orv::ug
