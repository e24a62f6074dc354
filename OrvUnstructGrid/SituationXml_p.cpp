#include "OrvUnstructGrid/SituationXml_p.h"

#include "OrvCore/PropertySetCollection.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/Situation.h"
#include "OrvUnstructGrid/SituationUnknown_p.h"
#include "OrvUnstructGrid/XmlAttributes_p.h"
#include "OrvUnstructGrid/ZtfWords_p.h"

#include <algorithm>
#include <limits>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace orv::ug {
namespace {

constexpr const char* FALSE_OR_TRUE[] = {"false", "true"};
const EnumWords BOOLEANS(FALSE_OR_TRUE, 0);

// Writing.

void putEscaped(pugi::xml_node node, const char* name, const Str& text) {
    const std::string quoted = quotedZtfText(text);
    putText(node, name, quoted.substr(1, quoted.size() - 2));
}

/// Appends a property as an element that is named by the kind of its value.
class PropertyWriter {
public:
    PropertyWriter(pugi::xml_node set, const Str& key) : m_set(set), m_key(key) {}

    void operator()(int value) {
        putNumber(append("int"), "value", value);
    }

    void operator()(double value) {
        putReal(append("double"), "value", value);
    }

    void operator()(bool value) {
        putText(append("bool"), "value", BOOLEANS.wordOf(value));
    }

    void operator()(const Str& value) {
        putEscaped(append("text"), "value", value);
    }

    void operator()(const Vec3d& value) {
        const double components[] = {value.x(), value.y(), value.z()};
        putReals(append("vector"), "value", components);
    }

    void operator()(const std::vector<double>& value) {
        putReals(append("numbers"), "value", value);
    }

private:
    pugi::xml_node append(const char* element) {
        pugi::xml_node node = m_set.append_child(element);
        putEscaped(node, "key", m_key);
        return node;
    }

    pugi::xml_node m_set;
    const Str& m_key;
};

void putProperties(pugi::xml_node root, const PropertySetCollection& collection) {
    pugi::xml_node properties = root.append_child("properties");
    for (std::size_t i = 0; i < collection.count(); ++i) {
        const PropertySet& set = *collection.propertySet(i);
        pugi::xml_node node = properties.append_child("set");
        putEscaped(node, "classType", set.classType());
        for (const auto& [key, value] : set.values()) {
            std::visit(PropertyWriter(node, key), value);
        }
    }
}

void putUserData(pugi::xml_node root, const std::map<Str, Str>& data) {
    pugi::xml_node node = root.append_child("userData");
    for (const auto& [key, value] : data) {
        pugi::xml_node entry = node.append_child("entry");
        putEscaped(entry, "key", key);
        putEscaped(entry, "value", value);
    }
}

bool checkSize(std::string_view text, const Str& path, Error* error) {
    if (text.size() > LONGEST_SITUATION_XML) {
        return fail(error,
                    path + ": more than " + std::to_string(LONGEST_SITUATION_XML) + " bytes, which no situation has");
    }
    // Texts have no "<" of their own.
    if (std::size_t(std::count(text.begin(), text.end(), '<')) > MOST_SITUATION_TAGS) {
        return fail(error,
                    path + ": more than " + std::to_string(MOST_SITUATION_TAGS) + " tags, which no situation has");
    }
    return true;
}

// Reading.

bool readEscaped(const XmlAttributeReader& xml, pugi::xml_node node, const char* name, Str* text, Error* error) {
    std::string escaped;
    return xml.readText(node, name, &escaped, error) &&
           (readZtfText(escaped, text) ||
            xml.fail(node, name, escaped, "a text whose backslashes are \"\\\\\" or begin \"\\u{...}\"", error));
}

bool readProperty(const XmlAttributeReader& xml, pugi::xml_node node, PropertyValue* value, Error* error) {
    const std::string_view kind = node.name();
    if (kind == "int") {
        return xml.readNumber(node, "value", std::numeric_limits<int>::min(), std::numeric_limits<int>::max(),
                              &value->emplace<int>(), error);
    }
    if (kind == "double") {
        return xml.readReal(node, "value", &value->emplace<double>(), error);
    }
    if (kind == "bool") {
        int number = 0;
        const bool isRead = xml.readWord(node, "value", BOOLEANS, &number, error);
        *value = number != 0;
        return isRead;
    }
    if (kind == "text") {
        return readEscaped(xml, node, "value", &value->emplace<Str>(), error);
    }
    std::vector<double> numbers;
    if (kind == "numbers") {
        return xml.readReals(node, "value", XmlAttributeReader::ANY_COUNT, &value->emplace<std::vector<double>>(),
                             error);
    }
    const bool isRead = xml.readReals(node, "value", 3, &numbers, error);
    *value = isRead ? Vec3d(numbers[0], numbers[1], numbers[2]) : Vec3d();
    return isRead;
}

bool failForTwo(const XmlAttributeReader& xml, pugi::xml_node node, const char* name, Error* error) {
    return xml.fail(node, name, node.attribute(name).value(), "one that has not been there before", error);
}

bool readSet(const XmlAttributeReader& xml, pugi::xml_node node, PropertySetCollection* collection, Error* error) {
    Str classType;
    if (!readEscaped(xml, node, "classType", &classType, error)) {
        return false;
    }
    const PtrRef<PropertySet> set(new PropertySet(classType));
    for (const pugi::xml_node child : node.children()) {
        if (!isKnownSituationElement(child)) {
            continue;
        }
        Str key;
        PropertyValue value;
        if (!readEscaped(xml, child, "key", &key, error) || !readProperty(xml, child, &value, error)) {
            return false;
        }
        if (set->value(key)) {
            return failForTwo(xml, child, "key", error);
        }
        set->setValue(key, std::move(value));
    }
    collection->append(set.get());
    return true;
}

bool readProperties(const XmlAttributeReader& xml, pugi::xml_node node, PropertySetCollection* collection,
                    Error* error) {
    for (const pugi::xml_node child : node.children("set")) {
        if (!readSet(xml, child, collection, error)) {
            return false;
        }
    }
    return true;
}

bool readUserData(const XmlAttributeReader& xml, pugi::xml_node node, std::map<Str, Str>* data, Error* error) {
    for (const pugi::xml_node child : node.children("entry")) {
        Str key;
        Str value;
        if (!readEscaped(xml, child, "key", &key, error) || !readEscaped(xml, child, "value", &value, error)) {
            return false;
        }
        if (!data->emplace(key, value).second) {
            return failForTwo(xml, child, "key", error);
        }
    }
    return true;
}

/// Reads the first child of that name. True when there is none.
template <class Read>
bool readOnly(const XmlAttributeReader& xml, pugi::xml_node root, const char* name, Error* error, Read read) {
    const pugi::xml_node node = root.child(name);
    if (const pugi::xml_node second = node.next_sibling(name)) {
        return xml.fail(second, " for the second time, expected once", error);
    }
    return !node || read(node);
}

} // namespace

