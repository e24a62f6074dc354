#include "OrvImportCae/MshInput.h"

#include "OrvImportCae/CaeNumber.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace orv::imp::cae {
namespace {

constexpr std::size_t LONGEST_WORD = 1024; // Longer ones are cut in two, and no half is what is expected.

bool isBlank(char c) {
    return static_cast<unsigned char>(c) <= ' ';
}

// Digits that cannot overflow, which most numbers are. Null for anything else.
const char* readShortInteger(const char* begin, const char* end, std::int64_t* value) {
    constexpr std::ptrdiff_t MOST_DIGITS = 18;
    const char* limit = begin + std::min(end - begin, MOST_DIGITS);
    std::int64_t number = 0;
    const char* at = begin;
    for (; at < limit && *at >= '0' && *at <= '9'; ++at) {
        number = 10 * number + (*at - '0');
    }
    *value = number;
    return at > begin && at - begin < MOST_DIGITS ? at : nullptr;
}

} // namespace

MshInput::MshInput(const CaeFile& file, ug::Error* error) : CaeInput(file, error) {}

void MshInput::setBinary(bool isBinary) {
    m_isBinary = isBinary;
}

bool MshInput::isBinary() const {
    return m_isBinary;
}

std::int64_t MshInput::bytesLeft() const {
    return std::max<std::int64_t>(m_file.size() - offset(), 0);
}

bool MshInput::hasEnded() const {
    return m_hasEnded;
}

std::int64_t MshInput::lastOffset() const {
    return m_lastOffset;
}

bool MshInput::skipBlanks() {
    for (;;) {
        while (m_at < m_end && isBlank(*m_at)) {
            ++m_at;
        }
        if (m_at < m_end) {
            return true;
        }
        if (!fill(1)) {
            return false;
        }
    }
}

bool MshInput::find(std::string_view mark) {
    for (;;) {
        m_at = static_cast<const char*>(std::memchr(m_at, mark[0], std::size_t(m_end - m_at)));
        if (!m_at) {
            m_at = m_end;
        }
        if (!fill(mark.size())) {
            m_at = m_end;
            m_hasEnded = true;
            return false;
        }
        if (std::string_view(m_at, mark.size()) == mark) {
            return true;
        }
        m_at += *m_at == mark[0];
    }
}

bool MshInput::skipLine(const char* what) {
    if (!find("\n")) {
        m_lastOffset = offset();
        return failHere(what);
    }
    ++m_at;
    return true;
}

bool MshInput::beginWord(const char* what) {
    const bool isThere = skipBlanks();
    fill(LONGEST_WORD);
    m_lastOffset = offset();
    return isThere || failHere(what);
}

// Stands at the begin of one.
std::string_view MshInput::wordHere() {
    const char* end = m_at;
    const char* limit = std::min(m_end, m_at + LONGEST_WORD);
    while (end < limit && !isBlank(*end)) {
        ++end;
    }
    return {m_at, std::size_t(end - m_at)};
}

bool MshInput::readWord(const char* what, std::string* word) {
    if (!beginWord(what)) {
        return false;
    }
    const std::string_view text = wordHere();
    word->assign(text);
    m_at += text.size();
    return true;
}

bool MshInput::readQuoted(const char* what, std::string* text) {
    if (!beginWord(what)) {
        return false;
    }
    const bool isQuoted = *m_at == '"';
    const char* begin = m_at + isQuoted;
    const char* limit = std::min(m_end, begin + LONGEST_WORD - 1);
    const char* end = begin;
    while (end < limit && *end != '\n' && !(isQuoted && *end == '"')) {
        ++end;
    }
    if (isQuoted && (end == limit || *end != '"')) {
        m_hasEnded = bytesLeft() == end - m_at;
        return fail("expected " + std::string(what) + ", found no quote at its end");
    }
    m_at = end + isQuoted;
    while (!isQuoted && end > begin && isBlank(end[-1])) {
        --end;
    }
    text->assign(begin, end);
    return true;
}

