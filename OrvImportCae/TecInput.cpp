#include "OrvImportCae/TecInput.h"

#include "OrvImportCae/CaeNumber.h"

#include <algorithm>
#include <cstring>

namespace orv::imp::cae {
namespace {

constexpr std::size_t LONGEST_WORD = 1024; // Longer ones are cut in two, and no half is what is expected.

bool isBlank(char c) {
    return static_cast<unsigned char>(c) <= ' ' || c == ',';
}

char capital(char c) {
    return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c;
}

bool isMark(char c) {
    return c != '\0' && std::strchr("=()[]\"'", c);
}

} // namespace

TecInput::TecInput(const CaeFile& file, ug::Error* error) : CaeInput(file, error) {}

void TecInput::seek(std::int64_t offset) {
    m_runLeft = 0;
    CaeInput::seek(offset);
}

bool TecInput::skipBlanks() {
    while (fill(1)) {
        while (m_at < m_end && isBlank(*m_at)) {
            ++m_at;
        }
        if (m_at == m_end) {
            continue;
        }
        if (*m_at != '#') {
            return true;
        }
        skipLine();
    }
    return false;
}

bool TecInput::skipLine() {
    while (fill(1)) {
        const void* end = std::memchr(m_at, '\n', std::size_t(m_end - m_at));
        m_at = end ? static_cast<const char*>(end) + 1 : m_end;
        if (end) {
            return true;
        }
    }
    return false;
}

bool TecInput::isAtName() {
    return skipBlanks() && internal::lower(*m_at) >= 'a' && internal::lower(*m_at) <= 'z';
}

bool TecInput::take(char c) {
    const bool isNext = skipBlanks() && *m_at == c;
    m_at += isNext;
    return isNext;
}

bool TecInput::expect(char c, const char* what) {
    if (take(c)) {
        return true;
    }
    m_lastOffset = offset();
    return failHere(what);
}

bool TecInput::beginWord(const char* what) {
    const bool isThere = skipBlanks();
    fill(LONGEST_WORD);
    m_lastOffset = offset();
    return isThere || failHere(what);
}

// Stands at the begin of one.
std::string_view TecInput::wordHere(bool isNumber) {
    const char* end = m_at;
    const char* limit = std::min(m_end, m_at + LONGEST_WORD);
    while (end < limit && !isBlank(*end) && *end != '#' && (isNumber || !isMark(*end))) {
        ++end;
    }
    return {m_at, end};
}

bool TecInput::readWord(const char* what, std::string* word) {
    if (!beginWord(what)) {
        return false;
    }
    *word = wordHere(false);
    m_at += word->size();
    return !word->empty() || failHere(what);
}

bool TecInput::readName(const char* what, std::string* name) {
    if (!readWord(what, name)) {
        return false;
    }
    std::transform(name->begin(), name->end(), name->begin(), capital);
    return true;
}

// Texts end on their line.
bool TecInput::readText(const char* what, std::string* text) {
    if (!beginWord(what)) {
        return false;
    }
    const char quote = *m_at;
    if (quote != '"' && quote != '\'') {
        return readWord(what, text);
    }
    const char* limit = std::min(m_end, m_at + LONGEST_WORD);
    const char* end = std::find_if(m_at + 1, limit, [quote](char c) { return c == quote || c == '\n'; });
    if (end == limit || *end != quote) {
        return fail("this text has no closing quote");
    }
    text->assign(m_at + 1, end);
    m_at = end + 1;
    return true;
}

bool TecInput::readInteger(const char* what, std::int64_t least, std::int64_t most, std::int64_t* value) {
    std::string word;
    if (!readWord(what, &word)) {
        return false;
    }
    if (!readCaeInteger(word.data(), word.data() + word.size(), value)) {
        return fail(std::string("expected ") + what + ", found " + quotedForPeople(word));
    }
    return (*value >= least && *value <= most) ||
           fail(std::string("expected ") + what + " from " + std::to_string(least) + " to " + std::to_string(most) +
                ", found " + quotedForPeople(word));
}

bool TecInput::readReal(const char* what, double* value) {
    std::string word;
    return readWord(what, &word) && (readCaeReal(word.data(), word.data() + word.size(), value) ||
                                     fail(std::string("expected ") + what + ", found " + quotedForPeople(word)));
}

// "3*0.5" or a number alone.
bool TecInput::readRun(const char* what) {
    if (!beginWord(what)) {
        return false;
    }
    const std::string_view word = wordHere(true);
    m_run = word;
    m_runLeft = 1;
    m_isRunRead = false;
    if (const std::size_t star = word.find('*'); star != std::string_view::npos) {
        std::int64_t times = 0;
        if (!readCaeInteger(word.data(), word.data() + star, &times) || times < 1) {
            return failHere(what);
        }
        m_runLeft = std::uint64_t(times);
        m_run = word.substr(star + 1);
    }
    const char first = m_run.empty() ? '?' : internal::lower(m_run[0]);
    if (!internal::isDigit(first) && !std::strchr("+-.ni", first)) { // Of numbers, and of nan and inf.
        m_runLeft = 0;
        return failHere(what);
    }
    m_at = word.data() + word.size();
    return true;
}

bool TecInput::skipNumbers(const char* what, std::uint64_t count) {
    m_runLeft = 0;
    while (count > 0) {
        if (!readRun(what)) {
            return false;
        }
        const std::uint64_t taken = std::min(m_runLeft, count);
        count -= taken;
        m_runLeft -= taken;
    }
    return endNumbers(what);
}

bool TecInput::nextReal(const char* what, double* value) {
    if (m_runLeft == 0 && !readRun(what)) {
        return false;
    }
    --m_runLeft;
    if (!value) {
        return true;
    }
    if (!m_isRunRead && !readCaeReal(m_run.data(), m_run.data() + m_run.size(), &m_runValue)) {
        m_runLeft = 0;
        return fail(std::string("expected ") + what + ", found " + quotedForPeople(m_run));
    }
    m_isRunRead = true;
    *value = m_runValue;
    return true;
}

bool TecInput::nextIndex(const char* what, std::uint64_t count, std::uint32_t* index) {
    if (m_runLeft == 0) {
        if (!readRun(what)) {
            return false;
        }
        std::int64_t number = 0;
        if (!readCaeInteger(m_run.data(), m_run.data() + m_run.size(), &number) || number < 1 ||
            std::uint64_t(number) > count) {
            m_runLeft = 0;
            return fail(std::string("expected ") + what + " from 1 to " + std::to_string(count) + ", found " +
                        quotedForPeople(m_run));
        }
        m_runValue = double(number);
    }
    --m_runLeft;
    *index = std::uint32_t(m_runValue) - 1;
    return true;
}

bool TecInput::endNumbers(const char* what) {
    if (m_runLeft == 0) {
        return true;
    }
    m_runLeft = 0;
    return fail(std::string("this number is repeated more often than there are ") + what);
}

bool TecInput::failHere(const char* what) {
    seek(m_lastOffset);
    fill(LONGEST_WORD);
    if (m_at == m_end) {
        return failAt(m_lastOffset, std::string("the file ends, expected ") + what);
    }
    const std::string_view word = wordHere(true);
    return fail(std::string("expected ") + what + ", found " + quotedForPeople(word));
}

bool TecInput::fail(const std::string& text) {
    return failAt(m_lastOffset, text);
}

} // namespace orv::imp::cae
