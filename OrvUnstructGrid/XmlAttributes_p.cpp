#include "OrvUnstructGrid/XmlAttributes_p.h"

#include "OrvUnstructGrid/ZtfWords_p.h"

#include <algorithm>
#include <charconv>
#include <sstream>
#include <string_view>

namespace orv::ug {
namespace {

constexpr std::size_t LONGEST_QUOTE = 40;

bool isNumber(std::string_view text, std::int64_t* number) {
    const char* end = text.data() + text.size();
    const auto [stop, problem] = std::from_chars(text.data(), end, *number);
    return problem == std::errc() && stop == end;
}

std::string rangeText(std::int64_t lowest, std::int64_t highest) {
    return highest < lowest ? "nothing, as there is nothing to name"
                            : "a whole number from " + std::to_string(lowest) + " to " + std::to_string(highest);
}

std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

} // namespace

EnumWords::EnumWords(std::span<const char* const> words, int first) : m_words(words), m_first(first) {}

std::string EnumWords::wordOf(int value) const {
    const auto index = static_cast<std::size_t>(value - m_first);
    return index < m_words.size() ? m_words[index] : m_words.back();
}

bool EnumWords::findValue(const std::string& word, int* value) const {
    const auto found = std::find(m_words.begin(), m_words.end(), word);
    *value = m_first + static_cast<int>(found - m_words.begin());
    return found != m_words.end();
}

std::string EnumWords::list() const {
    std::string text;
    for (const char* word : m_words) {
        text += (text.empty() ? "" : ", ") + std::string(word);
    }
    return text;
}

void putText(pugi::xml_node node, const char* name, const std::string& text) {
    node.append_attribute(name) = text.c_str();
}

void putNumber(pugi::xml_node node, const char* name, std::int64_t number) {
    node.append_attribute(name) = static_cast<long long>(number);
}

void putReal(pugi::xml_node node, const char* name, double value) {
    std::string text;
    writeZtfNumber(value, &text);
    putText(node, name, text);
}

void putReals(pugi::xml_node node, const char* name, std::span<const double> values) {
    std::string text;
    for (const double value : values) {
        text += text.empty() ? "" : " ";
        writeZtfNumber(value, &text);
    }
    putText(node, name, text);
}

std::string textOf(const pugi::xml_document& document) {
    std::ostringstream out;
    document.save(out, " ", pugi::format_default, pugi::encoding_utf8);
    return out.str();
}

XmlAttributeReader::XmlAttributeReader(const Str& path, const char* entry)
    : m_place(path + ", entry '" + entry + "'") {}

XmlAttributeReader::XmlAttributeReader(const Str& path) : m_place(path) {}

bool XmlAttributeReader::parse(std::string& text, const char* root, pugi::xml_document* document, Error* error,
                               unsigned int options) const {
    // Texts come back as they were written: without the parser's own changes to line ends and blanks.
    const pugi::xml_parse_result result =
        document->load_buffer_inplace(text.data(), text.size(), options | pugi::parse_escapes, pugi::encoding_utf8);
    if (!result) {
        return ug::fail(error, m_place + ", byte " + std::to_string(result.offset) +
                                   ": not well-formed XML: " + result.description());
    }
    const std::string found = document->document_element().name();
    return found == root || ug::fail(error, m_place + ": the outermost element is <" + found.substr(0, LONGEST_QUOTE) +
                                                ">, expected <" + root + ">");
}

bool XmlAttributeReader::readText(pugi::xml_node node, const char* name, std::string* text, Error* error) const {
    const pugi::xml_attribute attribute = node.attribute(name);
    *text = attribute.value();
    return attribute || fail(node, " without the attribute '" + std::string(name) + "'", error);
}

bool XmlAttributeReader::readWord(pugi::xml_node node, const char* name, const EnumWords& words, int* value,
                                  Error* error) const {
    std::string word;
    return readText(node, name, &word, error) &&
           (words.findValue(word, value) || fail(node, name, word, "one of " + words.list(), error));
}

bool XmlAttributeReader::readReal(pugi::xml_node node, const char* name, double* value, Error* error) const {
    std::string text;
    return readText(node, name, &text, error) &&
           (readZtfNumber(text, value) || fail(node, name, text, "a number", error));
}

bool XmlAttributeReader::readReals(pugi::xml_node node, const char* name, std::size_t count,
                                   std::vector<double>* values, Error* error) const {
    std::string text;
    std::vector<std::string_view> words;
    if (!readList(node, name, count, &text, &words, error)) {
        return false;
    }
    for (const std::string_view word : words) {
        if (!readZtfNumber(word, &values->emplace_back())) {
            return fail(node, name, std::string(word), "a number", error);
        }
    }
    return true;
}

bool XmlAttributeReader::fail(pugi::xml_node node, const char* name, const std::string& value,
                              const std::string& expectation, Error* error) const {
    const std::string shown = value.size() > LONGEST_QUOTE ? value.substr(0, LONGEST_QUOTE) + "..." : value;
    return fail(node, " has the " + std::string(name) + " '" + shown + "', expected " + expectation, error);
}

bool XmlAttributeReader::fail(pugi::xml_node node, const std::string& problem, Error* error) const {
    return ug::fail(error, m_place + ", byte " + std::to_string(node.offset_debug()) + ": <" +
                               std::string(node.name()).substr(0, LONGEST_QUOTE) + ">" + problem);
}

bool XmlAttributeReader::readList(pugi::xml_node node, const char* name, std::size_t count, std::string* text,
                                  std::vector<std::string_view>* words, Error* error) const {
    if (!readText(node, name, text, error)) {
        return false;
    }
    *words = wordsOf(*text);
    return count == ANY_COUNT || words->size() == count ||
           fail(node, name, *text, std::to_string(count) + " numbers", error);
}

bool XmlAttributeReader::readWide(pugi::xml_node node, const char* name, std::int64_t lowest, std::int64_t highest,
                                  std::int64_t* number, Error* error) const {
    std::string text;
    if (!readText(node, name, &text, error)) {
        return false;
    }
    const bool isGood = isNumber(text, number) && *number >= lowest && *number <= highest;
    return isGood || fail(node, name, text, rangeText(lowest, highest), error);
}

bool XmlAttributeReader::readWides(pugi::xml_node node, const char* name, std::size_t count, std::int64_t highest,
                                   std::vector<std::int64_t>* numbers, Error* error) const {
    std::string text;
    std::vector<std::string_view> words;
    if (!readList(node, name, count, &text, &words, error)) {
        return false;
    }
    for (const std::string_view word : words) {
        std::int64_t number = 0;
        if (!isNumber(word, &number) || number < 0 || number > highest) {
            return fail(node, name, std::string(word), rangeText(0, highest), error);
        }
        numbers->push_back(number);
    }
    return true;
}

} // namespace orv::ug