bool MshInput::readTextInteger(const char* what, std::int64_t* value) {
    if (!beginWord(what)) {
        return false;
    }
    const char* end = readShortInteger(m_at, m_end, value);
    if (!end) {
        const std::from_chars_result result = std::from_chars(m_at, m_end, *value);
        end = result.ec == std::errc() ? result.ptr : nullptr;
    }
    if (!end || (end < m_end && !isBlank(*end))) {
        return failHere(what);
    }
    m_at = end;
    return true;
}

bool MshInput::readTextReal(const char* what, double* value) {
    if (!beginWord(what)) {
        return false;
    }
    const std::from_chars_result result = std::from_chars(m_at, m_end, *value);
    if (result.ec == std::errc() && (result.ptr == m_end || isBlank(*result.ptr))) {
        m_at = result.ptr;
        return true;
    }
    const std::string_view word = wordHere();
    if (!readCaeReal(word.data(), word.data() + word.size(), value)) {
        return failHere(what);
    }
    m_at += word.size();
    return true;
}

bool MshInput::expectWord(const std::string& expected) {
    std::string word;
    if (!readWord(expected.c_str(), &word)) {
        return false;
    }
    if (word == expected) {
        return true;
    }
    m_at -= word.size();
    m_hasEnded = bytesLeft() <= std::int64_t(word.size()) && expected.compare(0, word.size(), word) == 0;
    return failHere(expected.c_str());
}

template <class Number>
bool MshInput::readBytes(const char* what, Number* value) {
    m_lastOffset = offset();
    if (!fill(sizeof *value)) {
        m_at = m_end;
        return failHere(what);
    }
    std::memcpy(value, m_at, sizeof *value);
    m_at += sizeof *value;
    return true;
}

bool MshInput::readInt(const char* what, std::int64_t* value) {
    if (!m_isBinary) {
        return readTextInteger(what, value);
    }
    std::int32_t number = 0;
    const bool isRead = readBytes(what, &number);
    *value = number;
    return isRead;
}

bool MshInput::readSize(const char* what, std::int64_t* value) {
    return m_isBinary ? readBytes(what, value) : readTextInteger(what, value);
}

bool MshInput::readReal(const char* what, double* value) {
    return m_isBinary ? readBytes(what, value) : readTextReal(what, value);
}

bool MshInput::skipReals(const char* what, std::size_t count) {
    double ignored = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        if (!readReal(what, &ignored)) {
            return false;
        }
    }
    return true;
}

bool MshInput::checkRange(const char* what, std::int64_t largest, std::int64_t value) {
    return (value >= 0 && value <= largest) || fail("expected " + std::string(what) + " from 0 to " +
                                                    std::to_string(largest) + ", found " + std::to_string(value));
}

bool MshInput::readIntUpTo(const char* what, std::int64_t largest, std::int64_t* value) {
    return readInt(what, value) && checkRange(what, largest, *value);
}

bool MshInput::readSizeUpTo(const char* what, std::int64_t largest, std::int64_t* value) {
    return readSize(what, value) && checkRange(what, largest, *value);
}

bool MshInput::checkCount(const char* what, std::int64_t count, std::int64_t wordsEach, std::int64_t bytesEach) {
    // A word takes two bytes with what stands between it and the next.
    const std::int64_t most = (bytesLeft() + 1) / (m_isBinary ? bytesEach : 2 * wordsEach);
    return (count >= 0 && count <= most) || fail("expected " + std::string(what) + ", of which the file has room for " +
                                                 std::to_string(most) + ", found " + std::to_string(count));
}

bool MshInput::failHere(const char* what) {
    std::string found = "the end of the file";
    if (m_at < m_end) {
        found = quotedForPeople(wordHere());
    } else {
        m_hasEnded = true;
    }
    return fail("expected " + std::string(what) + ", found " + found);
}

bool MshInput::fail(const std::string& text) {
    return failAt(m_lastOffset, text);
}

} // namespace orv::imp::cae
