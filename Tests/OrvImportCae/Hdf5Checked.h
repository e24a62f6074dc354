#pragma once

#include "OrvImportCae/Hdf5Check.h"
#include "Tests/OrvImportCae/Hdf5Image.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Support/TestPaths.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace orvtest {

/// Checks files of given bytes.
class Hdf5Checked : public testing::Test {
protected:
    // The error's text, or empty.
    std::string check(const std::string& bytes) {
        orv::ug::Error error;
        return orv::imp::cae::checkHdf5File(m_folder.write("a.h5", bytes), &error) ? "" : error.message().toStdString();
    }

    std::string checkBody(std::uint64_t type, const std::string& body) {
        return check(plainImage({{type, body}}));
    }

    ScratchFolder m_folder;
};

inline std::string damage(std::uint64_t position, const std::string& text) {
    return "is damaged at byte " + std::to_string(position) + ": " + text;
}

// In a body, counted from its begin.
inline std::string bodyDamage(std::uint64_t offset, const std::string& text) {
    return damage(HDF5_BODY_AT + offset, text);
}

// What most texts have in their middle.
#define OF_MESSAGE " of a message of an object header to be "

} // namespace orvtest
