#include "OrvUnstructGrid/ZtfReader_p.h"

#include "OrvUnstructGrid/ZtfWords_p.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <set>
#include <unordered_map>
#include <utility>

namespace orv::ug {
namespace {

constexpr long long LARGEST_INT = std::numeric_limits<int>::max();
constexpr long long SMALLEST_INT = std::numeric_limits<int>::min();
constexpr long long LARGEST_INDEX = std::numeric_limits<std::uint32_t>::max();

std::array<const char*, ELEMENT_TYPE_COUNT> elementNames() {
    std::array<const char*, ELEMENT_TYPE_COUNT> names = {};
    for (std::size_t i = 0; i < names.size(); ++i) {
        names[i] = elementTypeInfo(ElementType(i)).name;
    }
    return names;
}

Str numbered(const char* what, long long number) {
    return Str(what) + " " + std::to_string(number);
}

bool areSameParts(const std::vector<PartInfo>& a, const std::vector<PartInfo>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const PartInfo& first, const PartInfo& second) {
        return first.id() == second.id() && first.name() == second.name();
    });
}

/// One reading of one file. What a statement belongs to is the last one of the kind that it can belong to.
class Parser {
public:
    Parser(ZtfFile& file, ZtfContents& contents, Error* error)
        : m_contents(contents), m_lines(file, error), m_statement(m_lines) {}

    bool run();

private:
    bool readFirst();
    bool readStatement();
    bool readTitle();
    bool readGeometry();
    bool readPart();
    bool readNodes();
    bool readElements();
    bool readElement(ElementType* type, std::vector<std::uint32_t>* connectivity, ZtfList* list);
    bool readResult();
    bool readState();
    bool readStateGeometries();
    bool readField();
    bool readValues();
    bool readGroup();
    bool readLast();

    bool nextStatement();
    bool takeCount(const char* what, std::size_t wordsPerItem, long long* count);
    bool endState();
    bool readGeometryNumbers(long long count, std::vector<std::size_t>* geometries);
    bool checkSameParts(const std::vector<std::size_t>& geometries);
    DataPart* currentPart();
    bool failForOrder(const char* what);

    ZtfContents& m_contents;
    ZtfLines m_lines;
    ZtfStatement m_statement;
    std::unordered_map<long long, std::size_t> m_geometries;      // By number.
    std::map<std::pair<std::size_t, int>, std::size_t> m_results; // By type and id.
    std::set<int> m_stateIds;
    std::set<std::size_t> m_fields;                         // Of the current state.
    std::set<std::pair<std::size_t, std::size_t>> m_places; // Of the current field.
    bool m_isInGeometry = false;                            // Otherwise in a state, or in nothing yet.
    bool m_hasNodes = false;
    bool m_hasElements = false;
    bool m_hasGeometries = false;
    bool m_hasTitle = false;
    bool m_isOver = false;
};

bool Parser::run() {
    if (!readFirst()) {
        return false;
    }
    while (!m_isOver) {
        if (!nextStatement() || !readStatement()) {
            return false;
        }
    }
    return readLast();
}

bool Parser::readFirst() {
    if (!m_lines.next()) {
        return m_lines.hasFailed() ? false : m_lines.fail("the file has no content; expected \"ztf 1\"");
    }
    long long version = 0;
    if (!m_statement.read()) {
        return false;
    }
    if (!m_statement.takeIf("ztf")) {
        return m_statement.failFor("\"ztf 1\" at the beginning of the file");
    }
    return m_statement.takeInteger("version 1 of the format", 1, 1, &version) && m_statement.takeEnd();
}

bool Parser::nextStatement() {
    if (!m_lines.next()) {
        return m_lines.hasFailed() ? false : m_lines.fail("the file ends here, without the line \"end\"");
    }
    return m_statement.read();
}

