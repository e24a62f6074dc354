#include "OrvImportVtk/NetCdfHeader.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

using namespace orv;

namespace {

std::string word(unsigned value) {
    return {char(value >> 24), char(value >> 16), char(value >> 8), char(value)};
}

std::string text(const std::string& name) {
    return word(unsigned(name.size())) + name + std::string((4 - name.size() % 4) % 4, '\0');
}

/// Two records of a double "t", after three ints "a", whose places in the file are their defaults.
struct Parts {
    std::string magic = "CDF\1";
    std::string records = word(2);
    std::string dimensions = word(10) + word(2) + text("step") + word(0) + text("three") + word(3);
    std::string attributes = word(12) + word(1) + text("title") + word(2) + text("bar");
    std::string variables = word(11) + word(2);
    std::string a = text("a") + word(1) + word(1) + word(0) + word(0) + word(4) + word(12);
    std::string beginOfA = word(156);
    std::string t = text("t") + word(1) + word(0) + word(0) + word(0) + word(6) + word(8);
    std::string beginOfT = word(168);
    std::string values = std::string(12 + 2 * 8, 'x');

    std::string file() const {
        return magic + records + dimensions + attributes + variables + a + beginOfA + t + beginOfT + values;
    }
};

std::string errorOf(const std::string& bytes) {
    std::istringstream file(bytes);
    ug::Error error;
    const bool isWhole = imp::cae::checkNetCdfHeader(file, bytes.size(), &error);
    EXPECT_EQ(isWhole, error.isEmpty());
    return error.message().toStdString();
}

constexpr const char* DAMAGED = "is damaged: the header of its NetCDF format is not as it has to be";

TEST(NetCdfHeader, IsWhole) {
    const Parts parts;
    ASSERT_EQ(parts.file().size(), 156u + parts.values.size());
    EXPECT_EQ(errorOf(parts.file()), "");
}

// The last byte belongs to the second record, the one before the values to the header.
TEST(NetCdfHeader, TellsOfFilesThatEndTooEarly) {
    const std::string whole = Parts().file();
    for (std::size_t size = 8; size < whole.size(); ++size) {
        EXPECT_EQ(errorOf(whole.substr(0, size)), "ends too early") << size;
    }
    EXPECT_EQ(errorOf(""), "is no NetCDF file");
    EXPECT_EQ(errorOf("CDF"), "is no NetCDF file");
}

TEST(NetCdfHeader, TellsOfDamage) {
    struct Row {
        const char* what;
        std::string Parts::*part;
        std::string bytes;
        const char* error;
    };
    const std::string beforeRank = text("a");
    const Row rows[] = {
        {"another format", &Parts::magic, "CDF\3", "is no NetCDF file"},
        {"more records than there are", &Parts::records, word(3), "ends too early"},
        {"records without end", &Parts::records, word(0xffffffff), "ends too early"},
        {"another list", &Parts::dimensions, word(11) + word(2) + text("step") + word(0) + text("three") + word(3),
         DAMAGED},
        {"a nameless dimension", &Parts::dimensions, word(10) + word(2) + word(0) + word(0) + text("three") + word(3),
         DAMAGED},
        {"a name that nobody has room for", &Parts::dimensions,
         word(10) + word(1) + text(std::string(257, 'x')) + word(3), DAMAGED},
        {"two dimensions of records", &Parts::dimensions,
         word(10) + word(2) + text("step") + word(0) + text("a") + word(0), DAMAGED},
        {"an attribute of no type", &Parts::attributes, word(12) + word(1) + text("title") + word(7) + text("bar"),
         DAMAGED},
        {"an attribute longer than the file", &Parts::attributes,
         word(12) + word(1) + text("title") + word(2) + word(0xfffffff0), DAMAGED},
        {"no such dimension", &Parts::a, beforeRank + word(1) + word(2) + word(0) + word(0) + word(4) + word(12),
         DAMAGED},
        {"a record behind another dimension", &Parts::a,
         beforeRank + word(2) + word(1) + word(0) + word(0) + word(0) + word(4) + word(12), DAMAGED},
        {"more dimensions than can be", &Parts::a, beforeRank + word(0xffffffff) + word(1), DAMAGED},
        {"a variable of no type", &Parts::a, beforeRank + word(1) + word(1) + word(0) + word(0) + word(0) + word(12),
         DAMAGED},
        {"values behind the end", &Parts::beginOfA, word(1000), "ends too early"},
        {"values over the end", &Parts::beginOfA, word(173), "ends too early"},
        {"records over the end", &Parts::beginOfT, word(169), "ends too early"},
        {"more variables than there are", &Parts::variables, word(11) + word(3), DAMAGED},
        {"no end of variables", &Parts::variables, word(11) + word(0xffffffff), DAMAGED},
    };
    for (const Row& row : rows) {
        Parts parts;
        parts.*row.part = row.bytes;
        EXPECT_EQ(errorOf(parts.file()), row.error) << row.what;
    }
}

// Each is padded, unless there is but one: a byte and a double in two records take 4 + 8 bytes each.
TEST(NetCdfHeader, KnowsHowRecordsLie) {
    Parts parts;
    parts.a = text("a") + word(1) + word(0) + word(0) + word(0) + word(1) + word(4);
    parts.values = std::string(24, 'x');
    parts.beginOfT = word(160);
    EXPECT_EQ(errorOf(parts.file()), "");
    parts.values.pop_back();
    EXPECT_EQ(errorOf(parts.file()), "ends too early");
    parts.records = word(0);
    parts.values.clear();
    parts.beginOfA = parts.beginOfT = word(156);
    EXPECT_EQ(errorOf(parts.file()), "");
}

// CDF-5 counts with 64 bits.
TEST(NetCdfHeader, ReadsLargeCounts) {
    const auto large = [](unsigned value) { return word(0) + word(value); };
    const std::string dimensions = word(10) + large(1) + large(1) + std::string("n\0\0\0", 4) + large(2);
    const std::string variable = large(1) + std::string("u\0\0\0", 4) + large(1) + large(0) + word(0) + large(0) +
                                 word(11) + large(16) + large(128);
    const std::string header = "CDF\5" + large(0) + dimensions + word(0) + large(0) + word(11) + large(1) + variable;
    ASSERT_EQ(header.size(), 128u);
    EXPECT_EQ(errorOf(header + std::string(16, 'x')), "");
    EXPECT_EQ(errorOf(header + std::string(15, 'x')), "ends too early");
    std::string huge = header + std::string(16, 'x');
    huge[12 + 4 + 8 + 8 + 4] = '\x7f'; // The length of the dimension.
    EXPECT_EQ(errorOf(huge), DAMAGED);
}

} // namespace
