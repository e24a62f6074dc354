#include "OrvImportCae/Hdf5Check.h"

#include "Tests/OrvImportCae/Hdf5Checked.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using namespace orv;
using namespace orv::imp::cae;
using namespace orvtest;

namespace {

class Hdf5Files : public Hdf5Checked {};

} // namespace

// From the description of lookup3 by its author.
TEST(Hdf5Sum, IsLookup3) {
    EXPECT_EQ(hdf5Sum("Four score and seven years ago"), 0x17770551u);
    EXPECT_EQ(hdf5Sum(""), 0xdeadbeefu);
}

TEST_F(Hdf5Files, GoodFilesPass) {
    std::size_t count = 0;
    for (const char* folder : {"cgns", "exodus", "hdf5", "med", "together", "vtk", "vtkhdf"}) {
        for (const auto& entry : std::filesystem::directory_iterator(testDataFolder() + "/" + folder)) {
            ug::Error error;
            EXPECT_TRUE(entry.is_directory() || checkHdf5File(entry.path().string(), &error))
                << entry.path() << ' ' << error.message().toStdString();
            count += !entry.is_directory() && readWholeFile(entry.path().string()).find("HDF\r\n\032\n") == 1;
        }
    }
    EXPECT_GE(count, 27u); // Those that begin so: behind.h5 does not.
}

TEST_F(Hdf5Files, WhatIsNoHdf5IsNotItsBusiness) {
    ug::Error error;
    EXPECT_EQ(check(""), "");
    EXPECT_EQ(check("\211HDF"), "");
    EXPECT_EQ(check(std::string(3000, 'x')), "");
    EXPECT_TRUE(checkHdf5File(m_folder / "missing.h5", &error));
    EXPECT_TRUE(checkHdf5File(m_folder.path(), &error));
    EXPECT_TRUE(error.isEmpty());
}

TEST_F(Hdf5Files, SmallestFilesPass) {
    EXPECT_EQ(check(plainImage({})), "");
    EXPECT_EQ(check(summedImage({})), "");
    EXPECT_EQ(check(zeros(512) + plainImage({})), "");
    EXPECT_EQ(check(zeros(2048) + summedImage({})), "");
}

TEST_F(Hdf5Files, DeepGroupsNeedNoStack) {
    constexpr std::uint64_t DEPTH = 50000;
    std::string more;
    for (std::uint64_t i = 0; i < DEPTH; ++i) {
        const std::uint64_t next = i + 1 < DEPTH ? HDF5_MORE_AT + (i + 1) * 40 : HDF5_HEADER_AT;
        more += plainHeader({{LINK, link(0, le(next, 8))}});
    }
    EXPECT_EQ(more.size(), DEPTH * 40);
    EXPECT_EQ(check(plainImage({{LINK, link(0, le(HDF5_MORE_AT, 8))}}, more)), "");
}

// Four nodes, each of which has the next one below it 32 times: a million ways.
TEST_F(Hdf5Files, BlocksThatOverlapAreNotReadForEver) {
    std::string nodes;
    for (std::uint64_t level = 0; level < 4; ++level) {
        const std::uint64_t below = level > 0 ? LEAF_AT + (level - 1) * 544 : LEAF_AT + 4 * 544;
        std::string node = "TREE" + le(0, 1) + le(level, 1) + le(32, 2) + le(NOWHERE, 8) + le(NOWHERE, 8);
        for (int i = 0; i < 32; ++i) {
            node += le(8, 8) + le(below, 8);
        }
        nodes += node + le(16, 8);
    }
    const std::string message = le(LEAF_AT + 3 * 544, 8) + le(HDF5_MORE_AT, 8);
    const std::string symbols = symbolNode(1, symbol(8, HDF5_HEADER_AT, 0, 0));
    EXPECT_THAT(check(plainImage({{SYMBOLS, message}}, HEAP + nodes + symbols)),
                testing::HasSubstr("expected blocks that do not overlap, found "));
}

TEST_F(Hdf5Files, LinkedFilesAreChecked) {
    const std::string there = zeros(1) + "b.h5" + zeros(1) + "/" + zeros(1);
    const std::string image = plainImage({{LINK, link(64, target(there))}});
    EXPECT_EQ(check(image), ""); // There is no such file.
    m_folder.write("b.h5", image);
    EXPECT_EQ(check(image), "");
    m_folder.write("b.h5", patched(plainImage({}), 8, le(4, 1)));
    EXPECT_EQ(check(image),
              "links to \"" + m_folder / "b.h5" +
                  "\", which is damaged at byte 8: expected the version of a superblock to be 0 to 3, found 4");
    // From where the program runs.
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::create_directory(m_folder / "inner");
    std::filesystem::current_path(m_folder.path());
    ug::Error error;
    EXPECT_FALSE(checkHdf5File(m_folder.write("inner/a.h5", image), &error));
    EXPECT_EQ(error.message().toStdString().substr(0, 16), "links to \"b.h5\",");
    std::filesystem::current_path(before);
    // Whatever way to it is told, it may be in the same folder.
    const std::string elsewhere = zeros(1) + "/missing/b.h5" + zeros(1) + "/" + zeros(1);
    EXPECT_NE(check(plainImage({{LINK, link(64, target(elsewhere))}})), "");
}

// No byte of a file matters so much that a wrong one is not survived; the check ends, with or without finding it.
TEST_F(Hdf5Files, AnyByteMayBeWrong) {
    for (const char* name : {"plain.h5", "many_old.h5", "latest.h5"}) {
        const std::string whole = readWholeFile(testDataFolder() + "/hdf5/" + name);
        for (std::size_t at = 0; at < whole.size(); at += 371) {
            check(patched(whole, at, "\xff"));
            check(patched(whole, at, zeros(8).substr(0, std::min<std::size_t>(8, whole.size() - at))));
        }
    }
}