bool Parser::readStatement() {
    struct Kind {
        const char* keyword;
        bool (Parser::*read)();
    };
    static constexpr Kind KINDS[] = {
        {"title", &Parser::readTitle},       {"geometry", &Parser::readGeometry},
        {"part", &Parser::readPart},         {"nodes", &Parser::readNodes},
        {"elements", &Parser::readElements}, {"result", &Parser::readResult},
        {"state", &Parser::readState},       {"geometries", &Parser::readStateGeometries},
        {"field", &Parser::readField},       {"values", &Parser::readValues},
        {"group", &Parser::readGroup},
    };
    for (const Kind& kind : KINDS) {
        if (m_statement.takeIf(kind.keyword)) {
            return (this->*kind.read)();
        }
    }
    if (m_statement.takeIf("end")) {
        m_isOver = true;
        return m_statement.takeEnd() && endState();
    }
    return m_statement.failFor("a statement (title, geometry, part, nodes, elements, result, state, geometries, field, "
                               "values, group or end)");
}

bool Parser::readTitle() {
    if (std::exchange(m_hasTitle, true)) {
        return m_lines.fail("a second title");
    }
    return m_statement.takeName("the title in quotes", &m_contents.title) && m_statement.takeEnd();
}

bool Parser::readGeometry() {
    long long number = 0;
    if (!m_statement.takeInteger("the geometry's number", 1, LARGEST_INT, &number) || !m_statement.takeEnd()) {
        return false;
    }
    if (!m_geometries.try_emplace(number, m_contents.geometries.size()).second) {
        return m_lines.fail(numbered("a second geometry", number));
    }
    m_contents.geometries.push_back({PtrRef(new DataGeometry), {}, {}});
    m_isInGeometry = true;
    return true;
}

bool Parser::readPart() {
    long long id = 0;
    Str name;
    if (!m_isInGeometry) {
        return failForOrder("a part outside a geometry");
    }
    if (!m_statement.takeInteger("the part's id", SMALLEST_INT, LARGEST_INT, &id) ||
        !m_statement.takeName("the part's name in quotes", &name) || !m_statement.takeEnd()) {
        return false;
    }
    ZtfGeometry& geometry = m_contents.geometries.back();
    if (!geometry.partIndexes.try_emplace(int(id), geometry.parts.size()).second) {
        return m_lines.fail(numbered("a second part", id) + " of this geometry");
    }
    geometry.geometry->addPart(int(id));
    geometry.parts.emplace_back(int(id), name);
    m_hasNodes = false;
    m_hasElements = false;
    return true;
}

bool Parser::readNodes() {
    DataPart* part = currentPart();
    if (!part || std::exchange(m_hasNodes, true) || m_hasElements) {
        return failForOrder(!part ? "nodes outside a part" : "nodes behind other nodes, or elements, of their part");
    }
    long long count = 0;
    if (!takeCount("nodes", 3, &count)) {
        return false;
    }
    const bool hasIds = m_statement.takeIf("numbered");
    if (!m_statement.takeEnd()) {
        return false;
    }
    std::vector<double> coordinates(3 * std::size_t(count));
    std::vector<int> ids(hasIds ? std::size_t(count) : 0);
    ZtfList list(m_lines, "nodes");
    for (std::size_t i = 0; i < std::size_t(count); ++i) {
        long long id = 0;
        if (hasIds && !list.takeInteger(SMALLEST_INT, LARGEST_INT, &id)) {
            return false;
        }
        if (hasIds) {
            ids[i] = int(id);
        }
        for (std::size_t c = 3 * i; c < 3 * i + 3; ++c) {
            if (!list.takeNumber(&coordinates[c])) {
                return false;
            }
        }
    }
    part->nodes()->set(std::move(coordinates), std::move(ids));
    return list.takeEnd();
}

