#pragma once

#include <pugixml.hpp>

#include <string>

namespace orv::ug {

class Error;
class XmlAttributeReader;

// What is in the XML of a situation that this version does not know, and how it comes through a reading and a writing.
// An element belongs to the one that it stands in: it comes back in the element that has the same name and key, or goes
// with it. Comments are not kept.

/// Parses a text, which is changed. False when it is no well-formed XML, is no situation, is nested too deeply, names
/// an attribute twice, has a document type, or is of a later major format.
bool parseSituationXml(const XmlAttributeReader& xml, std::string& text, pugi::xml_document* document, Error* error);

/// Whether this version knows such an element in its parent.
bool isKnownSituationElement(pugi::xml_node node);

/// The whole text when something in it is unknown, otherwise empty.
std::string unknownXmlOf(const pugi::xml_document& document);

/// "MAJOR.MINOR" of this version.
std::string situationFormat();

/// Appends what is unknown to a new document's elements, and raises the format to that of the unknown XML.
void addUnknownXml(const std::string& unknownXml, pugi::xml_node root);

} // namespace orv::ug
