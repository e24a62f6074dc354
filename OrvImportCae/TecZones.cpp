#include "OrvImportCae/TecZones.h"

#include "OrvImportCae/TecInput.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <map>

namespace orv::imp::cae {
namespace {

constexpr TecCellType CELL_TYPES[] = {
    {"FELINESEG", "LINESEG", ug::BEAM, 2},
    {"FETRIANGLE", "TRIANGLE", ug::TRIANGLE, 3},
    {"FEQUADRILATERAL", "QUADRILATERAL", ug::QUADRILATERAL, 4},
    {"FETETRAHEDRON", "TETRAHEDRON", ug::TETRAHEDRON, 4},
    {"FEBRICK", "BRICK", ug::HEXAHEDRON, 8},
};

constexpr const char* RECORDS[] = {"TITLE",    "FILETYPE",       "VARIABLES",  "ZONE",         "TEXT",
                                   "GEOMETRY", "DATASETAUXDATA", "VARAUXDATA", "CUSTOMLABELS", "USERREC"};

constexpr std::int64_t MOST_ITEMS = std::numeric_limits<std::uint32_t>::max();

bool isRecord(const std::string& name) {
    return std::find(std::begin(RECORDS), std::end(RECORDS), name) != std::end(RECORDS);
}

bool isNumberWord(const std::string& name) {
    return name.starts_with("NAN") || name.starts_with("INF");
}

/// Something that a zone says of some of its variables.
struct Choice {
    std::vector<std::size_t> variables; ///< By their indexes.
    std::string value;
};

/// The records of a file.
class Parser {
public:
    Parser(const CaeFile& file, TecZones* zones, ug::Error* error)
        : m_file(file), m_input(file, error), m_zones(*zones), m_error(error) {}

    bool run() {
        if (!checkBegin()) {
            return false;
        }
        while (m_input.skipBlanks()) {
            m_begin = m_input.offset();
            std::string name;
            if (!m_input.readName(EXPECTED_RECORD, &name) || !readRecord(name)) {
                return false;
            }
        }
        return !m_zones.zones.empty() || m_input.failAt(m_file.size(), "the file ends, expected a ZONE");
    }

private:
    static constexpr const char* EXPECTED_RECORD = "a record of a Tecplot file, such as ZONE";

    bool checkBegin() {
        char begin[5] = {};
        if (m_file.read(0, begin, sizeof begin) == sizeof begin && std::string_view(begin, 5) == "#!TDV") {
            return ug::fail(m_error, Str(m_file.name() + " is a binary Tecplot file, expected one in text"));
        }
        std::string name;
        m_input.seek(0);
        if (!m_input.isAtName() || !m_input.readName("", &name) || !isRecord(name)) {
            return ug::fail(m_error, Str(m_file.name() + " is no Tecplot file: expected TITLE, VARIABLES or ZONE at "
                                                         "its begin"));
        }
        m_input.seek(0);
        return true;
    }

    bool readRecord(const std::string& name) {
        if (name == "TITLE") {
            return m_input.expect('=', "'='") && m_input.readText("a title", &m_zones.title);
        }
        if (name == "VARIABLES") {
            return readVariables();
        }
        if (name == "ZONE") {
            return readZone();
        }
        if (isRecord(name)) {
            skipRecord();
            return true;
        }
        return m_input.fail(std::string("expected ") + EXPECTED_RECORD + ", found " + quotedForPeople(name));
    }

    // Up to a line that begins with the name of a record.
    void skipRecord() {
        while (m_input.skipLine()) {
            const std::int64_t line = m_input.offset();
            std::string name;
            const bool isName = m_input.isAtName() && m_input.readName("", &name);
            m_input.seek(line);
            if (isName && isRecord(name)) {
                return;
            }
        }
    }

    bool readVariables() {
        if (!m_zones.variables.empty()) {
            return m_input.fail("there are VARIABLES twice");
        }
        if (!m_input.expect('=', "'='")) {
            return false;
        }
        while (m_input.skipBlanks()) {
            const std::int64_t begin = m_input.offset();
            std::string name;
            if (m_input.isAtName() && m_input.readName("", &name) && isRecord(name)) {
                m_input.seek(begin);
                break;
            }
            m_input.seek(begin);
            if (!m_input.readText("the name of a variable", &name)) {
                return false;
            }
            m_zones.variables.push_back(name);
        }
        return !m_zones.variables.empty() || m_input.failAt(m_begin, "there are no names behind VARIABLES");
    }