bool Parser::readElements() {
    DataPart* part = currentPart();
    if (!part || std::exchange(m_hasElements, true)) {
        return failForOrder(!part ? "elements outside a part" : "elements behind other elements of their part");
    }
    long long count = 0;
    if (!takeCount("elements", 2, &count)) {
        return false;
    }
    const bool hasIds = m_statement.takeIf("numbered");
    if (!m_statement.takeEnd()) {
        return false;
    }
    std::vector<ElementType> types(std::size_t(count), POINT);
    std::vector<std::uint32_t> connectivity;
    std::vector<int> ids(hasIds ? std::size_t(count) : 0);
    ZtfList list(m_lines, "elements");
    for (std::size_t i = 0; i < std::size_t(count); ++i) {
        long long id = 0;
        if (hasIds && !list.takeInteger(SMALLEST_INT, LARGEST_INT, &id)) {
            return false;
        }
        if (hasIds) {
            ids[i] = int(id);
        }
        if (!readElement(&types[i], &connectivity, &list)) {
            return false;
        }
    }
    part->elements()->set(std::move(types), std::move(connectivity), std::move(ids));
    return list.takeEnd();
}

bool Parser::readElement(ElementType* type, std::vector<std::uint32_t>* connectivity, ZtfList* list) {
    static const std::array<const char*, ELEMENT_TYPE_COUNT> NAMES = elementNames();
    std::size_t typeIndex = 0;
    if (!list->takeOneOf(NAMES, &typeIndex)) {
        return false;
    }
    *type = ElementType(typeIndex);
    const std::size_t nodeCount = elementTypeInfo(*type).nodeCount;
    if (connectivity->size() + nodeCount > std::size_t(LARGEST_INDEX)) {
        return m_lines.fail("the elements have too many nodes");
    }
    for (std::size_t n = 0; n < nodeCount; ++n) {
        long long node = 0;
        if (!list->takeInteger(1, (long long)currentPart()->nodes()->nodeCount(), &node)) {
            return false;
        }
        connectivity->push_back(std::uint32_t(node - 1));
    }
    return true;
}

bool Parser::readResult() {
    std::size_t type = 0;
    std::size_t mapping = 0;
    long long id = 0;
    Str name;
    if (!m_statement.takeOneOf("the result's type (scalar, vector, displacement or tensor)", ZTF_TYPES, &type) ||
        !m_statement.takeInteger("the result's id", 0, ZTF_RESULT_ID_END - 1, &id) ||
        !m_statement.takeName("the result's name in quotes", &name) ||
        !m_statement.takeOneOf("the result's mapping (node, element, element_node or element_surface)", ZTF_MAPPINGS,
                               &mapping)) {
        return false;
    }
    ResultInfo info(ResultType(type + 1), int(id), name, ResultMapping(mapping + 1));
    if (m_statement.takeIf("of")) {
        std::size_t baseType = 0;
        long long baseId = 0;
        if (!m_statement.takeOneOf("the base result's type", ZTF_TYPES, &baseType) ||
            !m_statement.takeInteger("the base result's id", 0, ZTF_RESULT_ID_END - 1, &baseId)) {
            return false;
        }
        info.setBaseResult(int(baseId), ResultType(baseType + 1));
    }
    if (!m_results.try_emplace({type, int(id)}, m_contents.results.size()).second) {
        return m_lines.fail("a second result " + Str(ZTF_TYPES[type]) + " " + std::to_string(id));
    }
    m_contents.results.push_back(info);
    return m_statement.takeEnd();
}

bool Parser::readState() {
    long long id = 0;
    Str name;
    std::size_t referenceType = 0;
    double value = 0.0;
    if (!m_statement.takeInteger("the state's id", 0, LARGEST_INT, &id) ||
        !m_statement.takeName("the state's name in quotes", &name) ||
        !m_statement.takeOneOf("the kind of reference value (time, frequency, load_case or other)", ZTF_REFERENCES,
                               &referenceType) ||
        !m_statement.takeNumber("the reference value", &value) || !m_statement.takeEnd()) {
        return false;
    }
    if (!endState()) {
        return false;
    }
    if (!m_stateIds.insert(int(id)).second) {
        return m_lines.fail(numbered("a second state", id));
    }
    m_contents.states.push_back({StateInfo(int(id), name, StateInfo::ReferenceType(referenceType), value), {}, {}});
    m_fields.clear();
    m_isInGeometry = false;
    m_hasGeometries = false;
    return true;
}

