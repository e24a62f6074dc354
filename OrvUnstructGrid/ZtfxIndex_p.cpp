#include "OrvUnstructGrid/ZtfxIndex_p.h"

#include "OrvUnstructGrid/XmlAttributes_p.h"
#include "OrvUnstructGrid/ZtfReader_p.h"

#include <pugixml.hpp>

#include <limits>
#include <set>
#include <utility>

namespace orv::ug {
namespace {

constexpr int FORMAT = 1;

constexpr std::int64_t SMALLEST_INT = std::numeric_limits<int>::min();
constexpr std::int64_t LARGEST_INT = std::numeric_limits<int>::max();
/// So that no count of bytes overflows.
constexpr std::int64_t LARGEST_COUNT = std::int64_t(1) << 48;

const EnumWords RESULT_TYPES(ZTF_TYPES, SCALAR);
const EnumWords MAPPINGS(ZTF_MAPPINGS, PER_NODE);
const EnumWords REFERENCES(ZTF_REFERENCES, StateInfo::TIME);
constexpr const char* ENCRYPTION_WORDS[] = {"none", "aes256"};
const EnumWords ENCRYPTIONS(ENCRYPTION_WORDS, 0);

// Writing.

void append(pugi::xml_node parent, const ZtfxArray& array) {
    pugi::xml_node node = parent.append_child("array");
    putNumber(node, "id", array.id);
    putText(node, "type", std::string(ztfxTypeName(array.type)));
    putNumber(node, "items", array.items);
    putNumber(node, "components", array.components);
    putText(node, "checksum", array.checksum.text());
}

void append(pugi::xml_node parent, const ZtfxMesh& mesh) {
    pugi::xml_node node = parent.append_child("mesh");
    for (const ZtfxPart& part : mesh) {
        pugi::xml_node partNode = node.append_child("part");
        for (const auto& [name, array] :
             {std::pair("coordinates", part.coordinates), std::pair("nodeIds", part.nodeIds),
              std::pair("elementTypes", part.elementTypes), std::pair("connectivity", part.connectivity),
              std::pair("elementIds", part.elementIds)}) {
            if (array != ZTFX_NO_ARRAY) {
                putNumber(partNode, name, array);
            }
        }
    }
}

void append(pugi::xml_node parent, const std::vector<PartInfo>& geometry) {
    pugi::xml_node node = parent.append_child("geometry");
    for (const PartInfo& part : geometry) {
        pugi::xml_node partNode = node.append_child("part");
        putNumber(partNode, "id", part.id());
        putText(partNode, "name", part.name().toStdString());
    }
}

void append(pugi::xml_node parent, const ResultInfo& result) {
    pugi::xml_node node = parent.append_child("result");
    putText(node, "type", RESULT_TYPES.wordOf(result.type()));
    putNumber(node, "id", result.id());
    putText(node, "name", result.name().toStdString());
    putText(node, "mapping", MAPPINGS.wordOf(result.resultMapping()));
    if (result.baseResultId() >= 0 && isResultType(result.baseResultType())) {
        putText(node, "baseType", RESULT_TYPES.wordOf(result.baseResultType()));
        putNumber(node, "baseId", result.baseResultId());
    }
}

void append(pugi::xml_node parent, const ZtfxState& state) {
    pugi::xml_node node = parent.append_child("state");
    putNumber(node, "id", state.info.id());
    putText(node, "name", state.info.name().toStdString());
    putText(node, "reference", REFERENCES.wordOf(state.info.referenceType()));
    putReal(node, "value", state.info.referenceValue());
    putNumbers(node, "meshes", state.meshes);
    for (const ZtfxField& field : state.fields) {
        pugi::xml_node fieldNode = node.append_child("field");
        putNumber(fieldNode, "result", field.result);
        putNumbers(fieldNode, "arrays", field.arrays);
    }
}

void append(pugi::xml_node parent, const StateGroupInfo& group) {
    std::vector<int> ids;
    for (std::size_t i = 0; i < group.stateCount(); ++i) {
        ids.push_back(group.stateId(i));
    }
    putNumbers(parent.append_child("group"), "states", ids);
}

template <class Item>
void appendAll(pugi::xml_node parent, const std::vector<Item>& items) {
    for (const Item& item : items) {
        append(parent, item);
    }
}

void append(pugi::xml_node parent, const ZtfxCase& contents) {
    pugi::xml_node node = parent.append_child("case");
    putNumber(node, "id", contents.info.id);
    putText(node, "name", contents.info.name.toStdString());
    pugi::xml_node simulation = node.append_child("simulation");
    putText(simulation, "file", contents.info.simulation.filename().toStdString());
    putText(simulation, "title", contents.info.simulation.title().toStdString());
    for (const Str& warning : contents.warnings) {
        putText(node.append_child("warning"), "text", warning.toStdString());
    }
    appendAll(node, contents.geometries);
    appendAll(node, contents.meshes);
    appendAll(node, contents.results);
    appendAll(node, contents.states);
    appendAll(node, contents.groups);
}

// Reading.

bool readArray(const XmlAttributeReader& xml, pugi::xml_node node, ZtfxArray* array, Error* error) {
    std::string type, checksum;
    if (!xml.readNumber(node, "id", 1, LARGEST_COUNT, &array->id, error) || !xml.readText(node, "type", &type, error) ||
        !xml.readNumber(node, "items", 1, LARGEST_COUNT, &array->items, error) ||
        !xml.readNumber(node, "components", 1, 6, &array->components, error) ||
        !xml.readText(node, "checksum", &checksum, error)) {
        return false;
    }
    const std::optional<ZtfxType> knownType = ztfxTypeOf(type);
    const std::optional<ZtfxChecksum> knownChecksum = ZtfxChecksum::fromText(checksum);
    array->type = knownType.value_or(ZtfxType::UINT8);
    array->checksum = knownChecksum.value_or(ZtfxChecksum());
    return (knownType || xml.fail(node, "type", type, "float64, float32, int32, uint32 or uint8", error)) &&
           (knownChecksum || xml.fail(node, "checksum", checksum, "32 hexadecimal digits", error));
}

bool readPart(const XmlAttributeReader& xml, pugi::xml_node node, ZtfxPart* part, Error* error) {
    for (const auto& [name, array] :
         {std::pair("coordinates", &part->coordinates), std::pair("nodeIds", &part->nodeIds),
          std::pair("elementTypes", &part->elementTypes), std::pair("connectivity", &part->connectivity),
          std::pair("elementIds", &part->elementIds)}) {
        if (node.attribute(name) && !xml.readNumber(node, name, 1, LARGEST_COUNT, array, error)) {
            return false;
        }
    }
    return true;
}

bool readMesh(const XmlAttributeReader& xml, pugi::xml_node node, ZtfxMesh* mesh, Error* error) {
    for (const pugi::xml_node part : node.children("part")) {
        if (!readPart(xml, part, &mesh->emplace_back(), error)) {
            return false;
        }
    }
    return true;
}

bool readGeometry(const XmlAttributeReader& xml, pugi::xml_node node, std::vector<PartInfo>* parts, Error* error) {
    for (const pugi::xml_node part : node.children("part")) {
        int id = 0;
        std::string name;
        if (!xml.readNumber(part, "id", SMALLEST_INT, LARGEST_INT, &id, error) ||
            !xml.readText(part, "name", &name, error)) {
            return false;
        }
        parts->emplace_back(id, name);
    }
    return true;
}

bool readResult(const XmlAttributeReader& xml, pugi::xml_node node, ResultInfo* result, Error* error) {
    int type = 0, id = 0, mapping = 0;
    std::string name;
    if (!xml.readWord(node, "type", RESULT_TYPES, &type, error) ||
        !xml.readNumber(node, "id", 0, ZTF_RESULT_ID_END - 1, &id, error) ||
        !xml.readText(node, "name", &name, error) || !xml.readWord(node, "mapping", MAPPINGS, &mapping, error)) {
        return false;
    }
    *result = ResultInfo(static_cast<ResultType>(type), id, name, static_cast<ResultMapping>(mapping));
    if (!node.attribute("baseId")) {
        return true;
    }
    int baseType = 0, baseId = 0;
    if (!xml.readWord(node, "baseType", RESULT_TYPES, &baseType, error) ||
        !xml.readNumber(node, "baseId", 0, LARGEST_INT, &baseId, error)) {
        return false;
    }
    result->setBaseResult(baseId, static_cast<ResultType>(baseType));
    return true;
}

bool readResults(const XmlAttributeReader& xml, pugi::xml_node parent, std::vector<ResultInfo>* results, Error* error) {
    std::set<std::pair<ResultType, int>> ids;
    for (const pugi::xml_node node : parent.children("result")) {
        ResultInfo result;
        if (!readResult(xml, node, &result, error)) {
            return false;
        }
        if (!ids.insert({result.type(), result.id()}).second) {
            return xml.fail(node, "id", std::to_string(result.id()), "an id that no earlier result of the type has",
                            error);
        }
        results->push_back(result);
    }
    return true;
}

bool readStateInfo(const XmlAttributeReader& xml, pugi::xml_node node, StateInfo* info, Error* error) {
    int id = 0, reference = 0;
    std::string name;
    double value = 0;
    if (!xml.readNumber(node, "id", 0, LARGEST_INT, &id, error) || !xml.readText(node, "name", &name, error) ||
        !xml.readWord(node, "reference", REFERENCES, &reference, error) ||
        !xml.readReal(node, "value", &value, error)) {
        return false;
    }
    *info = StateInfo(id, name, static_cast<StateInfo::ReferenceType>(reference), value);
    return true;
}

bool readFields(const XmlAttributeReader& xml, pugi::xml_node parent, const ZtfxCase& contents,
                std::vector<ZtfxField>* fields, Error* error) {
    for (const pugi::xml_node node : parent.children("field")) {
        ZtfxField& field = fields->emplace_back();
        const std::int64_t last = static_cast<std::int64_t>(contents.results.size()) - 1;
        if (!xml.readNumber(node, "result", 0, last, &field.result, error) ||
            !xml.readNumbers(node, "arrays", contents.geometries.size(), LARGEST_COUNT, &field.arrays, error)) {
            return false;
        }
    }
    return true;
}

bool readState(const XmlAttributeReader& xml, pugi::xml_node node, const ZtfxCase& contents, ZtfxState* state,
               Error* error) {
    const std::int64_t lastMesh = static_cast<std::int64_t>(contents.meshes.size()) - 1;
    if (!readStateInfo(xml, node, &state->info, error) ||
        !xml.readNumbers(node, "meshes", contents.geometries.size(), lastMesh, &state->meshes, error)) {
        return false;
    }
    for (std::size_t g = 0; g < contents.geometries.size(); ++g) {
        if (contents.meshes[state->meshes[g]].size() != contents.geometries[g].size()) {
            return xml.fail(node, "meshes", std::to_string(state->meshes[g]), "a mesh with the geometry's parts",
                            error);
        }
    }
    return readFields(xml, node, contents, &state->fields, error);
}

bool readStates(const XmlAttributeReader& xml, pugi::xml_node parent, ZtfxCase* contents, std::set<int>* ids,
                Error* error) {
    for (const pugi::xml_node node : parent.children("state")) {
        ZtfxState& state = contents->states.emplace_back();
        if (!readState(xml, node, *contents, &state, error)) {
            return false;
        }
        if (!ids->insert(state.info.id()).second) {
            return xml.fail(node, "id", std::to_string(state.info.id()), "an id that no earlier state has", error);
        }
    }
    return true;
}

bool readGroups(const XmlAttributeReader& xml, pugi::xml_node parent, const std::set<int>& stateIds,
                std::vector<StateGroupInfo>* groups, Error* error) {
    for (const pugi::xml_node node : parent.children("group")) {
        std::vector<int> ids;
        if (!xml.readNumbers(node, "states", XmlAttributeReader::ANY_COUNT, LARGEST_INT, &ids, error)) {
            return false;
        }
        for (const int id : ids) {
            if (!stateIds.contains(id)) {
                return xml.fail(node, "states", std::to_string(id), "the id of a state", error);
            }
        }
        groups->emplace_back(std::move(ids));
    }
    return true;
}

bool readCaseInfo(const XmlAttributeReader& xml, pugi::xml_node node, ZTFxCaseInfo* info, Error* error) {
    std::string name, file, title;
    const pugi::xml_node simulation = node.child("simulation");
    if (!xml.readNumber(node, "id", 0, LARGEST_INT, &info->id, error) || !xml.readText(node, "name", &name, error) ||
        (simulation &&
         !(xml.readText(simulation, "file", &file, error) && xml.readText(simulation, "title", &title, error)))) {
        return false;
    }
    info->name = name;
    info->simulation = SimulationInfo(file, title);
    return true;
}

} // namespace

std::string makeZtfxHeader(bool isEncrypted) {
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("ztfx");
    putNumber(root, "format", FORMAT);
    putText(root, "encryption", ENCRYPTIONS.wordOf(isEncrypted));
    return textOf(document);
}

std::string makeZtfxIndex(const ZtfxIndex& index) {
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("index");
    appendAll(root, index.arrays);
    for (const ZtfxCase& contents : index.cases) {
        append(root, contents);
    }
    return textOf(document);
}

bool parseZtfxHeader(std::string text, const Str& path, bool* isEncrypted, Error* error) {
    pugi::xml_document document;
    const XmlAttributeReader xml(path, ZTFX_HEADER_NAME);
    int format = 0, encryption = 0;
    if (!xml.parse(text, "ztfx", &document, error) ||
        !xml.readNumber(document.first_child(), "format", 1, LARGEST_INT, &format, error)) {
        return false;
    }
    if (format > FORMAT) {
        return fail(
            error,
            path + Str(": written in format %1 of later versions; this one reads format %2").arg(format).arg(FORMAT));
    }
    if (!xml.readWord(document.first_child(), "encryption", ENCRYPTIONS, &encryption, error)) {
        return false;
    }
    *isEncrypted = encryption != 0;
    return true;
}

struct ZtfxIndexParser::Document {
    explicit Document(const Str& path) : xml(path, ZTFX_INDEX_NAME) {}

