#include "OrvImportCae/MshSections.h"

#include "OrvImportCae/MshInput.h"
#include "OrvImportCae/MshMesh.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <string_view>
#include <utility>

namespace orv::imp::cae {
namespace {

struct DataSectionName {
    ug::ResultMapping mapping;
    const char* name;
};

constexpr DataSectionName DATA_SECTIONS[] = {
    {ug::PER_NODE, "NodeData"}, {ug::PER_ELEMENT, "ElementData"}, {ug::PER_ELEMENT_NODE, "ElementNodeData"}};

// What these tell is of no use here, and nobody misses it.
constexpr const char* SILENT_SECTIONS[] = {"Comments", "Periodic", "GhostElements", "InterpolationScheme"};

bool isSilent(const std::string& name) {
    return std::find(std::begin(SILENT_SECTIONS), std::end(SILENT_SECTIONS), name) != std::end(SILENT_SECTIONS);
}

/// Walks the sections of a file.
class SectionWalker {
public:
    SectionWalker(CaeFile* file, MshSections* sections, ug::Error* error)
        : m_file(*file), m_sections(*sections), m_error(error), m_input(*file, error) {}

    bool run() {
        if (!readFormat()) {
            return false;
        }
        while (!m_isCut && m_input.skipBlanks()) {
            if (!readSection()) {
                return false;
            }
        }
        if (!m_hasNodes || !m_hasElements) {
            return ug::fail(m_error, Str(m_file.name() + ": expected the sections $Nodes and $Elements, found " +
                                         (m_hasNodes ? "the first alone" : "none")));
        }
        return true;
    }

private:
    bool readFormat() {
        double number = 0.0;
        std::int64_t isBinary = 0;
        std::int64_t size = 0;
        if (!skipCommentsAhead() || !m_input.expectWord("$MeshFormat") || !m_input.readTextReal("a version", &number)) {
            return false;
        }
        if (!setVersion(number)) {
            return m_input.fail("expected version 2 to 2.2, 4 or 4.1 of the format, found another");
        }
        if (!m_input.readTextInteger("0 for text or 1 for bytes", &isBinary)) {
            return false;
        }
        if (isBinary != 0 && isBinary != 1) {
            return m_input.fail("expected 0 for text or 1 for bytes, found " + std::to_string(isBinary));
        }
        if (!m_input.readTextInteger("the size of a number, 8", &size)) {
            return false;
        }
        if (size != 8) {
            return m_input.fail("expected the size of a number, 8, found " + std::to_string(size));
        }
        if (isBinary == 1 && m_version == MshVersion::V40) {
            return m_input.fail("expected text, the only form in which version 4.0 is read, found bytes");
        }
        m_sections.isBinary = isBinary == 1;
        return (!m_sections.isBinary || readByteOrder()) && m_input.expectWord("$EndMeshFormat");
    }

    bool skipCommentsAhead() {
        std::string word;
        while (m_input.readWord("$MeshFormat", &word)) {
            if (word != "$Comments") {
                m_input.seek(m_input.lastOffset());
                return true;
            }
            if (!m_input.find("$EndComments") || !m_input.readWord("$EndComments", &word)) {
                return m_input.fail("expected $EndComments, found the end of the file");
            }
        }
        return false;
    }

    bool setVersion(double number) {
        if (number >= 2.0 && number < 3.0) {
            m_version = MshVersion::V22;
        } else if (number == 4.0) {
            m_version = MshVersion::V40;
        } else if (number == 4.1) {
            m_version = MshVersion::V41;
        } else {
            return false;
        }
        return true;
    }

    bool readByteOrder() {
        constexpr std::int64_t ONE_OF_OTHER_ORDER = 0x01000000;
        std::int64_t one = 0;
        if (!m_input.skipLine("the number 1 in bytes")) {
            return false;
        }
        m_file.noteBinaryAt(m_input.offset());
        m_input.setBinary(true);
        if (!m_input.readInt("the number 1 in bytes", &one)) {
            return false;
        }
        if (one == ONE_OF_OTHER_ORDER) {
            return m_input.fail("expected bytes in the order of this computer, found the other order; write the file "
                                "as text, or on a computer like this one");
        }
        return one == 1 || m_input.fail("expected the number 1 in bytes, found " + std::to_string(one));
    }

