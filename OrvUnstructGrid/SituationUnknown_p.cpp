#include "OrvUnstructGrid/SituationUnknown_p.h"

#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/SituationXml_p.h"
#include "OrvUnstructGrid/XmlAttributes_p.h"
#include "OrvUnstructGrid/ZtfWords_p.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <deque>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace orv::ug {
namespace {

constexpr int FORMAT_MAJOR = 1;
constexpr int FORMAT_MINOR = 0;

/// An element and its attributes, of which one may tell it from its siblings of the same name.
struct KnownElement {
    std::string_view parent;
    std::string_view name;
    const char* key;
    std::array<std::string_view, 4> attributes;
};

constexpr KnownElement KNOWN_ELEMENTS[] = {
    {"", "situation", "", {"format", "name", "description", "sourceModelFile"}},
    {"situation", "properties", "", {}},
    {"properties", "set", "classType", {"classType"}},
    {"set", "int", "key", {"key", "value"}},
    {"set", "double", "key", {"key", "value"}},
    {"set", "bool", "key", {"key", "value"}},
    {"set", "text", "key", {"key", "value"}},
    {"set", "vector", "key", {"key", "value"}},
    {"set", "numbers", "key", {"key", "value"}},
    {"situation", "userData", "", {}},
    {"userData", "entry", "key", {"key", "value"}},
};

const KnownElement* findKnown(pugi::xml_node node) {
    const std::string_view parent = node.parent().name();
    const std::string_view name = node.name();
    const auto found = std::find_if(std::begin(KNOWN_ELEMENTS), std::end(KNOWN_ELEMENTS),
                                    [&](const KnownElement& e) { return e.name == name && e.parent == parent; });
    return found != std::end(KNOWN_ELEMENTS) ? found : nullptr;
}

bool isKnownAttribute(const KnownElement& element, pugi::xml_attribute attribute) {
    return std::find(element.attributes.begin(), element.attributes.end(), attribute.name()) !=
           element.attributes.end();
}

bool hasUnknown(pugi::xml_node node) {
    const KnownElement* known = findKnown(node);
    return !known || std::any_of(node.attributes_begin(), node.attributes_end(), [&](pugi::xml_attribute attribute) {
        return !isKnownAttribute(*known, attribute);
    }) || std::any_of(node.begin(), node.end(), hasUnknown);
}

// The name and the key, whatever way that is spelled.
std::string identityOf(pugi::xml_node node) {
    const KnownElement* known = findKnown(node);
    Str key;
    if (known) {
        readZtfText(node.attribute(known->key).value(), &key);
    }
    return node.name() + quotedZtfText(key);
}

void addUnknown(pugi::xml_node from, pugi::xml_node to) {
    const KnownElement& element = *findKnown(to);
    for (const pugi::xml_attribute attribute : from.attributes()) {
        if (!isKnownAttribute(element, attribute)) {
            to.append_copy(attribute);
        }
    }
    std::map<std::string, std::deque<pugi::xml_node>> places;
    for (const pugi::xml_node child : to.children()) {
        places[identityOf(child)].push_back(child);
    }
    for (const pugi::xml_node child : from.children()) {
        if (!findKnown(child)) {
            to.append_copy(child);
            continue;
        }
        std::deque<pugi::xml_node>& nodes = places[identityOf(child)];
        if (!nodes.empty()) {
            addUnknown(child, nodes.front());
            nodes.pop_front();
        }
    }
}

/// Stops at what a situation never has.
class ShapeCheck : public pugi::xml_tree_walker {
public:
    ShapeCheck(const XmlAttributeReader& xml, Error* error) : m_xml(xml), m_error(error) {}

    bool for_each(pugi::xml_node& node) override {
        if (node.type() == pugi::node_doctype) {
            return m_xml.fail(node, " has a document type in front of it, expected none", m_error);
        }
        if (node.type() == pugi::node_element && depth() >= DEEPEST_SITUATION_XML) {
            return m_xml.fail(node, " more than " + std::to_string(DEEPEST_SITUATION_XML) + " elements deep", m_error);
        }
        if (depth() == 0 && node.previous_sibling()) {
            return m_xml.fail(node, " beside the outermost element, expected nothing", m_error);
        }
        return checkAttributes(node);
    }

private:
    bool checkAttributes(pugi::xml_node node) const {
        constexpr std::size_t LONGEST_QUOTE = 40;
        std::vector<std::string_view> names;
        for (const pugi::xml_attribute attribute : node.attributes()) {
            names.push_back(attribute.name());
        }
        std::sort(names.begin(), names.end());
        const auto second = std::adjacent_find(names.begin(), names.end());
        return second == names.end() ||
               m_xml.fail(node, " has the attribute '" + std::string(second->substr(0, LONGEST_QUOTE)) + "' twice",
                          m_error);
    }

    const XmlAttributeReader& m_xml;
    Error* m_error;
};

// "12.3"; nothing else is taken, not even a blank.
bool readFormat(std::string_view text, int* major, int* minor) {
    const char* end = text.data() + text.size();
    const auto [point, problem] = std::from_chars(text.data(), end, *major);
    if (problem != std::errc() || point == end || *point != '.') {
        return false;
    }
    const auto [stop, secondProblem] = std::from_chars(point + 1, end, *minor);
    return secondProblem == std::errc() && stop == end && *major >= 0 && *minor >= 0;
}

bool checkFormat(const XmlAttributeReader& xml, pugi::xml_node root, Error* error) {
    std::string text;
    int major = 0;
    int minor = 0;
    if (!xml.readText(root, "format", &text, error)) {
        return false;
    }
    const std::string known = situationFormat();
    if (!readFormat(text, &major, &minor) || major < FORMAT_MAJOR) {
        return xml.fail(root, "format", text, "one like " + known, error);
    }
    return major == FORMAT_MAJOR || xml.fail(root, "format", text, known + "; a later version has written it", error);
}

// A document type is kept so that it can be refused: what it says about entities would be passed over.
constexpr unsigned int PARSE_OPTIONS = pugi::parse_cdata | pugi::parse_ws_pcdata_single | pugi::parse_doctype;

} // namespace

bool parseSituationXml(const XmlAttributeReader& xml, std::string& text, pugi::xml_document* document, Error* error) {
    ShapeCheck check(xml, error);
    return xml.parse(text, "situation", document, error, PARSE_OPTIONS) && document->traverse(check) &&
           checkFormat(xml, document->document_element(), error);
}

bool isKnownSituationElement(pugi::xml_node node) {
    return findKnown(node);
}

std::string unknownXmlOf(const pugi::xml_document& document) {
    return hasUnknown(document.document_element()) ? textOf(document) : std::string();
}

std::string situationFormat() {
    return std::to_string(FORMAT_MAJOR) + "." + std::to_string(FORMAT_MINOR);
}

void addUnknownXml(const std::string& unknownXml, pugi::xml_node root) {
    pugi::xml_document document;
    document.load_buffer(unknownXml.data(), unknownXml.size(), PARSE_OPTIONS | pugi::parse_escapes,
                         pugi::encoding_utf8);
    const pugi::xml_node from = document.document_element();
    if (!from) {
        return;
    }
    addUnknown(from, root);
    const char* format = from.attribute("format").value();
    int major = 0;
    int minor = 0;
    if (readFormat(format, &major, &minor) && major == FORMAT_MAJOR && minor > FORMAT_MINOR) {
        root.attribute("format") = format;
    }
}

} // namespace orv::ug
