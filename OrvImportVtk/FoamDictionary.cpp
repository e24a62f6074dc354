#include "OrvImportVtk/FoamDictionary.h"

#include <vtksys/RegularExpression.hxx>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr int DEEPEST = 50;      // Brackets within brackets.
constexpr int MOST_INCLUDES = 8; // Of files that include others.
constexpr int MOST_REPETITIONS = 1'000'000;

FoamEntry* findEntry(FoamEntries* entries, const std::string& key) {
    const auto found =
        std::find_if(entries->begin(), entries->end(), [&](const FoamEntry& entry) { return entry.key == key; });
    return found == entries->end() ? nullptr : &*found;
}

// A set of characters, "[a-z]", which begins here. Its end, or npos.
std::size_t endOfSet(const std::string& key, std::size_t begin) {
    const std::size_t first = begin + 1 + (key.compare(begin, 2, "[^") == 0);
    const std::size_t end = key.find(']', first + 1);
    for (std::size_t i = first + 1; end != std::string::npos && i + 1 < end; ++i) {
        if (key[i] == '-' && key[i - 1] > key[i + 1]) {
            return std::string::npos;
        }
    }
    return end;
}

/// Reads the entries of one file.
class Parser {
public:
    Parser(FoamFile* file, const std::string& folder, std::vector<FoamEntries*>* scopes, int includes)
        : m_file(*file), m_folder(folder), m_scopes(*scopes), m_includes(includes) {}

    bool readAll(FoamEntries* entries, ug::Error* error) {
        FoamToken token;
        if (!m_file.next(&token, error)) {
            return false;
        }
        char end = '\0';
        if (token.kind == FoamToken::LABEL) { // Their count, which says nothing.
            if (!m_file.next(&token, error)) {
                return false;
            }
            if (!token.is('(')) {
                return m_file.fail(error, "expected '('");
            }
        }
        if (token.is('(')) {
            end = ')';
            if (!m_file.next(&token, error)) {
                return false;
            }
        }
        return readEntries(std::move(token), end, entries, error);
    }

    // As keys stand in the file that includes this one.
    bool readIncluded(FoamEntries* entries, ug::Error* error) {
        FoamToken token;
        return m_file.next(&token, error) && readEntries(std::move(token), '\0', entries, error);
    }

private:
    // From this first word to the bracket at the end, or to the end of the file.
    bool readEntries(FoamToken token, char end, FoamEntries* entries, ug::Error* error) {
        m_scopes.push_back(entries);
        const bool isRead = ++m_depth <= DEEPEST ? readEntriesInScope(std::move(token), end, entries, error)
                                                 : m_file.fail(error, "brackets are nested too deeply");
        --m_depth;
        m_scopes.pop_back();
        return isRead;
    }

    bool readEntriesInScope(FoamToken token, char end, FoamEntries* entries, ug::Error* error) {
        while (true) {
            if (end ? token.is(end) : token.kind == FoamToken::END) {
                return true;
            }
            if (!token.is(';') && !readEntry(token, entries, error)) {
                return false;
            }
            if (!m_file.next(&token, error)) {
                return false;
            }
        }
    }

    bool readEntry(const FoamToken& token, FoamEntries* entries, ug::Error* error) {
        switch (token.kind) {
        case FoamToken::WORD:
        case FoamToken::STRING:
            return readValuesOf(token.text, entries, error);
        case FoamToken::IDENTIFIER: {
            const FoamEntry* named = lookUp(token.text);
            if (!named || named->kind != FoamEntry::DICTIONARY) {
                return m_file.fail(error, "$" + token.text + " is no dictionary in front of it");
            }
            const FoamEntries copy = named->entries;
            entries->insert(entries->end(), copy.begin(), copy.end());
            return true;
        }
        case FoamToken::DIRECTIVE:
            return include(token.text, entries, error);
        default:
            return m_file.fail(error, "expected a key or the end of a dictionary");
        }
    }

