#include "LibCore/rvfString.h"

#include "LibCore/rvfTextFormat.h"
#include "LibCore/rvfUtf8.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace rvf {
namespace {

std::wstring widen(std::string_view bytes) {
    std::wstring text(bytes.size(), L'\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(), [](char byte) { return wchar_t(uint8_t(byte)); });
    return text;
}

} // namespace

String::String(const char* text) : m_text(text ? widen(text) : std::wstring()) {}

String::String(const wchar_t* text) : m_text(text ? text : L"") {}

String::String(const std::string& text) : m_text(widen(text)) {}

String::String(const std::wstring& text) : m_text(text) {}

String& String::operator+=(const String& text) {
    m_text += text.m_text;
    return *this;
}

wchar_t String::operator[](size_t index) const {
    return m_text[index];
}

wchar_t& String::operator[](size_t index) {
    return m_text[index];
}

size_t String::size() const {
    return m_text.size();
}

bool String::isEmpty() const {
    return m_text.empty();
}

const wchar_t* String::c_str() const {
    return m_text.c_str();
}

CharArray String::toUtf8() const {
    return CharArray(internal::encodeUtf8(m_text));
}

String String::fromUtf8(const char* text) {
    return text ? String(internal::decodeUtf8(text)) : String();
}

String String::number(double value, char format, int precision) {
    return String(internal::formatNumber(value, format, precision));
}

size_t String::find(const String& text, size_t start) const {
    return m_text.find(text.m_text, start);
}

size_t String::findLast(const String& text, size_t start) const {
    return m_text.rfind(text.m_text, start);
}

bool String::startsWith(const String& text) const {
    return m_text.starts_with(text.m_text);
}

bool String::endsWith(const String& text) const {
    return m_text.ends_with(text.m_text);
}

String String::subString(size_t start, size_t length) const {
    return start < size() ? String(m_text.substr(start, length)) : String();
}

void String::replace(const String& before, const String& after) {
    m_text = internal::replaceAll(m_text, before.m_text, after.m_text);
}

String String::arg(const String& value, int fieldWidth, wchar_t fillChar) const {
    return String(internal::replaceLowestPlaceholder(m_text, internal::padText(value.m_text, fieldWidth, fillChar)));
}

String String::arg(int value, int fieldWidth, wchar_t fillChar) const {
    std::wstring number = internal::padNumber(std::to_wstring(value), fieldWidth, fillChar);
    return String(internal::replaceLowestPlaceholder(m_text, number));
}

} // namespace rvf
