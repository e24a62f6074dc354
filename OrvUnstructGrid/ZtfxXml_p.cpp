#include "OrvUnstructGrid/ZtfxXml_p.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <sstream>
#include <string_view>

namespace orv::ug {
namespace {

constexpr std::string_view BITS = "bits:";
constexpr std::size_t LONGEST_QUOTE = 40;

template <class Number, class... Format>
bool isNumber(std::string_view text, Number* number, Format... format) {
    const char* end = text.data() + text.size();
    const auto [stop, problem] = std::from_chars(text.data(), end, *number, format...);
    return problem == std::errc() && stop == end;
}

bool isReal(std::string_view text, double* value) {
    if (!text.starts_with(BITS)) {
        return isNumber(text, value);
    }
    std::uint64_t bits = 0;
    const bool isRead = isNumber(text.substr(BITS.size()), &bits, 16);
    *value = std::bit_cast<double>(bits);
    return isRead;
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

const std::string& wordOf(const ZtfxWords& words, int value) {
    const auto found = std::find_if(words.begin(), words.end(), [value](const auto& w) { return w.second == value; });
    return found != words.end() ? found->first : words.front().first;
}

void putText(pugi::xml_node node, const char* name, const std::string& text) {
    node.append_attribute(name) = text.c_str();
}

void putNumber(pugi::xml_node node, const char* name, std::int64_t number) {
    node.append_attribute(name) = static_cast<long long>(number);
}

void putReal(pugi::xml_node node, const char* name, double value) {
    char text[64] = {};
    if (std::isfinite(value)) {
        std::to_chars(text, text + sizeof text - 1, value);
    } else {
        std::snprintf(text, sizeof text, "%s%016llx", BITS.data(), std::bit_cast<unsigned long long>(value));
    }
    putText(node, name, text);
}

std::string textOf(const pugi::xml_document& document) {
    std::ostringstream out;
    document.save(out, " ", pugi::format_default, pugi::encoding_utf8);
    return out.str();
}

ZtfxXmlReader::ZtfxXmlReader(const Str& path, const char* entry) : m_place(path + ", entry '" + entry + "'") {}

bool ZtfxXmlReader::parse(std::string& text, const char* root, pugi::xml_document* document, Error* error) const {
    // Texts come back as they were written: without the parser's own changes to line ends and blanks.
    const unsigned int options = pugi::parse_escapes;
    const pugi::xml_parse_result result =
        document->load_buffer_inplace(text.data(), text.size(), options, pugi::encoding_utf8);
    if (!result) {
        return ug::fail(error, m_place + ", byte " + std::to_string(result.offset) +
                                   ": not well-formed XML: " + result.description());
    }
    const std::string found = document->first_child().name();
    return found == root || ug::fail(error, m_place + ": the outermost element is <" + found.substr(0, LONGEST_QUOTE) +
                                                ">, expected <" + root + ">");
}

bool ZtfxXmlReader::readText(pugi::xml_node node, const char* name, std::string* text, Error* error) const {
    const pugi::xml_attribute attribute = node.attribute(name);
    *text = attribute.value();
    return attribute || ug::fail(error, m_place + ", byte " + std::to_string(node.offset_debug()) + ": <" +
                                            node.name() + "> without the attribute '" + name + "'");
}

bool ZtfxXmlReader::readWord(pugi::xml_node node, const char* name, const ZtfxWords& words, int* value,
                             Error* error) const {
    std::string word;
    if (!readText(node, name, &word, error)) {
        return false;
    }
    std::string known;
    for (const auto& [candidate, number] : words) {
        if (candidate == word) {
            *value = number;
            return true;
        }
        known += (known.empty() ? "" : ", ") + candidate;
    }
    return fail(node, name, word, "one of " + known, error);
}

bool ZtfxXmlReader::readReal(pugi::xml_node node, const char* name, double* value, Error* error) const {
    std::string text;
    return readText(node, name, &text, error) && (isReal(text, value) || fail(node, name, text, "a number", error));
}

bool ZtfxXmlReader::fail(pugi::xml_node node, const char* name, const std::string& value,
                         const std::string& expectation, Error* error) const {
    const std::string shown = value.size() > LONGEST_QUOTE ? value.substr(0, LONGEST_QUOTE) + "..." : value;
    return ug::fail(error, m_place + ", byte " + std::to_string(node.offset_debug()) + ": <" + node.name() +
                               "> has the " + name + " '" + shown + "', expected " + expectation);
}

bool ZtfxXmlReader::readWide(pugi::xml_node node, const char* name, std::int64_t lowest, std::int64_t highest,
                             std::int64_t* number, Error* error) const {
    std::string text;
    if (!readText(node, name, &text, error)) {
        return false;
    }
    const bool isGood = isNumber(text, number) && *number >= lowest && *number <= highest;
    return isGood || fail(node, name, text, rangeText(lowest, highest), error);
}

bool ZtfxXmlReader::readWides(pugi::xml_node node, const char* name, std::size_t count, std::int64_t highest,
                              std::vector<std::int64_t>* numbers, Error* error) const {
    std::string text;
    if (!readText(node, name, &text, error)) {
        return false;
    }
    const std::vector<std::string_view> words = wordsOf(text);
    if (count != ANY_COUNT && words.size() != count) {
        return fail(node, name, text, std::to_string(count) + " numbers", error);
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