    bool readSection() {
        std::string name;
        if (!m_input.readWord("the name of a section", &name)) {
            return false;
        }
        const std::int64_t header = m_input.lastOffset();
        if (name == "$" && m_input.bytesLeft() == 0) {
            return noteCut(header);
        }
        if (name.size() < 2 || name[0] != '$') {
            return m_input.fail("expected the name of a section, found " + quotedForPeople(name));
        }
        name.erase(0, 1);
        if (const auto* data = findDataSection(name)) {
            return readDataSection(data->mapping, header);
        }
        if (isOfMesh(name)) {
            // In bytes, the section begins behind the line's end.
            const bool beginsWithBytes = m_sections.isBinary && m_version != MshVersion::V22 && name != "PhysicalNames";
            return (!beginsWithBytes || m_input.skipLine("bytes")) && readMeshSection(name) &&
                   m_input.expectWord("$End" + name);
        }
        return passOver(name, header);
    }

    static const DataSectionName* findDataSection(const std::string& name) {
        const auto found = std::find_if(std::begin(DATA_SECTIONS), std::end(DATA_SECTIONS),
                                        [&name](const DataSectionName& section) { return name == section.name; });
        return found == std::end(DATA_SECTIONS) ? nullptr : found;
    }

    bool isOfMesh(const std::string& name) const {
        const bool hasEntities = m_version != MshVersion::V22;
        return name == "PhysicalNames" || name == "Nodes" || name == "Elements" ||
               (name == "ParametricNodes" && !hasEntities) ||
               ((name == "Entities" || name == "PartitionedEntities") && hasEntities);
    }

    bool readMeshSection(const std::string& name) {
        if (name == "PhysicalNames") {
            return readMshPhysicalNames(m_input, &m_sections);
        }
        if (name == "Elements") {
            if (!m_hasNodes) {
                return m_input.fail("expected $Nodes ahead of $Elements, found none");
            }
            return isFirst(&m_hasElements, name) && readMshElements(m_file, m_input, m_version, &m_sections);
        }
        if (name == "Nodes" || name == "ParametricNodes") {
            return isFirst(&m_hasNodes, name) &&
                   readMshNodes(m_input, m_version, name == "ParametricNodes", &m_sections);
        }
        return readMshEntities(m_input, m_version, name == "PartitionedEntities", &m_sections);
    }

    bool isFirst(bool* isThere, const std::string& name) {
        return !std::exchange(*isThere, true) || m_input.fail("expected one section $" + name + ", found another");
    }

    bool passOver(const std::string& name, std::int64_t header) {
        if (!isSilent(name)) {
            m_sections.warnings.push_back(m_file.place(header) + ": the section " + quotedForPeople("$" + name) +
                                          " is left out");
        }
        std::string end;
        if (!m_input.find("$End" + name) || !m_input.readWord("an end", &end)) {
            return noteCut(header);
        }
        return true;
    }

    // Whoever wrote the file was stopped. What is there is as good as ever.
    bool noteCut(std::int64_t header) {
        m_isCut = true;
        m_sections.warnings.push_back(m_file.place(header) +
                                      ": the file ends within the section that begins here, which is left out");
        return true;
    }

    bool readDataSection(ug::ResultMapping mapping, std::int64_t header) {
        MshDataSection section;
        section.mapping = mapping;
        section.header = header;
        const std::string end = std::string("$End") + mshSectionName(mapping);
        if (readDataHeader(&section) && skipValues(section) && m_input.expectWord(end)) {
            m_sections.data.push_back(std::move(section));
            return true;
        }
        if (!m_input.hasEnded()) {
            return false;
        }
        if (m_error) {
            m_error->clear();
        }
        return noteCut(header);
    }