    // A dictionary that is there already gets more entries, other values are replaced.
    bool readValuesOf(const std::string& key, FoamEntries* entries, ug::Error* error) {
        if (FoamEntry* known = findEntry(entries, key)) {
            if (known->kind == FoamEntry::NOTHING) {
                return m_file.fail(error, key + " has no value where it stands first");
            }
            if (known->kind != FoamEntry::DICTIONARY) {
                *known = {key};
                return readValues(known, error);
            }
            FoamToken token;
            if (!m_file.next(&token, error)) {
                return false;
            }
            if (!token.is('{')) {
                return m_file.fail(error, "expected '{' as " + key + " is a dictionary");
            }
            return m_file.next(&token, error) && readEntries(std::move(token), '}', &known->entries, error);
        }
        FoamEntry entry{key};
        if (!readValues(&entry, error)) {
            return false;
        }
        if (key != "FoamFile") {
            entries->push_back(std::move(entry));
        }
        return true;
    }

    // To the semicolon, or to the end of a dictionary.
    bool readValues(FoamEntry* entry, ug::Error* error) {
        FoamToken before;
        for (FoamToken token; m_file.next(&token, error); before = token) {
            if (token.is(';')) {
                return true;
            }
            if (token.is('{')) {
                bool isEnd = false;
                if (!readBraces(before, entry, &isEnd, error)) {
                    return false;
                }
                if (isEnd) {
                    return true;
                }
                continue;
            }
            if (token.kind == FoamToken::WORD && (token.text == "uniform" || token.text == "nonuniform")) {
                bool isEnd = false;
                if (!readMarked(token.text, entry, &isEnd, error)) {
                    return false;
                }
                if (isEnd) {
                    return true;
                }
                continue;
            }
            if (!readValue(token, entry, error)) {
                return false;
            }
        }
        return false;
    }

    bool readValue(const FoamToken& token, FoamEntry* entry, ug::Error* error) {
        if (token.kind == FoamToken::IDENTIFIER) {
            const FoamEntry* named = lookUp(token.text);
            if (!named) {
                return m_file.fail(error, "$" + token.text + " is not known in front of it");
            }
            if (entry->kind == FoamEntry::NOTHING) {
                const FoamEntry copy = *named;
                *entry = {entry->key, copy.kind, copy.value, copy.entries};
            }
            return true;
        }
        if (token.kind == FoamToken::DIRECTIVE) {
            return token.text == "{" ? m_file.skipCode(error) : refuse(token.text, error);
        }
        if (token.kind == FoamToken::END || token.is('}') || token.is(')')) {
            return m_file.fail(error, entry->key + " has no end");
        }
        setKind(entry, FoamEntry::OTHER, token);
        if (token.is('(')) {
            return skipBrackets(error);
        }
        if (token.is('[')) {
            return skipDimensions(error);
        }
        const FoamListType* type = token.kind == FoamToken::WORD ? findFoamListType(token.text) : nullptr;
        return !type || m_file.skipList(*type, error);
    }

    // A dictionary, or "5{0}", the same number five times.
    bool readBraces(const FoamToken& before, FoamEntry* entry, bool* isEnd, ug::Error* error) {
        FoamToken token;
        if (!m_file.next(&token, error)) {
            return false;
        }
        if (token.kind == FoamToken::LABEL || token.kind == FoamToken::SCALAR) {
            if (before.kind != FoamToken::LABEL || before.label < 0 || before.label > MOST_REPETITIONS) {
                return m_file.fail(error, "expected a key");
            }
            return m_file.next(&token, error) && (token.is('}') || m_file.fail(error, "expected '}'"));
        }
        *isEnd = true;
        setKind(entry, FoamEntry::DICTIONARY, {});
        FoamEntries ignored;
        return readEntries(std::move(token), '}', entry->kind == FoamEntry::DICTIONARY ? &entry->entries : &ignored,
                           error);
    }

