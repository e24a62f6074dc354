#pragma once

#include "OrvCore/Str.h"
#include "OrvUnstructGrid/Error.h"

#include <pugixml.hpp>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace orv::ug {

/// The words for the values of an enumeration.
using ZtfxWords = std::vector<std::pair<std::string, int>>;

/// The word of a value; the first one when there is none.
const std::string& wordOf(const ZtfxWords& words, int value);

// Writing attributes.

void putText(pugi::xml_node node, const char* name, const std::string& text);
void putNumber(pugi::xml_node node, const char* name, std::int64_t number);
/// The shortest digits that give the same number back; for what is not finite its 64 bits, as in
/// "bits:7ff8000000000000".
void putReal(pugi::xml_node node, const char* name, double value);

/// With a blank between them.
template <class Number>
void putNumbers(pugi::xml_node node, const char* name, const std::vector<Number>& numbers) {
    std::string text;
    for (const Number number : numbers) {
        text += (text.empty() ? "" : " ") + std::to_string(number);
    }
    putText(node, name, text);
}

std::string textOf(const pugi::xml_document& document);

/// Reads attributes of one text, and tells what is wrong with them: file, entry, byte, element, attribute, value and
/// what was expected.
class ZtfxXmlReader {
public:
    static constexpr std::size_t ANY_COUNT = std::numeric_limits<std::size_t>::max();

    ZtfxXmlReader(const Str& path, const char* entry);

    /// The nodes keep their texts in `text`, which is changed. False when it is no XML or has another root.
    bool parse(std::string& text, const char* root, pugi::xml_document* document, Error* error) const;

    bool readText(pugi::xml_node node, const char* name, std::string* text, Error* error) const;

    /// The number of the word.
    bool readWord(pugi::xml_node node, const char* name, const ZtfxWords& words, int* value, Error* error) const;

    bool readReal(pugi::xml_node node, const char* name, double* value, Error* error) const;

    template <class Number>
    bool readNumber(pugi::xml_node node, const char* name, std::int64_t lowest, std::int64_t highest, Number* number,
                    Error* error) const {
        std::int64_t read = 0;
        const bool isRead = readWide(node, name, lowest, highest, &read, error);
        *number = static_cast<Number>(read);
        return isRead;
    }

    /// Numbers from 0 to `highest`, `count` of them.
    template <class Number>
    bool readNumbers(pugi::xml_node node, const char* name, std::size_t count, std::int64_t highest,
                     std::vector<Number>* numbers, Error* error) const {
        std::vector<std::int64_t> read;
        if (!readWides(node, name, count, highest, &read, error)) {
            return false;
        }
        numbers->assign(read.begin(), read.end());
        return true;
    }

    /// Fills the error with the value of the attribute and what was expected. Always false.
    bool fail(pugi::xml_node node, const char* name, const std::string& value, const std::string& expectation,
              Error* error) const;

private:
    bool readWide(pugi::xml_node node, const char* name, std::int64_t lowest, std::int64_t highest,
                  std::int64_t* number, Error* error) const;
    bool readWides(pugi::xml_node node, const char* name, std::size_t count, std::int64_t highest,
                   std::vector<std::int64_t>* numbers, Error* error) const;

    Str m_place;
};

} // namespace orv::ug