bool Parser::readStateGeometries() {
    if (m_isInGeometry || m_contents.states.empty() || std::exchange(m_hasGeometries, true)) {
        return failForOrder("geometries that are not the first ones of a state");
    }
    long long count = 0;
    std::vector<std::size_t> geometries;
    if (!takeCount("geometries", 1, &count) || !m_statement.takeEnd() || !readGeometryNumbers(count, &geometries) ||
        !checkSameParts(geometries)) {
        return false;
    }
    m_contents.states.back().geometries = std::move(geometries);
    return true;
}

bool Parser::endState() {
    return m_contents.states.empty() || m_hasGeometries ||
           m_lines.fail("the state in front of this line, " + std::to_string(m_contents.states.back().info.id()) +
                        ", does not tell its geometries");
}

bool Parser::readGeometryNumbers(long long count, std::vector<std::size_t>* geometries) {
    ZtfList list(m_lines, "geometries");
    for (long long i = 0; i < count; ++i) {
        long long number = 0;
        if (!list.takeInteger(1, LARGEST_INT, &number)) {
            return false;
        }
        const auto found = m_geometries.find(number);
        if (found == m_geometries.end()) {
            return m_lines.fail("there is no " + numbered("geometry", number) + " in front of this line");
        }
        geometries->push_back(found->second);
    }
    return list.takeEnd();
}

// States may have meshes of their own, but records of the parts are common to all.
bool Parser::checkSameParts(const std::vector<std::size_t>& geometries) {
    const std::vector<std::size_t>& first = m_contents.states.front().geometries;
    if (m_contents.states.size() == 1) {
        return true;
    }
    if (geometries.size() != first.size()) {
        return m_lines.fail("expected as many geometries as the first state has, " + std::to_string(first.size()) +
                            ", found " + std::to_string(geometries.size()));
    }
    for (std::size_t i = 0; i < first.size(); ++i) {
        if (geometries[i] != first[i] &&
            !areSameParts(m_contents.geometries[geometries[i]].parts, m_contents.geometries[first[i]].parts)) {
            return m_lines.fail(numbered("geometry", (long long)i + 1) +
                                " of this state has other parts than that of the first state");
        }
    }
    return true;
}

bool Parser::readField() {
    if (m_isInGeometry || m_contents.states.empty() || !m_hasGeometries) {
        return failForOrder("a field where no state has told its geometries");
    }
    std::size_t type = 0;
    long long id = 0;
    if (!m_statement.takeOneOf("the result's type (scalar, vector, displacement or tensor)", ZTF_TYPES, &type) ||
        !m_statement.takeInteger("the result's id", 0, ZTF_RESULT_ID_END - 1, &id) || !m_statement.takeEnd()) {
        return false;
    }
    const Str what = Str(ZTF_TYPES[type]) + " " + std::to_string(id);
    const auto found = m_results.find({type, int(id)});
    if (found == m_results.end()) {
        return m_lines.fail("there is no result " + what + " in front of this line");
    }
    const std::size_t result = found->second;
    if (!m_fields.insert(result).second) {
        return m_lines.fail("a second field " + what + " of this state");
    }
    m_contents.states.back().fields.push_back({result, {}});
    m_places.clear();
    return true;
}

