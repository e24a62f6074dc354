#include "OrvImportVtk/XmlArrays.h"

#include <vtkAbstractArray.h>
#include <vtkByteSwap.h>
#include <vtkType.h>
#include <vtkXMLDataElement.h>
#include <vtkXMLDataParser.h>

#include <algorithm>
#include <bit>
#include <string_view>
#include <vector>

namespace orv::imp::cae {
namespace {

// "" when there is none.
std::string_view attributeOf(vtkXMLDataElement* element, const char* name) {
    const char* value = element ? element->GetAttribute(name) : nullptr;
    return value ? value : "";
}

bool isAppended(vtkXMLDataElement* array) {
    return array->GetAttribute("offset") != nullptr;
}

template <class Number>
void narrow(const Number* numbers, std::size_t count, std::int32_t* indexes) {
    constexpr int BITS = 31;
    std::uint64_t seen = 0;
    for (std::size_t i = 0; i < count; ++i) {
        seen |= std::uint64_t(numbers[i]);
        indexes[i] = std::int32_t(numbers[i]);
    }
    for (std::size_t i = 0; i < count && seen >> BITS != 0; ++i) {
        indexes[i] = std::uint64_t(numbers[i]) >> BITS == 0 ? indexes[i] : -1;
    }
}

} // namespace

bool XmlArrays::open(const std::string& filename, vtkXMLDataParser* parser, ug::Error* error) {
    vtkXMLDataElement* root = parser->GetRootElement();
    constexpr bool IS_BIG_ENDIAN = std::endian::native == std::endian::big;
    const std::string_view order = attributeOf(root, "byte_order");
    m_parser = parser;
    m_layout.isSwapped = !order.empty() && (order == "BigEndian") != IS_BIG_ENDIAN;
    m_layout.numberSize = attributeOf(root, "header_type") == "UInt64" ? sizeof(std::uint64_t) : sizeof(std::uint32_t);
    m_isAppendedBase64 = attributeOf(root->FindNestedElementWithName("AppendedData"), "encoding") != "raw";
    return m_file.open(filename, error);
}

std::int64_t XmlArrays::fileSize() const {
    return m_file.size();
}

bool XmlArrays::isText(vtkXMLDataElement* array) {
    return !isAppended(array) && attributeOf(array, "format") != "binary";
}

bool XmlArrays::hasRoom(vtkXMLDataElement* array, std::int64_t itemCount, ug::Error* error) {
    int type = 0;
    if (!array->GetAttribute("type") || !array->GetWordTypeAttribute("type", type) || type == VTK_STRING) {
        return fail(array, "expected an array of numbers, found another one", error);
    }
    int width = 1;
    array->GetScalarAttribute("NumberOfComponents", width);
    std::uint64_t room = 0; // For values.
    if (isText(array)) {
        const std::int64_t left = m_file.size() - array->GetXMLByteIndex();
        room = std::uint64_t(std::max<std::int64_t>(left, 0)) / 2; // A digit and a blank.
    } else {
        const XmlBytes* bytes = itemCount > 0 ? bytesOf(array, error) : nullptr;
        if (itemCount > 0 && !bytes) {
            return false;
        }
        constexpr std::uint64_t BITS = 8;
        const std::uint64_t size = bytes ? bytes->size() : 0;
        room = type == VTK_BIT ? size * BITS : size / std::uint64_t(vtkAbstractArray::GetDataTypeSize(type));
    }
    return (itemCount >= 0 && std::uint64_t(itemCount) <= room / std::uint64_t(std::max(width, 1))) ||
           fail(array,
                "expected " + std::to_string(itemCount) + " times " + std::to_string(width) +
                    " values, found room for " + std::to_string(room),
                error);
}

bool XmlArrays::read(vtkXMLDataElement* array, std::int64_t first, std::int64_t count, std::size_t valueSize,
                     void* values, const XmlBytes::Tell& tell, ug::Error* error) {
    if (count == 0) {
        return true;
    }
    XmlBytes* bytes = bytesOf(array, error);
    if (!bytes) {
        return false;
    }
    ug::Error reason;
    const std::uint64_t room = bytes->size() / valueSize;
    if (first < 0 || count < 0 || std::uint64_t(first) > room || std::uint64_t(count) > room - std::uint64_t(first)) {
        return fail(array,
                    "expected " + std::to_string(count) + " values from the one with index " + std::to_string(first) +
                        " on, found " + std::to_string(room) + " in all",
                    error);
    }
    if (!bytes->read(std::uint64_t(first) * valueSize, std::size_t(count) * valueSize,
                     static_cast<unsigned char*>(values), tell, &reason)) {
        return fail(array, reason.message().toStdString(), error);
    }
    if (m_layout.isSwapped && valueSize > 1) {
        vtkByteSwap::SwapVoidRange(values, std::size_t(count), valueSize);
    }
    return true;
}

bool XmlArrays::hasIndexes(vtkXMLDataElement* array) {
    const std::string_view type = attributeOf(array, "type");
    return !isText(array) && (type == "Int32" || type == "Int64");
}

bool XmlArrays::readIndexes(vtkXMLDataElement* array, std::int64_t count, std::int32_t* indexes,
                            const XmlBytes::Tell& tell, ug::Error* error) {
    return attributeOf(array, "type") == "Int32" ? readNarrow<std::int32_t>(array, count, indexes, tell, error)
                                                 : readNarrow<std::int64_t>(array, count, indexes, tell, error);
}

// Piece by piece, so that the wide numbers do not go through the memory.
template <class Number>
bool XmlArrays::readNarrow(vtkXMLDataElement* array, std::int64_t count, std::int32_t* indexes,
                           const XmlBytes::Tell& tell, ug::Error* error) {
    const XmlBytes* bytes = count > 0 ? bytesOf(array, error) : nullptr;
    if (!bytes) {
        return count == 0;
    }
    const std::size_t pieceSize = bytes->pieceSize();
    const std::int64_t piece = pieceSize % sizeof(Number) == 0 ? std::int64_t(pieceSize / sizeof(Number)) : count;
    std::vector<Number> numbers(std::size_t(std::min(piece, count)));
    for (std::int64_t first = 0; first < count; first += piece) {
        const std::int64_t part = std::min(piece, count - first);
        const auto tellPart = [&](double share) { tell((double(first) + share * double(part)) / double(count)); };
        if (!read(array, first, part, sizeof(Number), numbers.data(), tellPart, error)) {
            return false;
        }
        narrow(numbers.data(), std::size_t(part), indexes + first);
    }
    return true;
}

bool XmlArrays::fail(vtkXMLDataElement* array, const std::string& text, ug::Error* error) {
    return ug::fail(error, Str("array '" + std::string(attributeOf(array, "Name")) + "', " + text));
}

// Null on failure.
XmlBytes* XmlArrays::bytesOf(vtkXMLDataElement* array, ug::Error* error) {
    if (array == m_last) {
        return m_bytes.get();
    }
    m_last = nullptr;
    std::int64_t begin = 0;
    if (!findBegin(array, &begin, error)) {
        return nullptr;
    }
    ug::Error reason;
    m_layout.compressor = m_parser->GetCompressor();
    m_bytes = std::make_unique<XmlBytes>(m_file, m_layout);
    if (!m_bytes->open(begin, !isAppended(array) || m_isAppendedBase64, &reason)) {
        fail(array, reason.message().toStdString(), error);
        return nullptr;
    }
    m_last = array;
    return m_bytes.get();
}

bool XmlArrays::findBegin(vtkXMLDataElement* array, std::int64_t* begin, ug::Error* error) const {
    if (!isAppended(array)) {
        *begin = findInline(array);
        return true;
    }
    vtkTypeInt64 offset = 0;
    const vtkTypeInt64 appended = m_parser->GetAppendedDataPosition();
    if (!array->GetScalarAttribute("offset", offset) || appended <= 0 || offset < 0 ||
        offset > m_file.size() - appended) {
        return fail(
            array, "expected a place in the appended data, found \"" + std::string(attributeOf(array, "offset")) + "\"",
            error);
    }
    *begin = appended + offset;
    return true;
}

// Behind the end of the tag, and blanks. The parser has come past it, so there is one.
std::int64_t XmlArrays::findInline(vtkXMLDataElement* array) const {
    constexpr std::string_view BLANKS = " \t\r\n";
    constexpr std::size_t CHUNK = 512;
    std::int64_t at = array->GetXMLByteIndex();
    bool isBehindTag = false;
    char text[CHUNK];
    for (std::size_t count = m_file.read(at, text, CHUNK); count > 0; count = m_file.read(at, text, CHUNK)) {
        for (std::size_t i = 0; i < count; ++i, ++at) {
            if (isBehindTag && BLANKS.find(text[i]) == std::string_view::npos) {
                return at;
            }
            isBehindTag = isBehindTag || text[i] == '>';
        }
    }
    return at;
}

} // namespace orv::imp::cae