    bool readMarked(const std::string& word, FoamEntry* entry, bool* isEnd, ug::Error* error) {
        FoamToken token;
        if (!m_file.next(&token, error)) {
            return false;
        }
        *isEnd = token.is(';');
        setKind(entry, word == "uniform" && !*isEnd ? FoamEntry::UNIFORM : FoamEntry::OTHER, {});
        if (*isEnd) {
            return true;
        }
        if (word == "uniform") {
            return token.is('(') ? skipUniform(error)
                                 : token.kind == FoamToken::LABEL || token.kind == FoamToken::SCALAR ||
                                       token.kind == FoamToken::WORD || token.kind == FoamToken::STRING ||
                                       m_file.fail(error, "expected a value behind uniform");
        }
        if (token.kind == FoamToken::LABEL && token.label == 0) {
            return skipEmptyList(error);
        }
        const FoamListType* type = findFoamListType(token.text);
        return type ? m_file.skipList(*type, error)
                    : m_file.fail(error, "expected the type of a list behind nonuniform");
    }

    // Binary files have no brackets there.
    bool skipEmptyList(ug::Error* error) {
        FoamToken token;
        if (m_file.isBinary()) {
            return true;
        }
        return m_file.next(&token, error) && (token.is('(') || m_file.fail(error, "expected '('")) &&
               m_file.next(&token, error) && (token.is(')') || m_file.fail(error, "expected ')'"));
    }

    // The components of one item.
    bool skipUniform(ug::Error* error) {
        constexpr int MOST_COMPONENTS = 9;
        FoamToken token;
        for (int count = 0; count <= MOST_COMPONENTS; ++count) {
            if (!m_file.next(&token, error)) {
                return false;
            }
            if (token.is(')')) {
                return true;
            }
            if (token.kind != FoamToken::LABEL && token.kind != FoamToken::SCALAR) {
                break;
            }
        }
        return m_file.fail(error, "expected up to nine numbers");
    }

    bool skipDimensions(ug::Error* error) {
        for (FoamToken token; m_file.next(&token, error) && token.kind != FoamToken::END;) {
            if (token.is(']')) {
                return true;
            }
        }
        return m_file.fail(error, "expected ']'");
    }

    // A list of anything, also of dictionaries with names.
    bool skipBrackets(ug::Error* error) {
        const bool isSkipped =
            ++m_depth <= DEEPEST ? skipBracketsAtDepth(error) : m_file.fail(error, "brackets are nested too deeply");
        --m_depth;
        return isSkipped;
    }

    bool skipBracketsAtDepth(ug::Error* error) {
        FoamToken before;
        bool isFirst = true;
        for (FoamToken token; m_file.next(&token, error); isFirst = false, before = token) {
            FoamEntries ignored;
            if (token.is(')')) {
                return true;
            }
            if (token.is('(')) {
                if (!skipBrackets(error)) {
                    return false;
                }
            } else if (token.is('{')) {
                if (before.kind != FoamToken::WORD && before.kind != FoamToken::STRING) {
                    if (!m_file.next(&token, error) || !readEntries(std::move(token), '}', &ignored, error)) {
                        return false;
                    }
                    continue;
                }
                FoamEntry named{before.text, FoamEntry::DICTIONARY};
                if (!m_file.next(&token, error) || !readEntries(std::move(token), '}', &named.entries, error)) {
                    return false;
                }
                ignored.push_back(std::move(named));
                return m_file.next(&token, error) && readEntries(std::move(token), ')', &ignored, error);
            } else if (token.kind == FoamToken::END || token.kind == FoamToken::IDENTIFIER ||
                       token.kind == FoamToken::DIRECTIVE || token.is('}') || token.is(';')) {
                return m_file.fail(error, "expected items of a list, and ')'");
            } else if (const FoamListType* type = findFoamListType(token.text); type && !isFirst) {
                if (!m_file.skipList(*type, error)) {
                    return false;
                }
            }
        }
        return false;
    }

