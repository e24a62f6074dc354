#pragma once

#include "Tests/Support/ScratchFolder.h"

#include "OrvImportVtk/LegacyMesh.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include <vtkDataSet.h>

namespace orvtest {

const std::string LEGACY_HEAD = "# vtk DataFile Version 3.0\ntitle\nASCII\n"; // Three lines.
const std::string LEGACY_POINTS = "DATASET UNSTRUCTURED_GRID\nPOINTS 3 float\n0 0 0 1 0 0 0 1 0\n";
const std::string LEGACY_TRIANGLE = "CELLS 1 4\n3 0 1 2\nCELL_TYPES 1\n5\n"; // Lines 7 to 10.

/// Files of few bytes, which are looked through and read.
class LegacyFiles : public testing::Test {
protected:
    /// The error's text, or empty.
    std::string index(const std::string& bytes) {
        const std::string path = m_folder.path() + "/a.vtk";
        std::ofstream(path, std::ios::binary) << bytes;
        m_file = std::make_unique<orv::imp::cae::CaeFile>();
        m_index = {};
        orv::ug::Error error;
        const bool isDone =
            m_file->open(path, &error) && orv::imp::cae::indexLegacyFile(m_file.get(), &m_index, &error);
        EXPECT_EQ(isDone, error.isEmpty());
        return error.message().toStdString();
    }

    /// Reads the mesh and all arrays, too.
    std::string read(const std::string& bytes) {
        const std::string text = index(bytes);
        if (!text.empty()) {
            return text;
        }
        std::vector<std::size_t> arrays;
        for (std::size_t i = 0; i < m_index.arrays.size(); ++i) {
            arrays.push_back(i);
        }
        orv::ug::Error error;
        m_mesh = orv::imp::cae::readLegacyMesh(m_file.get(), m_index, arrays, &error);
        EXPECT_EQ(m_mesh != nullptr, error.isEmpty());
        return error.message().toStdString();
    }

    ScratchFolder m_folder;
    std::unique_ptr<orv::imp::cae::CaeFile> m_file;
    orv::imp::cae::LegacyIndex m_index;
    vtkSmartPointer<vtkDataSet> m_mesh;
};

} // namespace orvtest
