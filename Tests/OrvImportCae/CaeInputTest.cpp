#include "OrvImportCae/CaeInput.h"

#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>

using namespace orv;
using namespace orv::imp::cae;

namespace {

/// Shows what formats' own readers see.
class Input : public CaeInput {
public:
    Input(const CaeFile& file, ug::Error* error) : CaeInput(file, error) {}

    using CaeInput::BUFFER_SIZE;
    using CaeInput::failAt;
    using CaeInput::fill;

    std::string_view buffered() const {
        return {m_at, m_end};
    }

    void skip(std::size_t count) {
        m_at += count;
    }
};

class CaeInputs : public testing::Test {
protected:
    Input open(const std::string& bytes) {
        const std::string path = m_folder.path() + "/a.txt";
        std::ofstream(path, std::ios::binary) << bytes;
        m_file = std::make_unique<CaeFile>();
        EXPECT_TRUE(m_file->open(path, nullptr));
        return Input(*m_file, &m_error);
    }

    orvtest::ScratchFolder m_folder;
    std::unique_ptr<CaeFile> m_file;
    ug::Error m_error;
};

TEST_F(CaeInputs, TheBufferGoesAlong) {
    std::string bytes(Input::BUFFER_SIZE, 'a');
    bytes += "bcd";
    Input input = open(bytes);
    EXPECT_EQ(input.buffered(), "");
    EXPECT_TRUE(input.fill(1));
    EXPECT_EQ(input.buffered().size(), Input::BUFFER_SIZE);
    input.skip(Input::BUFFER_SIZE - 1);
    EXPECT_TRUE(input.fill(1));
    EXPECT_EQ(input.buffered(), "a"); // There was enough.
    EXPECT_TRUE(input.fill(4));
    EXPECT_EQ(input.buffered(), "abcd");
    EXPECT_EQ(input.offset(), std::int64_t(Input::BUFFER_SIZE) - 1);
    EXPECT_FALSE(input.fill(5));
    EXPECT_EQ(input.buffered(), "abcd");
    input.skip(4);
    EXPECT_FALSE(input.fill(1));
}

TEST_F(CaeInputs, PlacesWithinTheBufferStayInIt) {
    Input input = open("abcdef");
    input.seek(2);
    EXPECT_EQ(input.buffered(), "");
    EXPECT_TRUE(input.fill(1));
    EXPECT_EQ(input.buffered(), "cdef");
    input.seek(4);
    EXPECT_EQ(input.buffered(), "ef");
    EXPECT_EQ(input.offset(), 4);
    input.seek(1); // In front of it.
    EXPECT_EQ(input.buffered(), "");
    EXPECT_TRUE(input.fill(5));
    EXPECT_EQ(input.buffered(), "bcdef");
    input.seek(100);
    EXPECT_FALSE(input.fill(1));
}

TEST_F(CaeInputs, TextsTellThePlace) {
    Input input = open("a\nb\n");
    EXPECT_FALSE(input.failAt(2, "no"));
    EXPECT_EQ(m_error.message(), Str(m_file->name() + ", line 2: no"));
}

} // namespace