    bool readZone() {
        if (m_zones.variables.empty()) {
            return m_input.failAt(m_begin, "expected VARIABLES before the first ZONE");
        }
        // What a file may ask for of memory depends on its size.
        if ((m_zones.zones.size() + 1) * m_zones.variables.size() > std::size_t(m_file.size()) + 1000) {
            return m_input.failAt(m_begin, "there are more zones and variables than a file of this size can have");
        }
        m_zone = {};
        m_zone.offset = m_begin;
        m_zone.columns.resize(m_zones.variables.size());
        m_words.clear();
        m_numbers.clear();
        m_locations.clear();
        m_shares.clear();
        m_passives.clear();
        if (!readHeader() || !applyHeader() || !applyLocations() || !applyShares() || !passOverValues()) {
            return false;
        }
        m_zones.zones.push_back(std::move(m_zone));
        return true;
    }

    // KEY=value up to the first number or the next record.
    bool readHeader() {
        while (m_input.isAtName()) {
            const std::int64_t begin = m_input.offset();
            std::string key;
            if (!m_input.readName("", &key)) {
                return false;
            }
            if (isRecord(key) || (isNumberWord(key) && !m_input.take('='))) {
                m_input.seek(begin);
                return true;
            }
            std::string name;
            if (key == "AUXDATA" && !m_input.readWord("the name of auxiliary data", &name)) {
                return false;
            }
            if (!m_input.expect('=', "'=' behind a name in a ZONE") || !readEntry(key)) {
                return false;
            }
        }
        return true;
    }

    bool readEntry(const std::string& key) {
        if (key == "T") {
            return m_input.readText("a title", &m_zone.title);
        }
        if (key == "SOLUTIONTIME") {
            double time = 0;
            if (!m_input.readReal("a time", &time)) {
                return false;
            }
            m_zone.time = time;
            return true;
        }
        if (key == "STRANDID") {
            std::int64_t strand = 0;
            if (!m_input.readInteger("the number of a strand", -2, std::numeric_limits<int>::max(), &strand)) {
                return false;
            }
            m_zone.strand = strand;
            return true;
        }
        for (const char* number : {"I", "J", "K", "N", "E", "NODES", "ELEMENTS", "CONNECTIVITYSHAREZONE"}) {
            if (key == number) {
                const std::string shortKey = key == "NODES" || key == "ELEMENTS" ? key.substr(0, 1) : key;
                return m_input.readInteger("a whole number", 1, MOST_ITEMS, &m_numbers[shortKey]);
            }
        }
        if (key == "VARLOCATION") {
            return readChoices(true, &m_locations);
        }
        if (key == "VARSHARELIST") {
            return readChoices(false, &m_shares);
        }
        if (key == "PASSIVEVARLIST") {
            return readChoices(false, &m_passives);
        }
        for (const char* word : {"ZONETYPE", "DATAPACKING", "F", "ET"}) {
            if (key == word) {
                return m_input.readName("a word", &m_words[word]);
            }
        }
        if (key == "D") {
            return m_input.fail("lists shared as D are not read");
        }
        return skipValue();
    }

    bool skipValue() {
        std::string ignored;
        std::size_t depth = 0;
        do {
            if (m_input.take('(') || m_input.take('[')) {
                ++depth;
            } else if (depth > 0 && (m_input.take(')') || m_input.take(']'))) {
                --depth;
            } else if (!(depth > 0 && m_input.take('=')) && !m_input.readText("a value", &ignored)) {
                return false;
            }
        } while (depth > 0);
        return true;
    }

    // "([2-3,5]=VALUE, [7])", or a value for each variable, "(NODAL, 2*CELLCENTERED)".
    bool readChoices(bool mayBeForEach, std::vector<Choice>* choices) {
        const bool isList = m_input.take('(');
        std::size_t next = 0;
        std::size_t count = 0;
        do {
            Choice choice;
            if (m_input.take('[')) {
                if (!readSet(&choice.variables) || (m_input.take('=') && !m_input.readName("a value", &choice.value))) {
                    return false;
                }
            } else if (!mayBeForEach) {
                return m_input.expect('[', "numbers of variables in brackets");
            } else if (!m_input.readName("a value", &choice.value) || !spread(&next, &choice)) {
                return false;
            }
            count += choice.variables.size();
            choices->push_back(std::move(choice));
            if (count > m_zones.variables.size()) {
                return m_input.fail("this list is longer than that of the variables");
            }
        } while (isList && !m_input.take(')'));
        return true;
    }

