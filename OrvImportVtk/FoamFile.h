#pragma once

#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orv::imp::cae {

/// What lists of OpenFOAM's files hold.
struct FoamListType {
    enum Number { BOOL, LABEL, SCALAR };

    const char* name; ///< As in "List<vector>".
    Number number;
    int componentCount; ///< Of an item in brackets; 0 when items are single numbers.
};

/// The type of a word such as "List<vector>"; null when it is none.
const FoamListType* findFoamListType(std::string_view word);

/// A word of a file.
struct FoamToken {
    enum Kind {
        END,
        PUNCTUATION,
        LABEL, ///< A whole number.
        SCALAR,
        WORD,
        STRING,     ///< In quotes.
        IDENTIFIER, ///< "$name", without the dollar.
        DIRECTIVE,  ///< "#name", without the hash; "#{" is code.
    };

    Kind kind = END;
    std::string text = {};
    std::int64_t label = 0; ///< Of a LABEL.

    bool is(char punctuation) const {
        return kind == PUNCTUATION && text[0] == punctuation;
    }
};

/// A file of an OpenFOAM case in memory, ASCII or binary, unpacked if gzip packed it. It is cut into words as VTK's
/// reader does that, so that what is found in order here is what that one will meet: it takes counts of items for
/// memory to get, goes down with brackets within brackets, and runs over the ends of lists.
class FoamFile {
public:
    /// @param folder that names of files are relative to, with a slash at its end
    explicit FoamFile(std::string folder);

    /// Reads the file, or the one with ".gz" behind its name if there is no such file. Once per object.
    bool open(const std::string& name, ug::Error* error);

    /// Reads only so much of it as headers, and the beginnings of lists, may take.
    bool openBeginning(const std::string& name, ug::Error* error);

    /// Reads the dictionary "FoamFile" at the beginning: what is in the file, and how it is written.
    bool readHeader(ug::Error* error);

    /// Whether a header is there. Stays in front of it.
    bool hasHeader();

    const std::string& name() const {
        return m_name;
    }

    const std::string& className() const {
        return m_class;
    }

    const std::string& objectName() const {
        return m_object;
    }

    bool isBinary() const {
        return m_isBinary;
    }

    /// Reads the next word.
    bool next(FoamToken* token, ug::Error* error);

    /// Passes over a list of this type: with or without a count in front, or the same item that many times.
    bool skipList(const FoamListType& type, ug::Error* error);

    /// Whether a list of this type has room in the file, and no more than that.
    bool checkList(const FoamListType& type, ug::Error* error);

    /// Reads a list of labels: how many there are and the largest one, -1 when there is none.
    bool readLabels(std::uint64_t* count, std::int64_t* largest, ug::Error* error);

    /// Passes over the lists of points that the faces of a mesh are.
    bool skipFaces(std::uint64_t* count, ug::Error* error);

    /// Passes over the rest of "#{ code #}".
    bool skipCode(ug::Error* error);

    /// Fails, telling the file and the line where it is now.
    bool fail(ug::Error* error, const std::string& text) const;

private:
    enum ListForm { PLAIN, REPEATED, BINARY };

    bool read(const std::string& name, std::size_t mostBytes, ug::Error* error);
    bool unpack(std::size_t mostBytes, ug::Error* error);
    int peek() const {
        return m_at < m_bytes.size() ? static_cast<unsigned char>(m_bytes[m_at]) : -1;
    }
    void skipBlanks();
    void skipComments();
    void readNumber(FoamToken* token);
    bool readString(FoamToken* token, ug::Error* error);
    void readWord(FoamToken* token);
    bool expect(char punctuation, ug::Error* error);
    bool checkCount(std::int64_t count, std::size_t bytesOfItem, ug::Error* error) const;
    bool beginList(const FoamListType& type, ListForm* form, std::size_t* bytes, ug::Error* error);
    bool checkRepetitions(std::int64_t count, ug::Error* error) const;
    bool skipNumbers(int depth, ug::Error* error);
    bool readLabel(std::int64_t* label, ug::Error* error);
    std::int64_t binaryLabel(std::size_t index) const;
    bool skipBinaryFaces(std::uint64_t* count, ug::Error* error);
    bool beginBinaryLabels(std::int64_t* count, ug::Error* error);

    std::string m_folder;
    std::string m_name;
    std::unique_ptr<char[]> m_buffer;
    std::vector<char> m_unpacked;
    std::string_view m_bytes; ///< What has been read: the buffer, or what has been unpacked from it.
    std::uint64_t m_size = 0; ///< Of the file; the most that it may have if it is packed.
    std::size_t m_at = 0;
    std::string m_class;
    std::string m_object;
    bool m_isBinary = false;
    std::size_t m_labelSize = 4;
    std::size_t m_scalarSize = 8;
};

} // namespace orv::imp::cae
