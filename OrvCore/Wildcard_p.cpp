#include "OrvCore/Wildcard_p.h"

#include <utility>

namespace orv::internal {
namespace {

bool contains(std::wstring_view list, wchar_t character) {
    for (size_t i = 0; i < list.size(); ++i) {
        bool isRange = i + 2 < list.size() && list[i + 1] == L'-';
        if (isRange && list[i] <= character && character <= list[i + 2]) {
            return true;
        }
        if (!isRange && list[i] == character) {
            return true;
        }
        i += isRange ? 2 : 0;
    }
    return false;
}

} // namespace

Wildcard::Wildcard(std::wstring_view pattern) : m_pattern(pattern) {
    // Only a bracket before the last closing one is worth a look; without this a row of open ones costs its square.
    size_t lastClosing = pattern.rfind(L']');
    for (size_t i = 0; i < pattern.size();) {
        wchar_t character = pattern[i];
        if (character == L'[' && lastClosing != pattern.npos && i < lastClosing) {
            size_t behind = readList(i);
            if (behind != i) {
                i = behind;
                continue;
            }
        }
        Kind kind = character == L'*' ? Kind::ANY_TEXT : character == L'?' ? Kind::ANY_CHARACTER : Kind::CHARACTER;
        m_parts.push_back({kind, pattern.substr(i, 1)});
        ++i;
    }
}

size_t Wildcard::readList(size_t begin) {
    size_t first = begin + 1;
    bool isNegated = first < m_pattern.size() && (m_pattern[first] == L'!' || m_pattern[first] == L'^');
    first += isNegated ? 1 : 0;
    size_t closing = m_pattern.find(L']', first + 1); // One at `first` is a member.
    if (closing == m_pattern.npos) {
        return begin;
    }
    m_parts.push_back({isNegated ? Kind::LIST_OF_OTHERS : Kind::LIST, m_pattern.substr(first, closing - first)});
    return closing + 1;
}

bool Wildcard::Part::accepts(wchar_t character) const {
    switch (kind) {
    case Kind::CHARACTER:
        return character == text[0];
    case Kind::LIST:
        return contains(text, character);
    case Kind::LIST_OF_OTHERS:
        return !contains(text, character);
    default:
        return true;
    }
}

bool Wildcard::matches(std::wstring_view text) const {
    constexpr size_t NONE = size_t(-1);
    size_t part = 0;
    size_t position = 0;
    size_t partBehindStar = NONE;
    size_t retryPosition = 0;
    while (position < text.size()) {
        if (part < m_parts.size() && m_parts[part].kind == Kind::ANY_TEXT) {
            partBehindStar = ++part;
            retryPosition = position;
        } else if (part < m_parts.size() && m_parts[part].accepts(text[position])) {
            ++part;
            ++position;
        } else if (partBehindStar != NONE) {
            part = partBehindStar;
            position = ++retryPosition; // The star takes one character more.
        } else {
            return false;
        }
    }
    while (part < m_parts.size() && m_parts[part].kind == Kind::ANY_TEXT) {
        ++part;
    }
    return part == m_parts.size();
}

} // namespace orv::internal