    bool readDataHeader(MshDataSection* section) {
        constexpr std::int64_t MOST_TAGS = 1000;
        constexpr std::int64_t MOST_COMPONENTS = 1000000;
        const auto readCount = [this](const char* what, std::int64_t most, std::int64_t* count) {
            if (!m_input.readTextInteger(what, count)) {
                return false;
            }
            return (*count >= 0 && *count <= most) ||
                   m_input.fail("expected " + std::string(what) + " up to " + std::to_string(most) + ", found " +
                                std::to_string(*count));
        };
        std::int64_t count = 0;
        if (!readCount("the number of text tags", MOST_TAGS, &count)) {
            return false;
        }
        for (std::int64_t i = 0; i < count; ++i) {
            std::string text;
            if (!m_input.readQuoted("a text tag", &text)) {
                return false;
            }
            section->name = i == 0 ? text : section->name;
        }
        if (!readCount("the number of real tags", MOST_TAGS, &count)) {
            return false;
        }
        for (std::int64_t i = 0; i < count; ++i) {
            double value = 0.0;
            if (!m_input.readTextReal("a real tag", &value)) {
                return false;
            }
            if (i == 0 && !std::isfinite(value)) {
                return m_input.fail("expected a time, found none");
            }
            section->time = i == 0 ? value : section->time;
        }
        std::int64_t tags[3] = {};
        if (!readCount("the number of integer tags", MOST_TAGS, &count)) {
            return false;
        }
        if (count < 3) {
            return m_input.fail("expected 3 integer tags or more: step, components, items; found " +
                                std::to_string(count));
        }
        for (std::int64_t i = 0; i < count; ++i) {
            std::int64_t tag = 0;
            if (!m_input.readTextInteger("an integer tag", &tag)) {
                return false;
            }
            if (i == 1 && (tag < 1 || tag > MOST_COMPONENTS)) {
                return m_input.fail("expected a number of components from 1 to 1000000, found " + std::to_string(tag));
            }
            if (i == 2 && tag < 0) {
                return m_input.fail("expected a number of items, found " + std::to_string(tag));
            }
            if (i < 3) {
                tags[i] = tag;
            }
        }
        section->step = tags[0];
        section->componentCount = tags[1];
        section->itemCount = tags[2];
        return true;
    }

    // To the end mark.
    bool skipValues(MshDataSection& section) {
        if (!m_sections.isBinary) {
            section.begin = m_input.offset();
            return m_input.find("$");
        }
        if (!m_input.skipLine("values")) {
            return false;
        }
        section.begin = m_input.offset();
        return section.mapping == ug::PER_ELEMENT_NODE ? skipElementNodeValues(section) : skipBytesOfItems(section);
    }

    bool skipBytesOfItems(const MshDataSection& section) {
        const std::int64_t itemSize = 4 + 8 * section.componentCount;
        const bool isWhole = section.itemCount <= m_input.bytesLeft() / itemSize;
        m_input.seek(isWhole ? m_input.offset() + section.itemCount * itemSize : m_file.size());
        return isWhole || m_input.find("$");
    }

    bool skipElementNodeValues(const MshDataSection& section) {
        for (std::int64_t i = 0; i < section.itemCount; ++i) {
            std::int64_t id = 0;
            std::int64_t nodeCount = 0;
            if (!m_input.readInt("an element's number", &id) || !m_input.readInt("a number of nodes", &nodeCount)) {
                return false;
            }
            const std::int64_t valueSize = 8 * section.componentCount;
            if (nodeCount < 0) {
                return m_input.fail("expected a number of nodes, found " + std::to_string(nodeCount));
            }
            const bool isWhole = nodeCount <= m_input.bytesLeft() / valueSize;
            m_input.seek(isWhole ? m_input.offset() + nodeCount * valueSize : m_file.size());
        }
        return true;
    }

    CaeFile& m_file;
    MshSections& m_sections;
    ug::Error* m_error;
    MshInput m_input;
    MshVersion m_version = MshVersion::V41;
    bool m_hasNodes = false;
    bool m_hasElements = false;
    bool m_isCut = false;
};

} // namespace

const char* mshSectionName(ug::ResultMapping mapping) {
    return std::find_if(std::begin(DATA_SECTIONS), std::end(DATA_SECTIONS),
                        [mapping](const DataSectionName& section) { return section.mapping == mapping; })
        ->name;
}

bool readMshSections(CaeFile* file, MshSections* sections, ug::Error* error) {
    return SectionWalker(file, sections, error).run();
}

} // namespace orv::imp::cae