bool Parser::readValues() {
    if (m_isInGeometry || m_contents.states.empty() || m_contents.states.back().fields.empty()) {
        return failForOrder("values outside a field");
    }
    ZtfState& state = m_contents.states.back();
    ZtfField& field = state.fields.back();
    long long geometryNumber = 0;
    long long partId = 0;
    if (!m_statement.takeInteger("the geometry's place in the state", 1, (long long)state.geometries.size(),
                                 &geometryNumber) ||
        !m_statement.takeInteger("the part's id", SMALLEST_INT, LARGEST_INT, &partId) || !m_statement.takeEnd()) {
        return false;
    }
    const std::size_t geometryIndex = std::size_t(geometryNumber - 1);
    const ZtfGeometry& geometry = m_contents.geometries[state.geometries[geometryIndex]];
    const auto part = geometry.partIndexes.find(int(partId));
    if (part == geometry.partIndexes.end()) {
        return m_lines.fail("there is no " + numbered("part", partId) + " in this geometry");
    }
    const std::size_t partIndex = part->second;
    if (!m_places.insert({geometryIndex, partIndex}).second) {
        return m_lines.fail("a second time values of " + numbered("part", partId) + " in this field");
    }
    const ResultInfo& info = m_contents.results[field.result];
    field.values.push_back({geometryIndex, partIndex, m_lines.end()});
    return ZtfList(m_lines, "values")
        .skip(geometry.geometry->part(partIndex)->itemCount(info.resultMapping()) * doublesPerItem(info.type()));
}

bool Parser::readGroup() {
    long long count = 0;
    if (!takeCount("states", 1, &count) || !m_statement.takeEnd()) {
        return false;
    }
    std::vector<int> ids;
    ZtfList list(m_lines, "group");
    for (long long i = 0; i < count; ++i) {
        long long id = 0;
        if (!list.takeInteger(0, LARGEST_INT, &id)) {
            return false;
        }
        if (!m_stateIds.contains(int(id))) {
            return m_lines.fail("there is no " + numbered("state", id) + " in front of this line");
        }
        ids.push_back(int(id));
    }
    m_contents.stateGroups.emplace_back(std::move(ids));
    return list.takeEnd();
}

bool Parser::readLast() {
    return !m_lines.next() ? !m_lines.hasFailed()
                           : m_lines.fail("expected nothing behind \"end\", found " + quotedForPeople(m_lines.text()));
}

// What is announced must fit into the rest of the file, where a word takes two bytes at least.
bool Parser::takeCount(const char* what, std::size_t wordsPerItem, long long* count) {
    if (!m_statement.takeInteger((std::string("the number of ") + what).c_str(), 0, LARGEST_INDEX, count)) {
        return false;
    }
    const long long room = (m_lines.bytesLeft() + 1) / 2 / (long long)wordsPerItem;
    return *count <= room || m_lines.fail(std::to_string(*count) + " " + what + " have no room in the " +
                                          std::to_string(m_lines.bytesLeft()) + " bytes that are left of the file");
}

DataPart* Parser::currentPart() {
    if (!m_isInGeometry || m_contents.geometries.back().parts.empty()) {
        return nullptr;
    }
    DataGeometry* geometry = m_contents.geometries.back().geometry.get();
    return geometry->part(geometry->partCount() - 1);
}

bool Parser::failForOrder(const char* what) {
    return m_lines.fail(Str(what) + " cannot stand here");
}

} // namespace

std::vector<std::size_t> ZtfContents::geometriesPerState() const {
    if (!states.empty()) {
        return states.front().geometries;
    }
    std::vector<std::size_t> all(geometries.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i] = i;
    }
    return all;
}

bool readZtfContents(ZtfFile& file, ZtfContents* contents, Error* error) {
    return Parser(file, *contents, error).run();
}

bool readZtfValues(ZtfLines& lines, const ZtfPlace& place, std::span<double> values) {
    lines.seek(place);
    ZtfList list(lines, "values");
    for (double& value : values) {
        if (!list.takeNumber(&value)) {
            return false;
        }
    }
    return list.takeEnd();
}

} // namespace orv::ug