bool writeSituationXml(const Situation& situation, const Str& path, std::string* text, Error* error) {
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("situation");
    putText(root, "format", situationFormat());
    putEscaped(root, "name", situation.name());
    putEscaped(root, "description", situation.description());
    putEscaped(root, "sourceModelFile", situation.sourceModelFile());
    if (const PropertySetCollection* collection = situation.propertyCollection()) {
        putProperties(root, *collection);
    }
    putUserData(root, situation.allUserData());
    addUnknownXml(situation.unknownXml(), root);
    *text = textOf(document);
    return checkSize(*text, path, error);
}

bool readSituationXml(std::string& text, const Str& path, Situation* situation, Error* error) {
    const XmlAttributeReader xml(path);
    pugi::xml_document document;
    if (!checkSize(text, path, error) || !parseSituationXml(xml, text, &document, error)) {
        return false;
    }
    const pugi::xml_node root = document.document_element();
    Str name;
    Str description;
    Str sourceModelFile;
    const PtrRef<PropertySetCollection> collection(new PropertySetCollection);
    std::map<Str, Str> userData;
    const bool isRead =
        readEscaped(xml, root, "name", &name, error) && readEscaped(xml, root, "description", &description, error) &&
        readEscaped(xml, root, "sourceModelFile", &sourceModelFile, error) &&
        readOnly(xml, root, "properties", error,
                 [&](pugi::xml_node node) { return readProperties(xml, node, collection.get(), error); }) &&
        readOnly(xml, root, "userData", error,
                 [&](pugi::xml_node node) { return readUserData(xml, node, &userData, error); });
    if (!isRead) {
        return false;
    }
    situation->setName(name);
    situation->setDescription(description);
    situation->setSourceModelFile(sourceModelFile);
    situation->setPropertyCollection(collection.get());
    situation->setAllUserData(std::move(userData));
    situation->setUnknownXml(unknownXmlOf(document));
    return true;
}

} // namespace orv::ug