    XmlAttributeReader xml;
    std::string text; ///< What the nodes point into.
    pugi::xml_document document;
    std::vector<pugi::xml_node> cases;
};

ZtfxIndexParser::ZtfxIndexParser(const Str& path) : m_document(std::make_unique<Document>(path)) {}

ZtfxIndexParser::~ZtfxIndexParser() = default;

bool ZtfxIndexParser::parse(std::string text, Error* error) {
    const XmlAttributeReader& xml = m_document->xml;
    m_document->text = std::move(text);
    if (!xml.parse(m_document->text, "index", &m_document->document, error)) {
        return false;
    }
    std::set<int> ids;
    for (const pugi::xml_node node : m_document->document.first_child().children("case")) {
        ZTFxCaseInfo info;
        if (!readCaseInfo(xml, node, &info, error)) {
            return false;
        }
        if (!ids.insert(info.id).second) {
            return xml.fail(node, "id", std::to_string(info.id), "an id that no earlier case has", error);
        }
        m_cases.push_back(info);
        m_document->cases.push_back(node);
    }
    return true;
}

const std::vector<ZTFxCaseInfo>& ZtfxIndexParser::cases() const {
    return m_cases;
}

bool ZtfxIndexParser::readArrays(std::vector<ZtfxArray>* arrays, Error* error) const {
    const XmlAttributeReader& xml = m_document->xml;
    for (const pugi::xml_node node : m_document->document.first_child().children("array")) {
        ZtfxArray array;
        if (!readArray(xml, node, &array, error)) {
            return false;
        }
        if (!arrays->empty() && array.id <= arrays->back().id) {
            return xml.fail(node, "id", std::to_string(array.id), "an id above the earlier ones", error);
        }
        arrays->push_back(array);
    }
    return true;
}

bool ZtfxIndexParser::readCase(std::size_t caseIndex, ZtfxCase* contents, Error* error) const {
    const XmlAttributeReader& xml = m_document->xml;
    const pugi::xml_node node = m_document->cases[caseIndex];
    contents->info = m_cases[caseIndex];
    for (const pugi::xml_node warning : node.children("warning")) {
        std::string text;
        if (!xml.readText(warning, "text", &text, error)) {
            return false;
        }
        contents->warnings.emplace_back(text);
    }
    for (const pugi::xml_node geometry : node.children("geometry")) {
        if (!readGeometry(xml, geometry, &contents->geometries.emplace_back(), error)) {
            return false;
        }
    }
    for (const pugi::xml_node mesh : node.children("mesh")) {
        if (!readMesh(xml, mesh, &contents->meshes.emplace_back(), error)) {
            return false;
        }
    }
    std::set<int> stateIds;
    return readResults(xml, node, &contents->results, error) && readStates(xml, node, contents, &stateIds, error) &&
           readGroups(xml, node, stateIds, &contents->groups, error);
}

} // namespace orv::ug
