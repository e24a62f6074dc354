#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvImportVtk/XmlBytes.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

class vtkXMLDataElement;
class vtkXMLDataParser;

namespace orv::imp::cae {

/// The arrays of a VTK XML file, by the elements that its parser made of them, which must live as long. Texts of errors
/// begin with the array's name and place: "array 'Temperature', byte 3400: ".
class XmlArrays {
public:
    /// Once per object, when the parser has read the file.
    bool open(const std::string& filename, vtkXMLDataParser* parser, ug::Error* error);

    std::int64_t fileSize() const;

    /// Whether the values stand there as words, not as bytes.
    static bool isText(vtkXMLDataElement* array);

    /// Whether the array can have so many items, of as many values as it tells itself. Reads no values.
    bool hasRoom(vtkXMLDataElement* array, std::int64_t itemCount, ug::Error* error);

    /// Values of so many bytes each, from one of them on, in this machine's order of bytes. Not of texts.
    bool read(vtkXMLDataElement* array, std::int64_t first, std::int64_t count, std::size_t valueSize, void* values,
              const XmlBytes::Tell& tell, ug::Error* error);

    /// Whether readIndexes() can read it.
    static bool hasIndexes(vtkXMLDataElement* array);

    /// Whole numbers, of which those that are negative or have no room become -1.
    bool readIndexes(vtkXMLDataElement* array, std::int64_t count, std::int32_t* indexes, const XmlBytes::Tell& tell,
                     ug::Error* error);

    /// Fills the error. Always false.
    static bool fail(vtkXMLDataElement* array, const std::string& text, ug::Error* error);

private:
    template <class Number>
    bool readNarrow(vtkXMLDataElement* array, std::int64_t count, std::int32_t* indexes, const XmlBytes::Tell& tell,
                    ug::Error* error);
    XmlBytes* bytesOf(vtkXMLDataElement* array, ug::Error* error);
    bool findBegin(vtkXMLDataElement* array, std::int64_t* begin, ug::Error* error) const;
    std::int64_t findInline(vtkXMLDataElement* array) const;

    CaeFile m_file;
    vtkXMLDataParser* m_parser = nullptr;
    XmlLayout m_layout;
    bool m_isAppendedBase64 = true;

    // The last one that was asked for: of a grid in several pieces VTK reads row by row.
    vtkXMLDataElement* m_last = nullptr;
    std::unique_ptr<XmlBytes> m_bytes;
};

} // namespace orv::imp::cae
