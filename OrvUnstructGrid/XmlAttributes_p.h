#pragma once

#include "OrvCore/Str.h"
#include "OrvUnstructGrid/Error.h"

#include <pugixml.hpp>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orv::ug {

/// The words for the values of an enumeration that has no gaps.
class EnumWords {
public:
    /// @param first the value of the first word
    EnumWords(std::span<const char* const> words, int first);

    /// The word of a value; the last one when there is none.
    std::string wordOf(int value) const;
    /// False when there is no such word.
    bool findValue(const std::string& word, int* value) const;
    /// "one, two, three"
    std::string list() const;

private:
    std::span<const char* const> m_words;
    int m_first;
};

// Writing attributes.

void putText(pugi::xml_node node, const char* name, const std::string& text);
void putNumber(pugi::xml_node node, const char* name, std::int64_t number);
/// As .ztf files spell numbers, which come back bit by bit.
void putReal(pugi::xml_node node, const char* name, double value);
/// With a blank between them.
void putReals(pugi::xml_node node, const char* name, std::span<const double> values);

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
class XmlAttributeReader {
public:
    static constexpr std::size_t ANY_COUNT = std::numeric_limits<std::size_t>::max();

    /// Of an entry in a container.
    XmlAttributeReader(const Str& path, const char* entry);
    /// Of a file that is XML itself.
    explicit XmlAttributeReader(const Str& path);

    /// The nodes keep their texts in `text`, which is changed. False when it is no XML or has another root.
    /// @param options what pugixml is to keep besides elements and attributes
    bool parse(std::string& text, const char* root, pugi::xml_document* document, Error* error,
               unsigned int options = 0) const;

    bool readText(pugi::xml_node node, const char* name, std::string* text, Error* error) const;

    /// The number of the word.
    bool readWord(pugi::xml_node node, const char* name, const EnumWords& words, int* value, Error* error) const;

    bool readReal(pugi::xml_node node, const char* name, double* value, Error* error) const;

    /// `count` numbers.
    bool readReals(pugi::xml_node node, const char* name, std::size_t count, std::vector<double>* values,
                   Error* error) const;

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

    /// Fills the error with what is wrong with the whole element. Always false.
    bool fail(pugi::xml_node node, const std::string& problem, Error* error) const;

private:
    /// The words of an attribute, which point into `text`.
    bool readList(pugi::xml_node node, const char* name, std::size_t count, std::string* text,
                  std::vector<std::string_view>* words, Error* error) const;
    bool readWide(pugi::xml_node node, const char* name, std::int64_t lowest, std::int64_t highest,
                  std::int64_t* number, Error* error) const;
    bool readWides(pugi::xml_node node, const char* name, std::size_t count, std::int64_t highest,
                   std::vector<std::int64_t>* numbers, Error* error) const;

    Str m_place;
};

} // namespace orv::ug
