#include "OrvImportMed/MedFile.h"

#include "Tests/OrvImportMed/MedSamples.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>

using namespace orv;
using imp::cae::MedFile;
using imp::cae::MedSilence;
using orvtest::medFile;

namespace {

std::string whyNot(const std::string& path) {
    const MedSilence silence;
    MedFile file;
    ug::Error error;
    EXPECT_FALSE(file.open(path, &error));
    return error.message().toStdString();
}

} // namespace

TEST(MedFile, TellsWhyItCannotBeOpened) {
    const orvtest::ScratchFolder folder;
    EXPECT_EQ(whyNot(folder / "a.med"), "cannot open \"" + folder / "a.med" + "\": No such file or directory");
    EXPECT_EQ(whyNot(folder.path()), "cannot open \"" + folder.path() + "\": it is not a file");
    const std::string noHdf = " is damaged, ends too early or is no MED file that libmedc 4.1.0 can read";
    const std::string text = folder.write("text.med", "no such thing");
    EXPECT_EQ(whyNot(text), text + noHdf);
    const std::string empty = folder.write("empty.med", "");
    EXPECT_EQ(whyNot(empty), empty + noHdf);
    const std::string whole = orvtest::readWholeFile(medFile("beam.rmed"));
    for (const std::size_t size : {whole.size() - 1, whole.size() / 2, std::size_t(100)}) {
        const std::string cut = folder.write("cut.med", whole.substr(0, size));
        EXPECT_EQ(whyNot(cut), cut + ": is damaged at byte 0: expected 70611 bytes, found " + std::to_string(size) +
                                   ": the file ends too early");
    }
}

TEST(MedFile, AnHdfFileThatIsNoMedFileIsRefused) {
    const orvtest::ScratchFolder folder;
    const std::string path = folder / "other.med";
    H5Fclose(H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT));
    EXPECT_EQ(whyNot(path), path + " is damaged, ends too early or is no MED file that libmedc 4.1.0 can read");
}

TEST(MedFile, ACountFitsThatTheFileCanHold) {
    const MedSilence silence;
    MedFile file;
    ASSERT_TRUE(file.open(medFile("beam.rmed"), nullptr));
    const auto size = std::int64_t(std::filesystem::file_size(medFile("beam.rmed")));
    EXPECT_TRUE(file.fits(0, 8));
    EXPECT_FALSE(file.fits(-1, 8));
    EXPECT_TRUE(file.fits(1032 * size / 8, 8)); // What deflate can make of so many bytes at best.
    EXPECT_FALSE(file.fits(1032 * size / 8 + 1, 8));
}

TEST(MedFile, KnowsTheExtentOfDataSets) {
    const MedSilence silence;
    MedFile file;
    ASSERT_TRUE(file.open(medFile("beam.rmed"), nullptr));
    EXPECT_TRUE(file.hasExtent("/PROFILS/SOMENODES/PFL", 3));
    EXPECT_FALSE(file.hasExtent("/PROFILS/SOMENODES/PFL", 4));
    EXPECT_FALSE(file.hasExtent("/PROFILS/SOMENODES", 3));
    EXPECT_FALSE(file.hasExtent("/PROFILS/NONE/PFL", 3));
}

TEST(MedFile, ListsWhatIsInGroups) {
    const MedSilence silence;
    MedFile file;
    ASSERT_TRUE(file.open(medFile("beam.rmed"), nullptr));
    const std::vector<std::string> families = file.names("/FAS/BEAM/ELEME"); // In any order.
    EXPECT_EQ(std::set<std::string>(families.begin(), families.end()),
              (std::set<std::string>{"FAM_-1", "FAM_-2", "FAM_-3", "FAM_-4"}));
    EXPECT_EQ(families.size(), 4u);
    EXPECT_EQ(file.names("/FAS/NONE"), std::vector<std::string>());
}

TEST(MedFile, StepsHaveGroupsOfTwentyDigitsTwice) {
    EXPECT_EQ(imp::cae::medStepPath(MED_NO_DT, MED_NO_IT), "-0000000000000000001-0000000000000000001");
    EXPECT_EQ(imp::cae::medStepPath(12, 3), "0000000000000000001200000000000000000003");
}

TEST(MedFile, NoticesAChange) {
    const orvtest::ScratchFolder folder;
    const std::string path = folder.write("a.med", orvtest::readWholeFile(medFile("beam.rmed")));
    const MedSilence silence;
    MedFile file;
    ASSERT_TRUE(file.open(path, nullptr));
    EXPECT_TRUE(file.checkUnchanged(nullptr));
    std::ofstream(path, std::ios::app) << "more";
    ug::Error error;
    EXPECT_FALSE(file.checkUnchanged(&error));
    EXPECT_EQ(error.message().toStdString(), path + " has changed since it was opened");
}

TEST(MedText, LosesBlanksAndZerosAtItsEnds) {
    imp::cae::MedText text(4, 3);
    std::copy_n("AB  CDEF\0\0\0\0", 12, static_cast<char*>(text));
    EXPECT_EQ(text.text(0), "AB");
    EXPECT_EQ(text.text(1), "CDEF");
    EXPECT_EQ(text.text(2), "");
}

TEST(MedSilence, TurnsAwayWhatCFunctionsTellAndNothingElse) {
    testing::internal::CaptureStderr();
    {
        const MedSilence silence;
        std::fprintf(stderr, "libmedc");
        std::cerr << "program,";
    }
    std::fprintf(stderr, "after");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "program,after");
}
