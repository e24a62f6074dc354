#include "OrvImportVtk/EnSightValues.h"

#include "OrvImportVtk/EnSightCase.h"
#include "OrvImportVtk/EnSightFile.h"
#include "OrvImportVtk/EnSightMesh.h"

#include <vtkCellData.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPointSet.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>

namespace orv::imp::cae {
namespace {

constexpr std::uint8_t SYMMETRIC[] = {0, 1, 2, 3, 5, 4};

class Reader {
public:
    Reader(EnSightFile* file, const EnSightVariable& variable, const std::vector<EnSightPart>& parts)
        : m_file(*file), m_variable(variable), m_parts(parts) {}

    bool run() {
        std::string text;
        if (!m_file.readText("a description", &text) ||
            (text == "BEGIN TIME STEP" && !m_file.readText("a description", &text)) || !next()) {
            return false;
        }
        while (!m_keyword.empty()) {
            if (m_keyword != "part") {
                return m_file.failToFind("\"part\"", m_keyword);
            }
            if (!readPart()) {
                return false;
            }
        }
        return true;
    }

private:
    bool next() {
        return m_file.readKeyword("a part or values", &m_keyword);
    }

    bool readPart() {
        int number = 0;
        if (!m_file.readPartNumber(&number)) {
            return false;
        }
        const auto part = std::find_if(m_parts.begin(), m_parts.end(),
                                       [number](const EnSightPart& known) { return known.number == number; });
        if (part == m_parts.end()) {
            return m_file.fail("expected a part of the mesh, found part " + std::to_string(number));
        }
        const bool isPerNode = m_variable.mapping == ug::PER_NODE;
        vtkDataSetAttributes* attributes = isPerNode ? static_cast<vtkDataSetAttributes*>(part->data->GetPointData())
                                                     : static_cast<vtkDataSetAttributes*>(part->data->GetCellData());
        if (attributes->HasArray(m_variable.name.c_str())) {
            return m_file.fail("expected each part once, found part " + std::to_string(number) + " again");
        }
        vtkNew<vtkFloatArray> array;
        array->SetName(m_variable.name.c_str());
        array->SetNumberOfComponents(m_variable.componentCount);
        array->SetNumberOfTuples(isPerNode ? part->data->GetNumberOfPoints() : part->data->GetNumberOfCells());
        attributes->AddArray(array);
        m_values = array->GetPointer(0);
        std::fill_n(m_values, array->GetNumberOfValues(), std::numeric_limits<float>::quiet_NaN());
        if (!next()) {
            return false;
        }
        if (isPerNode || part->isBlock) {
            const std::string expected = part->isBlock ? "block" : "coordinates";
            return readItems(expected, std::size_t(array->GetNumberOfTuples())) && next();
        }
        return readSections(*part);
    }

    // In any order. Sections of the same type follow one another as they do in the mesh.
    bool readSections(const EnSightPart& part) {
        float* const values = m_values;
        std::vector<bool> isRead(part.sections.size(), false);
        while (!m_keyword.empty() && m_keyword != "part") {
            const std::string type = m_keyword.substr(0, m_keyword.find(' '));
            std::size_t first = 0;
            std::size_t s = 0;
            for (; s < part.sections.size() && (isRead[s] || part.sections[s].type != type); ++s) {
                first += part.sections[s].elementCount;
            }
            if (s == part.sections.size()) {
                return m_file.failToFind("elements that part " + std::to_string(part.number) + " has", m_keyword);
            }
            isRead[s] = true;
            m_values = values + first * std::size_t(m_variable.componentCount);
            if (!readItems(type, part.sections[s].elementCount) || !next()) {
                return false;
            }
        }
        return true;
    }

    // The keyword is the expected one, alone or with "undef" or "partial" behind it.
    bool readItems(const std::string& expected, std::size_t count) {
        if (m_keyword == expected) {
            return readComponents(count);
        }
        if (m_keyword == expected + " undef") {
            return m_file.readFloats("the value that is undefined", 1, &m_floats) && readDefined(count, m_floats[0]);
        }
        if (m_keyword != expected + " partial") {
            return m_file.failToFind("\"" + expected + "\", alone or with \"undef\" or \"partial\"", m_keyword);
        }
        std::size_t partCount = 0;
        std::vector<int> items;
        return m_file.readCount("indexes", 1, &partCount) &&
               m_file.readInts("indexes", partCount, 1, int(count), &items) && readComponentsOf(items);
    }

    // One component after the other.
    bool readComponents(std::size_t count) {
        for (std::size_t c = 0; c < width(); ++c) {
            if (!m_file.readFloatsTo("values", count, m_values + placeOf(c), width())) {
                return false;
            }
        }
        return true;
    }

    // The same of these items, which are counted from 1.
    bool readComponentsOf(const std::vector<int>& items) {
        for (std::size_t c = 0; c < width(); ++c) {
            if (!m_file.readFloats("values", items.size(), &m_floats)) {
                return false;
            }
            for (std::size_t i = 0; i < items.size(); ++i) {
                m_values[(std::size_t(items[i]) - 1) * width() + placeOf(c)] = m_floats[i];
            }
        }
        return true;
    }

    std::size_t width() const {
        return std::size_t(m_variable.componentCount);
    }

    // Where VTK has a component of the file's.
    std::size_t placeOf(std::size_t component) const {
        return width() == std::size(SYMMETRIC) ? SYMMETRIC[component] : component;
    }

    bool readDefined(std::size_t count, float undefined) {
        if (!readComponents(count)) {
            return false;
        }
        std::replace(m_values, m_values + count * std::size_t(m_variable.componentCount), undefined,
                     std::numeric_limits<float>::quiet_NaN());
        return true;
    }

    EnSightFile& m_file;
    const EnSightVariable& m_variable;
    const std::vector<EnSightPart>& m_parts;
    std::string m_keyword; ///< The next one, which has been read.
    std::vector<float> m_floats;
    float* m_values = nullptr; ///< Of the items that are being read.
};

} // namespace

bool readEnSightValues(EnSightFile* file, const EnSightVariable& variable, const std::vector<EnSightPart>& parts) {
    return Reader(file, variable, parts).run();
}

} // namespace orv::imp::cae
