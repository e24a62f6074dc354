#include "OrvUnstructGrid/SituationReferences_p.h"

#include "OrvUnstructGrid/DataSourceDirectory.h"
#include "OrvUnstructGrid/XmlAttributes_p.h"
#include "OrvUnstructGrid/ZtfReader_p.h"

#include <iterator>
#include <vector>

namespace orv::ug {
namespace {

constexpr const char* STATE_ID = "stateId";
constexpr const char* STATE_NAME = "stateName";
constexpr const char* REFERENCE_TYPE = "referenceType";
constexpr const char* REFERENCE_VALUE = "referenceValue";
constexpr const char* RESULT_ID = "resultId";
constexpr const char* RESULT_NAME = "resultName";
constexpr const char* RESULT_MAPPING = "resultMapping";
constexpr const char* IS_CUSTOM = "isCustom";
constexpr const char* GEOMETRY_INDEX = "geometryIndex";
constexpr const char* PART_ID = "partId";
constexpr const char* PART_NAME = "partName";

Str referenceWordOf(const StateInfo& info) {
    return EnumWords(ZTF_REFERENCES, StateInfo::TIME).wordOf(info.referenceType());
}

Str mappingWordOf(const ResultInfo& info) {
    return EnumWords(ZTF_MAPPINGS, PER_NODE).wordOf(info.resultMapping());
}

/// The id of the only one that fits; -1 when there is none or there are several.
template <class Info, class Fits>
int onlyId(const std::vector<Info>& infos, Fits fits) {
    int id = -1;
    for (const Info& info : infos) {
        if (fits(info) && id != -1) {
            return -1;
        }
        id = fits(info) ? info.id() : id;
    }
    return id;
}

Str textOf(const char* kind, const Str& name, int id) {
    return Str(kind) + " " + (name.isEmpty() ? "with the id " + Str(std::to_string(id)) : "'" + name + "'");
}

bool isSameName(const StateReference& reference, const StateInfo& info) {
    return !info.name().isEmpty() && info.name() == reference.name;
}

bool isSameReference(const StateReference& reference, const StateInfo& info) {
    return info.referenceValue() != UNDEFINED_DOUBLE && info.referenceValue() == reference.referenceValue &&
           referenceWordOf(info) == reference.referenceType;
}

bool isAlike(const StateReference& reference, const StateInfo& info) {
    return info.name() == reference.name && info.referenceValue() == reference.referenceValue &&
           referenceWordOf(info) == reference.referenceType;
}

} // namespace

StateReference StateReference::to(const StateInfo& info) {
    return {info.id(), info.name(), referenceWordOf(info), info.referenceValue()};
}

StateReference StateReference::from(const PropertySet& set) {
    return {set.valueOr(STATE_ID, -1), set.valueOr(STATE_NAME, Str()), set.valueOr(REFERENCE_TYPE, Str()),
            set.valueOr(REFERENCE_VALUE, UNDEFINED_DOUBLE)};
}

void StateReference::putInto(PropertySet* set) const {
    set->setValue(STATE_ID, id);
    set->setValue(STATE_NAME, name);
    set->setValue(REFERENCE_TYPE, referenceType);
    set->setValue(REFERENCE_VALUE, referenceValue);
}

int StateReference::findIn(const DataSourceDirectory& directory) const {
    if (id == -1 || isAlike(*this, directory.findStateInfo(id))) {
        return id;
    }
    const std::vector<StateInfo> infos = directory.stateInfos();
    for (const auto fits : {isAlike, isSameName, isSameReference}) {
        const int found = onlyId(infos, [&](const StateInfo& info) { return fits(*this, info); });
        if (found != -1) {
            return found;
        }
    }
    return -1;
}

Str StateReference::text() const {
    return textOf("state", name, id);
}

ResultReference ResultReference::to(const ResultInfo& info) {
    return {info.type(), info.id(), info.name(), mappingWordOf(info), info.isCustom()};
}

ResultReference ResultReference::from(const PropertySet& set, ResultType type) {
    return {type, set.valueOr(RESULT_ID, -1), set.valueOr(RESULT_NAME, Str()), set.valueOr(RESULT_MAPPING, Str()),
            set.valueOr(IS_CUSTOM, false)};
}

void ResultReference::putInto(PropertySet* set) const {
    set->setValue(RESULT_ID, id);
    set->setValue(RESULT_NAME, name);
    set->setValue(RESULT_MAPPING, mapping);
    set->setValue(IS_CUSTOM, isCustom);
}

int ResultReference::findIn(const DataSourceDirectory& directory) const {
    const auto fits = [&](const ResultInfo& info) {
        return info.name() == name && mappingWordOf(info) == mapping && info.isCustom() == isCustom;
    };
    const ResultInfo sameId = directory.findResultInfo(type, id);
    return sameId.isValid() && fits(sameId) ? id : onlyId(directory.resultInfos(type), fits);
}

Str ResultReference::text() const {
    const char* kind = isResultType(type) ? ZTF_TYPES[type - SCALAR] : "result";
    return isCustom ? "custom " + textOf(kind, name, id) + " (to be registered first)" : textOf(kind, name, id);
}

PartReference PartReference::from(const PropertySet& set) {
    return {std::size_t(set.valueOr(GEOMETRY_INDEX, -1)), set.valueOr(PART_ID, -1), set.valueOr(PART_NAME, Str())};
}

void PartReference::putInto(PropertySet* set) const {
    set->setValue(GEOMETRY_INDEX, int(geometryIndex));
    set->setValue(PART_ID, id);
    set->setValue(PART_NAME, name);
}

Str PartReference::text() const {
    return textOf("part", name, id);
}

PartCatalogue::PartCatalogue(const DataSourceDirectory& directory) {
    for (std::size_t g = 0; g < directory.geometryCountPerState(); ++g) {
        for (const PartInfo& info : directory.partInfos(g)) {
            m_names.emplace(std::pair(g, info.id()), info.name());
            m_ids.emplace(std::pair(g, info.name()), info.id());
        }
    }
}

bool PartCatalogue::makeReference(std::size_t geometryIndex, int partId, PartReference* reference) const {
    const auto found = m_names.find({geometryIndex, partId});
    if (found == m_names.end()) {
        return false;
    }
    *reference = {geometryIndex, partId, found->second};
    return true;
}

int PartCatalogue::find(const PartReference& reference) const {
    const auto sameId = m_names.find({reference.geometryIndex, reference.id});
    if (sameId != m_names.end() && sameId->second == reference.name) {
        return reference.id;
    }
    const auto [first, end] = m_ids.equal_range({reference.geometryIndex, reference.name});
    return !reference.name.isEmpty() && first != end && std::next(first) == end ? first->second : -1;
}

} // namespace orv::ug