    // "NODAL" and "2*NODAL" are for the next variables.
    bool spread(std::size_t* next, Choice* choice) {
        std::int64_t times = 1;
        const std::size_t star = choice->value.find('*');
        if (star != std::string::npos) {
            times = std::atol(choice->value.c_str());
            choice->value.erase(0, star + 1);
        }
        if (times < 1 || std::size_t(times) > m_zones.variables.size() - *next) {
            return m_input.fail("this list is longer than that of the variables");
        }
        for (; times > 0; --times) {
            choice->variables.push_back((*next)++);
        }
        return true;
    }

    // "2-3,5]"
    bool readSet(std::vector<std::size_t>* variables) {
        while (!m_input.take(']')) {
            std::string word;
            if (!m_input.readWord("']'", &word)) {
                return false;
            }
            char* end = nullptr;
            const unsigned long first = std::strtoul(word.c_str(), &end, 10);
            const unsigned long last = *end == '-' ? std::strtoul(end + 1, &end, 10) : first;
            if (*end != '\0' || first < 1 || last < first || last > m_zones.variables.size() ||
                variables->size() > m_zones.variables.size()) {
                return m_input.fail("expected numbers of variables from 1 to " +
                                    std::to_string(m_zones.variables.size()) + ", found " + quotedForPeople(word));
            }
            for (unsigned long variable = first; variable <= last; ++variable) {
                variables->push_back(variable - 1);
            }
        }
        return true;
    }

    bool failZone(const std::string& text) {
        return m_input.failAt(m_begin, "the zone " + text);
    }

    std::int64_t number(const char* key, std::int64_t other) const {
        const auto found = m_numbers.find(key);
        return found == m_numbers.end() ? other : found->second;
    }

    // ZONETYPE and DATAPACKING, or F and ET in older files.
    bool applyHeader() {
        const std::string type = m_words["ZONETYPE"];
        const std::string format = m_words["F"];
        if (type.starts_with("FE") || (type.empty() && format.starts_with("FE"))) {
            if (!findCellType()) {
                return false;
            }
        } else if (!type.empty() && type != "ORDERED") {
            return failZone("is of the type " + quotedForPeople(type) + ", which is not known");
        }
        m_isBlock = m_words["DATAPACKING"] == "BLOCK" || format == "BLOCK" || format == "FEBLOCK";
        const bool isPoint = m_words["DATAPACKING"] == "POINT" || format == "POINT" || format == "FEPOINT";
        if (!m_isBlock && !isPoint) {
            if (!m_words["DATAPACKING"].empty() || !format.empty()) {
                return failZone("has a packing that is not known");
            }
            // Old programs write points and do not tell.
            m_isBlock = !m_locations.empty();
        }
        return m_zone.cellType ? applyCounts() : applySizes();
    }

    bool findCellType() {
        const std::string type = m_words["ZONETYPE"];
        const std::string name = type.empty() ? m_words["ET"] : type;
        const auto found = std::find_if(std::begin(CELL_TYPES), std::end(CELL_TYPES), [&](const TecCellType& cellType) {
            return name == (type.empty() ? cellType.oldName : cellType.name);
        });
        if (found == std::end(CELL_TYPES)) {
            return failZone("has cells of the type " + quotedForPeople(name) + ", which are not read");
        }
        m_zone.cellType = found;
        return true;
    }

    bool applyCounts() {
        m_zone.nodeCount = std::uint64_t(number("N", 0));
        m_zone.cellCount = std::uint64_t(number("E", 0));
        return (m_zone.nodeCount > 0 && m_zone.cellCount > 0) ||
               failZone("does not tell its numbers of nodes and elements");
    }

    bool applySizes() {
        m_zone.nodeCount = 1;
        m_zone.cellCount = 1;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            constexpr const char* KEYS[] = {"I", "J", "K"};
            m_zone.sizes[axis] = std::uint64_t(number(KEYS[axis], 1));
            m_zone.nodeCount *= m_zone.sizes[axis];
            m_zone.cellCount *= std::max<std::uint64_t>(m_zone.sizes[axis] - 1, 1);
            if (m_zone.nodeCount > std::uint64_t(MOST_ITEMS)) {
                return failZone("has more than 4294967295 nodes");
            }
        }
        return m_numbers.contains("I") || m_numbers.contains("J") || m_numbers.contains("K") ||
               failZone("does not tell its size");
    }