    bool include(const std::string& directive, FoamEntries* entries, ug::Error* error) {
        const bool mayMiss = directive == "sinclude" || directive == "includeIfPresent";
        FoamToken path;
        if (!(mayMiss || directive == "include")) {
            return refuse(directive, error);
        }
        if (!m_file.next(&path, error)) {
            return false;
        }
        if (path.text.empty() || path.text.find_first_of("$~<") != std::string::npos || path.text[0] == '/' ||
            m_includes == MOST_INCLUDES) {
            return m_file.fail(error, "cannot include \"" + path.text + "\"");
        }
        const std::string name = m_file.name().substr(0, m_file.name().find_last_of('/') + 1) + path.text;
        std::error_code ignored;
        if (mayMiss && !std::filesystem::exists(m_folder + name, ignored)) {
            return true;
        }
        FoamFile included(m_folder);
        m_scopes.pop_back(); // Which is the one of the entries, to be put there again.
        const bool isRead = included.open(name, error) &&
                            Parser(&included, m_folder, &m_scopes, m_includes + 1).readIncluded(entries, error);
        m_scopes.push_back(entries);
        return isRead;
    }

    bool refuse(const std::string& directive, ug::Error* error) const {
        return m_file.fail(error, "#" + directive + " is not understood");
    }

    const FoamEntry* lookUp(const std::string& key) const {
        for (auto scope = m_scopes.rbegin(); scope != m_scopes.rend(); ++scope) {
            if (const FoamEntry* found = findFoamEntry(**scope, key)) {
                return found;
            }
        }
        return nullptr;
    }

    static void setKind(FoamEntry* entry, FoamEntry::Kind kind, const FoamToken& value) {
        if (entry->kind == FoamEntry::NOTHING) {
            entry->kind = kind;
            entry->value = value;
        }
    }

    FoamFile& m_file;
    const std::string& m_folder;
    std::vector<FoamEntries*>& m_scopes; ///< From the outermost dictionary to the one that is being read.
    int m_includes;
    int m_depth = 0;
};

} // namespace

const FoamEntry* findFoamEntry(const FoamEntries& entries, const std::string& key) {
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const FoamEntry& entry) { return entry.key == key; });
    return found == entries.end() ? nullptr : &*found;
}

// VTK tells on the console of what is no regular expression.
bool isFoamPattern(const std::string& key) {
    int depth = 0;
    bool hasAtom = false; // Which a star may repeat.
    for (std::size_t i = 0; i < key.size(); ++i) {
        const char c = key[i];
        const bool isRepetition = c == '*' || c == '+' || c == '?';
        if (c == '\\' || (isRepetition && !hasAtom) || (c == ')' && key[i - (i > 0)] == '(')) {
            return false;
        }
        if (c == '[') {
            i = endOfSet(key, i);
            if (i == std::string::npos) {
                return false;
            }
        }
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        if (depth < 0) {
            return false;
        }
        hasAtom = !isRepetition && c != '(' && c != ')' && c != '|' && c != '^' && c != '$';
    }
    constexpr int MOST_BRACKETS = 8;
    return depth == 0 && !key.empty() && std::count(key.begin(), key.end(), '(') <= MOST_BRACKETS;
}

const FoamEntry* findFoamPatch(const FoamEntries& entries, const std::string& patch) {
    if (const FoamEntry* exact = findFoamEntry(entries, patch)) {
        return exact;
    }
    const FoamEntry* found = nullptr;
    for (const FoamEntry& entry : entries) {
        vtksys::RegularExpression expression;
        if (isFoamPattern(entry.key) && expression.compile(entry.key) && expression.find(patch) &&
            expression.start() == 0 && expression.end() == patch.size()) {
            found = &entry;
        }
    }
    return found;
}

bool readFoamDictionary(FoamFile* file, const std::string& folder, FoamEntries* entries, ug::Error* error) {
    std::vector<FoamEntries*> scopes;
    return Parser(file, folder, &scopes, 0).readAll(entries, error);
}

} // namespace orv::imp::cae