    bool applyLocations() {
        for (const Choice& choice : m_locations) {
            const bool isOfCells = choice.value == "CELLCENTERED";
            if (!isOfCells && choice.value != "NODAL") {
                return failZone("has values at " + quotedForPeople(choice.value) + ", expected NODAL or CELLCENTERED");
            }
            if (isOfCells && !m_isBlock) {
                return failZone("has cell-centered values, and is not of blocks");
            }
            for (const std::size_t variable : choice.variables) {
                m_zone.columns[variable].isOfCells = isOfCells;
            }
        }
        return true;
    }

    bool applyShares() {
        m_isShared.assign(m_zone.columns.size(), false);
        for (const Choice& choice : m_passives) {
            for (const std::size_t variable : choice.variables) {
                m_isShared[variable] = true;
            }
        }
        for (const Choice& choice : m_shares) {
            const std::size_t other =
                choice.value.empty() ? m_zones.zones.size() : std::strtoul(choice.value.c_str(), nullptr, 10);
            if (other < 1 || other > m_zones.zones.size()) {
                return failZone("shares variables of zone " + quotedForPeople(choice.value) +
                                ", which is not before it");
            }
            const TecZone& from = m_zones.zones[other - 1];
            for (const std::size_t variable : choice.variables) {
                const TecColumn& column = from.columns[variable];
                if ((column.isOfCells ? from.cellCount != m_zone.cellCount : from.nodeCount != m_zone.nodeCount)) {
                    return failZone("shares values of zone " + std::to_string(other) + ", which has not as many");
                }
                m_zone.columns[variable] = column;
                m_isShared[variable] = true;
            }
        }
        return true;
    }

    bool passOverValues() {
        constexpr std::uint64_t MOST_REPEATED = 100;
        if (std::max(m_zone.nodeCount, m_zone.cellCount) > MOST_REPEATED * std::uint64_t(m_file.size())) {
            return failZone("has more nodes or elements than a file of this size can have");
        }
        m_input.skipBlanks();
        const std::size_t own = std::size_t(std::count(m_isShared.begin(), m_isShared.end(), false));
        const std::int64_t begin = m_input.offset();
        std::size_t place = 0;
        for (std::size_t v = 0; v < m_zone.columns.size(); ++v) {
            if (m_isShared[v]) {
                continue;
            }
            TecColumn& column = m_zone.columns[v];
            column.isThere = true;
            if (!m_isBlock) {
                column.offset = begin;
                column.place = place++;
                column.rowWidth = own;
                continue;
            }
            column.offset = m_input.offset();
            if (!m_input.skipNumbers("values", column.isOfCells ? m_zone.cellCount : m_zone.nodeCount)) {
                return false;
            }
        }
        if (!m_isBlock && !m_input.skipNumbers("values", m_zone.nodeCount * own)) {
            return false;
        }
        return !m_zone.cellType || findCells();
    }

    bool findCells() {
        const std::int64_t other = number("CONNECTIVITYSHAREZONE", 0);
        if (other == 0) {
            m_zone.cells = m_input.offset();
            return m_input.skipNumbers("nodes of elements", m_zone.cellCount * m_zone.cellType->nodeCount);
        }
        if (std::size_t(other) > m_zones.zones.size()) {
            return failZone("shares the elements of zone " + std::to_string(other) + ", which is not before it");
        }
        const TecZone& from = m_zones.zones[std::size_t(other) - 1];
        if (from.cellType != m_zone.cellType || from.cellCount != m_zone.cellCount) {
            return failZone("shares the elements of zone " + std::to_string(other) + ", which are others");
        }
        m_zone.cells = from.cells;
        return true;
    }

    const CaeFile& m_file;
    TecInput m_input;
    TecZones& m_zones;
    ug::Error* m_error;
    std::int64_t m_begin = 0; ///< Of the record.

    // Of the zone.
    TecZone m_zone;
    std::map<std::string, std::string> m_words;
    std::map<std::string, std::int64_t> m_numbers;
    std::vector<Choice> m_locations;
    std::vector<Choice> m_shares;
    std::vector<Choice> m_passives;
    std::vector<bool> m_isShared; ///< Or passive, for each variable.
    bool m_isBlock = false;
};

} // namespace

bool readTecZones(const CaeFile& file, TecZones* zones, ug::Error* error) {
    return Parser(file, zones, error).run();
}

} // namespace orv::imp::cae
